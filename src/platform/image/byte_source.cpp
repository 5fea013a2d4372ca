#include "platform/image/byte_source.h"

#include "platform/error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

namespace veldara {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

OpenFile openForReading(const std::filesystem::path& file) {
#ifdef _WIN32
    return OpenFile(_wfopen(file.c_str(), L"rb"));
#else
    return OpenFile(std::fopen(file.c_str(), "rbe"));
#endif
}

bool seekTo(std::FILE* file, std::uint64_t position) {
#ifdef _WIN32
    return _fseeki64(file, static_cast<long long>(position), SEEK_SET) == 0;
#else
    return fseeko(file, static_cast<off_t>(position), SEEK_SET) == 0;
#endif
}

std::string reasonOf(int code) {
    return std::generic_category().message(code);
}

class FileBytes : public ByteSource {
  public:
    FileBytes(OpenFile file, std::uint64_t size) : file_(std::move(file)), size_(size) {
        // The codecs ask for large blocks; a second buffer would only copy them once more.
        std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    }

    std::uint64_t size() const override { return size_; }

    std::size_t readAt(std::uint64_t position, void* buffer, std::size_t count) override {
        if (position >= size_ || count == 0) {
            return 0;
        }
        count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - position));
        if (position != position_ && !seekTo(file_.get(), position)) {
            throw Error(reasonOf(errno));
        }
        const std::size_t got = std::fread(buffer, 1, count, file_.get());
        position_ = position + got;
        if (got < count && std::ferror(file_.get()) != 0) {
            throw Error(reasonOf(errno));
        }
        return got;
    }

  private:
    OpenFile file_;
    std::uint64_t size_ = 0;
    std::uint64_t position_ = 0;
};

} // namespace

std::unique_ptr<ByteSource> openFileBytes(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        throw Error("the file does not exist");
    }
    if (status.type() == std::filesystem::file_type::directory) {
        throw Error("it is a folder");
    }
    // Pipes and devices have no size, and waiting for one would hang the program.
    if (status.type() != std::filesystem::file_type::regular) {
        throw Error(error ? error.message() : "it is not an ordinary file");
    }
    OpenFile opened = openForReading(file);
    if (!opened) {
        throw Error(reasonOf(errno));
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) {
        throw Error(error.message());
    }
    return std::make_unique<FileBytes>(std::move(opened), size);
}

std::size_t MemoryBytes::readAt(std::uint64_t position, void* buffer, std::size_t count) {
    if (position >= bytes_.size() || count == 0) {
        return 0;
    }
    count = std::min(count, bytes_.size() - static_cast<std::size_t>(position));
    std::memcpy(buffer, bytes_.data() + position, count);
    return count;
}

} // namespace veldara
