#include "platform/text/natural_order.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

void expectOrder(const Names& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 0; j < names.size(); ++j) {
            EXPECT_EQ(naturalLess(names[i], names[j]), i < j) << names[i] << " and " << names[j];
        }
    }
}

TEST(TheOrderOfNames, PutsNumbersByTheirValue) {
    expectOrder({"img1", "img2", "img10", "img10a", "img11", "img100"});
    expectOrder({"1.9", "1.10", "2"});
    expectOrder({"99999999999999999999998", "99999999999999999999999", "100000000000000000000000"});
}

TEST(TheOrderOfNames, TakesLeadingZerosAsNothingUnlessAllElseIsAlike) {
    expectOrder({"a007b", "a7b", "a008b", "a9b"});
    expectOrder({"0", "00", "1"});
}

TEST(TheOrderOfNames, TakesBothCasesAlikeUnlessAllElseIsAlike) {
    expectOrder({"Apple", "apple", "Banana", "cherry"});
    expectOrder({"B", "b", "C"});
    expectOrder({"a1", "A2", "a3", "z1", "Z2", "z3"});
}

TEST(TheOrderOfNames, TakesBothCasesAlikeInOtherAlphabets) {
    // A, O and U with two dots; Greek alpha and beta; Cyrillic a, be and io; c and z with a hook.
    EXPECT_TRUE(naturalLess("\xC3\x84z", "\xC3\xA4zz"));
    EXPECT_TRUE(naturalLess("\xC3\xA4"
                            "a",
                            "\xC3\x84"
                            "b"));
    EXPECT_TRUE(naturalLess("\xCE\xB1", "\xCE\x92"));
    EXPECT_TRUE(naturalLess("\xD0\xB0", "\xD0\x91"));
    EXPECT_TRUE(naturalLess("\xD0\x81"
                            "a",
                            "\xD1\x91"
                            "b"));
    EXPECT_TRUE(naturalLess("\xC4\x8D"
                            "a",
                            "\xC4\x8C"
                            "b"));
    EXPECT_TRUE(naturalLess("\xC5\xBD"
                            "a",
                            "\xC5\xBE"
                            "b"));
}

TEST(TheOrderOfNames, PutsAShorterNameBeforeItsContinuation) {
    expectOrder({"", "a", "a b", "ab"});
}

TEST(TheOrderOfNames, TakesAnyBytes) {
    expectOrder({"a", "a\x80", "a\xC3", "a\xFF", "a\xFF\xFF"});
}

// A sort is only sound over an order: never both ways, and never in a circle.
TEST(TheOrderOfNames, IsOneOrderForRandomNames) {
    std::mt19937 random(7);
    const std::string alphabet = "aAbB019. \xC3\xA4\x84\xFF\0"s;
    const auto name = [&] {
        std::string text;
        for (std::size_t i = random() % 6; i > 0; --i) {
            text += alphabet[random() % alphabet.size()];
        }
        return text;
    };
    for (int i = 0; i < 100'000; ++i) {
        const std::string a = name();
        const std::string b = name();
        const std::string c = name();
        EXPECT_FALSE(naturalLess(a, a));
        EXPECT_TRUE(a == b || naturalLess(a, b) != naturalLess(b, a)) << a << "|" << b;
        if (naturalLess(a, b) && naturalLess(b, c)) {
            EXPECT_TRUE(naturalLess(a, c)) << a << "|" << b << "|" << c;
        }
    }
}

} // namespace
} // namespace veldara::test
