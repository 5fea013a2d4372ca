#include "choice/choice_texts.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

const ChoiceLimits photo{6000, 4000};

std::vector<ChoicePaper> papersOf(Units units) {
    return offeredPapers(buildPaperTables().catalogue(units), units, std::nullopt);
}

PosterChoices chosenFor(double width, const std::vector<ChoicePaper>& papers) {
    PosterWish wish;
    wish.width = width;
    return choosePoster(wish, photo, papers);
}

TEST(ChoiceTexts, OfferPapersInInchesLessTheirMarginsAndTheTrims) {
    PaperRecord a4{"A4", 210, 297, {}, {10, 20, 30, 40}};
    const ChoicePaper offered = offeredPaper(a4, Units::millimetres, std::nullopt);
    EXPECT_DOUBLE_EQ(offered.paperWidth, 210 / 25.4);
    EXPECT_DOUBLE_EQ(offered.tileWidth, 150 / 25.4);
    EXPECT_DOUBLE_EQ(offered.tileHeight, 257 / 25.4);
    const ChoicePaper trimmed = offeredPaper(a4, Units::millimetres, EdgeTrims{0.1, 0.2, 0.3, 0.4});
    EXPECT_NEAR(trimmed.tileWidth, 150 / 25.4 - 0.6, 1e-12);
    EXPECT_NEAR(trimmed.tileHeight, 257 / 25.4 - 0.4, 1e-12);
}

TEST(ChoiceTexts, OfferNoTileOutsideTheLimits) {
    const PaperRecord tiny{"Tiny", 2, 2, {}, {0.7, 0.7, 0.7, 0.7}};
    EXPECT_EQ(offeredPaper(tiny, Units::inches, std::nullopt).tileWidth, 0);
}

TEST(ChoiceTexts, RoundSharesDown) {
    EXPECT_EQ(shareText(1), "100 %");
    EXPECT_EQ(shareText(0.9999), "99 %");
    EXPECT_EQ(shareText(0.6700000000000001), "67 %");
    EXPECT_EQ(shareText(0.67), "67 %");
    EXPECT_EQ(shareText(0), "0 %");
}

TEST(ChoiceTexts, SaySheetsInTheSingularToo) {
    PosterChoice choice;
    choice.tilesWide = choice.tilesHigh = choice.sheets = 1;
    EXPECT_EQ(sheetsText(choice), "1 x 1 sheet");
    choice.tilesTurned = true;
    EXPECT_EQ(sheetsText(choice), "1 x 1 sheet, on its side");
    choice.tilesWide = choice.sheets = 3;
    EXPECT_EQ(sheetsText(choice), "3 x 1 sheets, on their side");
}

TEST(ChoiceTexts, SayAChoiceInOneLine) {
    const std::vector<ChoicePaper> papers{{"Letter", 8.5, 11, 8, 10}};
    const PosterChoices choices = chosenFor(24, papers);
    ASSERT_FALSE(choices.best.empty());
    // 3 x 2 sheets of 8 x 10 inches show 4800 of 6000 columns, at 200 dots per inch.
    EXPECT_EQ(choiceLine(choices.best.front(), photo, papers, Units::inches),
              "3 x 2 sheets: 24 x 20 inches, 200.0 dpi (Very Good), 80 % of the photo");
    EXPECT_EQ(choiceLine(choices.best.front(), photo, papers, Units::millimetres),
              "3 x 2 sheets: 61 x 50.8 cm, 78.7 dots/cm (Very Good), 80 % of the photo");
    std::vector<ChoicePaper> two = papers;
    two.push_back(papers[0]);
    EXPECT_EQ(choiceLine(choices.best.front(), photo, two, Units::inches).substr(0, 8), "Letter: ");
}

TEST(ChoiceTexts, SayAChoiceShorterInAList) {
    const std::vector<ChoicePaper> papers{{"Letter", 8.5, 11, 8, 10}};
    PosterChoice choice = chosenFor(24, papers).best.front();
    EXPECT_EQ(choiceRow(choice, photo, papers, Units::inches),
              "3 x 2 sheets: 24 x 20 inches, Very Good, 80 % of the photo");
    const std::vector<ChoicePaper> two{papers[0], papers[0]};
    EXPECT_EQ(choiceRow(choice, photo, two, Units::inches),
              "Letter: 3 x 2: 24 x 20 inches, Very Good, 80 % of the photo");
    choice.tilesTurned = true;
    EXPECT_EQ(choiceRow(choice, photo, two, Units::inches).substr(0, 29),
              "Letter: 3 x 2, on their side:");
}

TEST(ChoiceTexts, LineUpInATable) {
    const auto papers = papersOf(Units::millimetres);
    const PosterChoices choices = chosenFor(40, papers);
    const std::string table = choiceTable(choices.best, photo, papers, Units::millimetres);
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'),
              static_cast<long>(choices.best.size()) + 1);
    EXPECT_EQ(table.substr(0, 6), "sheets");
    const std::size_t column = table.find("paper");
    std::size_t line = table.find('\n') + 1;
    for (const PosterChoice& choice : choices.best) {
        const std::string& name = papers[static_cast<std::size_t>(choice.paper)].name;
        EXPECT_EQ(table.substr(line + column, name.size()), name);
        line = table.find('\n', line) + 1;
    }
}

TEST(ChoiceTexts, SayWhyAWishCannotBeMet) {
    const std::vector<ChoicePaper> letter{{"Letter", 8.5, 11, 8, 10}};
    const auto sentence = [&](const PosterWish& wish, const ChoiceLimits& limits) {
        return choiceProblemText(choosePoster(wish, limits, letter), wish, limits, letter,
                                 Units::inches);
    };
    PosterWish wide;
    wide.width = 300;
    EXPECT_EQ(sentence(wide, {60000, 40000}).substr(0, 75),
              "25 by 25 sheets are too few for that; the largest poster is 250 inches wide");
    EXPECT_EQ(sentence(wide, {60000, 40000}).find(" wide and "), std::string::npos);
    PosterWish both = wide;
    both.height = 300;
    EXPECT_NE(sentence(both, {60000, 40000}).find(" wide and "), std::string::npos);
    PosterWish many;
    many.height = 100;
    EXPECT_EQ(sentence(many, {100, 100}).substr(0, 61),
              "The photo has fewer than 25 pixels for each side of so many t");
    PosterWish small;
    small.width = 0.5;
    EXPECT_EQ(sentence(small, photo), "The smallest poster is 0.75 inches wide and high.");
    PosterWish sharp;
    sharp.quality = "Excellent";
    EXPECT_EQ(sentence(sharp, {300, 200}),
              "Even one sheet has no more than 25.0 dpi, which is \"Fair from a distance\".");
    PosterWish fine;
    fine.width = 20;
    EXPECT_EQ(sentence(fine, photo), "");
}

} // namespace
} // namespace veldara
