#include "platform/image/jpeg_errors.h"

#include <cstring>

#include <jerror.h>

namespace veldara {

namespace {

[[noreturn]] void leave(j_common_ptr library) {
    auto* errors = reinterpret_cast<JpegErrors*>(library->err);
    if (errors->reason[0] == '\0') {
        errors->manager.format_message(library, errors->reason.data());
    }
    std::longjmp(errors->jump, 1); // NOLINT
}

// The library goes on after these, with grey or garbage in place of the missing pixels.
bool meansDamagedPixels(const jpeg_error_mgr& manager) {
    switch (manager.msg_code) {
    case JWRN_ARITH_BAD_CODE:
    case JWRN_BOGUS_PROGRESSION:
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_JPEG_EOF:
    case JWRN_MUST_RESYNC:
        return true;
    case JWRN_EXTRANEOUS_DATA: {
        // Some cameras pad the end of the picture. Inside of it, left-over bytes before a restart
        // marker say that the bytes before were misread.
        const int marker = manager.msg_parm.i[1];
        return marker >= 0xD0 && marker <= 0xD7;
    }
    default:
        return false;
    }
}

void hear(j_common_ptr library, int level) {
    auto* errors = reinterpret_cast<JpegErrors*>(library->err);
    if (level >= 0) {
        return;
    }
    ++errors->manager.num_warnings;
    if (meansDamagedPixels(errors->manager)) {
        errors->fail("its picture data is damaged or incomplete");
    }
}

void staySilent(j_common_ptr) {}

} // namespace

JpegErrors::JpegErrors() {
    jpeg_std_error(&manager);
    manager.error_exit = leave;
    manager.emit_message = hear;
    manager.output_message = staySilent;
}

void JpegErrors::fail(const char* text) {
    std::strncpy(reason.data(), text, reason.size() - 1);
    std::longjmp(jump, 1); // NOLINT
}

} // namespace veldara
