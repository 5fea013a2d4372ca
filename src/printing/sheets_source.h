// The sheets as a print system takes them: as a document, or drawn page by page.
#pragma once

#include "platform/print_system.h"
#include "printing/poster_printing.h"
#include "sheets/sheet_page.h"

#include <vector>

namespace veldara {

class SheetsSource : public PrintSource {
  public:
    // Throws Error when the sheets cannot be laid out.
    SheetsSource(const SheetsToPrint& sheets, Platform& platform, frmMsg& progress);

    std::string title() const override { return sheets_.title; }
    std::string paperName() const override { return sheets_.job.paperName; }
    double pageWidth() const override { return sheets_.job.paperWidth; }
    double pageHeight() const override { return sheets_.job.paperHeight; }
    std::size_t pages() const override { return pages_.size(); }
    void writeDocument(const std::filesystem::path& file) override;
    void beginPage(std::size_t page) override;
    Image drawBand(std::size_t page, const PageBand& band) override;

  private:
    const SheetsToPrint& sheets_;
    Platform& platform_;
    frmMsg& progress_;
    std::vector<SheetPage> pages_;
};

} // namespace veldara
