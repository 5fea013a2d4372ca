#include "platform/text/file_name.h"

#include <string>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

TEST(FileName, OfWindowsIsNoDevice) {
    for (const char* name : {"CON", "con.jpg", "Nul.001.tif", "aux", "PRN.x", "COM1.jpg", "lpt9",
                             "con .jpg", "CONIN$"}) {
        EXPECT_NE(fileNameProblem(name, '\\').find("device"), std::string::npos) << name;
        EXPECT_EQ(fileNameProblem(name, '/'), "") << name;
    }
    for (const char* name :
         {"CON001.jpg", "console", "COM0.jpg", "COM10", "com", "lpt.jpg", "x.con"}) {
        EXPECT_EQ(fileNameProblem(name, '\\'), "") << name;
    }
}

TEST(FileName, OfWindowsHasNoColonAndNoEndThatIsDropped) {
    EXPECT_EQ(
        fileNameProblem("x:001.jpg", '\\'),
        "The file name \"x:001.jpg\" has the character :, which Windows allows in no file name");
    for (const char* name :
         {"a<b", "a>b", "a\"b", "a/b", "a\\b", "a|b", "a?b", "a*b", "a\tb", "end ", "end.", ""}) {
        EXPECT_NE(fileNameProblem(name, '\\'), "") << name;
    }
    EXPECT_EQ(fileNameProblem("\xC3\x9C .b c.jpg", '\\'), "");
}

TEST(FileName, OfOtherSystemsTakesNearlyEverything) {
    for (const char* name : {"a:b", "a\\b", "end ", "end.", "a\tb", "\xFF"}) {
        EXPECT_EQ(fileNameProblem(name, '/'), "") << name;
    }
    EXPECT_NE(fileNameProblem("a/b", '/'), "");
    EXPECT_NE(fileNameProblem("", '/'), "");
}

TEST(FileName, OfAFolderKeepsTheSameRules) {
    EXPECT_EQ(folderNameProblem("poster ", '\\'),
              "The folder name \"poster \" ends with a blank or a dot, which Windows drops");
    EXPECT_EQ(folderNameProblem("nul.poster", '\\'),
              "The folder name \"nul.poster\" is the name of a device in Windows");
    EXPECT_EQ(folderNameProblem("poster.", '/'), "");
    EXPECT_EQ(folderNameProblem("my poster", '\\'), "");
}

TEST(FileName, OfWindowsIsNotTooLong) {
    const std::string umlaut = "\xC3\x9C";
    EXPECT_EQ(fileNameProblem(std::string(252, 'x') + umlaut + umlaut + umlaut, '\\'), "");
    EXPECT_NE(fileNameProblem(std::string(256, 'x'), '\\'), "");
}

} // namespace
} // namespace veldara::test
