#include "layout/output_figures.h"
#include "layout/poster_choice.h"
#include "platform/error.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

// Without margins unless a test says otherwise.
ChoicePaper paperOf(const std::string& name, double width, double height, double margin = 0) {
    return {name, width, height, width - 2 * margin, height - 2 * margin};
}

const ChoicePaper letter = paperOf("Letter", 8.5, 11);
const ChoicePaper tabloid = paperOf("Tabloid", 11, 17);

PosterWish widthOf(double inches) {
    PosterWish wish;
    wish.width = inches;
    return wish;
}

PosterWish keeping(const std::string& word) {
    PosterWish wish;
    wish.quality = word;
    return wish;
}

TEST(PosterChoice, ReachesTheWidthWithTheLeastBeyondIt) {
    const PosterChoices choices = choosePoster(widthOf(33), {6000, 4000}, {letter});
    ASSERT_FALSE(choices.best.empty());
    const PosterChoice& best = choices.best.front();
    EXPECT_TRUE(best.tilesTurned); // three sheets of 11 inches on their side are just 33
    EXPECT_EQ(best.tilesWide, 3);
    EXPECT_DOUBLE_EQ(best.width, 33);
    // 22 inches of the photo's shape lie between two rows of 8.5 (17) and three (25.5): three cut
    // off 4.35 inches of the width, two cut off 5 of the height.
    EXPECT_EQ(best.tilesHigh, 3);
    EXPECT_NEAR(best.photoShare, 22 / 25.5, 1e-9);
    EXPECT_EQ(best.sheets, 9);
}

TEST(PosterChoice, ReachesBothSides) {
    PosterWish wish;
    wish.width = 17;
    wish.height = 22;
    const PosterChoices choices = choosePoster(wish, {4000, 6000}, {letter});
    ASSERT_FALSE(choices.best.empty());
    EXPECT_EQ(choices.best.front().tilesWide, 2);
    EXPECT_EQ(choices.best.front().tilesHigh, 2);
    EXPECT_FALSE(choices.best.front().tilesTurned);
    EXPECT_DOUBLE_EQ(choices.best.front().width, 17);
    EXPECT_DOUBLE_EQ(choices.best.front().height, 22);
}

TEST(PosterChoice, KeepsSheetsUprightWhenTheyMustNotTurn) {
    ChoiceLimits limits{6000, 4000};
    limits.sheetsTurn = false;
    for (const PosterChoice& choice : choosePoster(widthOf(33), limits, {letter}).best) {
        EXPECT_FALSE(choice.tilesTurned);
        EXPECT_EQ(choice.tilesWide, 4);
    }
}

TEST(PosterChoice, IsTheLargestThatKeepsTheWord) {
    // 100 dots per inch of 6000 x 4000 pixels are 60 x 40 inches; more than 90 are asked for.
    const PosterChoices choices = choosePoster(keeping("Good"), {6000, 4000}, {letter, tabloid});
    ASSERT_FALSE(choices.best.empty());
    EXPECT_EQ(choices.best.front().quality, "Good");
    EXPECT_GT(choices.best.front().dotsPerInch, 90);
    EXPECT_GT(choices.best.front().width * choices.best.front().height, 2600);
}

TEST(PosterChoice, TakesTheSameLengthOnFewerSheets) {
    // Two letters beside each other lie on a tabloid turned on its side.
    const PosterChoices choices =
        choosePoster(widthOf(17), {1700, 1100}, {letter, paperOf("Double", 17, 11)});
    ASSERT_FALSE(choices.best.empty());
    EXPECT_EQ(choices.best.front().paper, 1);
    EXPECT_EQ(choices.best.front().sheets, 1);
}

TEST(PosterChoice, TellsHowMuchPaperIsCutAway) {
    const PosterChoices choices =
        choosePoster(widthOf(10), {600, 400}, {paperOf("Framed", 12, 10, 1)});
    ASSERT_FALSE(choices.best.empty());
    EXPECT_NEAR(choices.best.front().paperCutAway, 1 - 80.0 / 120, 1e-12);
}

