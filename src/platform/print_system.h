// The printers of the system: its own print dialog, what the chosen printer can do, and the way of
// the sheets to it. Lengths are points (1/72 inch).
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

class Image;

struct PrinterPaper {
    std::string name;
    double width = 0;
    double height = 0;
    std::array<double, 4> white{}; // that the printer leaves: top, right, bottom, left
};

struct PrinterFacts {
    std::string name;
    std::vector<PrinterPaper> papers; // empty: the printer does not say
    bool takesCustomSizes = false;
};

struct SheetRange {
    int first = 1;
    int last = 1;
    bool operator==(const SheetRange&) const = default;
};

// What the print dialog begins with.
struct PrintRequest {
    std::string title;      // of the job
    std::string printer;    // chosen at first; empty: the system's default
    std::string paperName;  //
    double paperWidth = 0;  // as the pages are, which may be wider than high
    double paperHeight = 0; //
    int lowestSheet = 1;    // numbers for from-to
    int highestSheet = 1;   //
    bool operator==(const PrintRequest&) const = default;
};

struct PrintChoice {
    PrinterFacts printer;
    std::vector<SheetRange> ranges; // empty: everything
};

// Thrown out of a job that the person has canceled.
struct PrintCanceled {};

// A part of a page in dots of the printer, from the page's top left corner.
struct PageBand {
    double dotsPerInch = 0;
    int firstRow = 0;
    int rows = 0;
};

// The pages of a job. A print system takes them in one of two forms: as a document, or drawn. All
// calls on the window thread; each may throw Error or PrintCanceled.
class PrintSource {
  public:
    virtual ~PrintSource() = default;
    virtual std::string title() const = 0;
    virtual std::string paperName() const = 0;
    virtual double pageWidth() const = 0;
    virtual double pageHeight() const = 0;
    virtual std::size_t pages() const = 0;

    // All pages as one PDF, each at its true size.
    virtual void writeDocument(const std::filesystem::path& file) = 0;

    // To be called before each page that is drawn, counted from 0: shows how far it is.
    virtual void beginPage(std::size_t page) = 0;
    // As wide as the page, and as many rows as are asked for.
    virtual Image drawBand(std::size_t page, const PageBand& band) = 0;
};

class PrintSystem {
  public:
    virtual ~PrintSystem() = default;

    virtual bool hasPrinters() = 0;

    // The system's dialog; nothing when it was canceled. What was chosen, with the driver's own
    // settings, is what the next job is printed with and what the next dialog begins with. Throws
    // Error when the printer cannot be asked what it can do.
    virtual std::optional<PrintChoice> choosePrinter(const PrintRequest& request) = 0;

    // Prints on the chosen printer: true to size, one-sided, one page a sheet, on the pages' own
    // paper. Returns when the system has taken the whole job. Throws Error or PrintCanceled; then
    // nothing of the job stays with the system that it could be kept from.
    virtual void print(PrintSource& source) = 0;

    // Raised on the window thread when a job fails that the system had taken: the printer's name,
    // and what the system says of the reason.
    std::function<void(const std::string& printer, const std::string& reason)> onStopped;
};

} // namespace veldara
