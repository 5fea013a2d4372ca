#include "sheets/guide_drawings.h"
#include "sheets/sheet_jobs.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using testing::itemsOf;

// The drawings' own co-ordinates are then those of the page.
constexpr PageRect box{0, 0, 100, 100};

std::size_t count(const std::vector<PageItem>& items, const PageRect& place, bool filled) {
    const std::vector<PagePoint> corners{{place.left, place.top},
                                         {place.right, place.top},
                                         {place.right, place.bottom},
                                         {place.left, place.bottom}};
    const std::vector<PageShape> shapes = itemsOf<PageShape>(items);
    return static_cast<std::size_t>(
        std::count_if(shapes.begin(), shapes.end(), [&](const PageShape& shape) {
            return shape.points == corners && (shape.outline == 0) == filled;
        }));
}

// Filled, with a line around it.
void expectFramed(const std::vector<PageItem>& items, const PageRect& place) {
    EXPECT_EQ(count(items, place, true), 1U) << place.left << ", " << place.top;
    EXPECT_EQ(count(items, place, false), 1U) << place.left << ", " << place.top;
}

// Heights of the marks on a scale, from the left to the right.
std::vector<double> marksAt(const std::vector<PageItem>& items, double scale) {
    std::vector<double> heights;
    for (const PageLine& line : itemsOf<PageLine>(items)) {
        if (line.from.x == line.to.x && line.from.y == scale) {
            heights.push_back(std::abs(line.to.y - scale));
        }
    }
    return heights;
}

TEST(GuideDrawings, MeasuringShowsTheSheetTheScaleAndTheRuler) {
    const std::vector<PageItem> items = measureDrawing(box);
    expectFramed(items, {18, 6, 82, 94});
    expectFramed(items, {26, 14, 74, 52});
    expectFramed(items, {10, 74, 90, 88});
    EXPECT_EQ(marksAt(items, 70), (std::vector<double>{8, 4, 4, 4, 8, 4, 4, 4, 8}));
    EXPECT_EQ(marksAt(items, 74), (std::vector<double>{5, 5, 5, 8, 5, 5, 5, 8, 5, 5, 5, 8, 5}));
}

TEST(GuideDrawings, CuttingShowsTheStripWhereThereIsOne) {
    for (const Joining joining : {Joining::onMargins, Joining::onStrips}) {
        const std::vector<PageItem> items = cutDrawing(box, joining);
        EXPECT_EQ(count(items, {16, 6, 88, 90}, false), 1U);
        EXPECT_EQ(count(items, {28, 18, 88, 90}, true), joining == Joining::onStrips ? 1U : 0U);
        EXPECT_EQ(count(items, {28, 18, 76, 78}, true), 1U);
    }
    const std::vector<PageItem> whole = cutDrawing(box, Joining::edgeToEdge);
    expectFramed(whole, {6, 20, 46, 76});
    expectFramed(whole, {54, 20, 94, 76});
}

TEST(GuideDrawings, GluingShowsTapeWhereThereIsNothingToGlueOn) {
    const std::vector<PageItem> taped = glueDrawing(box, Joining::edgeToEdge);
    expectFramed(taped, {8, 16, 50, 76});
    expectFramed(taped, {50, 16, 92, 76});
    expectFramed(taped, {40, 26, 60, 36});
    expectFramed(taped, {40, 54, 60, 64});
    for (const Joining joining : {Joining::onMargins, Joining::onStrips}) {
        const std::vector<PageItem> items = glueDrawing(box, joining);
        expectFramed(items, {4, 16, 56, 84});
        EXPECT_EQ(count(items, {44, 22, 56, 78}, true), joining == Joining::onStrips ? 1U : 0U);
    }
}

TEST(GuideDrawings, TheRowsAreJoinedAlongTheArrows) {
    const std::vector<PageItem> items = rowsDrawing(box);
    expectFramed(items, {8, 16, 92, 84});
    EXPECT_EQ(itemsOf<PageLine>(items).size(), 5U) << "three seams and two arrows";
}

} // namespace
} // namespace veldara