TEST(PosterChoice, ListsAtMostThreeOfOnePaperLyingOneWay) {
    const auto best = choosePoster(widthOf(40), {6000, 4000}, {letter, tabloid}).best;
    for (const PosterChoice& choice : best) {
        EXPECT_LE(std::count_if(best.begin(), best.end(),
                                [&choice](const PosterChoice& other) {
                                    return other.paper == choice.paper &&
                                           other.tilesTurned == choice.tilesTurned;
                                }),
                  3);
    }
    EXPECT_EQ(best.size(), 12U);
    EXPECT_EQ(choosePoster(widthOf(40), {6000, 4000}, {letter, tabloid}, 5).best.size(), 5U);
}

TEST(PosterChoice, NamesTheLargestWhenAWishIsOutOfReach) {
    const PosterChoices choices = choosePoster(widthOf(300), {60000, 40000}, {letter});
    EXPECT_TRUE(choices.best.empty());
    EXPECT_EQ(choices.problem, ChoiceProblem::tooLarge);
    ASSERT_TRUE(choices.limit);
    EXPECT_DOUBLE_EQ(choices.limit->width, 275); // 25 x 11 inches
}

TEST(PosterChoice, RefusesTilesOfTooFewPixels) {
    // 200 pixels in 10 or more tiles are fewer than 25 each.
    const PosterChoices choices = choosePoster(widthOf(110), {200, 150}, {letter});
    EXPECT_TRUE(choices.best.empty());
    EXPECT_EQ(choices.problem, ChoiceProblem::tooManySheets);
    ASSERT_TRUE(choices.limit);
    // 8 sheets of 25 pixels; on their side they would be wider, and 19 pixels high.
    EXPECT_DOUBLE_EQ(choices.limit->width, 68);
}

TEST(PosterChoice, RefusesLessThanTheSmallestTile) {
    EXPECT_EQ(choosePoster(widthOf(0.7499), {600, 400}, {letter}).problem, ChoiceProblem::tooSmall);
    EXPECT_EQ(choosePoster(widthOf(0.75), {600, 400}, {letter}).problem, ChoiceProblem::none);
}

TEST(PosterChoice, RefusesAWordThatOneSheetDoesNotEarn) {
    const PosterChoices choices = choosePoster(keeping("Excellent"), {600, 400}, {letter});
    EXPECT_TRUE(choices.best.empty());
    EXPECT_EQ(choices.problem, ChoiceProblem::noQuality);
    ASSERT_TRUE(choices.limit);
    EXPECT_EQ(choices.limit->sheets, 1);
    EXPECT_TRUE(choices.limit->tilesTurned);
    EXPECT_NEAR(choices.limit->dotsPerInch, 400 / 8.5, 1e-9);
}

TEST(PosterChoice, PassesOverPaperOfWhichTheTrimsLeaveNothing) {
    ChoicePaper gone = letter;
    gone.tileWidth = 0;
    EXPECT_TRUE(choosePoster(widthOf(20), {600, 400}, {gone}).best.empty());
    EXPECT_FALSE(choosePoster(widthOf(20), {600, 400}, {gone, letter}).best.empty());
}

TEST(PosterChoice, NeedsAPhoto) {
    EXPECT_THROW(choosePoster(widthOf(20), {0, 400}, {letter}), Error);
}

// --- against a plain search over everything
// -------------------------------------------------------

struct Plain {
    bool found = false;
    double distance = 0;
    double share = 0;
    int sheets = 0;
};

// Better by the order that choosePoster promises, with room for the last bits of a double.
bool isBetter(const Plain& one, const Plain& other) {
    if (std::abs(one.distance - other.distance) > 0.0011) {
        return one.distance < other.distance;
    }
    if (std::abs(one.share - other.share) > 1.1e-6) {
        return one.share > other.share;
    }
    return one.sheets < other.sheets;
}

