#include "output/poster_plan.h"
#include "platform/text/path_text.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

// 3 x 2 tiles of 6 x 4 inches, cut from a photo of the same shape at 100 dots per inch.
PosterRequest request() {
    PosterRequest made;
    made.layout.photoWidth = 1800;
    made.layout.photoHeight = 800;
    made.layout.tilesWide = 3;
    made.layout.tilesHigh = 2;
    made.tileWidth = 6;
    made.tileHeight = 4;
    made.files = {"/out/", "wall", TileFormat::tiff};
    return made;
}

TEST(PosterPlan, CutsThePhotoIntoTiles) {
    const PosterPlan plan = planPoster(request());
    EXPECT_TRUE(plan.ok()) << plan.reason;
    ASSERT_EQ(plan.tiles.size(), 6U);
    EXPECT_EQ(plan.tiles[0].rect, (TileRect{0, 0, 599, 399}));
    EXPECT_EQ(plan.tiles[5].rect, (TileRect{1200, 400, 1799, 799}));
    EXPECT_EQ(pathText(plan.tiles[0].file), "/out/wall001.tif");
    EXPECT_EQ(pathText(plan.files().back()), "/out/wall006.tif");
    EXPECT_EQ(plan.rects().back(), plan.tiles[5].rect);
    EXPECT_EQ(plan.tiles[3].picture.width, 600);
    EXPECT_EQ(plan.treatment.resolution, 100);
    EXPECT_FALSE(plan.treatment.trims);
    EXPECT_EQ(plan.type, TileFormat::tiff);
    EXPECT_EQ(plan.layout.tileWidthInches, 6);
}

TEST(PosterPlan, EnlargesTheTilesForAPrinterThatClips) {
    PosterRequest clipped = request();
    clipped.trims = EdgeTrims{0.25, 0.5, 0.25, 0.5};
    const PosterPlan plan = planPoster(clipped);
    EXPECT_TRUE(plan.ok()) << plan.reason;
    EXPECT_EQ(plan.layout.tileWidthInches, 5);
    EXPECT_EQ(plan.layout.tileHeightInches, 3.5);
    const TileRect first = plan.tiles[0].rect; // 571 pixels are printed on 5 inches
    EXPECT_EQ(first.width(), 571);
    EXPECT_EQ(plan.treatment.resolution, 114);
    EXPECT_EQ(plan.tiles[0].picture.width, 571 + 57 + 57);
    EXPECT_EQ(plan.tiles[0].picture.height, 400 + 28 + 28);
}

TEST(PosterPlan, TurnsTiles) {
    PosterRequest turned = request();
    turned.layout.tilesTurned = true;
    turned.tileWidth = 4;
    turned.tileHeight = 6;
    const PosterPlan plan = planPoster(turned);
    EXPECT_TRUE(plan.treatment.turned);
    EXPECT_EQ(plan.tiles[0].rect, (TileRect{0, 0, 599, 399}));
    EXPECT_EQ(plan.tiles[0].picture.width, 400);
    EXPECT_EQ(plan.treatment.resolution, 100);
}

TEST(PosterPlan, TakesMillimetres) {
    PosterRequest metric = request();
    metric.units = Units::millimetres;
    metric.tileWidth = 152.4;
    metric.tileHeight = 101.6;
    EXPECT_EQ(planPoster(metric).treatment.resolution, 100);
    metric.tileWidth = 19;
    EXPECT_EQ(planPoster(metric).problem, PlanProblem::tileSize);
}

TEST(PosterPlan, SaysWhatIsWrong) {
    PosterRequest small = request();
    small.tileWidth = 0.7;
    EXPECT_EQ(planPoster(small).problem, PlanProblem::tileSize);
    EXPECT_TRUE(planPoster(small).tiles.empty());
    EXPECT_FALSE(planPoster(small).reason.empty());

    PosterRequest clippedAway = request();
    clippedAway.trims = EdgeTrims{0, 3, 0, 3};
    EXPECT_EQ(planPoster(clippedAway).problem, PlanProblem::noTiles);

    PosterRequest tiny = request();
    tiny.layout.photoWidth = 12;
    tiny.layout.photoHeight = 8;
    tiny.layout.tilesWide = 25;
    tiny.layout.tilesHigh = 25;
    EXPECT_EQ(planPoster(tiny).problem, PlanProblem::emptyTiles);

    PosterRequest untyped = request();
    untyped.files.type.reset();
    EXPECT_EQ(planPoster(untyped).problem, PlanProblem::fileName);
    EXPECT_EQ(planPoster(untyped).reason, "File extension not selected");
    EXPECT_EQ(planPoster(untyped).tiles.size(), 6U) << "what is known is there";

    PosterRequest shrunk = request();
    shrunk.trims = EdgeTrims{0, -0.5, 0, 0};
    EXPECT_EQ(planPoster(shrunk).problem, PlanProblem::compensation);

    EXPECT_EQ(planTiles({{0, 0, 9, 9}}, false, 0, std::nullopt, request().files).problem,
              PlanProblem::resolution);
}

TEST(PosterPlan, ReportsTheFirstProblem) {
    PosterRequest both = request();
    both.trims = EdgeTrims{0, -0.5, 0, 0};
    both.files.folder.clear();
    EXPECT_EQ(planPoster(both).problem, PlanProblem::fileName);
}

TEST(PosterPlan, NeverOverwritesThePhoto) {
    const TempFolder disk;
    const std::string photo = disk.addFile("wall002.jpg", "the photo");
    PosterRequest beside = request();
    beside.files = {disk / "", "wall", TileFormat::jpeg};
    EXPECT_EQ(photoOverwriteProblem(planPoster(beside).files(), photo),
              "The tile \"" + photo + "\" would take the photo's place");
    beside.files.base = "other";
    EXPECT_EQ(photoOverwriteProblem(planPoster(beside).files(), photo), "");
}

} // namespace
} // namespace veldara::test
