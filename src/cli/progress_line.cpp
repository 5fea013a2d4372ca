#include "cli/progress_line.h"

#include <algorithm>

namespace veldara {

std::string progressText(std::size_t done, std::size_t count, int columns) {
    const std::size_t percent = count == 0 ? 100 : done * 100 / count;
    const std::string total = std::to_string(count);
    std::string number = std::to_string(done);
    number.insert(0, total.size() - std::min(total.size(), number.size()), ' ');
    std::string share = std::to_string(percent);
    share.insert(0, 3 - std::min<std::size_t>(3, share.size()), ' ');
    const std::string figures = " " + number + "/" + total + " " + share + "%";

    // The last column stays free: some terminals wrap the line when it is used.
    const int room = columns - 1 - static_cast<int>(figures.size()) - 2;
    if (room < 4) {
        return figures.substr(1);
    }
    const auto width = static_cast<std::size_t>(std::min(room, 50));
    const std::size_t filled = width * percent / 100;
    std::string bar(filled, '=');
    if (filled < width) {
        bar += '>';
        bar.resize(width, ' ');
    }
    return "[" + bar + "]" + figures;
}

ProgressLine::ProgressLine(Console& console, bool wanted)
    : console_(console), shown_(wanted && console.canDraw()) {}

ProgressLine::~ProgressLine() {
    if (drawn_ > 0) {
        console_.complain("\r" + std::string(drawn_, ' ') + "\r");
    }
}

void ProgressLine::show(std::size_t done, std::size_t count) {
    if (!shown_) {
        return;
    }
    std::string line = progressText(done, count, console_.columns());
    const std::size_t length = line.size();
    line.resize(std::max(length, drawn_), ' ');
    drawn_ = length;
    console_.complain("\r" + line);
}

} // namespace veldara
