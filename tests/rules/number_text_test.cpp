#include "platform/error.h"
#include "platform/text/number_text.h"
#include "platform/text/rounding.h"
#include "support/decimal_comma.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::comma;
const double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Rounding, GoesToTheEvenNeighbourFromAHalf) {
    EXPECT_EQ(roundHalfEven(0.5), 0);
    EXPECT_EQ(roundHalfEven(1.5), 2);
    EXPECT_EQ(roundHalfEven(2.5), 2);
    EXPECT_EQ(roundHalfEven(-0.5), 0);
    EXPECT_EQ(roundHalfEven(-1.5), -2);
    EXPECT_EQ(roundHalfEven(-2.5), -2);
    EXPECT_EQ(roundHalfEven(499.5), 500);
    EXPECT_EQ(roundHalfEven(500.5), 500);
    EXPECT_EQ(roundHalfEven(150.5), 150);
    EXPECT_EQ(roundHalfEven(151.5), 152);
    EXPECT_EQ(roundHalfEven(0.49999999999999994), 0);
}

TEST(Rounding, ReachesTheLimitsAndNoFurther) {
    EXPECT_EQ(roundHalfEven(2147483647.0), 2147483647);
    EXPECT_EQ(roundHalfEven(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(roundHalfEven(2147483647.4), 2147483647);
    EXPECT_THROW(roundHalfEven(2147483647.5), Error);
    EXPECT_THROW(roundHalfEven(-2147483649.0), Error);
    EXPECT_THROW(roundHalfEven(infinity), Error);
    EXPECT_THROW(roundHalfEven(notANumber), Error);
}

// Told from the whole part and the rest, which is another way than the processor's.
std::int64_t reference(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const auto whole = static_cast<std::int64_t>(below);
    if (rest < 0.5) {
        return whole;
    }
    return rest > 0.5 || whole % 2 != 0 ? whole + 1 : whole;
}

TEST(Rounding, AgreesWithAReferenceOnRandomValuesAndHalves) {
    std::mt19937 random(20261121);
    std::uniform_real_distribution<double> any(-2e6, 2e6);
    std::uniform_int_distribution<int> whole(-1000000, 1000000);
    for (int i = 0; i < 200000; ++i) {
        const double value = i % 2 == 0 ? any(random) : whole(random) + 0.5;
        ASSERT_EQ(roundHalfEven(value), reference(value)) << value;
    }
}

TEST(FormatNumber, GivesTheDecimalsOfThePattern) {
    EXPECT_EQ(formatNumber(24, "##0.00"), "24.00");
    EXPECT_EQ(formatNumber(24.5, "##0.00"), "24.50");
    EXPECT_EQ(formatNumber(0, "##0.00"), "0.00");
    EXPECT_EQ(formatNumber(0.25, "##0.0"), "0.3");
    EXPECT_EQ(formatNumber(150, "###0.0"), "150.0");
    EXPECT_EQ(formatNumber(7, "000"), "007");
    EXPECT_EQ(formatNumber(1234, "000"), "1234");
    EXPECT_EQ(formatNumber(0.5, "#.0"), ".5");
    EXPECT_EQ(formatNumber(0.5, "##0"), "1");
}

TEST(FormatNumber, RoundsAHalfOfTheDecimalTextAwayFromZero) {
    EXPECT_EQ(formatNumber(12.345, "##0.00"), "12.35"); // the double is a little below the half
    EXPECT_EQ(formatNumber(1.005, "##0.00"), "1.01");
    EXPECT_EQ(formatNumber(2.5, "##0"), "3");
    EXPECT_EQ(formatNumber(-2.5, "##0"), "-3");
    EXPECT_EQ(formatNumber(-12.345, "##0.00"), "-12.35");
    EXPECT_EQ(formatNumber(0.005, "##0.00"), "0.01");
    EXPECT_EQ(formatNumber(0.0049, "##0.00"), "0.00");
    EXPECT_EQ(formatNumber(0.004999999, "##0.00"), "0.00");
    EXPECT_EQ(formatNumber(0.0005, "##0.00"), "0.00");
}

TEST(FormatNumber, CarriesOverAllNines) {
    EXPECT_EQ(formatNumber(9.995, "##0.00"), "10.00");
    EXPECT_EQ(formatNumber(99.96, "##0.0"), "100.0");
    EXPECT_EQ(formatNumber(0.999, "##0.00"), "1.00");
}

TEST(FormatNumber, HasNoMinusBeforeZero) {
    EXPECT_EQ(formatNumber(-0.001, "##0.00"), "0.00");
    EXPECT_EQ(formatNumber(-0.0, "##0.00"), "0.00");
    EXPECT_EQ(formatNumber(-0.01, "##0.00"), "-0.01");
}

TEST(FormatNumber, WritesLargeAndSmallNumbersInFull) {
    EXPECT_EQ(formatNumber(1e15, "##0.00"), "1000000000000000.00");
    EXPECT_EQ(formatNumber(123456789012.0, "##0.0"), "123456789012.0");
    EXPECT_EQ(formatNumber(1e22, "##0.0"), "10000000000000000000000.0");
    EXPECT_EQ(formatNumber(1e-300, "##0.00"), "0.00");
}

TEST(FormatNumber, UsesTheUsersSeparator) {
    EXPECT_EQ(formatNumber(12.345, "##0.00", comma), "12,35");
    EXPECT_EQ(formatNumber(-0.5, "##0.0", comma), "-0,5");
}

TEST(FormatNumber, RefusesWhatIsNoNumber) {
    EXPECT_THROW(formatNumber(infinity, "##0.00"), Error);
    EXPECT_THROW(formatNumber(notANumber, "##0.00"), Error);
    EXPECT_THROW(plainNumber(infinity), Error);
}

// Hundredths counted as whole numbers do not depend on how a double is printed.
TEST(FormatNumber, AgreesWithCountedHundredths) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> thousandths(-9999999, 9999999);
    for (int i = 0; i < 100000; ++i) {
        const int n = thousandths(random);
        const int size = std::abs(n);
        const int hundredths = size / 10 + (size % 10 >= 5 ? 1 : 0);
        std::string expected = std::to_string(hundredths / 100) + "." +
                               std::to_string(hundredths % 100 / 10) +
                               std::to_string(hundredths % 10);
        if (n < 0 && hundredths > 0) {
            expected.insert(0, "-");
        }
        ASSERT_EQ(formatNumber(n / 1000.0, "##0.00"), expected) << n;
    }
}

TEST(PlainNumber, IsTheShortestText) {
    EXPECT_EQ(plainNumber(24), "24");
    EXPECT_EQ(plainNumber(24.5), "24.5");
    EXPECT_EQ(plainNumber(0.75), "0.75");
    EXPECT_EQ(plainNumber(50.0), "50");
    EXPECT_EQ(plainNumber(0), "0");
    EXPECT_EQ(plainNumber(-0.0), "0");
    EXPECT_EQ(plainNumber(0.1), "0.1");
    EXPECT_EQ(plainNumber(-1.25), "-1.25");
    EXPECT_EQ(plainNumber(100000), "100000");
    EXPECT_EQ(plainNumber(1e14), "100000000000000");
    EXPECT_EQ(plainNumber(0.0001), "0.0001");
    EXPECT_EQ(plainNumber(1.5, comma), "1,5");
}

TEST(PlainNumber, TakesAnExponentOnlyWhereZerosWouldFillALine) {
    EXPECT_EQ(plainNumber(1e20), "1E+20");
    EXPECT_EQ(plainNumber(2.5e-20), "2.5E-20");
}

TEST(PlainNumber, ReadsBackAsTheSameNumber) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-25, 25);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(random) * std::pow(10.0, exponent(random));
        const NumberStyle style = i % 2 == 0 ? NumberStyle{} : comma;
        ASSERT_EQ(readNumber(plainNumber(value, style), style), value);
    }
}

