// Sheets as a printer that takes dots gets them, on a bitmap of its resolution: the same code that
// draws on the printer.
#include "e2e/driver.h"
#include "gui/page_drawing.h"
#include "platform/image/image.h"
#include "sheets/page_picture.h"
#include "sheets/poster_pdf.h"
#include "sheets/sheet_jobs.h"

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

namespace veldara::test {
namespace {

constexpr double printerDots = 600;

class DrawnSheets : public PrintSource {
  public:
    DrawnSheets() {
        job_.layout.photoWidth = 300;
        job_.layout.photoHeight = 200;
        Image picture = Image::filled(300, 200, 0, 0, 0);
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 300; ++x) {
                std::uint8_t* pixel = picture.row(y) + std::ptrdiff_t{3} * x;
                pixel[0] = static_cast<std::uint8_t>(x);
                pixel[1] = static_cast<std::uint8_t>(y);
                pixel[2] = static_cast<std::uint8_t>(x * y);
            }
        }
        picture_ = std::make_shared<const Image>(std::move(picture));
        pages_ = posterPages(job_);
    }
    std::string title() const override { return "lake.jpg"; }
    std::string paperName() const override { return job_.paperName; }
    double pageWidth() const override { return job_.paperWidth; }
    double pageHeight() const override { return job_.paperHeight; }
    std::size_t pages() const override { return pages_.size(); }
    void writeDocument(const std::filesystem::path&) override {}
    void beginPage(std::size_t) override {}
    Image drawBand(std::size_t page, const PageBand& band) override {
        Image drawn = drawPageBand(pages_.at(page), {picture_, 300, 200}, band.dotsPerInch,
                                   band.firstRow, band.rows);
        most = std::max(most, 3 * static_cast<std::size_t>(drawn.width()) *
                                  static_cast<std::size_t>(drawn.height()));
        return drawn;
    }
    std::size_t most = 0; // bytes of a band

  private:
    SheetJob job_ = veldara::testing::a4Job();
    std::shared_ptr<const Image> picture_;
    std::vector<SheetPage> pages_;
};

wxBitmap printed(DrawnSheets& sheets, std::size_t page, const PrinterDots& dots, int width,
                 int height) {
    wxBitmap paper;
    paper.Create(width, height, 24);
    {
        wxMemoryDC device(paper);
        device.SetBackground(*wxWHITE_BRUSH);
        device.Clear();
        drawPageOn(device, sheets, page, dots);
    }
    return paper;
}

// The printer's area begins 100 dots from the left and 70 from the top of the paper.
void expectSameAsPage(DrawnSheets& sheets, std::size_t page) {
    const PrinterDots dots{printerDots, printerDots, 100, 70};
    const int width = 4961 - 2 * dots.offsetAcross;
    const int height = 7016 - 2 * dots.offsetDown;
    const wxBitmap paper = printed(sheets, page, dots, width, height);
    constexpr int strip = 500;
    for (int top = 0; top < height; top += strip) {
        const int rows = std::min(strip, height - top);
        const wxImage found = paper.GetSubBitmap(wxRect(0, top, width, rows)).ConvertToImage();
        const Image wanted = sheets.drawBand(page, {printerDots, top + dots.offsetDown, rows});
        for (int y = 0; y < rows; ++y) {
            const std::uint8_t* row = wanted.row(y) + std::ptrdiff_t{3} * dots.offsetAcross;
            ASSERT_TRUE(std::equal(row, row + std::ptrdiff_t{3} * width,
                                   found.GetData() + std::ptrdiff_t{3} * width * y))
                << "row " << top + y << " of page " << page;
        }
    }
}

TEST(PageDrawing, APageOf600DotsPerInchIsTheDescribedPage) {
    Driver user;
    user.onWindowThread([] {
        DrawnSheets sheets;
        expectSameAsPage(sheets, 0); // with texts and lines
        expectSameAsPage(sheets, 2);
    });
}

TEST(PageDrawing, DotsThatAreTwiceAsDenseDownShowEachRowTwice) {
    Driver user;
    user.onWindowThread([] {
        DrawnSheets sheets;
        constexpr double across = printerDots / 2;
        constexpr int width = 2480;
        constexpr int height = 7014;
        const wxImage found =
            printed(sheets, 2, {across, printerDots, 0, 0}, width, height).ConvertToImage();
        const Image wanted = sheets.drawBand(2, {across, 0, height / 2});
        for (int y = 0; y < height; ++y) {
            const std::uint8_t* row = wanted.row(y / 2);
            ASSERT_TRUE(std::equal(row, row + std::ptrdiff_t{3} * width,
                                   found.GetData() + std::ptrdiff_t{3} * width * y))
                << "row " << y;
        }
    });
}

TEST(PageDrawing, ABandIsAllThatIsInMemory) {
    Driver user;
    user.onWindowThread([] {
        DrawnSheets sheets;
        wxBitmap paper;
        paper.Create(100, 100, 24);
        wxMemoryDC device(paper);
        drawPageOn(device, sheets, 1, {printerDots, printerDots, 0, 0});
        EXPECT_LE(sheets.most, bandBytes);
        EXPECT_GT(sheets.most, bandBytes / 2);
    });
}

} // namespace
} // namespace veldara::test
