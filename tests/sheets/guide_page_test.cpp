#include "platform/error.h"
#include "sheets/guide_page.h"
#include "sheets/page_font.h"
#include "sheets/sheet_jobs.h"
#include "sheets/sheet_numbers.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using testing::a4Job;
using testing::borderlessJob;
using testing::itemsOf;

bool says(const SheetPage& page, const std::string& words) {
    const std::vector<PageText> texts = itemsOf<PageText>(page.items);
    return std::any_of(texts.begin(), texts.end(), [&](const PageText& text) {
        return text.text.find(words) != std::string::npos;
    });
}

TEST(GuidePage, TellsWhatThePosterIsAndHowToPrintIt) {
    const SheetPage page = guidePage(a4Job());
    EXPECT_EQ(page.label(), "Guide");
    EXPECT_TRUE(says(page, "lake.jpg"));
    EXPECT_TRUE(says(page, "57 x 55.4 cm"));
    EXPECT_TRUE(says(page, "A4 - 210 x 297"));
    EXPECT_TRUE(says(page, "6 sheets, 3 wide and 2 high"));
    EXPECT_TRUE(says(page, "Print at 100 % (actual size), one side only"));
    EXPECT_TRUE(says(page, "must measure exactly 100 mm"));
}

TEST(GuidePage, ShowsTheWholeCropInItsShape) {
    const SheetJob job = a4Job();
    const std::vector<PagePhoto> photos = itemsOf<PagePhoto>(guidePage(job).items);
    ASSERT_EQ(photos.size(), 1U);
    const CropRect crop = cropRect(job.layout);
    EXPECT_EQ(photos[0].source.width(), crop.width);
    EXPECT_EQ(photos[0].source.height(), crop.height);
    EXPECT_NEAR(photos[0].target.width() / photos[0].target.height(), posterRatio(job.layout),
                1e-9);
    EXPECT_FALSE(photos[0].turned);
}

TEST(GuidePage, DrawsEverySeamAndTheEdgesOfThePoster) {
    const SheetPage page = guidePage(a4Job());
    const PageRect poster = itemsOf<PagePhoto>(page.items).at(0).target;
    std::size_t across = 0;
    std::size_t down = 0;
    for (const PageLine& line : itemsOf<PageLine>(page.items)) {
        across += line.from.x == poster.left && line.to.x == poster.right ? 1U : 0U;
        down += line.from.y == poster.top && line.to.y == poster.bottom ? 1U : 0U;
    }
    EXPECT_EQ(across, 2U * 3U) << "each on a halo";
    EXPECT_EQ(down, 2U * 4U);
}

TEST(GuidePage, HasARulerOfExactlyItsLength) {
    SheetJob job = a4Job();
    const auto longestLine = [](const SheetPage& page, double length) {
        const std::vector<PageLine> lines = itemsOf<PageLine>(page.items);
        return std::any_of(lines.begin(), lines.end(), [&](const PageLine& line) {
            return line.from.y == line.to.y && std::abs(line.to.x - line.from.x - length) < 1e-9;
        });
    };
    EXPECT_TRUE(longestLine(guidePage(job), 100 * pointsPerMillimetre));
    job.units = Units::inches;
    EXPECT_TRUE(longestLine(guidePage(job), 288));
    EXPECT_TRUE(says(guidePage(job), "must measure exactly 4 inches"));
}

TEST(GuidePage, TakesAShorterRulerOnSmallPaper) {
    EXPECT_EQ(guideRuler(300, Units::inches).words, "4 inches");
    EXPECT_EQ(guideRuler(287, Units::inches).words, "3 inches");
    EXPECT_EQ(guideRuler(283, Units::millimetres).words, "80 mm");
    EXPECT_EQ(guideRuler(40, Units::millimetres).words, "10 mm");
    for (const double room : {60.0, 100.0, 200.0, 400.0}) {
        for (const Units units : {Units::inches, Units::millimetres}) {
            EXPECT_LE(guideRuler(room, units).length, room);
        }
    }
}

TEST(GuidePage, StepsFollowTheWayTheSheetsAreJoined) {
    SheetJob job = a4Job();
    EXPECT_EQ(joiningOf(job), Joining::onMargins);
    job.choices.overlap = 5 * pointsPerMillimetre;
    EXPECT_EQ(joiningOf(job), Joining::onStrips);
    ASSERT_EQ(assemblySteps(job).size(), 4U);
    EXPECT_NE(assemblySteps(job)[2].find("(5 mm)"), std::string::npos);
    EXPECT_EQ(joiningOf(borderlessJob()), Joining::edgeToEdge);
    for (const Edge narrow : {edgeRight, edgeBottom}) { // one that nothing can be glued on
        SheetJob without = a4Job();
        without.margins[narrow] = 1;
        EXPECT_EQ(joiningOf(without), Joining::edgeToEdge) << narrow;
    }
}

