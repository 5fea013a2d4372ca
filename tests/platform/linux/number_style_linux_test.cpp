#include "platform/text/number_text.h"
#include "support/environment_variable.h"
#include "support/said.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

TEST(TheNumberStyleOfTheUser, IsThatOfTheDesktopsLocale) {
    const TempFolder folder;
    const Said made = said("localedef --no-archive -i de_DE -f UTF-8 '" +
                           (folder.path() / "de_DE.UTF-8").string() + "'");
    ASSERT_TRUE(made.ok) << made.text;
    const EnvironmentVariable place("LOCPATH", folder.path().string());
    {
        const EnvironmentVariable locale("LC_ALL", "de_DE.UTF-8");
        EXPECT_EQ(NumberStyle::ofUser().decimalSeparator, ',');
    }
    const EnvironmentVariable missing("LC_ALL", "fr_FR.UTF-8");
    EXPECT_EQ(NumberStyle::ofUser().decimalSeparator, '.');
}

} // namespace
} // namespace veldara::test
