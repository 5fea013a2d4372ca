#include "calibration/edge_profile.h"
#include "calibration/profile_file.h"
#include "platform/error.h"
#include "support/decimal_comma.h"

#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::comma;

TEST(EdgeProfiles, AreThreeWhenNoneWasMade) {
    const std::vector<EdgeProfile> expected{{"default", {0, 0, 0, 0}},
                                            {"Kodak photo lab default", {3, 4, 3, 2}},
                                            {"Fuji photo lab default", {2, 6, 3, 6}}};
    EXPECT_EQ(builtInProfiles(), expected);
}

TEST(EdgeTrim, IsASixtyFourthOfAnInchACount) {
    EXPECT_EQ(edgeTrimInches(0), 0);
    EXPECT_EQ(edgeTrimInches(16), 0.25);
    EXPECT_EQ(edgeTrimInches(1), 1 / 64.0);
    EXPECT_EQ(edgeTrimInches(99), 99 / 64.0); // from a file edited by hand
    EXPECT_EQ(edgeTrims({3, 4, 3, 2}), (EdgeTrims{3 / 64.0, 4 / 64.0, 3 / 64.0, 2 / 64.0}));
}

TEST(StripeChoices, GoFromAllLinesToNone) {
    const std::vector<std::string> expected{
        "see all 4 lines", "see 3.75 lines", "see 3.50 lines", "see 3.25 lines", "see 3.00 lines",
        "see 2.75 lines",  "see 2.50 lines", "see 2.25 lines", "see 2.00 lines", "see 1.75 lines",
        "see 1.50 lines",  "see 1.25 lines", "see 1.00 lines", "see 0.75 lines", "see 0.50 lines",
        "see 0.25 lines",  "see no lines!"};
    EXPECT_EQ(stripeChoices(), expected);
}

TEST(TrimDescription, IsAReducedFractionOfAnInch) {
    EXPECT_EQ(trimDescription(2, Units::inches), " 1/32 inches ");
    EXPECT_EQ(trimDescription(3, Units::inches), " 3/64 inches ");
    EXPECT_EQ(trimDescription(16, Units::inches), " 1/4 inches ");
    EXPECT_EQ(trimDescription(12, Units::inches), " 3/16 inches ");
    EXPECT_EQ(trimDescription(64, Units::inches), " 1/1 inches ");
}

TEST(TrimDescription, IsInTenthsOfAMillimetre) {
    EXPECT_EQ(trimDescription(3, Units::millimetres), " 1.2 mm ");
    EXPECT_EQ(trimDescription(16, Units::millimetres), " 6.4 mm "); // 6.35
    EXPECT_EQ(trimDescription(3, Units::millimetres, comma), " 1,2 mm ");
}

TEST(EdgeDescription, HasTwoBlanksBehindOff) {
    EXPECT_EQ(edgeDescription(0, Units::inches), "None of the image is clipped");
    EXPECT_EQ(edgeDescription(3, Units::inches), "Printer cuts off  3/64 inches of image");
    EXPECT_EQ(edgeDescription(16, Units::inches), "Printer cuts off  1/4 inches of image");
    EXPECT_EQ(edgeDescription(2, Units::millimetres), "Printer cuts off  0.8 mm of image");
}

TEST(StripeWidth, IsNamedInTheUnits) {
    EXPECT_EQ(stripeWidthText(Units::inches), "1/16 inch");
    EXPECT_EQ(stripeWidthText(Units::millimetres), "1.59 mm");
}

TEST(InitialProfile, IsOneOfAFewThatClipsNothing) {
    std::vector<EdgeProfile> profiles = builtInProfiles();
    EXPECT_TRUE(isInitialProfile(profiles, 0));
    EXPECT_FALSE(isInitialProfile(profiles, 1));
    EXPECT_FALSE(isInitialProfile(profiles, 3)); // no such profile
    profiles.push_back({"mine", {0, 0, 0, 0}});
    EXPECT_FALSE(isInitialProfile(profiles, 0)); // a fourth was made
    EXPECT_TRUE(isInitialProfile({{"only", {0, 0, 0, 0}}}, 0));
}

TEST(ProfileLine, HasTwoDigitsAndACommaACount) {
    EXPECT_EQ(formatProfileLine(builtInProfiles()[1]), "Kodak photo lab default\t03,04,03,02,");
    EXPECT_EQ(formatProfileLine({"a, b", {0, 16, 9, 10}}), "a, b\t00,16,09,10,");
}

