#include "layout/tile_size.h"
#include "paper/margin_lists.h"
#include "paper/paper_catalogue.h"
#include "paper/paper_check.h"
#include "paper/paper_line.h"
#include "support/decimal_comma.h"

#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::comma;

bool accept(PaperTables& tables, const std::string& line, NumberStyle style = {}) {
    return setPrefFromRegLine(tables, line, minTileInches, maxTileInches, style);
}

PaperTables withPaper(const std::string& name, Units units) {
    PaperTables tables = buildPaperTables();
    tables.units = units;
    tables.index(units) = findPaperIndex(tables, name, units == Units::inches ? 0 : 1).index;
    return tables;
}

TEST(PaperCatalogue, HoldsTheInchPapers) {
    const PaperTables tables = buildPaperTables();
    const Margins none{0, 0, 0, 0};
    const Margins document{1, 1.25, 1, 1.25};
    const std::vector<PaperRecord> expected{
        {"Photo 4\" x 6\"", 6, 4, none, none},
        {"Photo 5\" x 7\"", 7, 5, none, none},
        {"Photo 8\" x 10\"", 8, 10, none, none},
        {"Letter 8.5\" x 11\"", 8.5, 11, document, document},
        {"Legal 8.5\" x 14\"", 8.5, 14, document, document},
        {"Canvas 11\" x 17\"", 11, 17, document, document},
        {"Custom (Inches)", 4, 6, none, none},
    };
    EXPECT_EQ(tables.inches, expected);
}

TEST(PaperCatalogue, HoldsTheMillimetrePapers) {
    const auto paper = [](const char* name, double width, double height, double margin) {
        const Margins all{margin, margin, margin, margin};
        return PaperRecord{name, width, height, all, all};
    };
    const std::vector<PaperRecord> expected{
        paper("A8 - 53 x 74", 74, 53, 10),     paper("A7 - 74 x 105", 105, 74, 10),
        paper("A6 - 105 x 148", 148, 105, 15), paper("A5 - 148 x 210", 148, 210, 15),
        paper("A4 - 210 x 297", 210, 297, 25), paper("A3 - 297 x 420", 297, 420, 25),
        paper("A2 - 420 x 594", 420, 594, 25), paper("Custom (mm)", 148, 210, 0),
    };
    EXPECT_EQ(buildPaperTables().millimetres, expected);
}

TEST(PaperCatalogue, RestsOnTheFirstPhotoPaper) {
    const PaperTables tables = buildPaperTables();
    EXPECT_EQ(tables.units, Units::inches);
    EXPECT_EQ(tables.current().name, "Photo 4\" x 6\"");
    EXPECT_EQ(tables.current().tileWidth(), 6);
    EXPECT_EQ(tables.current().tileHeight(), 4);
    EXPECT_EQ(tables.millimetreIndex, 0);
}

TEST(PaperCatalogue, MarginsAreTakenOffTheSheet) {
    const PaperTables letter = withPaper("Letter 8.5\" x 11\"", Units::inches);
    EXPECT_EQ(letter.current().tileWidth(), 6);
    EXPECT_EQ(letter.current().tileHeight(), 9);
    const PaperTables a4 = withPaper("A4 - 210 x 297", Units::millimetres);
    EXPECT_EQ(a4.current().tileWidth(), 160);
    EXPECT_EQ(a4.current().tileHeight(), 247);
}

TEST(PaperCatalogue, IsSearchedByTheExactName) {
    const PaperTables tables = buildPaperTables();
    EXPECT_EQ(findPaperIndex(tables, "Custom (Inches)", 0).index, 6);
    EXPECT_TRUE(findPaperIndex(tables, "Custom (Inches)", 0).isCustom);
    EXPECT_TRUE(findPaperIndex(tables, "Custom (mm)", 1).isCustom);
    EXPECT_EQ(findPaperIndex(tables, "A4 - 210 x 297", 1).index, 4);
    EXPECT_FALSE(findPaperIndex(tables, "A4 - 210 x 297", 1).isCustom);
    EXPECT_EQ(findPaperIndex(tables, "A4 - 210 x 297", 0).index, -1);
    EXPECT_EQ(findPaperIndex(tables, "a4 - 210 x 297", 1).index, -1);
    EXPECT_EQ(findPaperIndex(tables, "Custom (mm)", 2).index, -1);
    EXPECT_EQ(findPaperIndex(tables, "Custom (mm)", -1).index, -1);
    EXPECT_EQ(findPaperIndex(tables, "", 0).index, -1);
}

