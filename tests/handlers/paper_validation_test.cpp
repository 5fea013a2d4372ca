// Every check of the paper dialog's entries, in their order.
#include "paper_support.h"

namespace veldara::test {
namespace {

const char* const paperTooSmallInches =
    "Invalid paper size - size too small.  Minimum size is 0.5.";
const char* const paperTooSmallMm = "Invalid paper size - size too small.  Minimum size is 12.";
const char* const paperUnreadable = "Invalid Paper Width or Height.";
const char* const marginBelowZero = "Invalid margin value - can't be less than zero";
const char* const leftRight =
    "Invalid Left / Right Margins.  Together they are larger than the paper width.";
const char* const topBottom =
    "Invalid Top / Bottom Margins.  Together they are larger than the paper height.";

// The custom paper in inches with these entries.
class CustomPaper : public PaperWindow {
  public:
    explicit CustomPaper(bool millimetres = false) {
        dialog.load();
        if (millimetres) {
            dialog.opbMm.userSelect();
        }
        choose(millimetres ? mmCustom : inchCustom);
    }
    std::string refusalOf(const std::string& width, const std::string& height,
                          const Texts& margins = {"0", "0", "0", "0"}) {
        dialog.txtWidth.userSetText(width);
        dialog.txtHeight.userSetText(height);
        enterMargins(margins[0], margins[1], margins[2], margins[3]);
        return refusal();
    }
};

TEST(PaperValidation, PaperBelowHalfAnInch) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf("0.4", "6"), paperTooSmallInches);
    EXPECT_EQ(paper.refusalOf("6", "0.49"), paperTooSmallInches);
    EXPECT_EQ(paper.refusalOf("-3", "6"), paperTooSmallInches);
    EXPECT_TRUE(paper.owner.calls.empty());
}

TEST(PaperValidation, HalfAnInchPassesTheFirstCheckAndFailsALaterOne) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf("0.5", "6"), "Paper size too small");
}

TEST(PaperValidation, PaperBelowTwelveMillimetres) {
    CustomPaper paper(true);
    EXPECT_EQ(paper.refusalOf("11.9", "100"), paperTooSmallMm);
    EXPECT_EQ(paper.refusalOf("12", "100"), "Paper size too small");
}

TEST(PaperValidation, SizeThatCannotBeRead) {
    CustomPaper paper;
    for (const std::string text : {"", " ", "six", "6 in", "1e999", "6,5"}) {
        EXPECT_EQ(paper.refusalOf(text, "6"), paperUnreadable) << text;
        EXPECT_EQ(paper.refusalOf("6", text), paperUnreadable) << text;
        EXPECT_EQ(paper.paperResult(), "Invalid Paper size entered");
        EXPECT_EQ(paper.tileResult(), "-");
    }
}

TEST(PaperValidation, BlanksAroundANumberAreOverlooked) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf(" 6 ", "4"), "");
}

TEST(PaperValidation, EveryMarginBelowZero) {
    for (std::size_t edge = 0; edge < 4; ++edge) {
        CustomPaper paper;
        PaperWindow::Texts margins(4, "0");
        margins[edge] = "-0.01";
        EXPECT_EQ(paper.refusalOf("6", "4", margins), marginBelowZero);
        EXPECT_EQ(paper.paperResult(), "6.00 x 4.00 Inches");
        EXPECT_EQ(paper.tileResult(), "Invalid margin size selected");
    }
}

TEST(PaperValidation, NothingIsLeftBetweenLeftAndRight) {
    PaperWindow window;
    window.open(
        [&] {
            window.enterMargins("1", "4.25", "1", "4.25");
            EXPECT_EQ(window.refusal(), leftRight);
            window.enterMargins("1", "8.6", "1", "0");
            EXPECT_EQ(window.refusal(), leftRight);
            window.enterMargins("1", "4.25", "1", "4.2");
            EXPECT_EQ(window.refusal(), "Paper/Margins too small");
        },
        letterLine());
}

TEST(PaperValidation, NothingIsLeftBetweenTopAndBottom) {
    PaperWindow window;
    window.open(
        [&] {
            window.enterMargins("5.5", "1", "5.5", "1");
            EXPECT_EQ(window.refusal(), topBottom);
        },
        letterLine());
}

TEST(PaperValidation, PaperBelowTheLeastTile) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf("0.74", "4"), "Paper size too small");
    EXPECT_EQ(paper.refusalOf("4", "0.74"), "Paper size too small");
    EXPECT_EQ(paper.refusalOf("0.75", "0.75"), "");
}

TEST(PaperValidation, PaperAboveTheLargestTile) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf("50.01", "4"), "Paper size too large");
    EXPECT_EQ(paper.refusalOf("4", "50.01"), "Paper size too large");
    EXPECT_EQ(paper.refusalOf("50", "50"), "");
    // Margins do not make a sheet small enough.
    EXPECT_EQ(paper.refusalOf("51", "4", {"0", "1", "0", "1"}), "Paper size too large");
}

TEST(PaperValidation, TileBelowTheLeast) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf("4", "6", {"0", "1.63", "0", "1.63"}), "Paper/Margins too small");
    EXPECT_EQ(paper.refusalOf("4", "6", {"5.26", "0", "0", "0"}), "Paper/Margins too small");
    EXPECT_EQ(paper.refusalOf("4", "6", {"5.25", "3.25", "0", "0"}), "");
}

TEST(PaperValidation, LimitsInMillimetresAreThoseInInches) {
    CustomPaper paper(true);
    EXPECT_EQ(paper.refusalOf("19.04", "100"), "Paper size too small");
    EXPECT_EQ(paper.refusalOf("19.05", "100"), "");
    EXPECT_EQ(paper.refusalOf("1270", "1270"), "");
    EXPECT_EQ(paper.refusalOf("1270.1", "100"), "Paper size too large");
}

TEST(PaperValidation, ChecksAreInTheirOrder) {
    CustomPaper paper;
    // Everything is wrong; then one after the other is put right.
    EXPECT_EQ(paper.refusalOf("x", "0.2", {"-1", "9", "9", "9"}), paperUnreadable);
    EXPECT_EQ(paper.refusalOf("0.6", "0.2", {"-1", "9", "9", "9"}), paperTooSmallInches);
    EXPECT_EQ(paper.refusalOf("0.6", "0.6", {"-1", "9", "9", "9"}), marginBelowZero);
    EXPECT_EQ(paper.refusalOf("0.6", "0.6", {"9", "9", "9", "9"}), leftRight);
    EXPECT_EQ(paper.refusalOf("0.6", "0.6", {"9", "0", "9", "0"}), topBottom);
    EXPECT_EQ(paper.refusalOf("0.6", "0.6"), "Paper size too small");
    EXPECT_EQ(paper.refusalOf("0.8", "0.8", {"0.1", "0", "0", "0"}), "Paper/Margins too small");
    EXPECT_EQ(paper.refusalOf("0.8", "0.8"), "");
}

TEST(PaperValidation, MarginThatCannotBeRead) {
    CustomPaper paper;
    EXPECT_EQ(paper.refusalOf("6", "4", {"0", "x", "0", "0"}), marginBelowZero);
}

TEST(PaperValidation, TypingNeverShowsABox) {
    CustomPaper paper;
    for (const char* const text : {"", "-", "0", "9999", "x", "0.4"}) {
        paper.dialog.txtWidth.userSetText(text);
        paper.dialog.cmbMargins[2].userSetText(text);
    }
    EXPECT_TRUE(paper.fakes.dialogs.quiet());
}

} // namespace
} // namespace veldara::test
