// One line of a terminal that fills as tiles are written.
#pragma once

#include "cli/console.h"

#include <cstddef>
#include <string>

namespace veldara {

// "[=====>     ]  3/6  50%", no longer than the columns allow.
std::string progressLine(std::size_t done, std::size_t count, int columns);

// Draws on a terminal and nowhere else; the line is gone when the bar is.
class ProgressBar {
  public:
    ProgressBar(Console& console, bool wanted);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    void show(std::size_t done, std::size_t count);

  private:
    Console& console_;
    bool shown_;
    std::size_t drawn_ = 0; // columns that hold something
};

} // namespace veldara