TEST(PaperLine, IsWrittenFieldByField) {
    EXPECT_EQ(makePaperRegLine(withPaper("Letter 8.5\" x 11\"", Units::inches)),
              "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|1|1.25|1|1.25|");
    EXPECT_EQ(makePaperRegLine(withPaper("A8 - 53 x 74", Units::millimetres)),
              "|1|A8 - 53 x 74|74|53|10|10|10|10|10|10|10|10|");
    EXPECT_EQ(makePaperRegLine(withPaper("Letter 8.5\" x 11\"", Units::inches), comma),
              "|0|Letter 8.5\" x 11\"|8,5|11|1|1,25|1|1,25|1|1,25|1|1,25|");
}

TEST(PaperLine, IsReadBackForEveryPaper) {
    for (const Units units : {Units::inches, Units::millimetres}) {
        const PaperTables fresh = buildPaperTables();
        for (const PaperRecord& paper : fresh.catalogue(units)) {
            const PaperTables written = withPaper(paper.name, units);
            PaperTables read = buildPaperTables();
            EXPECT_TRUE(accept(read, makePaperRegLine(written))) << paper.name;
            EXPECT_EQ(read, written) << paper.name;
        }
    }
}

TEST(PaperLine, ThatIsBadBuildsTheTablesAnew) {
    for (const char* line : {
             "", "|",
             "|0|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1",     // too short
             "|2|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",  // unknown units
             "|-1|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|", //
             "|x|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",  //
             "||Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",   //
             "|1|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",  // a paper of the other units
             "|0|letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|1|",  //
             "|0|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|1|1|x|",  // no number
             "|0|Letter 8.5\" x 11\"|8.5|11|1|1|1|1||1|1|1|",   //
             "|0|Custom (Inches)|x|11|1|1|1|1|1|1|1|1|",        //
             "|0|Letter 8.5\" x 11\"|8.5|11|1|1|1|1|1|4|1|4|",  // 0.5 inches are left
             "|0|Custom (Inches)|60|11|0|0|0|0|0|0|0|0|",       // more than the maximum
         }) {
        PaperTables tables = withPaper("A3 - 297 x 420", Units::millimetres);
        tables.inches[6].width = 12;
        EXPECT_FALSE(accept(tables, line)) << line;
        EXPECT_EQ(tables, buildPaperTables()) << line;
    }
}

TEST(PaperLine, SizesCountForCustomPapersOnly) {
    PaperTables tables = buildPaperTables();
    ASSERT_TRUE(accept(tables, "|0|Letter 8.5\" x 11\"|99|99|9|9|9|9|0.5|0.25|0.5|0.25|"));
    EXPECT_EQ(tables.current().width, 8.5);
    EXPECT_EQ(tables.current().height, 11);
    EXPECT_EQ(tables.current().margins, (Margins{0.5, 0.25, 0.5, 0.25}));
    EXPECT_EQ(tables.current().defaultMargins, (Margins{1, 1.25, 1, 1.25}));

    ASSERT_TRUE(accept(tables, "|1|Custom (mm)|300|400|0|0|0|0|1|2|3|4|"));
    EXPECT_EQ(tables.units, Units::millimetres);
    EXPECT_EQ(tables.current().width, 300);
    EXPECT_EQ(tables.current().tileWidth(), 294);
    EXPECT_EQ(tables.current().tileHeight(), 396);
    EXPECT_EQ(tables.inchIndex, 3); // the other unit's choice is left as it was

    ASSERT_TRUE(accept(tables, "|0|Photo 8\" x 10\"|8|10|0|0|0|0|0|0|0|0|"));
    EXPECT_EQ(tables.millimetres[7].width, 300); // for the rest of the run
}

TEST(PaperLine, AtALimitIsAcceptedAndAHundredthBeyondIsNot) {
    const auto custom = [](const std::string& width) {
        return "|0|Custom (Inches)|" + width + "|10|0|0|0|0|0|0|0|0|";
    };
    PaperTables tables = buildPaperTables();
    EXPECT_TRUE(accept(tables, custom("0.75")));
    EXPECT_FALSE(accept(tables, custom("0.74")));
    EXPECT_TRUE(accept(tables, custom("50")));
    EXPECT_FALSE(accept(tables, custom("50.01")));
    const auto metric = [](const std::string& height, const std::string& margin) {
        return "|1|Custom (mm)|100|" + height + "|0|0|0|0|" + margin + "|0|" + margin + "|0|";
    };
    EXPECT_TRUE(accept(tables, metric("19.05", "0")));
    EXPECT_FALSE(accept(tables, metric("19.04", "0")));
    EXPECT_TRUE(accept(tables, metric("1270", "0")));
    EXPECT_FALSE(accept(tables, metric("1270.01", "0")));
    for (const char* width : {"19.04", "1270.01"}) {
        EXPECT_FALSE(
            accept(tables, "|1|Custom (mm)|" + std::string(width) + "|100|0|0|0|0|0|0|0|0|"))
            << width;
    }
    for (const char* height : {"0.74", "50.01"}) {
        EXPECT_FALSE(
            accept(tables, "|0|Custom (Inches)|10|" + std::string(height) + "|0|0|0|0|0|0|0|0|"))
            << height;
    }
    EXPECT_TRUE(accept(tables, metric("148", "64.475")));
    EXPECT_FALSE(accept(tables, metric("148", "64.48")));
}

