// What is said before, while and after a poster is printed.
#pragma once

#include "platform/dialogs.h"

#include <string>
#include <vector>

namespace veldara {

std::string missingPaperText(const std::string& paper, const std::string& size,
                             const std::string& nearest, const std::string& nearestSize);
std::string shortEdgeText(const std::string& white, const std::string& edge,
                          const std::string& missing);
// The faults, one a line, and the ways out of them.
std::string shortageSummary(const std::string& printer, const std::vector<std::string>& faults,
                            bool paperMissing, bool edgesShort);

Message shortageQuestion(const std::string& text);
Message noPrinterQuestion();
Message noPrinterForTestImageMessage();
Message noSuchSheetsMessage();
Message notPrintedMessage(const std::string& reason);
Message printerStoppedMessage(const std::string& printer, const std::string& reason);
std::string printingText(std::size_t sheet, std::size_t sheets);
std::string handingOverText();

} // namespace veldara
