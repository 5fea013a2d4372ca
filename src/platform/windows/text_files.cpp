#include "platform/windows/text_files.h"

#include "platform/error.h"
#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"
#include "platform/files/windows_paths.h"
#include "platform/text/characters.h"
#include "platform/text/path_text.h"

#include <cstddef>
#include <random>
#include <string_view>
#include <utility>

#include <windows.h>

namespace veldara {

namespace {

constexpr LONGLONG largestTextFile = LONGLONG{16} << 20U;
constexpr std::size_t longestLine = std::size_t{1} << 20U;

// An open file, closed at the end of its scope.
class OpenFile {
  public:
    explicit OpenFile(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(); }

    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE handle() const { return handle_; }
    void reset(HANDLE handle) {
        close();
        handle_ = handle;
    }
    void close() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
        }
    }

  private:
    HANDLE handle_;
};

[[noreturn]] void fail(const std::string& doing, const std::string& path, DWORD code) {
    throw Error("The file \"" + path + "\" cannot be " + doing + ": " + heldReason(code) + ".");
}

// Another program may be writing the file: it is read anyway, or after a moment where that
// program shares nothing. What cannot be read would be taken for missing.
HANDLE openToRead(const std::string& path) {
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD code = retryWhileHeld([&]() -> unsigned long {
        file = CreateFileW(extendedPath(textPath(path)).c_str(), GENERIC_READ, shared, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        return file == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    });
    if (file == INVALID_HANDLE_VALUE) {
        fail("read", path, code);
    }
    return file;
}

std::string readWhole(const std::string& path) {
    const OpenFile file(openToRead(path));
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.handle(), &size)) {
        fail("read", path, GetLastError());
    }
    if (size.QuadPart > largestTextFile) {
        fail("read", path, ERROR_FILE_TOO_LARGE);
    }
    std::string text(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD taken = 0;
    if (!ReadFile(file.handle(), text.data(), static_cast<DWORD>(text.size()), &taken, nullptr)) {
        fail("read", path, GetLastError());
    }
    text.resize(taken);
    return text;
}

class WholeTextReader : public TextReader {
  public:
    explicit WholeTextReader(std::string path)
        : path_(std::move(path)), lines_(splitLines(readWhole(path_))) {}

    bool atEndOfStream() override { return next_ == lines_.size(); }
    std::string readLine() override {
        if (atEndOfStream()) {
            fail("read", path_, ERROR_HANDLE_EOF);
        }
        const std::string& line = lines_[next_++];
        if (line.size() > longestLine) {
            throw Error("The file \"" + path_ + "\" has a line that is too long for a text.");
        }
        return line;
    }

  private:
    std::string path_;
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
};

// All of the bytes, brought to the disk. The system's code, 0 for success.
DWORD writeWhole(const OpenFile& file, const std::string& text) {
    DWORD written = 0;
    if (!WriteFile(file.handle(), text.data(), static_cast<DWORD>(text.size()), &written,
                   nullptr)) {
        return GetLastError();
    }
    if (written != text.size()) {
        return ERROR_DISK_FULL;
    }
    return FlushFileBuffers(file.handle()) ? ERROR_SUCCESS : GetLastError();
}

// Takes the lines; close() stores them once.
class CollectingWriter : public TextWriter {
  public:
    explicit CollectingWriter(std::string path) : path_(std::move(path)) {}

    void writeLine(const std::string& line) override { text_ += line + "\r\n"; }
    void close() override {
        if (std::exchange(closed_, true)) {
            return;
        }
        const bool fits = text_.size() <= static_cast<std::size_t>(largestTextFile);
        const DWORD code = fits ? store() : ERROR_FILE_TOO_LARGE;
        if (code != ERROR_SUCCESS) {
            fail("written", path_, code);
        }
    }

  protected:
    const std::string& path() const { return path_; }
    const std::string& text() const { return text_; }

  private:
    virtual DWORD store() = 0; // the system's code, 0 for success

    std::string path_;
    std::string text_;
    bool closed_ = false;
};

class ReplacingWriter : public CollectingWriter {
  public:
    explicit ReplacingWriter(const std::string& path)
        : CollectingWriter(path), file_(textPath(path)) {}

  private:
    DWORD store() override {
        file_.write(text());
        file_.commit();
        return ERROR_SUCCESS;
    }

    WholeFile file_;
};

class RewritingWriter : public CollectingWriter {
  public:
    explicit RewritingWriter(const std::string& path) : CollectingWriter(path) {
        // Asked here so that a file that can never be written is refused before the first line.
        OpenFile file;
        if (const DWORD code = open(file); code != ERROR_SUCCESS) {
            fail("written", path, code);
        }
    }

  private:
    // Shared with nobody: a reader then waits until the file is complete.
    DWORD open(OpenFile& file) const {
        return retryWhileHeld([&]() -> unsigned long {
            file.reset(CreateFileW(extendedPath(textPath(path())).c_str(), GENERIC_WRITE, 0,
                                   nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
            return file ? ERROR_SUCCESS : GetLastError();
        });
    }
    DWORD store() override {
        OpenFile file;
        if (const DWORD code = open(file); code != ERROR_SUCCESS) {
            return code;
        }
        const DWORD code = writeWhole(file, text());
        if (code != ERROR_SUCCESS) {
            return code;
        }
        return SetEndOfFile(file.handle()) ? ERROR_SUCCESS : GetLastError();
    }
};

} // namespace

std::unique_ptr<TextReader> openTextFileToRead(const std::string& path) {
    return std::make_unique<WholeTextReader>(path);
}

std::unique_ptr<TextWriter> createTextFileToWrite(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(extendedPath(textPath(path)).c_str());
    constexpr DWORD unwritable = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & unwritable) != 0) {
        fail("written", path, ERROR_ACCESS_DENIED);
    }
    try {
        return std::make_unique<ReplacingWriter>(path);
    } catch (const FileError&) {
        if (!exists) {
            throw;
        }
    }
    return rewriteTextFile(path);
}

std::unique_ptr<TextWriter> rewriteTextFile(const std::string& path) {
    return std::make_unique<RewritingWriter>(path);
}

} // namespace veldara
