#include "image/files.h"
#include "platform/error.h"
#include "platform/image/turn.h"
#include "sheets/assembled_poster.h"
#include "sheets/page_font.h"
#include "sheets/page_picture.h"
#include "sheets/sheet_jobs.h"
#include "sheets/sheet_marks.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace veldara {
namespace {

// Left half red, right half blue.
PhotoPicture halves(const SheetJob& job) {
    Image image = Image::filled(200, 100, 255, 0, 0);
    for (int y = 0; y < 100; ++y) {
        for (int x = 100; x < 200; ++x) {
            image.row(y)[3 * x] = 0;
            image.row(y)[3 * x + 2] = 255;
        }
    }
    return {std::make_shared<const Image>(std::move(image)), job.layout.photoWidth,
            job.layout.photoHeight};
}

PageColour colourAt(const Image& image, double x, double y) {
    const std::uint8_t* pixel = image.row(static_cast<int>(y)) + 3 * static_cast<int>(x);
    return {pixel[0], pixel[1], pixel[2]};
}

constexpr PageColour red{255, 0, 0};
constexpr PageColour blue{0, 0, 255};
constexpr PageColour white{255, 255, 255};

TEST(PagePicture, ShowsTheSheetTrueToScale) {
    const SheetJob job = testing::a4Job();
    const Image page = drawPage(sheetPage(job, 1), halves(job), 210, 297);
    EXPECT_EQ(page.width(), 210);
    EXPECT_EQ(page.height(), 297);
    EXPECT_EQ(colourAt(page, 100, 150), red);
    EXPECT_EQ(colourAt(page, 12, 12), red);
    EXPECT_EQ(colourAt(page, 205, 150), white) << "the margin";
    EXPECT_EQ(colourAt(drawPage(sheetPage(job, 3), halves(job), 210, 297), 100, 150), blue);
}

TEST(PagePicture, TurnsTheSheetAsItIsPrinted) {
    SheetJob job = testing::turnedJob();
    job.layout.tilesWide = 1;
    job.layout.tilesHigh = 1;
    const Image page = drawPage(sheetPage(job, 1), halves(job), 210, 297);
    EXPECT_EQ(colourAt(page, 100, 50), blue) << "the photo's right side is the page's top";
    EXPECT_EQ(colourAt(page, 100, 250), red);
}

// The last column, or from below the last row, with something that is not white.
int endOfInk(const Image& page, bool across) {
    int end = 0;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x) {
            if (colourAt(page, x, y) != white) {
                end = std::max(end, across ? x + 1 : page.height() - y);
            }
        }
    }
    return end;
}

TEST(PagePicture, SmallTextIsAsLongAsItIsPrinted) {
    const std::string text = "Lake at sunrise.jpg  row 1 of 3, column 1 of 3  sheet 1";
    constexpr double points = 500; // of the page's side
    constexpr double size = 8;
    for (const int side : {250, 330, 417, 500, 1000}) {
        const double length = pageTextWidth(text, size) * side / points;
        for (const bool across : {true, false}) {
            SheetPage page;
            page.width = points;
            page.height = points;
            page.items.push_back(
                PageText{across ? PagePoint{0, points / 2} : PagePoint{points / 2, points},
                         size,
                         {},
                         text,
                         across ? TextDirection::across : TextDirection::up});
            EXPECT_NEAR(endOfInk(drawPage(page, {}, side, side), across), length, 0.02 * length + 1)
                << side << (across ? " across" : " up");
        }
    }
}

TEST(PagePicture, FitsIntoItsBox) {
    const SheetJob job = testing::a4Job();
    const Image page = drawPage(sheetPage(job, 1), halves(job), 1000, 297);
    EXPECT_EQ(page.height(), 297);
    EXPECT_EQ(page.width(), 210);
    EXPECT_THROW(drawPage(sheetPage(job, 1), halves(job), 0, 10), Error);
}