TEST(PaperLine, AcceptsANegativeMargin) {
    PaperTables tables = buildPaperTables();
    EXPECT_TRUE(accept(tables, "|0|Photo 8\" x 10\"|8|10|0|0|0|0|-1|0|0|0|"));
    EXPECT_EQ(tables.current().tileHeight(), 11);
}

TEST(PaperLine, IsWrittenAndReadInTheUsersStyle) {
    PaperTables tables = buildPaperTables();
    EXPECT_TRUE(
        accept(tables, "|0|Letter 8.5\" x 11\"|8,5|11|1|1,25|1|1,25|0,5|0,5|0,5|0,5|", comma));
    EXPECT_EQ(tables.current().margins[0], 0.5);
    EXPECT_FALSE(
        accept(tables, "|0|Letter 8.5\" x 11\"|8.5|11|1|1.25|1|1.25|0.5|0.5|0.5|0.5|", comma));
}

TEST(PaperLineProperties, AnyAcceptedStateComesBack) {
    std::mt19937 random(12);
    std::uniform_real_distribution<double> margin(0, 2);
    std::uniform_real_distribution<double> side(5, 50);
    for (int round = 0; round < 5000; ++round) {
        PaperTables tables = buildPaperTables();
        tables.inchIndex = round % 7;
        PaperRecord& paper = tables.current();
        for (double& edge : paper.margins) {
            edge = margin(random);
        }
        if (tables.inchIndex == 6) {
            paper.width = side(random);
            paper.height = side(random);
        }
        if (!isWithin(paper.tileWidth(), minTileInches, maxTileInches) ||
            !isWithin(paper.tileHeight(), minTileInches, maxTileInches)) {
            continue;
        }
        PaperTables read = buildPaperTables();
        const NumberStyle style = round % 2 == 0 ? NumberStyle{} : comma;
        ASSERT_TRUE(accept(read, makePaperRegLine(tables, style), style));
        ASSERT_EQ(read, tables);
    }
}

PaperCheck check(const std::string& width, const std::string& height,
                 const std::array<std::string, 4>& margins, Units units = Units::inches) {
    return checkPaper(readPaperEntries(width, height, margins), units, minTileInches,
                      maxTileInches);
}

TEST(PaperCheck, AcceptsWhatCanBePrinted) {
    EXPECT_TRUE(check("8.5", "11", {"1", "1.25", "1", "1.25"}).ok());
    EXPECT_TRUE(check("210", "297", {"25", "25", "25", "25"}, Units::millimetres).ok());
    EXPECT_TRUE(check("0.75", "50", {"0", "0", "0", "0"}).ok());
    EXPECT_TRUE(check("19.05", "1270", {"0", "0", "0", "0"}, Units::millimetres).ok());
}

TEST(PaperCheck, RefusesASheetThatIsTooSmall) {
    const PaperCheck tooSmall = check("0.4", "11", {"0", "0", "0", "0"});
    EXPECT_EQ(tooSmall.text, "Invalid paper size - size too small.  Minimum size is 0.5.");
    EXPECT_EQ(tooSmall.fault, PaperFault::paper);
    EXPECT_EQ(check("11", "11.9", {"0", "0", "0", "0"}, Units::millimetres).text,
              "Invalid paper size - size too small.  Minimum size is 12.");
    // Half an inch passes this check, and fails a later one.
    EXPECT_EQ(check("0.5", "11", {"0", "0", "0", "0"}).text, "Paper size too small");
    EXPECT_EQ(check("12", "100", {"0", "0", "0", "0"}, Units::millimetres).text,
              "Paper size too small");
}

TEST(PaperCheck, RefusesASizeThatIsNoNumber) {
    EXPECT_EQ(check("", "11", {"0", "0", "0", "0"}).text, "Invalid Paper Width or Height.");
    EXPECT_EQ(check("8", "eleven", {"0", "0", "0", "0"}).text, "Invalid Paper Width or Height.");
}

