// libjpeg's way of failing, made into ours: it jumps out of the library, and the reason is thrown
// as an Error on this side, so that no exception passes through C code.
#pragma once

#include "platform/error.h"

#include <array>
#include <csetjmp>
#include <cstdio>
#include <utility>

#include <jpeglib.h>

namespace veldara {

struct JpegErrors {
    jpeg_error_mgr manager{}; // first, so that the library's pointer is a pointer to this
    std::jmp_buf jump{};
    std::array<char, JMSG_LENGTH_MAX> reason{};

    // Installs itself; warnings that mean missing or damaged pixels become errors.
    JpegErrors();
    JpegErrors(const JpegErrors&) = delete;
    JpegErrors& operator=(const JpegErrors&) = delete;

    // Leaves the library with a reason of our own.
    [[noreturn]] void fail(const char* text);

    // Calls the library. What is called may own nothing that needs a destructor: a failure jumps
    // over it.
    template <class Work>
    void guard(Work&& work) {
        if (setjmp(jump) != 0) { // NOLINT: the library knows no other way
            throw Error(reason.data());
        }
        std::forward<Work>(work)();
    }
};

} // namespace veldara
