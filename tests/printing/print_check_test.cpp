// What a printer cannot print of a poster, and how that is said.
#include "printing/print_check.h"
#include "sheets/sheet_jobs.h"
#include "support/decimal_comma.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using veldara::testing::a4Job;
using veldara::testing::borderlessJob;

double mm(double length) {
    return length * pointsPerMillimetre;
}

PrinterPaper paper(const std::string& name, double width, double height, double white) {
    return {name, mm(width), mm(height), {mm(white), mm(white), mm(white), mm(white)}};
}

PrinterFacts office() {
    return {"office", {paper("A4", 210, 297, 4.2), paper("US Letter", 215.9, 279.4, 4.2)}, false};
}

// A paper that the office has not.
SheetJob onA3(SheetJob job) {
    job.paperWidth = mm(297);
    job.paperHeight = mm(420);
    job.paperName = "A3 - 297 x 420";
    return job;
}

SheetJob jobWithMargins(double top, double right, double bottom, double left) {
    SheetJob job = a4Job();
    job.margins = {mm(top), mm(right), mm(bottom), mm(left)};
    return job;
}

std::string textFor(const SheetJob& job, const PrinterFacts& printer, NumberStyle style = {}) {
    return shortageText(printShortage(job, printer), job, printer.name, style);
}

TEST(PrintCheck, WiderMarginsThanThePrintersAreFine) {
    EXPECT_TRUE(printShortage(a4Job(), office()).none());
    EXPECT_TRUE(printShortage(jobWithMargins(4.2, 4.2, 4.2, 4.2), office()).none())
        << "the same margins";
}

TEST(PrintCheck, EachEdgeIsComparedByItself) {
    const PrintShortage shortage = printShortage(jobWithMargins(10, 4, 2.4, 5), office());
    EXPECT_TRUE(shortage.hasPaper);
    ASSERT_EQ(shortage.edges.size(), 2U);
    EXPECT_EQ(shortage.edges[0].edge, edgeRight);
    EXPECT_NEAR(shortage.edges[0].missing, mm(0.2), 1e-9);
    EXPECT_EQ(shortage.edges[1].edge, edgeBottom);
    EXPECT_NEAR(shortage.edges[1].white, mm(4.2), 1e-9);
    EXPECT_NEAR(shortage.edges[1].missing, mm(1.8), 1e-9);
}

TEST(PrintCheck, SaysWhatWouldBeMissingAndTheWaysOut) {
    EXPECT_EQ(textFor(jobWithMargins(10, 10, 2.4, 10), office()),
              "The printer \"office\" cannot print these sheets as they are.\n\n"
              "Your printer leaves 4.2 mm white at the bottom; 1.8 mm of every sheet would be "
              "missing.\n\n"
              "You can set wider margins for the paper, or choose borderless printing in the "
              "settings of the printer's driver together with edge calibration.\n"
              "Or you can go on.  Do you want to print the sheets as they are?");
}

TEST(PrintCheck, EverythingIsOneText) {
    EXPECT_EQ(textFor(onA3(jobWithMargins(0, 10, 10, 0)), office()),
              "The printer \"office\" cannot print these sheets as they are.\n\n"
              "Your printer does not have the paper A3 - 297 x 420 (297 x 420 mm); the nearest "
              "that it has is A4 (210 x 297 mm).\n"
              "Your printer leaves 4.2 mm white at the top; 4.2 mm of every sheet would be "
              "missing.\n"
              "Your printer leaves 4.2 mm white at the left; 4.2 mm of every sheet would be "
              "missing.\n\n"
              "You can choose a paper that the printer has, with \"Edit\" in step 2.\n"
              "You can set wider margins for the paper, or choose borderless printing in the "
              "settings of the printer's driver together with edge calibration.\n"
              "Or you can go on.  Do you want to print the sheets as they are?");
}

TEST(PrintCheck, OnlyWhatHelpsIsProposed) {
    EXPECT_EQ(textFor(onA3(a4Job()), office()),
              "The printer \"office\" cannot print these sheets as they are.\n\n"
              "Your printer does not have the paper A3 - 297 x 420 (297 x 420 mm); the nearest "
              "that it has is A4 (210 x 297 mm).\n\n"
              "You can choose a paper that the printer has, with \"Edit\" in step 2.\n"
              "Or you can go on.  Do you want to print the sheets as they are?");
}

TEST(PrintCheck, LengthsAreInTheUnitsOfThePoster) {
    SheetJob job = jobWithMargins(10, 10, 2.4, 10);
    job.units = Units::inches;
    EXPECT_NE(textFor(job, office(), comma).find("0,17 inches white at the bottom; 0,07 inches of"),
              std::string::npos);
    job.paperWidth = 4 * pointsPerInch;
    job.paperHeight = 6 * pointsPerInch;
    EXPECT_NE(textFor(job, office(), comma).find("(4 x 6 inches)"), std::string::npos);
}

TEST(PrintCheck, WhatEdgeCalibrationLeavesOutIsNotMissing) {
    const PrintShortage shortage = printShortage(borderlessJob(), office());
    ASSERT_EQ(shortage.edges.size(), 4U);
    EXPECT_NEAR(shortage.edges[0].missing, mm(1.2), 1e-9) << "3 mm are given up anyway";
}

TEST(PrintCheck, APaperIsFoundInEitherOrientationAndInWholePoints) {
    const PrinterFacts printer{"p", {{"A4", 595, 842, {}}}, false};
    EXPECT_NE(findPrinterPaper(printer, mm(210), mm(297)), nullptr);
    EXPECT_NE(findPrinterPaper(printer, mm(297), mm(210)), nullptr);
    EXPECT_EQ(findPrinterPaper(printer, mm(216), mm(279)), nullptr);
}

TEST(PrintCheck, OnASheetThatLiesOnItsSideTheWiderWhiteOfBothSidesCounts) {
    SheetJob job = jobWithMargins(5, 5, 5, 5);
    std::swap(job.paperWidth, job.paperHeight);
    PrinterFacts printer = office();
    printer.papers[0].white = {mm(3), mm(6), mm(12), mm(3)};
    const PrintShortage shortage = printShortage(job, printer);
    ASSERT_EQ(shortage.edges.size(), 4U);
    EXPECT_NEAR(shortage.edges[0].white, mm(6), 1e-9) << "the printer's left or right";
    EXPECT_NEAR(shortage.edges[1].white, mm(12), 1e-9) << "its top or bottom";
    EXPECT_NEAR(shortage.edges[2].white, mm(6), 1e-9);
    EXPECT_NEAR(shortage.edges[3].white, mm(12), 1e-9);
}

TEST(PrintCheck, TheNearestPaperIsTheOneThatDiffersLeast) {
    SheetJob job = a4Job();
    job.paperWidth = 11 * pointsPerInch;
    job.paperHeight = 8 * pointsPerInch;
    const PrintShortage shortage = printShortage(job, office());
    EXPECT_FALSE(shortage.hasPaper);
    EXPECT_EQ(shortage.nearest.name, "US Letter");
}

TEST(PrintCheck, APrinterOfAnySizeMissesNoPaper) {
    PrinterFacts printer = office();
    printer.takesCustomSizes = true;
    SheetJob job = a4Job();
    job.paperWidth = mm(300);
    EXPECT_TRUE(printShortage(job, printer).none());
}

TEST(PrintCheck, APrinterThatSaysNothingIsBelieved) {
    EXPECT_TRUE(printShortage(jobWithMargins(0, 0, 0, 0), {"mute", {}, false}).none());
}

} // namespace
} // namespace veldara::test
