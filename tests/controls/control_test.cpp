#include "controls/control.h"
#include "controls/watch.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

TEST(AControl, StartsVisibleEnabledAndWithoutTexts) {
    const Control control;
    EXPECT_TRUE(control.visible());
    EXPECT_TRUE(control.enabled());
    EXPECT_EQ(control.caption(), "");
    EXPECT_EQ(control.toolTip(), "");
}

TEST(AControl, NotifiesItsObserverOnceOfEachNewValue) {
    Control control;
    Watch watch(control);
    control.setVisible(false);
    control.setEnabled(false);
    control.setCaption("Exit");
    control.setToolTip("Exit program");
    EXPECT_EQ(watch.taken(), (Log{"visible", "enabled", "caption", "tool tip"}));
}

TEST(AControl, NotifiesNothingForTheValueThatItHas) {
    Control control;
    control.setCaption("Exit");
    Watch watch(control);
    control.setVisible(true);
    control.setEnabled(true);
    control.setCaption("Exit");
    control.setToolTip("");
    EXPECT_EQ(watch.taken(), Log{});
}

TEST(AControl, HasTheNewValueWhenTheObserverIsTold) {
    Control control;
    std::string seen;
    control.observe([&](Property) { seen = control.caption(); });
    control.setCaption("new");
    EXPECT_EQ(seen, "new");
}

TEST(AControl, AsksForTheKeyboardEachTime) {
    Control control;
    Watch watch(control);
    control.setFocus();
    control.setFocus();
    EXPECT_EQ(watch.taken(), (Log{"focus", "focus"}));
}

TEST(AControl, HasOneObserverThatCanBeTakenAway) {
    Control control;
    Watch first(control);
    Watch second(control);
    control.setCaption("a");
    EXPECT_EQ(first.taken(), Log{});
    EXPECT_EQ(second.taken(), Log{"caption"});
    control.observe({});
    control.setCaption("b");
    EXPECT_EQ(second.taken(), Log{});
}

} // namespace
} // namespace veldara::test
