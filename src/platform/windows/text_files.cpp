#include "platform/windows/text_files.h"

#include "platform/error.h"
#include "platform/text/characters.h"
#include "platform/windows/wide_text.h"

#include <cstddef>
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
    void close() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
        }
    }

  private:
    HANDLE handle_;
};

[[noreturn]] void fail(const std::string& doing, const std::string& path, DWORD code) {
    throw Error("The file \"" + path + "\" cannot be " + doing + ": " + systemMessage(code) + ".");
}

std::string readWhole(const std::string& path) {
    const OpenFile file(CreateFileW(wideText(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.handle(), &size)) {
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

class WholeTextWriter : public TextWriter {
  public:
    explicit WholeTextWriter(std::string path) : path_(std::move(path)), wide_(wideText(path_)) {
        // Asked here so that a path that can never be written is refused before the first line.
        if (!openTemporary()) {
            const DWORD code = GetLastError();
            const OpenFile inPlace(openInPlace());
            if (!inPlace) {
                fail("written", path_, code);
            }
        }
    }
    WholeTextWriter(const WholeTextWriter&) = delete;
    WholeTextWriter& operator=(const WholeTextWriter&) = delete;
    ~WholeTextWriter() override { discardTemporary(); }

    void writeLine(const std::string& line) override { text_ += line + "\r\n"; }

    void close() override {
        if (std::exchange(closed_, true)) {
            return;
        }
        if (text_.size() > static_cast<std::size_t>(largestTextFile)) {
            fail("written", path_, ERROR_FILE_TOO_LARGE);
        }
        const DWORD code = temporary_.empty() ? rewriteInPlace() : replace();
        if (code != ERROR_SUCCESS) {
            fail("written", path_, code);
        }
    }

  private:
    bool openTemporary() {
        const DWORD attributes = GetFileAttributesW(wide_.c_str());
        constexpr DWORD unwritable = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & unwritable) != 0) {
            SetLastError(ERROR_ACCESS_DENIED);
            return false;
        }
        const std::wstring name = wide_ + L"." + std::to_wstring(GetCurrentProcessId()) + L"-" +
                                  std::to_wstring(GetTickCount64()) + L".tmp";
        file_ = std::make_unique<OpenFile>(CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr,
                                                       CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!*file_) {
            return false;
        }
        temporary_ = name;
        return true;
    }

    HANDLE openInPlace() const {
        return CreateFileW(wide_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    DWORD replace() {
        const DWORD code = writeWhole(*file_, text_);
        file_->close();
        if (code != ERROR_SUCCESS) {
            return code;
        }
        if (!MoveFileExW(temporary_.c_str(), wide_.c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            return GetLastError();
        }
        temporary_.clear();
        return ERROR_SUCCESS;
    }

    DWORD rewriteInPlace() const {
        const OpenFile file(openInPlace());
        if (!file) {
            return GetLastError();
        }
        const DWORD code = writeWhole(file, text_);
        if (code != ERROR_SUCCESS) {
            return code;
        }
        return SetEndOfFile(file.handle()) ? ERROR_SUCCESS : GetLastError();
    }

    void discardTemporary() {
        if (!temporary_.empty()) {
            file_->close();
            DeleteFileW(temporary_.c_str());
        }
    }

    std::string path_;
    std::wstring wide_;
    std::wstring temporary_; // empty: none on the disk
    std::unique_ptr<OpenFile> file_;
    std::string text_;
    bool closed_ = false;
};

} // namespace

std::unique_ptr<TextReader> openTextFileToRead(const std::string& path) {
    return std::make_unique<WholeTextReader>(path);
}

std::unique_ptr<TextWriter> createTextFileToWrite(const std::string& path) {
    return std::make_unique<WholeTextWriter>(path);
}

} // namespace veldara