TEST(ProfileLine, IsReadByPosition) {
    EXPECT_EQ(ParseProfileLine("x\t03,04,03,02,"), (EdgeProfile{"x", {3, 4, 3, 2}}));
    EXPECT_EQ(ParseProfileLine("x\t03;04 03x02"), (EdgeProfile{"x", {3, 4, 3, 2}}));
    EXPECT_EQ(ParseProfileLine(" x \t 3,4 ,99,-1"), (EdgeProfile{" x ", {3, 4, 99, -1}}));
    EXPECT_EQ(ParseProfileLine("x\t03·04·03·02·"), (EdgeProfile{"x", {3, 4, 3, 2}}));
    EXPECT_EQ(ParseProfileLine("\t00,00,00,00,").name, "");
    EXPECT_EQ(ParseProfileLine("x\t1.,.9,02,00,").clipCounts,
              (ClipCounts{1, 0, 2, 0})); // the whole part of a number
}

TEST(ProfileLine, WithoutATabOrWithABadCountIsRefused) {
    for (const char* line : {"", "name", "name 03,04,03,02,", "x\t", "x\t03,04,03", "x\t03,04,03,",
                             "x\tab,04,03,02,", "x\t3,4,3,2,", "x\t03\t,04,03,02"}) {
        EXPECT_THROW(ParseProfileLine(line), Error) << line;
    }
}

TEST(ProfileFile, StandsInTheApplicationFolderOrTheProgramsOwn) {
    EXPECT_EQ(profileFilePath("C:\\Poster", "D:\\bin", '\\'), "C:\\Poster\\printer_edge_config");
    EXPECT_EQ(profileFilePath("C:\\", "D:\\bin", '\\'), "C:\\printer_edge_config");
    EXPECT_EQ(profileFilePath("", "/home/me/.local/share/veldara", '/'),
              "/home/me/.local/share/veldara/printer_edge_config");
}

TEST(ProfileFile, IsReadLineByLine) {
    const ProfileFileContent content = readProfileText("a\t01,02,03,04,\r\nb c\t00,00,00,16,\r\n");
    EXPECT_EQ(content.status, 2);
    EXPECT_EQ(content.profiles,
              (std::vector<EdgeProfile>{{"a", {1, 2, 3, 4}}, {"b c", {0, 0, 0, 16}}}));
}

TEST(ProfileFile, IsLostToOneBadLine) {
    EXPECT_EQ(readProfileText("a\t01,02,03,04,\r\nno tab here\r\n").status, 0);
    EXPECT_TRUE(readProfileText("a\t01,02,03,04,\r\nno tab here\r\n").profiles.empty());
    EXPECT_EQ(readProfileText("a\t01,02,03,04,\r\n\r\n").status, 0);
    EXPECT_EQ(readProfiles([]() -> std::optional<std::string> { throw Error("gone"); }).status, 0);
}

TEST(ProfileFile, WithoutALineHasAStatusOfItsOwn) {
    EXPECT_EQ(readProfileText("").status, -33);
    EXPECT_EQ(readProfileText("\r\n").status, 0); // an empty line is a line, and a bad one
}

TEST(ProfileFile, IsReadNoFurtherThanItsLimit) {
    std::string text;
    for (int i = 0; i < 199; ++i) {
        text += "p" + std::to_string(i) + "\t00,01,02,03,\r\n";
    }
    EXPECT_EQ(readProfileText(text).status, 199);
    text += "a line that is no profile\r\n"; // never looked at
    const ProfileFileContent content = readProfileText(text);
    EXPECT_EQ(content.status, 199);
    EXPECT_EQ(content.profiles.back().name, "p198");
}

TEST(ProfileFile, IsWrittenAsItIsRead) {
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        std::uniform_int_distribution<int> count(0, 16);
        std::uniform_int_distribution<int> many(1, 199);
        std::vector<EdgeProfile> profiles;
        for (int i = many(random); i > 0; --i) {
            profiles.push_back({"Drucker, " + std::to_string(i) + " ü ",
                                {count(random), count(random), count(random), count(random)}});
        }
        std::string text;
        for (const std::string& line : profileLines(profiles)) {
            text += line + "\r\n";
        }
        const ProfileFileContent content = readProfileText(text);
        ASSERT_EQ(content.status, static_cast<int>(profiles.size()));
        ASSERT_EQ(content.profiles, profiles);
    }
}

} // namespace
} // namespace veldara
