// A print system without paper: its printers, its dialog and its failures are what the test says.
#pragma once

#include "platform/error.h"
#include "platform/image/image.h"
#include "platform/print_system.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace veldara::test {

class FakePrintSystem : public PrintSystem {
  public:
    enum class Form { document, drawn };

    bool printersThere = true;
    Form form = Form::document;
    std::optional<PrintChoice> choice; // of the dialog; nothing: Cancel
    std::string dialogFailure;         // thrown by the dialog
    std::string failure;               // thrown once the sheets are there, as a printer refuses
    std::filesystem::path folder;      // for the document
    double dotsPerInch = 36;           // of what is drawn
    int bandRows = 100;
    std::function<void(std::size_t page)> afterPage; // that was drawn

    std::vector<PrintRequest> requests;
    std::vector<std::string> printed;      // titles
    std::string document;                  // the bytes of the last one
    std::vector<std::vector<Image>> drawn; // bands of each page
    std::string paper;
    double width = 0;
    double height = 0;

    bool hasPrinters() override { return printersThere; }

    std::optional<PrintChoice> choosePrinter(const PrintRequest& request) override {
        requests.push_back(request);
        if (!dialogFailure.empty()) {
            throw Error(dialogFailure);
        }
        return choice;
    }

    void print(PrintSource& source) override {
        paper = source.paperName();
        width = source.pageWidth();
        height = source.pageHeight();
        if (form == Form::document) {
            takeDocument(source);
        } else {
            takePages(source);
        }
        if (!failure.empty()) {
            throw Error(failure);
        }
        printed.push_back(source.title());
    }

  private:
    void takeDocument(PrintSource& source) {
        const std::filesystem::path file = folder / "job.pdf";
        source.writeDocument(file);
        std::ifstream stream(file, std::ios::binary);
        document.assign(std::istreambuf_iterator<char>(stream), {});
    }

    void takePages(PrintSource& source) {
        drawn.clear();
        const int rows = static_cast<int>(std::lround(source.pageHeight() / 72 * dotsPerInch));
        for (std::size_t page = 0; page < source.pages(); ++page) {
            source.beginPage(page);
            drawn.emplace_back();
            for (int row = 0; row < rows; row += bandRows) {
                drawn.back().push_back(source.drawBand(
                    page, {dotsPerInch, row, row + bandRows < rows ? bandRows : rows - row}));
            }
            if (afterPage) {
                afterPage(page);
            }
        }
    }
};

} // namespace veldara::test
