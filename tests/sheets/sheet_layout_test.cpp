#include "platform/error.h"
#include "sheets/sheet_jobs.h"
#include "sheets/sheet_layout.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using testing::a4Job;
using testing::borderlessJob;
using testing::turnedJob;

constexpr double millimetre = pointsPerMillimetre;

void expectNear(const PageRect& is, const PageRect& shouldBe, double within = 1e-9) {
    EXPECT_NEAR(is.left, shouldBe.left, within);
    EXPECT_NEAR(is.top, shouldBe.top, within);
    EXPECT_NEAR(is.right, shouldBe.right, within);
    EXPECT_NEAR(is.bottom, shouldBe.bottom, within);
}

void expectNear(const PhotoRect& is, const PhotoRect& shouldBe, double within = 1e-6) {
    EXPECT_NEAR(is.left, shouldBe.left, within);
    EXPECT_NEAR(is.top, shouldBe.top, within);
    EXPECT_NEAR(is.right, shouldBe.right, within);
    EXPECT_NEAR(is.bottom, shouldBe.bottom, within);
}

TEST(SheetLayout, GivesPaperLengthsInPoints) {
    EXPECT_NEAR(pointsOf(210, Units::millimetres), 595.276, 0.001);
    EXPECT_NEAR(pointsOf(297, Units::millimetres), 841.890, 0.001);
    EXPECT_EQ(pointsOf(8.5, Units::inches), 612);
}

TEST(SheetLayout, OwnAreaIsThePaperLessItsMargins) {
    const SheetPlace place = sheetPlace(a4Job(), 1);
    expectNear(place.own, {10 * millimetre, 10 * millimetre, 200 * millimetre, 287 * millimetre});
    EXPECT_EQ(place.painted, place.own);
}

TEST(SheetLayout, OwnAreaIsLessTheTrimsToo) {
    const SheetPlace place = sheetPlace(borderlessJob(), 1);
    expectNear(place.own, {3 * millimetre, 3 * millimetre, 207 * millimetre, 294 * millimetre});
    expectNear(place.painted, {0, 0, 210 * millimetre, 297 * millimetre});
}

TEST(SheetLayout, SheetsPartTheCropInRealNumbers) {
    SheetJob job = a4Job();
    job.layout.photoWidth = 1000; // 1000 columns for three sheets: no whole number each
    job.layout.photoHeight = 5000;
    const CropRect crop = cropRect(job.layout);
    ASSERT_EQ(crop.width, 1000);
    expectNear(sheetPlace(job, 2).ownPhoto, {1000.0 / 3, static_cast<double>(crop.top), 2000.0 / 3,
                                             crop.top + crop.height / 2.0});
}

TEST(SheetLayout, NeighboursMeetAtTheSamePointOfThePhoto) {
    std::mt19937 random(20);
    for (int round = 0; round < 200; ++round) {
        SheetJob job = a4Job();
        job.layout.tilesWide = 1 + static_cast<int>(random() % 25);
        job.layout.tilesHigh = 1 + static_cast<int>(random() % 25);
        job.layout.photoWidth = 100 + static_cast<int>(random() % 5000);
        job.layout.photoHeight = 100 + static_cast<int>(random() % 5000);
        job.layout.zoom = static_cast<int>(random() % 200);
        job.layout.horzPos = static_cast<int>(random() % 201);
        job.layout.tilesTurned = random() % 2 == 0;
        const int wide = job.layout.tilesWide;
        for (int number = 1; number <= wide * job.layout.tilesHigh; ++number) {
            const SheetPlace place = sheetPlace(job, number);
            if (place.column + 1 < wide) {
                EXPECT_EQ(place.ownPhoto.right, sheetPlace(job, number + 1).ownPhoto.left);
            }
            if (place.row + 1 < job.layout.tilesHigh) {
                EXPECT_EQ(place.ownPhoto.bottom, sheetPlace(job, number + wide).ownPhoto.top);
            }
        }
    }
}

