#include "platform/linux/text_files.h"

#include "platform/files/file_error.h"

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace veldara {

namespace {

constexpr std::size_t blockSize = 65536;

} // namespace

LineReader::LineReader(const std::string& path) : path_(path), file_(openRegularFile(path)) {
    if (!file_) {
        throw FileError("open", path_, errno);
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
        throw FileError("read", path_, code);
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

LineWriter::LineWriter(const std::string& path) : file_(path) {}

void LineWriter::writeLine(const std::string& line) {
    pending_ += line;
    pending_ += "\r\n";
    if (pending_.size() >= blockSize) {
        file_.write(std::exchange(pending_, {}));
    }
}

void LineWriter::close() {
    if (closed_) {
        return;
    }
    file_.write(std::exchange(pending_, {}));
    file_.commit();
    closed_ = true;
}

} // namespace veldara
