#include "platform/files/descriptor.h"
#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"

#include <cerrno>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldara {

namespace {

namespace fs = std::filesystem;

// Where a link leads, even when no file is there yet.
fs::path behindLinks(fs::path path) {
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code code;
    for (int i = 0; i < mostLinks && fs::is_symlink(path, code); ++i) {
        const fs::path target = fs::read_symlink(path, code);
        if (code) {
            break;
        }
        path = path.parent_path() / target; // an absolute target stands alone
    }
    return path;
}

// Some file systems have nothing to flush and say so.
bool flush(int descriptor) {
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS ||
           errno == ENOSYS;
}

} // namespace

struct WholeFile::State {
    fs::path named;  // as the caller named it, for messages
    fs::path target; // behind links
    fs::path temporary;
    Descriptor file;

    [[noreturn]] void fail(int code) const { throw FileError("write", named, code); }

    // Permissions of the file that will be replaced; none when there is no such file.
    std::optional<mode_t> checkTarget() const {
        struct stat old = {};
        if (::stat(target.c_str(), &old) != 0) {
            return std::nullopt;
        }
        if (S_ISDIR(old.st_mode)) {
            fail(EISDIR);
        }
        // rename() does not ask whether the old file may be written.
        if (::access(target.c_str(), W_OK) != 0) {
            fail(errno);
        }
        return old.st_mode & 0777U;
    }

    void create(mode_t mode) {
        constexpr int attempts = 16; // a taken name is next to impossible
        for (int i = 0; i < attempts; ++i) {
            const fs::path name = temporaryNameBeside(target);
            file = Descriptor(
                ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
            if (file) {
                temporary = name;
                return;
            }
            if (errno != EEXIST) {
                break;
            }
        }
        fail(errno);
    }
};

WholeFile::WholeFile(const fs::path& target, Rights rights) : state_(std::make_unique<State>()) {
    state_->named = target;
    state_->target = behindLinks(target);
    const std::optional<mode_t> mode = state_->checkTarget();
    state_->create(rights == Rights::ownerOnly ? 0600 : 0666);
    if (mode && ::fchmod(state_->file.number(), *mode) != 0) {
        const int code = errno;
        giveUp();
        state_->fail(code);
    }
}

WholeFile::WholeFile(WholeFile&& other) noexcept = default;

WholeFile& WholeFile::operator=(WholeFile&& other) noexcept {
    state_.swap(other.state_);
    return *this;
}

WholeFile::~WholeFile() {
    giveUp();
}

void WholeFile::write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(state_->file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            state_->fail(errno);
        }
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        }
    }
}

void WholeFile::write(std::string_view text) {
    write(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

void WholeFile::commit() {
    const bool inPlace = flush(state_->file.number()) && state_->file.close() &&
                         ::rename(state_->temporary.c_str(), state_->target.c_str()) == 0;
    if (!inPlace) {
        const int code = errno;
        giveUp();
        state_->fail(code);
    }
    state_->temporary.clear();
    // So that the new name survives a loss of power too. Some file systems refuse to flush a
    // folder; the file is complete either way.
    const fs::path folder = state_->target.has_parent_path() ? state_->target.parent_path() : ".";
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened) {
        ::fsync(opened.number());
    }
}

void WholeFile::giveUp() noexcept {
    if (state_ && !state_->temporary.empty()) {
        state_->file.close();
        ::unlink(state_->temporary.c_str());
        state_->temporary.clear();
    }
}

} // namespace veldara