TEST(SheetLayout, StripsAreAtTheRightAndTheBottomWhereThereIsANeighbour) {
    SheetJob job = a4Job();
    job.choices.overlap = 8 * millimetre;
    const SheetPlace first = sheetPlace(job, 1);
    expectNear(first.painted,
               {10 * millimetre, 10 * millimetre, 208 * millimetre, 295 * millimetre});
    EXPECT_NEAR(first.paintedPhoto.right, first.ownPhoto.right + first.ownPhoto.width() * 8 / 190,
                1e-6);
    const SheetPlace right = sheetPlace(job, 3);
    EXPECT_EQ(right.painted.right, right.own.right);
    EXPECT_NEAR(right.painted.bottom, 295 * millimetre, 1e-9);
    const SheetPlace last = sheetPlace(job, 6);
    EXPECT_EQ(last.painted, last.own);
}

TEST(SheetLayout, StripsOfTurnedSheetsLieWhereThePosterIs) {
    SheetJob job = turnedJob();
    job.choices.overlap = 8 * millimetre;
    const SheetPlace place = sheetPlace(job, 1);
    // The poster's right edge is the page's top, the poster's bottom edge the page's right.
    expectNear(place.painted,
               {10 * millimetre, 2 * millimetre, 208 * millimetre, 287 * millimetre});
    EXPECT_NEAR(place.paintedPhoto.right, place.ownPhoto.right + place.ownPhoto.width() * 8 / 277,
                1e-6);
    EXPECT_NEAR(place.paintedPhoto.bottom,
                place.ownPhoto.bottom + place.ownPhoto.height() * 8 / 190, 1e-6);
    EXPECT_NEAR(place.paintedPhoto.left, place.ownPhoto.left, 1e-9);
}

TEST(SheetLayout, StripsAreNoWiderThanTheMargin) {
    SheetJob job = a4Job();
    job.choices.overlap = 12 * millimetre;
    EXPECT_NEAR(sheetPlace(job, 1).painted.right, 210 * millimetre, 1e-9);
    EXPECT_EQ(overlapProblem(job),
              "An overlap of 12 mm takes a right margin of 12 mm; the paper's is 10 mm, so the "
              "overlap there is 10 mm.");
    job.margins[edgeRight] = 12 * millimetre;
    EXPECT_EQ(overlapProblem(job),
              "An overlap of 12 mm takes a bottom margin of 12 mm; the paper's is 10 mm, so the "
              "overlap there is 10 mm.");
    job.layout.tilesHigh = 1; // nothing is glued at the bottom
    EXPECT_EQ(overlapProblem(job), std::nullopt);
}

TEST(SheetLayout, TheMarginThatIsNamedIsThePagesOwn) {
    SheetJob job = turnedJob();
    job.margins[edgeTop] = 2 * millimetre;
    job.choices.overlap = 5 * millimetre;
    ASSERT_TRUE(overlapProblem(job));
    EXPECT_EQ(*overlapProblem(job),
              "An overlap of 5 mm takes a top margin of 5 mm; the paper's is 2 mm, so the overlap "
              "there is 2 mm.");
}

TEST(SheetLayout, AnOverlapThatJustFitsIsNoProblem) {
    SheetJob job = a4Job();
    job.choices.overlap = pointsOf(10, Units::millimetres);
    EXPECT_EQ(overlapProblem(job), std::nullopt);
}

