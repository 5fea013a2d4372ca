#include "layout/full_preview.h"
#include "layout/preview_grid.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

bool isLine(const Image& image, int x, int y) {
    const std::uint8_t* pixel = image.row(y) + 3 * x;
    return pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 0;
}

// Every pixel that is a line must lie on one of the lines, and the other way round.
void expectLines(const Image& image, const std::vector<int>& columns, const std::vector<int>& rows,
                 const PreviewCrop& crop) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool onColumn = std::count(columns.begin(), columns.end(), x) > 0 &&
                                  y >= crop.top && y <= crop.bottom;
            const bool onRow =
                std::count(rows.begin(), rows.end(), y) > 0 && x >= crop.left && x <= crop.right;
            ASSERT_EQ(isLine(image, x, y), onColumn || onRow) << x << "," << y;
        }
    }
}

TEST(PreviewGridPixels, TouchOnlyTheLinesWithinTheCrop) {
    Image image = Image::filled(40, 30, 9, 8, 7);
    PreviewGrid grid;
    grid.crop = {5, 4, 34, 24};
    grid.columns = {5, 20, 34};
    grid.rows = {4, 14, 24};
    drawPreviewGrid(image.mutableView(), grid);
    expectLines(image, grid.columns, grid.rows, grid.crop);
    EXPECT_EQ(image.row(0)[0], 9);
    EXPECT_EQ(image.row(15)[3 * 21 + 1], 8);
}

TEST(PreviewGridPixels, AreClippedToThePicture) {
    Image image = Image::filled(10, 10, 1, 2, 3);
    PreviewGrid grid;
    grid.crop = {-5, -5, 50, 50};
    grid.columns = {-5, 3, 10};
    grid.rows = {-1, 9, 12};
    drawPreviewGrid(image.mutableView(), grid);
    expectLines(image, {3}, {9}, {0, 0, 9, 9});
}

TEST(EvenGridPixels, SpanThePictureEdgeToEdge) {
    Image image = Image::filled(31, 21, 0, 0, 0);
    drawEvenGrid(image.mutableView(), 3, 2);
    expectLines(image, {0, 10, 20, 30}, {0, 10, 20}, {0, 0, 30, 20});
}

TEST(EvenGridPixels, RoundHalvesToEven) {
    Image image = Image::filled(10, 4, 0, 0, 0); // 4.5 and 1.5
    drawEvenGrid(image.mutableView(), 2, 2);
    expectLines(image, {0, 4, 9}, {0, 2, 3}, {0, 0, 9, 3});
}

TEST(FullPreview, LeavesOutTheLastColumnAndRow) {
    const std::vector<TileRect> tiles{{10, 20, 109, 69}, {110, 20, 210, 70}};
    const auto shown = fullPreview(tiles, 1000, 1000);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->left, 10);
    EXPECT_EQ(shown->top, 20);
    EXPECT_EQ(shown->width, 200);
    EXPECT_EQ(shown->height, 50);
    EXPECT_EQ(shown->shownWidth, 1000);
    EXPECT_EQ(shown->shownHeight, 250);
}

TEST(FullPreview, FillsTheHeightWhenShapesAreEqual) {
    const auto shown = fullPreview({{0, 0, 200, 100}}, 400, 200);
    EXPECT_EQ(shown->shownHeight, 200);
    EXPECT_EQ(shown->shownWidth, 400);
    EXPECT_EQ(fullPreview({{0, 0, 100, 200}}, 400, 200)->shownWidth, 100);
}

TEST(FullPreview, IsNothingWhereThereIsNoRoom) {
    EXPECT_FALSE(fullPreview({}, 100, 100));
    EXPECT_FALSE(fullPreview({{5, 5, 5, 90}}, 100, 100));
    EXPECT_FALSE(fullPreview({{5, 5, 90, 90}}, 0, 100));
    EXPECT_EQ(fullPreview({{0, 0, 10000, 1}}, 100, 100)->shownHeight, 1);
}

TEST(PreviewWindow, KeepsAStripForTheButton) {
    const PreviewWindowLayout layout = fitToNewSize(10000, 8000, 1200, 375);
    EXPECT_EQ(layout.margin, 93); // the whole part of a quarter of the button's height
    EXPECT_EQ(layout.pictureLeft, 0);
    EXPECT_EQ(layout.pictureTop, 0);
    EXPECT_EQ(layout.pictureHeight, 8000 - 405 - (375 + 2 * 93));
    EXPECT_EQ(layout.closeTop, layout.pictureHeight + 93);
    EXPECT_EQ(fitToNewSize(1000, 700, 80, 30, 0).pictureHeight, 700 - (30 + 2 * 7));
}

TEST(PreviewWindow, LeavesASmallWindowItsPicture) {
    EXPECT_EQ(fitToNewSize(100, 60, 1200, 375).pictureHeight, 50);
    EXPECT_EQ(fitToNewSize(0, 0, 1200, 375).pictureHeight, 50);
    EXPECT_GE(fitToNewSize(0, 0, 1200, 375).pictureWidth, 1);
}

TEST(PreviewWindow, GivesThePictureThePostersRatio) {
    PreviewWindowLayout layout = fitToNewSizeForPic(1000, 644, 80, 30, 2.0, 0);
    EXPECT_EQ(layout.pictureWidth, 1000);
    EXPECT_EQ(layout.pictureHeight, 500);
    EXPECT_EQ(layout.pictureLeft, 0);
    EXPECT_EQ(layout.closeTop, 507);
    layout = fitToNewSizeForPic(1000, 644, 80, 30, 0.5, 0);
    EXPECT_EQ(layout.pictureHeight, 600);
    EXPECT_EQ(layout.pictureWidth, 300);
    EXPECT_EQ(layout.pictureLeft, 350);
}

} // namespace
} // namespace veldara