TEST(PaperCheck, RefusesANegativeMargin) {
    for (int edge = 0; edge < 4; ++edge) {
        std::array<std::string, 4> margins{"0", "0", "0", "0"};
        margins[static_cast<std::size_t>(edge)] = "-0.01";
        const PaperCheck result = check("8.5", "11", margins);
        EXPECT_EQ(result.text, "Invalid margin value - can't be less than zero");
        EXPECT_EQ(result.fault, PaperFault::margin);
        margins[static_cast<std::size_t>(edge)] = "x";
        EXPECT_EQ(check("8.5", "11", margins).fault, PaperFault::margin);
    }
}

TEST(PaperCheck, RefusesMarginsThatTakeTheWholeSheet) {
    const PaperCheck sides = check("8.5", "11", {"1", "4.25", "1", "4.25"});
    EXPECT_EQ(sides.text,
              "Invalid Left / Right Margins.  Together they are larger than the paper width.");
    EXPECT_EQ(check("8.5", "11", {"6", "1", "6", "1"}).text,
              "Invalid Top / Bottom Margins.  Together they are larger than the paper height.");
    EXPECT_EQ(check("8.5", "11", {"5.5", "1", "5.5", "1"}).text,
              "Invalid Top / Bottom Margins.  Together they are larger than the paper height.");
    // Left and right are reported first.
    EXPECT_EQ(check("8.5", "11", {"6", "5", "6", "5"}).text, sides.text);
}

TEST(PaperCheck, RefusesSizesOutsideTheTileLimits) {
    EXPECT_EQ(check("0.74", "11", {"0", "0", "0", "0"}).text, "Paper size too small");
    EXPECT_EQ(check("8.5", "50.01", {"0", "0", "0", "0"}).text, "Paper size too large");
    EXPECT_EQ(check("8.5", "11", {"0", "3.9", "0", "3.9"}).text, "Paper/Margins too small");
    EXPECT_EQ(check("8.5", "11", {"0", "3.875", "0", "3.875"}).text, "");
    EXPECT_EQ(check("8.5", "11", {"5.125", "0", "5.125", "0"}).text, "");
    EXPECT_EQ(check("1270.01", "300", {"0", "0", "0", "0"}, Units::millimetres).text,
              "Paper size too large");
}

TEST(PaperCheck, IsToldInACriticalBox) {
    const Message message = invalidPaperMessage(check("0.4", "11", {"0", "0", "0", "0"}));
    EXPECT_EQ(message.title, "Invalid Values Entered");
    EXPECT_EQ(message.icon, MessageIcon::critical);
    EXPECT_EQ(message.text, "Invalid paper size - size too small.  Minimum size is 0.5.");
}

TEST(MarginLists, CountUpInEvenSteps) {
    const std::vector<std::string> inches = marginList(Units::inches);
    ASSERT_EQ(inches.size(), 201U);
    EXPECT_EQ(inches.front(), "0.00");
    EXPECT_EQ(inches[1], "0.01");
    EXPECT_EQ(inches[125], "1.25");
    EXPECT_EQ(inches.back(), "2.00");
    const std::vector<std::string> metric = marginList(Units::millimetres, comma);
    ASSERT_EQ(metric.size(), 501U);
    EXPECT_EQ(metric.front(), "0,0");
    EXPECT_EQ(metric[253], "25,3");
    EXPECT_EQ(metric.back(), "50,0");
}

TEST(PaperTexts, HaveTheDecimalsOfTheirUnits) {
    EXPECT_EQ(paperLengthText(8.5, Units::inches), "8.50");
    EXPECT_EQ(paperLengthText(148, Units::millimetres), "148.0");
    EXPECT_EQ(paperSizeText(8.5, 11, Units::inches), "8.50 x 11.00");
    EXPECT_EQ(paperResultText(6, 9, Units::inches), "6.00 x 9.00 Inches");
    EXPECT_EQ(paperResultText(210, 297, Units::millimetres), "210.0 x 297.0 mm");
    EXPECT_EQ(paperResultText(210, 297, Units::millimetres, comma), "210,0 x 297,0 mm");
    EXPECT_EQ(marginUnitsText(Units::inches), "(Margin sizes in INCHES)");
    EXPECT_EQ(marginUnitsText(Units::millimetres), "(Margin sizes in MILLIMETERS)");
    EXPECT_EQ(paperUnitsText(Units::inches), "Inches");
    EXPECT_EQ(paperUnitsText(Units::millimetres), "mm");
    EXPECT_EQ(mainUnitsText(Units::millimetres), "Millimeters");
}

} // namespace
} // namespace veldara
