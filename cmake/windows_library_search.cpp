// Libraries that are asked for by their bare name come from the system's folder alone: neither the
// folder that the program was unpacked into, nor the current one, nor those in PATH are searched.
// It has to be said before anything else runs that could load one, constructors of global objects
// included. libheif is asked for with a folder of its own (heif_library.cpp).
#include <windows.h>

namespace {

[[gnu::constructor(101)]] void searchSystemFolderOnly() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

} // namespace
