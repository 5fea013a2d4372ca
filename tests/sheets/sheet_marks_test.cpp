#include "sheets/page_font.h"
#include "sheets/sheet_jobs.h"
#include "sheets/sheet_marks.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using testing::a4Job;
using testing::borderlessJob;
using testing::itemsOf;
using testing::turnedJob;

constexpr double millimetre = pointsPerMillimetre;

// The box that a line's ink fills.
PageRect inkOf(const PageLine& line) {
    const double half = line.width / 2;
    const bool lying = line.from.y == line.to.y;
    return {std::min(line.from.x, line.to.x) - (lying ? 0 : half),
            std::min(line.from.y, line.to.y) - (lying ? half : 0),
            std::max(line.from.x, line.to.x) + (lying ? 0 : half),
            std::max(line.from.y, line.to.y) + (lying ? half : 0)};
}

bool overlaps(const PageRect& one, const PageRect& other) {
    constexpr double nothing = 1e-9;
    return one.left < other.right - nothing && one.right > other.left + nothing &&
           one.top < other.bottom - nothing && one.bottom > other.top + nothing;
}

TEST(SheetMarks, NothingIsDrawnInTheOwnArea) {
    for (SheetJob job : {a4Job(), turnedJob(), borderlessJob()}) {
        for (const SheetMarks marks : {SheetMarks::corners, SheetMarks::lines}) {
            job.choices.marks = marks;
            for (int number = 1; number <= 6; ++number) {
                const SheetPlace place = sheetPlace(job, number);
                std::vector<PageItem> items = markItems(job, place);
                const std::vector<PageItem> label = labelItems(job, place);
                items.insert(items.end(), label.begin(), label.end());
                for (const PageLine& line : itemsOf<PageLine>(items)) {
                    EXPECT_FALSE(overlaps(inkOf(line), place.own)) << "sheet " << number;
                }
                for (const PageShape& shape : itemsOf<PageShape>(items)) {
                    for (const PagePoint& point : shape.points) {
                        EXPECT_FALSE(overlaps({point.x, point.y, point.x, point.y}, place.own));
                    }
                }
            }
        }
    }
}

TEST(SheetMarks, CornersAreOneMillimetreAwayAndFiveLong) {
    const SheetJob job = a4Job();
    const SheetPlace place = sheetPlace(job, 1);
    const std::vector<PageLine> lines = itemsOf<PageLine>(markItems(job, place));
    ASSERT_EQ(lines.size(), 16U); // two at each corner, each dark upon light
    EXPECT_NEAR(lines[1].from.x, 9 * millimetre, 1e-9);
    EXPECT_NEAR(lines[1].to.x, 4 * millimetre, 1e-9);
    EXPECT_EQ(lines[1].from.y, place.own.top);
    EXPECT_EQ(lines[1].to.y, place.own.top);
    EXPECT_EQ(lines[0].from, lines[1].from);
    EXPECT_GT(lines[0].width, lines[1].width);
    EXPECT_EQ(lines[0].colour, (PageColour{255, 255, 255}));
    EXPECT_EQ(lines[1].colour, (PageColour{0, 0, 0}));
}

TEST(SheetMarks, CornersEndAtThePagesEdge) {
    SheetJob job = a4Job();
    job.margins.fill(4 * millimetre);
    const std::vector<PageLine> lines = itemsOf<PageLine>(markItems(job, sheetPlace(job, 1)));
    EXPECT_EQ(lines[1].to.x, 0);
    job.margins.fill(0.5 * millimetre); // no room at all
    EXPECT_TRUE(markItems(job, sheetPlace(job, 1)).empty());
}

TEST(SheetMarks, LinesAreAlongTheEdgesToCut) {
    SheetJob job = a4Job();
    job.choices.marks = SheetMarks::lines;
    EXPECT_TRUE(markItems(job, sheetPlace(job, 1)).empty()) << "nothing is cut there";
    const auto dark = [&](int number) {
        std::vector<PageLine> lines = itemsOf<PageLine>(markItems(job, sheetPlace(job, number)));
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [](const PageLine& line) { return line.dash == 0; }),
                    lines.end());
        return lines;
    };
    const PageRect own = sheetPlace(job, 5).own;
    ASSERT_EQ(dark(2).size(), 1U);
    EXPECT_NEAR(dark(2)[0].from.x, own.left, 0.5);
    EXPECT_EQ(dark(2)[0].from.x, dark(2)[0].to.x);
    ASSERT_EQ(dark(4).size(), 1U);
    EXPECT_NEAR(dark(4)[0].from.y, own.top, 0.5);
    EXPECT_EQ(dark(5).size(), 2U);
}

TEST(SheetMarks, LinesOfTurnedSheetsAreWhereThePosterIsCut) {
    SheetJob job = turnedJob();
    job.choices.marks = SheetMarks::lines;
    const SheetPlace place = sheetPlace(job, 2); // has a neighbour at the poster's left
    const std::vector<PageLine> lines = itemsOf<PageLine>(markItems(job, place));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NEAR(lines[0].from.y, place.own.bottom, 0.5);
    EXPECT_EQ(lines[0].from.y, lines[0].to.y);
}

