// The paper preference line: the whole choice of paper as one line of text, written and read back.
#pragma once

#include "paper/paper_catalogue.h"
#include "platform/text/number_text.h"

#include <string>

namespace veldara {

// The line of the current paper: fields between bars, numbers in the user's style.
std::string makePaperRegLine(const PaperTables& tables, NumberStyle style = {});

// Makes the line the current state of the tables. A line that is rejected (too short, unknown units
// or paper, a number that cannot be read, a tile outside the limits, which are in inches) builds
// the tables again; false is returned then.
bool setPrefFromRegLine(PaperTables& tables, const std::string& line, double leastInches,
                        double mostInches, NumberStyle style = {});

} // namespace veldara