TEST(GuidePage, StepsTellOfTheStripsThatThereAre) {
    const auto stepsWith = [](double right, double bottom, double overlap) {
        SheetJob job = a4Job();
        job.margins[edgeRight] = right * pointsPerMillimetre;
        job.margins[edgeBottom] = bottom * pointsPerMillimetre;
        job.choices.overlap = overlap * pointsPerMillimetre;
        return assemblySteps(job);
    };
    const std::string cut = "Cut off the left and the top margin where another sheet joins. ";
    EXPECT_EQ(stepsWith(10, 10, 8)[1], cut + "Leave the strips at the right and the bottom.");
    EXPECT_EQ(
        stepsWith(10, 10, 8)[2],
        "Put glue on the strip (8 mm). Lay the next sheet on it so that the picture goes on.");
    EXPECT_EQ(stepsWith(6, 6, 8)[2],
              "Put glue on the strip (6 mm). Lay the next sheet on it so that the picture goes on.")
        << "no wider than the margin";
    EXPECT_EQ(stepsWith(6, 10, 8)[2], "Put glue on the strip (6 mm at the right, 8 mm at the "
                                      "bottom). Lay the next sheet on it so that the picture goes "
                                      "on.");
    EXPECT_EQ(stepsWith(0, 10, 8)[1], cut + "Leave the strip at the bottom.");
    EXPECT_EQ(stepsWith(0, 10, 8)[2],
              "Put glue on the strip (8 mm). Lay the next sheet on it so that the picture goes on. "
              "Where there is none, tape the edges from the back.");
    EXPECT_EQ(stepsWith(10, 0, 8)[1], cut + "Leave the strip at the right.");
    EXPECT_EQ(stepsWith(0, 0, 8), stepsWith(0, 0, 0)) << "no strip anywhere";
}

TEST(GuidePage, StepsTellOfTheJointsThatThereAre) {
    SheetJob job = a4Job();
    job.choices.overlap = 8 * pointsPerMillimetre;
    job.layout.tilesHigh = 1;
    EXPECT_NE(assemblySteps(job)[1].find("Leave the strip at the right."), std::string::npos);
    EXPECT_EQ(assemblySteps(job)[2].find("none"), std::string::npos) << assemblySteps(job)[2];
    job.choices.overlap = 0;
    job.margins[edgeBottom] = 0;
    EXPECT_EQ(joiningOf(job), Joining::onMargins) << "nothing joins at the bottom";
    job.layout.tilesTurned = true; // the poster's right edge is the page's top
    EXPECT_EQ(joiningOf(job), Joining::onMargins);
    job.margins[edgeTop] = 0;
    EXPECT_EQ(joiningOf(job), Joining::edgeToEdge);
}

TEST(GuidePage, StaysOnThePageWhateverThePaper) {
    for (const auto& [width, height] : {std::pair{595.0, 842.0},
                                        {842.0, 595.0},
                                        {288.0, 432.0},
                                        {54.0, 54.0},
                                        {3600.0, 1200.0}}) {
        for (const int sheets : {1, 25}) {
            SheetJob job = a4Job();
            job.paperWidth = width;
            job.paperHeight = height;
            job.margins.fill(0);
            job.layout.tilesWide = sheets;
            job.layout.tilesHigh = sheets;
            job.margins[edgeRight] = 4;
            job.margins[edgeBottom] = 5;
            job.choices.overlap = 9;
            const SheetPage page = guidePage(job);
            for (const PageText& text : itemsOf<PageText>(page.items)) {
                EXPECT_GE(text.start.x, 0) << text.text;
                EXPECT_LE(text.start.x + pageTextWidth(text.text, text.size), width + 1e-6)
                    << text.text;
                EXPECT_GE(text.start.y - text.size, -1e-6) << text.text;
                EXPECT_LE(text.start.y, height + 1e-6) << text.text;
            }
            for (const PageLine& line : itemsOf<PageLine>(page.items)) {
                EXPECT_GE(std::min(line.from.y, line.to.y), 0);
                EXPECT_LE(std::max(line.from.x, line.to.x), width);
                EXPECT_LE(std::max(line.from.y, line.to.y), height);
            }
        }
    }
}

TEST(SheetNumbers, ReadsNumbersAndRanges) {
    EXPECT_EQ(readSheetNumbers("1-3,7", 10), (std::vector<int>{1, 2, 3, 7}));
    EXPECT_EQ(readSheetNumbers(" 7 , 3-1 ", 10), (std::vector<int>{1, 2, 3, 7}));
    EXPECT_EQ(readSheetNumbers("2,2,2", 2), std::vector<int>{2});
    EXPECT_TRUE(readSheetNumbers("  ", 10).empty());
}

TEST(SheetNumbers, RefusesWhatIsNoList) {
    for (const char* text :
         {"a", "1,,2", "1,", "-", "1-", "-3", "1.5", "0", "11", "1-11", "99999999999"}) {
        EXPECT_THROW(readSheetNumbers(text, 10), Error) << text;
    }
}

TEST(SheetNumbers, SaysWhichSheetsThereAre) {
    const auto said = [](int count) -> std::string {
        try {
            readSheetNumbers("26", count);
        } catch (const Error& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(said(6), "There is no sheet 26: the poster has the sheets 1 to 6.");
    EXPECT_EQ(said(1), "There is no sheet 26: the poster has one sheet.");
}

} // namespace
} // namespace veldara
