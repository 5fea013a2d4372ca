#include "platform/files/descriptor.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldara {

bool Descriptor::close() {
    const int number = std::exchange(number_, -1);
    return number < 0 || ::close(number) == 0;
}

Descriptor openRegularFile(const std::string& path) {
    // Without O_NONBLOCK, opening a pipe would wait for somebody to write into it.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status = {};
    if (!file || ::fstat(file.number(), &status) != 0) {
        return {};
    }
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return {};
    }
    return file;
}

int readWhole(const Descriptor& file, std::size_t limit, std::string& bytes) {
    bytes.clear();
    char block[16384];
    for (;;) {
        const ssize_t count = ::read(file.number(), block, sizeof block);
        if (count == 0) {
            return 0;
        }
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            bytes.append(block, static_cast<std::size_t>(count));
        }
        if (bytes.size() > limit) {
            return EFBIG;
        }
    }
}

} // namespace veldara
