#include "sheets/assembled_poster.h"
#include "sheets/sheet_jobs.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using testing::a4Job;
using testing::itemsOf;

constexpr double cellWidth = 190 * pointsPerMillimetre;
constexpr double cellHeight = 277 * pointsPerMillimetre;

// Where lines run all the way across or down, without their halos.
std::vector<double> wholeLines(const SheetPage& page, bool upright, bool dashed) {
    std::vector<double> places;
    for (const PageLine& line : itemsOf<PageLine>(page.items)) {
        const bool isHalo = line.colour == PageColour{255, 255, 255};
        const bool isWhole =
            upright ? line.from.y == 0 && line.to.y == page.height && line.from.x == line.to.x
                    : line.from.x == 0 && line.to.x == page.width && line.from.y == line.to.y;
        if (!isHalo && isWhole && (line.dash > 0) == dashed) {
            places.push_back(upright ? line.from.x : line.from.y);
        }
    }
    return places;
}

void expectNear(const std::vector<double>& found, const std::vector<double>& wanted) {
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_NEAR(found[i], wanted[i], 1e-6);
    }
}

TEST(AssembledPoster, HasTheWholeCropAndASeamBetweenTheSheets) {
    const SheetJob job = a4Job();
    const SheetPage page = assembledPoster(job, 0);
    EXPECT_NEAR(page.width, 3 * cellWidth, 1e-6);
    EXPECT_NEAR(page.height, 2 * cellHeight, 1e-6);
    const std::vector<PagePhoto> photos = itemsOf<PagePhoto>(page.items);
    ASSERT_EQ(photos.size(), 1U);
    const CropRect crop = cropRect(job.layout);
    EXPECT_EQ(photos[0].source.width(), crop.width);
    EXPECT_EQ(photos[0].source.height(), crop.height);
    EXPECT_EQ(photos[0].target, (PageRect{0, 0, page.width, page.height}));
    expectNear(wholeLines(page, true, false), {cellWidth, 2 * cellWidth});
    expectNear(wholeLines(page, false, false), {cellHeight});
    EXPECT_TRUE(wholeLines(page, true, true).empty());
    EXPECT_TRUE(itemsOf<PageShape>(page.items).empty());
}

TEST(AssembledPoster, DashedLinesEndTheStripsUnderTheNextSheet) {
    SheetJob job = a4Job();
    const double strip = 5 * pointsPerMillimetre;
    job.choices.overlap = strip;
    const SheetPage page = assembledPoster(job, 0);
    expectNear(wholeLines(page, true, true), {cellWidth + strip, 2 * cellWidth + strip});
    expectNear(wholeLines(page, false, true), {cellHeight + strip});
}

TEST(AssembledPoster, FramesTheSheetThatIsShown) {
    const SheetPage page = assembledPoster(a4Job(), 6);
    const std::vector<PageShape> frames = itemsOf<PageShape>(page.items);
    ASSERT_EQ(frames.size(), 1U);
    ASSERT_EQ(frames[0].points.size(), 4U);
    EXPECT_GT(frames[0].outline, 0);
    const double in = frames[0].points[0].x - 2 * cellWidth;
    EXPECT_GT(in, 0);
    EXPECT_LT(in, cellWidth / 10);
    expectNear({frames[0].points[0].y, frames[0].points[2].x, frames[0].points[2].y},
               {cellHeight + in, 3 * cellWidth - in, 2 * cellHeight - in});
}

TEST(AssembledPoster, CrossesOutTheSheetsThatAreLeftOut) {
    SheetJob job = a4Job();
    job.choices.sheets = {1, 2, 3, 4, 5};
    std::vector<PageLine> slanting;
    for (const PageLine& line : itemsOf<PageLine>(assembledPoster(job, 0).items)) {
        if (line.from.x != line.to.x && line.from.y != line.to.y) {
            slanting.push_back(line);
        }
    }
    ASSERT_EQ(slanting.size(), 4U) << "two, each on a halo";
    for (const PageLine& line : slanting) {
        expectNear({line.from.x, line.to.x}, {2 * cellWidth, 3 * cellWidth});
        expectNear({std::min(line.from.y, line.to.y), std::max(line.from.y, line.to.y)},
                   {cellHeight, 2 * cellHeight});
    }
}

} // namespace
} // namespace veldara
