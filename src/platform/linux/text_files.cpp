#include "platform/linux/text_files.h"

#include "platform/error.h"

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace veldara {

namespace {

constexpr std::size_t blockSize = 65536;

[[noreturn]] void fail(const std::string& path, const char* verb, int code) {
    throw Error("The file \"" + path + "\" cannot be " + verb + ": " + reasonOf(code) + ".");
}

} // namespace

LineReader::LineReader(const std::string& path) : path_(path), file_(openRegularFile(path)) {
    if (!file_) {
        fail(path_, "opened", errno);
    }
}

void LineReader::fill() {
    if (ended_ || place_ < block_.size()) {
        return;
    }
    block_.resize(blockSize);
    place_ = 0;
    ssize_t count = 0;
    do {
        count = ::read(file_.number(), block_.data(), block_.size());
    } while (count < 0 && errno == EINTR);
    const int code = errno;
    block_.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    ended_ = block_.empty();
    if (count < 0) {
        fail(path_, "read", code);
    }
}

bool LineReader::atEndOfStream() {
    fill();
    return ended_;
}

std::string LineReader::readLine() {
    if (atEndOfStream()) {
        throw Error("The file \"" + path_ + "\" has no more lines.");
    }
    std::string line;
    bool whole = false;
    while (!whole && !atEndOfStream()) {
        const std::size_t end = block_.find('\n', place_);
        whole = end != std::string::npos;
        const std::size_t length = (whole ? end : block_.size()) - place_;
        if (line.size() + length > longestLine) {
            throw Error("The file \"" + path_ + "\" has a line that is too long for a text.");
        }
        line.append(block_, place_, length);
        place_ += length + (whole ? 1 : 0);
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

LineWriter::LineWriter(const std::string& path) : path_(path), file_(path) {
    if (const int code = file_.open(); code != 0) {
        fail(path_, "created", code);
    }
}

void LineWriter::writeLine(const std::string& line) {
    pending_ += line;
    pending_ += "\r\n";
    if (pending_.size() >= blockSize) {
        const std::string block = std::exchange(pending_, {});
        if (const int code = file_.write(block); code != 0) {
            fail(path_, "written", code);
        }
    }
}

void LineWriter::close() {
    if (closed_) {
        return;
    }
    int code = file_.write(pending_);
    pending_.clear();
    if (code == 0) {
        code = file_.finish();
    }
    if (code != 0) {
        fail(path_, "written", code);
    }
    closed_ = true;
}

} // namespace veldara
