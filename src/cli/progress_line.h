// The progress bar on a terminal.
#pragma once

#include "cli/console.h"

#include <cstddef>
#include <string>

namespace veldara {

// "[=====>     ]  3/6  50%", no longer than the columns allow.
std::string progressText(std::size_t done, std::size_t count, int columns);

// Draws only on a terminal; the destructor clears the line.
class ProgressLine {
  public:
    ProgressLine(Console& console, bool wanted);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    void show(std::size_t done, std::size_t count);

  private:
    Console& console_;
    bool shown_;
    std::size_t drawn_ = 0; // columns in use
};

} // namespace veldara