TEST(SheetMarks, NoneDrawsNone) {
    SheetJob job = a4Job();
    job.choices.marks = SheetMarks::none;
    EXPECT_TRUE(markItems(job, sheetPlace(job, 5)).empty());
}

TEST(SheetLabel, IsInTheWidestMarginAndSaysWhichSheetItIs) {
    SheetJob job = a4Job();
    job.margins[edgeTop] = 15 * millimetre;
    const SheetPlace place = sheetPlace(job, 6);
    EXPECT_EQ(labelEdge(job, place), edgeTop);
    const std::vector<PageText> texts = itemsOf<PageText>(labelItems(job, place));
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0].text, "lake.jpg   row 2 of 2, column 3 of 3   sheet 6");
    EXPECT_LT(texts[0].start.y, 15 * millimetre);
    EXPECT_GT(texts[0].start.y - texts[0].size, 0);
}

TEST(SheetLabel, NeedsAMarginOfFourMillimetres) {
    SheetJob job = a4Job();
    job.margins.fill(4 * millimetre);
    EXPECT_FALSE(labelItems(job, sheetPlace(job, 1)).empty());
    job.margins.fill(3.99 * millimetre);
    EXPECT_TRUE(labelItems(job, sheetPlace(job, 1)).empty());
    EXPECT_TRUE(labelItems(borderlessJob(), sheetPlace(borderlessJob(), 1)).empty());
}

TEST(SheetLabel, KeepsOffTheStrip) {
    SheetJob job = a4Job();
    job.choices.overlap = 10 * millimetre;
    EXPECT_EQ(labelEdge(job, sheetPlace(job, 1)), edgeTop);
    EXPECT_EQ(labelEdge(job, sheetPlace(job, 6)), edgeBottom);
}

TEST(SheetLabel, InAStandingMarginReadsUpward) {
    SheetJob job = a4Job();
    job.margins[edgeLeft] = 20 * millimetre;
    const std::vector<PageText> texts = itemsOf<PageText>(labelItems(job, sheetPlace(job, 1)));
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0].direction, TextDirection::up);
    EXPECT_LT(texts[0].start.x, 20 * millimetre);
}

TEST(SheetLabel, ALongNameIsShortenedFirst) {
    SheetJob job = a4Job();
    job.photoName = std::string(300, 'W') + ".jpg";
    const std::vector<PageText> texts = itemsOf<PageText>(labelItems(job, sheetPlace(job, 1)));
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_NE(texts[0].text.find("\xE2\x80\xA6   row 1 of 2, column 1 of 3   sheet 1"),
              std::string::npos);
    EXPECT_LT(pageTextWidth(texts[0].text, texts[0].size), 190 * millimetre);
}

TEST(SheetLabel, EndsTwoMillimetresBeforeTheMarginDoes) {
    SheetJob job = a4Job();
    job.photoName = std::string(300, 'i');
    const SheetPlace place = sheetPlace(job, 1);
    double end = 0;
    for (const PageLine& line : itemsOf<PageLine>(labelItems(job, place))) { // of the map
        end = std::max({end, line.from.x, line.to.x});
    }
    const double most = place.own.right - 2 * millimetre;
    EXPECT_LE(end, most + 1e-6);
    EXPECT_GT(end, most - 3) << "there is room for another letter";
}

TEST(SheetLabel, FillsTheSheetInTheMap) {
    const SheetJob job = a4Job();
    const std::vector<PageShape> shapes =
        itemsOf<PageShape>(gridMap(job, {0, 0, 30, 20}, 6, false));
    ASSERT_EQ(shapes.size(), 1U);
    EXPECT_EQ(shapes[0].points[0], (PagePoint{20, 10}));
    EXPECT_EQ(shapes[0].points[2], (PagePoint{30, 20}));
    const std::vector<PageShape> turned = itemsOf<PageShape>(gridMap(job, {0, 0, 20, 30}, 3, true));
    EXPECT_EQ(turned[0].points[2], (PagePoint{10, 0})) << "the poster's top right corner";
}

TEST(SheetPage, ShowsPhotoMarksAndLabelInThisOrder) {
    const SheetJob job = a4Job();
    const SheetPage page = sheetPage(job, 2);
    EXPECT_NEAR(page.width, 595.276, 0.001);
    EXPECT_NEAR(page.height, 841.890, 0.001);
    EXPECT_EQ(page.label(), "2");
    ASSERT_FALSE(page.items.empty());
    EXPECT_TRUE(std::holds_alternative<PagePhoto>(page.items.front()));
    EXPECT_EQ(itemsOf<PageText>(page.items).size(), 1U);
    SheetJob without = job;
    without.choices.labels = false;
    EXPECT_TRUE(itemsOf<PageText>(sheetPage(without, 2).items).empty());
}

} // namespace
} // namespace veldara