TEST(ReadNumber, TakesTheWholeTextOrNothing) {
    EXPECT_EQ(readNumber("8.5"), 8.5);
    EXPECT_EQ(readNumber("  8.5\t"), 8.5);
    EXPECT_EQ(readNumber("+3"), 3);
    EXPECT_EQ(readNumber("-3.25"), -3.25);
    EXPECT_EQ(readNumber(".5"), 0.5);
    EXPECT_EQ(readNumber("5."), 5);
    EXPECT_EQ(readNumber("1E3"), 1000);
    for (const char* text : {"", "  ", ".", "-", "+", "+-3", "1 2", "1,5", "8.5x", "x8.5", "0x10",
                             "nan", "inf", "1e999", "1.2.3", "--1", "e5"}) {
        EXPECT_EQ(readNumber(text), std::nullopt) << text;
    }
}

TEST(ReadNumber, ReadsInTheUsersStyleOnly) {
    EXPECT_EQ(readNumber("8,5", comma), 8.5);
    EXPECT_EQ(readNumber("8.5", comma), std::nullopt);
}

TEST(ReadInteger, RoundsAHalfToEven) {
    EXPECT_EQ(readInteger("3"), 3);
    EXPECT_EQ(readInteger(" 12 "), 12);
    EXPECT_EQ(readInteger("2.5"), 2);
    EXPECT_EQ(readInteger("3,5", comma), 4);
    EXPECT_EQ(readInteger("-1"), -1);
    EXPECT_EQ(readInteger("99999999999"), std::nullopt);
    EXPECT_EQ(readInteger("w"), std::nullopt);
    EXPECT_EQ(readInteger(""), std::nullopt);
}

TEST(Trimmed, CutsBlanksAtBothEndsOnly) {
    EXPECT_EQ(trimmed("  a b \r\n"), "a b");
    EXPECT_EQ(trimmed("   "), "");
}

} // namespace
} // namespace veldara
