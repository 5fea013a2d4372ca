// Whether a printer can print the sheets of a poster as they are: its papers and the white that it
// leaves at each edge, against the poster's paper and margins.
#pragma once

#include "platform/measures.h"
#include "platform/print_system.h"
#include "platform/text/number_text.h"
#include "sheets/sheet_layout.h"

#include <string>
#include <vector>

namespace veldara {

// Lengths in points. An edge of the page where the printer leaves more white than the sheet does.
struct ShortEdge {
    Edge edge = edgeTop;
    double white = 0;   // that the printer leaves
    double missing = 0; // of the picture on every sheet
    bool operator==(const ShortEdge&) const = default;
};

struct PrintShortage {
    bool hasPaper = true;
    PrinterPaper nearest;         // without the paper
    std::vector<ShortEdge> edges; // in the order top, right, bottom, left
    bool none() const { return hasPaper && edges.empty(); }
};

// The paper of that size in either orientation; nothing when the printer has none.
const PrinterPaper* findPrinterPaper(const PrinterFacts& printer, double width, double height);

// Throws Error when the sheets themselves cannot be laid out.
PrintShortage printShortage(const SheetJob& job, const PrinterFacts& printer);

// Everything that is short, with what can be done about it: one text for one message.
std::string shortageText(const PrintShortage& shortage, const SheetJob& job,
                         const std::string& printer, NumberStyle style = {});

} // namespace veldara
