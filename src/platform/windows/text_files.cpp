#include "platform/windows/text_files.h"

#include "platform/error.h"
#include "platform/text/characters.h"
#include "platform/windows/wide_text.h"

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

// A name that nobody can guess, in the same folder.
std::wstring temporaryNameBeside(const std::wstring& path) {
    constexpr std::wstring_view digits = L"0123456789abcdefghijklmnopqrstuv";
    std::random_device chance;
    const std::size_t end = path.find_last_of(L"\\/:");
    std::wstring name = path.substr(0, end == std::wstring::npos ? 0 : end + 1) + L".veldara-";
    for (int i = 0; i < 16; ++i) {
        name += digits[chance() % digits.size()];
    }
    return name + L".tmp";
}

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
    explicit CollectingWriter(std::string path) : path_(std::move(path)), wide_(wideText(path_)) {}

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
    const std::wstring& wide() const { return wide_; }
    const std::string& text() const { return text_; }

  private:
    virtual DWORD store() = 0; // the system's code, 0 for success

    std::string path_;
    std::wstring wide_;
    std::string text_;
    bool closed_ = false;
};

class ReplacingWriter : public CollectingWriter {
  public:
    explicit ReplacingWriter(const std::string& path)
        : CollectingWriter(path), temporary_(temporaryNameBeside(wide())),
          file_(CreateFileW(temporary_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr)),
          code_(file_ ? ERROR_SUCCESS : GetLastError()) {}
    ReplacingWriter(const ReplacingWriter&) = delete;
    ReplacingWriter& operator=(const ReplacingWriter&) = delete;
    ~ReplacingWriter() override {
        if (code_ == ERROR_SUCCESS && !inPlace_) {
            file_.close();
            DeleteFileW(temporary_.c_str());
        }
    }

    DWORD code() const { return code_; } // of opening; 0 for success

  private:
    DWORD store() override {
        const DWORD code = writeWhole(file_, text());
        file_.close();
        if (code != ERROR_SUCCESS) {
            return code;
        }
        // Who may write the old file may write the new one.
        inPlace_ = ReplaceFileW(wide().c_str(), temporary_.c_str(), nullptr,
                                REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != FALSE;
        if (!inPlace_ && GetLastError() == ERROR_FILE_NOT_FOUND) {
            inPlace_ = MoveFileExW(temporary_.c_str(), wide().c_str(),
                                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
        }
        return inPlace_ ? ERROR_SUCCESS : GetLastError();
    }

    std::wstring temporary_;
    OpenFile file_;
    DWORD code_;
    bool inPlace_ = false;
};

class RewritingWriter : public CollectingWriter {
  public:
    explicit RewritingWriter(const std::string& path) : CollectingWriter(path) {
        // Asked here so that a file that can never be written is refused before the first line.
        const OpenFile file(open());
        if (!file) {
            fail("written", path, GetLastError());
        }
    }

  private:
    HANDLE open() const {
        return CreateFileW(wide().c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    DWORD store() override {
        const OpenFile file(open());
        if (!file) {
            return GetLastError();
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
    const DWORD attributes = GetFileAttributesW(wideText(path).c_str());
    constexpr DWORD unwritable = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & unwritable) != 0) {
        fail("written", path, ERROR_ACCESS_DENIED);
    }
    std::unique_ptr<ReplacingWriter> writer = std::make_unique<ReplacingWriter>(path);
    if (writer->code() == ERROR_SUCCESS) {
        return writer;
    }
    if (!exists) {
        fail("written", path, writer->code());
    }
    return rewriteTextFile(path);
}

std::unique_ptr<TextWriter> rewriteTextFile(const std::string& path) {
    return std::make_unique<RewritingWriter>(path);
}

} // namespace veldara
