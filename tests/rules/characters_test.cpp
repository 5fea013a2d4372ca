#include "platform/error.h"
#include "platform/text/characters.h"
#include "platform/text/path_text.h"

#include <gtest/gtest.h>

namespace veldara {
namespace {

TEST(Characters, AreCountedNotBytes) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("abc"), 3U);
    EXPECT_EQ(characterCount("Größe"), 5U);
    EXPECT_EQ(characterCount("日本.jpg"), 6U);
    EXPECT_EQ(characterCount("\xF0\x9F\x96\xBC"), 1U);
    EXPECT_EQ(characterCount("\xFFz\xC3"), 3U);    // bytes that are no characters count one by one
    EXPECT_EQ(characterCount("\xE0\x80\x80"), 3U); // a second spelling of NUL
    EXPECT_EQ(characterCount("\xED\xA0\x80"), 3U); // half a surrogate pair
    EXPECT_EQ(characterCount("\xF4\x90\x80\x80"), 4U); // beyond the last character
    EXPECT_EQ(characterCount("\xF4\x8F\xBF\xBF"), 1U); // the last character
    EXPECT_EQ(characterCount("\xE2\x82"), 2U);         // cut off
    EXPECT_EQ(characterCount("\xE2\x82z"), 3U);        // broken off
}

TEST(Characters, SleftGivesTheFirst) {
    EXPECT_EQ(sleft("abcdef", 2), "ab");
    EXPECT_EQ(sleft("äöü", 2), "äö");
    EXPECT_EQ(sleft("ab", 5), "ab");
    EXPECT_EQ(sleft("ab", 0), "");
}

TEST(Characters, SRightGivesTheLastAndRefusesMoreThanThereAre) {
    EXPECT_EQ(sRight("abcdef", 3), "def");
    EXPECT_EQ(sRight("aöü", 2), "öü");
    EXPECT_EQ(sRight("ab", 2), "ab");
    EXPECT_EQ(sRight("ab", 0), "");
    EXPECT_THROW(sRight("ab", 3), Error);
    EXPECT_THROW(sRight("ü", 2), Error);
}

TEST(Characters, ChangeCaseInAsciiOnly) {
    EXPECT_EQ(lowerCase("aZ9É"), "az9É");
}

TEST(Lines, EndWithALineFeedOrBoth) {
    EXPECT_EQ(splitLines(""), (std::vector<std::string>{}));
    EXPECT_EQ(splitLines("a"), (std::vector<std::string>{"a"}));
    EXPECT_EQ(splitLines("a\r\nb\nc\r\n"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(splitLines("\r\n\n"), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(splitLines("a\rb"), (std::vector<std::string>{"a\rb"}));
}

TEST(PathText, ComesAndGoesUnchanged) {
    for (const std::string name : {"photo.jpg", "Größe 日本.tif", "a b", "folder/of/a/photo.jpg"}) {
        EXPECT_EQ(pathText(textPath(name)), name);
    }
}

TEST(PathText, GetsASeparatorOnlyWhenItHasNone) {
    EXPECT_EQ(withSeparator("C:\\", '\\'), "C:\\");
    EXPECT_EQ(withSeparator("C:\\photos", '\\'), "C:\\photos\\");
    EXPECT_EQ(withSeparator("/home/me", '/'), "/home/me/");
    EXPECT_EQ(withSeparator("/", '/'), "/");
    EXPECT_EQ(withSeparator("", '/'), "");
}

TEST(ForbiddenInNames, OfWindowsAreAllControlCharacters) {
    const std::string forbidden = forbiddenInNames('\\');
    for (char control = 0; control < 32; ++control) {
        EXPECT_NE(forbidden.find(control), std::string::npos) << static_cast<int>(control);
    }
    EXPECT_EQ(forbidden.find(' '), std::string::npos);
}

} // namespace
} // namespace veldara