TEST(SheetLayout, BorderOfTrimsCarriesThePhotosNextPixels) {
    const SheetJob job = borderlessJob();
    const std::vector<PagePhoto> items = photoItems(job, sheetPlace(job, 2));
    // The photo ends above, and its outermost row is stretched there; elsewhere it goes on.
    const CropRect crop = cropRect(job.layout);
    ASSERT_EQ(crop.top, 0);
    ASSERT_EQ(items.size(), 2U);
    expectNear(items[0].source, {items[1].source.left, 0, items[1].source.right, 1});
    EXPECT_NEAR(items[0].target.top, 0, 1e-9);
    EXPECT_NEAR(items[1].source.top, 0, 1e-9);
    EXPECT_NEAR(items[1].target.top, 3 * millimetre, 1e-9);
    EXPECT_LT(items[1].source.left, sheetPlace(job, 2).ownPhoto.left);
}

TEST(SheetLayout, BorderOfTrimsLiesAroundTurnedSheetsToo) {
    SheetJob job = borderlessJob();
    job.layout.tilesTurned = true;
    const SheetPlace place = sheetPlace(job, 2);
    const PhotoRect& own = place.ownPhoto;
    const double across = own.width() * 3 / 291; // of 3 mm, in pixels
    const double down = own.height() * 3 / 204;
    expectNear(place.paintedPhoto,
               {own.left - across, own.top - down, own.right + across, own.bottom + down});
}

TEST(SheetLayout, CornersOfThePhotoAreStretchedBothWays) {
    SheetJob job = borderlessJob();
    job.layout.photoWidth = 2103; // exactly the poster's shape: the photo ends at every side
    job.layout.photoHeight = 2000;
    const std::vector<PagePhoto> items = photoItems(job, sheetPlace(job, 1));
    ASSERT_EQ(items.size(), 4U);
    expectNear(items[0].source, {0, 0, 1, 1});
    EXPECT_EQ(items[0].target.left, 0);
    EXPECT_EQ(items[0].target.top, 0);
    EXPECT_GT(items[0].target.right, items[3].target.left) << "no seam between the two";
}

TEST(SheetLayout, EveryPointOfThePageShowsItsPointOfThePhoto) {
    for (const bool turned : {false, true}) {
        SheetJob job = turned ? turnedJob() : a4Job();
        job.choices.overlap = 5 * millimetre;
        const SheetPlace place = sheetPlace(job, 1);
        const std::vector<PagePhoto> items = photoItems(job, place);
        ASSERT_EQ(items.size(), 1U);
        expectNear(items[0].target, place.painted);
        expectNear(items[0].source, place.paintedPhoto);
        EXPECT_EQ(items[0].turned, turned);
    }
}

TEST(SheetLayout, ShownPixelsAreWholeAndInThePhoto) {
    const SheetJob job = borderlessJob();
    const int sheets = job.layout.tilesWide * job.layout.tilesHigh;
    for (int number = 1; number <= sheets; ++number) {
        const SheetPlace place = sheetPlace(job, number);
        const TileRect pixels = shownPixels(job, place);
        EXPECT_GE(pixels.left, 0);
        EXPECT_GE(pixels.top, 0);
        EXPECT_LT(pixels.right, job.layout.photoWidth);
        EXPECT_LT(pixels.bottom, job.layout.photoHeight);
        EXPECT_LE(pixels.left, place.ownPhoto.left);
        EXPECT_GE(pixels.right + 1 + 1e-9, place.ownPhoto.right);
    }
}

TEST(SheetLayout, RefusesPaperOfWhichNothingIsLeft) {
    SheetJob job = a4Job();
    job.trims.fill(200 * millimetre);
    EXPECT_THROW(sheetPlace(job, 1), Error);
    EXPECT_THROW(sheetPlace(a4Job(), 0), Error);
    EXPECT_THROW(sheetPlace(a4Job(), 7), Error);
}

TEST(SheetLayout, TakesAllSheetsUnlessSomeAreChosen) {
    SheetJob job = a4Job();
    EXPECT_EQ(chosenSheets(job), (std::vector<int>{1, 2, 3, 4, 5, 6}));
    job.choices.sheets = {2, 5};
    EXPECT_EQ(chosenSheets(job), (std::vector<int>{2, 5}));
}

} // namespace
} // namespace veldara