TEST(PagePicture, WithoutAPhotoItIsGrey) {
    const SheetJob job = testing::a4Job();
    const Image page = drawPage(sheetPage(job, 1), {nullptr, 3000, 2000}, 210, 297);
    EXPECT_EQ(colourAt(page, 100, 150), (PageColour{200, 200, 200}));
    const PhotoPicture empty{std::make_shared<const Image>(), 3000, 2000};
    EXPECT_EQ(colourAt(drawPage(sheetPage(job, 1), empty, 210, 297), 100, 150),
              (PageColour{200, 200, 200}));
}

TEST(PagePicture, PutsEveryPixelInItsPlace) {
    const auto photo = std::make_shared<const Image>(test::photo(120, 80));
    const auto drawn = [&](bool turned, double width, double height) {
        const SheetPage page{
            width, height, 1, {PagePhoto{{0, 0, 120, 80}, {0, 0, width, height}, turned}}};
        return drawPage(page, {photo, 120, 80}, static_cast<int>(width), static_cast<int>(height));
    };
    EXPECT_TRUE(test::same(drawn(false, 120, 80), *photo));
    EXPECT_TRUE(test::same(drawn(true, 80, 120), turned(photo->view(), Turn::counterClockwise)));
}

// A page of 100 points with one black line, a pixel a point.
Image pageWith(const PageLine& line) {
    return drawPage({100, 100, 1, {line}}, {}, 100, 100);
}

TEST(PagePicture, LinesAreAsWideAsTheyArePrinted) {
    const PageColour black{0, 0, 0};
    const Image wide = pageWith({{0, 50}, {100, 50}, 10, black, 0});
    EXPECT_EQ(colourAt(wide, 50, 44), white);
    EXPECT_EQ(colourAt(wide, 50, 45), black);
    EXPECT_EQ(colourAt(wide, 50, 54), black);
    EXPECT_EQ(colourAt(wide, 50, 55), white);
    const Image hairline = pageWith({{50.5, 0}, {50.5, 100}, 0.1, black, 0});
    EXPECT_LT(colourAt(hairline, 50, 50).red, 128) << "it would fade away";
    EXPECT_EQ(colourAt(hairline, 51, 50), white);
}

TEST(PagePicture, ShapesAreFilledToTheirSlantingEdges) {
    const PageColour black{0, 0, 0};
    const Image triangle = drawPage(
        {100, 100, 1, {PageShape{{{20, 30}, {80, 30}, {20, 90}}, black, 0}}}, {}, 100, 100);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            if (x + y == 109) { // the edge runs through it
                continue;
            }
            const bool inside = x >= 20 && y >= 30 && x + y < 109;
            ASSERT_EQ(colourAt(triangle, x, y), inside ? black : white) << x << ", " << y;
        }
    }
}

TEST(PagePicture, DashesAreAsLongAsTheGapsBetweenThem) {
    const PageColour black{0, 0, 0};
    const Image dashed = pageWith({{0, 50}, {50, 50}, 4, black, 10});
    for (const int x : {1, 8, 21, 28, 41, 48}) {
        EXPECT_EQ(colourAt(dashed, x, 50), black) << x;
    }
    for (const int x : {11, 18, 31, 38, 51, 58}) {
        EXPECT_EQ(colourAt(dashed, x, 50), white) << x;
    }
}

TEST(AssembledPoster, HasThePostersShapeAndMarksTheSheet) {
    SheetJob job = testing::a4Job();
    job.choices.overlap = 8 * pointsPerMillimetre;
    const SheetPage poster = assembledPoster(job, 2);
    EXPECT_NEAR(poster.width / poster.height, posterRatio(job.layout), 1e-9);
    const std::vector<PageShape> shapes = testing::itemsOf<PageShape>(poster.items);
    ASSERT_EQ(shapes.size(), 1U);
    EXPECT_GT(shapes[0].points[0].x, poster.width / 3);
    EXPECT_LT(shapes[0].points[2].x, poster.width * 2 / 3);
    int dashed = 0;
    for (const PageLine& line : testing::itemsOf<PageLine>(poster.items)) {
        dashed += line.dash > 0 ? 1 : 0;
    }
    EXPECT_EQ(dashed, 3) << "two strips across, one down";
}

} // namespace
} // namespace veldara
