// The settings of the sanitizers in every program that is built with them.

extern "C" {

// Tests ask for more memory than there is, and expect a message.
const char* __asan_default_options() { // NOLINT(bugprone-reserved-identifier)
    return "allocator_may_return_null=1";
}

// Memory that libraries lose while they refuse a damaged picture, and the system's once, at the
// start.
const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:libdav1d\nleak:libde265\nleak:libheif\nleak:argz_add_sep\n";
}

// Suppressed leaks would be listed on standard error, which tests read.
const char* __lsan_default_options() { // NOLINT(bugprone-reserved-identifier)
    return "print_suppressions=0";
}

// The library's own threads draw the tiles of a damaged grid over one another, inside of its
// picture.
const char* __tsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "race:libheif.so\n";
}

} // extern "C"
