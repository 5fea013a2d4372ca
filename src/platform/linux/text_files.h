// Text files line by line: read with a bound on the length of a line, written whole or not at all.
#pragma once

#include "platform/file_system.h"
#include "platform/files/descriptor.h"
#include "platform/files/whole_file.h"

#include <cstddef>
#include <string>

namespace veldara {

// Lines end with a line feed, with or without a carriage return before it; the last one may have no
// end. Bytes come as they are. Keeps one block of the file in memory, whatever its length.
class LineReader : public TextReader {
  public:
    // A longer line is no text: readLine throws instead of filling the memory with it.
    static constexpr std::size_t longestLine = std::size_t{1} << 20U;

    explicit LineReader(const std::string& path); // throws Error

    bool atEndOfStream() override;
    std::string readLine() override; // throws Error, also at the end

  private:
    void fill();

    std::string path_;
    Descriptor file_;
    std::string block_;
    std::size_t place_ = 0;
    bool ended_ = false;
};

class LineWriter : public TextWriter {
  public:
    explicit LineWriter(const std::string& path); // throws Error

    void writeLine(const std::string& line) override;
    void close() override;

  private:
    WholeFile file_;
    std::string pending_;
    bool closed_ = false;
};

} // namespace veldara