Plain plainOf(const PosterWish& wish, const PosterLayout& layout) {
    const double tileWidth = layout.tilesTurned ? layout.tileHeightInches : layout.tileWidthInches;
    const double tileHeight = layout.tilesTurned ? layout.tileWidthInches : layout.tileHeightInches;
    const double width = layout.tilesWide * tileWidth;
    const double height = layout.tilesHigh * tileHeight;
    const CropSize full = fullCropSize(layout);
    const double factor = zoomFactor(layout.zoom);
    Plain plain;
    plain.share =
        full.width * full.height * factor * factor / layout.photoWidth / layout.photoHeight;
    plain.sheets = layout.tilesWide * layout.tilesHigh;
    const bool pixels = full.width * factor / layout.tilesWide >= 25 &&
                        full.height * factor / layout.tilesHigh >= 25;
    if (wish.quality) {
        plain.distance = -width * height;
        plain.found = pixels && posterDotsPerInch(layout) > qualityLimit(*wish.quality);
        return plain;
    }
    plain.found = pixels;
    if (wish.width) {
        plain.distance += width - *wish.width;
        plain.found = plain.found && width > *wish.width - 1e-9 && width - *wish.width < tileWidth;
    }
    if (wish.height) {
        plain.distance += height - *wish.height;
        plain.found =
            plain.found && height > *wish.height - 1e-9 && height - *wish.height < tileHeight;
    }
    return plain;
}

Plain plainBest(const PosterWish& wish, const ChoiceLimits& limits,
                const std::vector<ChoicePaper>& papers) {
    Plain best;
    PosterChoice choice;
    for (choice.paper = 0; choice.paper < static_cast<int>(papers.size()); ++choice.paper) {
        for (const bool turned : {false, true}) {
            choice.tilesTurned = turned;
            for (choice.tilesWide = 1; choice.tilesWide <= 25; ++choice.tilesWide) {
                for (choice.tilesHigh = 1; choice.tilesHigh <= 25; ++choice.tilesHigh) {
                    const Plain plain = plainOf(wish, layoutOf(choice, limits, papers));
                    if (plain.found && (!best.found || isBetter(plain, best))) {
                        best = plain;
                    }
                }
            }
        }
    }
    return best;
}

class PosterChoiceProperty : public testing::TestWithParam<unsigned> {};

TEST_P(PosterChoiceProperty, FirstIsTheBestOfAPlainSearch) {
    std::mt19937 random(GetParam());
    const auto between = [&random](double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(random);
    };
    std::vector<ChoicePaper> papers(3);
    for (ChoicePaper& paper : papers) {
        paper = paperOf("paper", between(4, 17), between(4, 17), between(0, 1.5));
    }
    const ChoiceLimits limits{static_cast<int>(between(25, 9000)),
                              static_cast<int>(between(25, 9000)),
                              GetParam() % 3 == 0 ? static_cast<int>(between(0, 400)) : 0};
    PosterWish wish;
    if (GetParam() % 4 == 0) {
        const auto words = qualityWords();
        wish.quality = words[GetParam() / 4 % words.size()];
    }
    if (GetParam() % 4 == 1 || GetParam() % 4 == 3) {
        wish.width = between(1, 250);
    }
    if (GetParam() % 4 >= 2) {
        wish.height = between(1, 250);
    }

    const PosterChoices choices = choosePoster(wish, limits, papers);
    const Plain best = plainBest(wish, limits, papers);
    ASSERT_EQ(!choices.best.empty(), best.found);
    EXPECT_EQ(choices.problem == ChoiceProblem::none, best.found);
    if (best.found) {
        const Plain first = plainOf(wish, layoutOf(choices.best.front(), limits, papers));
        EXPECT_TRUE(first.found);
        EXPECT_FALSE(isBetter(best, first)) << best.distance << " against " << first.distance;
    }
    for (std::size_t i = 0; i < choices.best.size(); ++i) {
        const PosterLayout layout = layoutOf(choices.best[i], limits, papers);
        EXPECT_DOUBLE_EQ(choices.best[i].dotsPerInch, posterDotsPerInch(layout));
        EXPECT_EQ(choices.best[i].quality, qualityWord(posterDotsPerInch(layout)));
        const Plain plain = plainOf(wish, layout);
        EXPECT_TRUE(plain.found);
        EXPECT_NEAR(choices.best[i].photoShare, plain.share, 1e-9);
        EXPECT_EQ(choices.best[i].sheets, plain.sheets);
    }
}

INSTANTIATE_TEST_SUITE_P(Random, PosterChoiceProperty, testing::Range(0U, 200U));

} // namespace
} // namespace veldara
