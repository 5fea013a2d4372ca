#include "printing/print_messages.h"

namespace veldara {
namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

} // namespace

std::string missingPaperText(const std::string& paper, const std::string& size,
                             const std::string& nearest, const std::string& nearestSize) {
    // Without quotation marks: some names have inch marks.
    return "Your printer does not have the paper " + paper + " (" + size +
           "); the nearest that it has is " + nearest + " (" + nearestSize + ").";
}

std::string shortEdgeText(const std::string& white, const std::string& edge,
                          const std::string& missing) {
    return "Your printer leaves " + white + " white " + edge + "; " + missing +
           " of every sheet would be missing.";
}

std::string shortageSummary(const std::string& printer, const std::vector<std::string>& faults,
                            bool paperMissing, bool edgesShort) {
    std::string text = "The printer " + quoted(printer) + " cannot print these sheets as they are.";
    text += "\n";
    for (const std::string& fault : faults) {
        text += "\n" + fault;
    }
    text += "\n";
    if (paperMissing) {
        text += "\nYou can choose a paper that the printer has, with \"Edit\" in step 2.";
    }
    if (edgesShort) {
        text += "\nYou can set wider margins for the paper, or choose borderless printing in the "
                "settings of the printer's driver together with edge calibration.";
    }
    return text + "\nOr you can go on.  Do you want to print the sheets as they are?";
}

Message shortageQuestion(const std::string& text) {
    return {text, "Print Poster", MessageIcon::exclamation, MessageButtons::yesNo, Answer::no};
}

Message noPrinterQuestion() {
    return {"There is no printer on this computer.  Do you want to save the poster as a PDF "
            "instead?",
            "Print Poster", MessageIcon::question, MessageButtons::yesNo};
}

Message noPrinterForTestImageMessage() {
    return {"There is no printer on this computer.  Do you want to save the test image as a file "
            "instead?",
            "Print Test Image", MessageIcon::question, MessageButtons::yesNo};
}

Message noSuchSheetsMessage() {
    return criticalMessage(
        "Problem", "None of the sheets that are wanted is among those that you chose in the print "
                   "dialog.  Nothing was printed.");
}

Message notPrintedMessage(const std::string& reason) {
    return criticalMessage("Problem", "The sheets could not be printed: " + reason);
}

Message printerStoppedMessage(const std::string& printer, const std::string& reason) {
    return criticalMessage(
        "Problem", "The printer " + quoted(printer) + " has stopped before all sheets were " +
                       "printed: " + reason +
                       "  The poster is as it was: print the sheets that are missing once more.");
}

std::string printingText(std::size_t sheet, std::size_t sheets) {
    return "Printing sheet " + std::to_string(sheet) + " of " + std::to_string(sheets);
}

std::string handingOverText() {
    return "Handing the sheets to the printer";
}

} // namespace veldara
