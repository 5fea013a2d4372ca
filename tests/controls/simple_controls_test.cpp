#include "controls/controls.h"
#include "controls/watch.h"
#include "platform/error.h"
#include "support/test_clock.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

TEST(AButton, IsClickedOnlyWhereItCanBeReached) {
    Button button;
    Watch watch(button);
    button.onClick = watch.event("click");
    button.userClick();
    EXPECT_EQ(watch.taken(), Log{"click"});
    button.setEnabled(false);
    button.userClick();
    EXPECT_EQ(watch.taken(), Log{"enabled"});
    button.setEnabled(true);
    button.setVisible(false);
    button.userClick();
    EXPECT_EQ(watch.taken(), (Log{"enabled", "visible"}));
}

TEST(AButton, WithoutAHandlerDoesNothing) {
    Button button;
    EXPECT_NO_THROW(button.userClick());
}

TEST(AMenuItem, IsClickedOnlyWhereItCanBeReached) {
    MenuItem item;
    Watch watch(item);
    item.onClick = watch.event("click");
    item.userClick();
    EXPECT_EQ(watch.taken(), Log{"click"});
    item.setEnabled(false);
    item.userClick();
    EXPECT_EQ(watch.taken(), Log{"enabled"});
}

TEST(ALinkLabel, KeepsItsTargetAndIsClickedOnlyWhereItCanBeReached) {
    LinkLabel link;
    Watch watch(link);
    link.onClick = watch.event("click");
    link.setTarget("/photos");
    link.setTarget("/photos");
    EXPECT_EQ(link.target(), "/photos");
    link.userClick();
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
    link.setVisible(false);
    link.userClick();
    EXPECT_EQ(watch.taken(), Log{"visible"});
}

TEST(ACheckBox, RaisesClickForANewValueOnlyWhoeverSetsIt) {
    CheckBox box;
    Watch watch(box);
    box.onClick = watch.event("click");
    EXPECT_EQ(box.value(), 0);
    box.setChecked(false);
    box.userSetChecked(false);
    EXPECT_EQ(watch.taken(), Log{});
    box.setChecked(true);
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
    EXPECT_EQ(box.value(), 1);
    box.userSetChecked(true);
    EXPECT_EQ(watch.taken(), Log{});
    box.userSetChecked(false);
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
    EXPECT_FALSE(box.checked());
}

TEST(ACheckBox, IsShutToTheUserButNotToTheProgramWhileDisabledOrHidden) {
    CheckBox box;
    box.setEnabled(false);
    box.userSetChecked(true);
    EXPECT_FALSE(box.checked());
    box.setChecked(true);
    EXPECT_TRUE(box.checked());
    box.setEnabled(true);
    box.setVisible(false);
    box.userSetChecked(false);
    EXPECT_TRUE(box.checked());
}

TEST(ACheckBox, ThatIsSetBackInItsOwnHandlerEndsInTheLastValue) {
    CheckBox box;
    int clicks = 0;
    box.onClick = [&] {
        ++clicks;
        box.setChecked(false);
    };
    box.userSetChecked(true);
    EXPECT_FALSE(box.checked());
    EXPECT_EQ(clicks, 2); // once on, once off, and no more
}

class OptionButtons : public ::testing::Test {
  protected:
    OptionButtons() {
        OptionButton::join({&first, &second, &third});
        for (OptionButton* button : {&first, &second, &third}) {
            button->onClick = [this, button] { clicked.push_back(button); };
        }
    }
    OptionButton first;
    OptionButton second;
    OptionButton third;
    std::vector<OptionButton*> clicked;
};

TEST_F(OptionButtons, SwitchEachOtherOffWithoutAnEventForTheOneThatGoesOff) {
    first.setSelected(true);
    second.userSelect();
    EXPECT_FALSE(first.selected());
    EXPECT_TRUE(second.selected());
    EXPECT_FALSE(third.selected());
    EXPECT_EQ(clicked, (std::vector<OptionButton*>{&first, &second}));
}

TEST_F(OptionButtons, TellTheObserversOfBothButtons) {
    first.setSelected(true);
    Watch watchFirst(first);
    Watch watchSecond(second);
    Watch watchThird(third);
    second.setSelected(true);
    EXPECT_EQ(watchFirst.taken(), Log{"value"});
    EXPECT_EQ(watchSecond.taken(), Log{"value"});
    EXPECT_EQ(watchThird.taken(), Log{});
}

TEST_F(OptionButtons, RaiseNothingForTheSelectedOneAndNothingForSwitchingOff) {
    first.setSelected(true);
    clicked.clear();
    first.userSelect();
    first.setSelected(false);
    EXPECT_TRUE(clicked.empty());
    EXPECT_FALSE(first.selected());
}

TEST_F(OptionButtons, AreShutToTheUserWhileDisabled) {
    first.setSelected(true);
    second.setEnabled(false);
    second.userSelect();
    EXPECT_TRUE(first.selected());
    EXPECT_FALSE(second.selected());
}

TEST_F(OptionButtons, AreAllOffButOneWhenTheEventComes) {
    first.setSelected(true);
    second.onClick = [this] { EXPECT_FALSE(first.selected()); };
    second.userSelect();
}

TEST(AnOptionButton, AloneSwitchesNobodyOff) {
    OptionButton one;
    OptionButton other;
    one.setSelected(true);
    other.setSelected(true);
    EXPECT_TRUE(one.selected());
}

TEST(ATextBox, RaisesChangeForANewTextOnly) {
    TextBox box;
    Watch watch(box);
    box.onChange = watch.event("change");
    box.setText("");
    EXPECT_EQ(watch.taken(), Log{});
    box.setText("8.50");
    box.userSetText("8.50");
    box.userSetText("9");
    EXPECT_EQ(watch.taken(), (Log{"value", "change", "value", "change"}));
    box.setEnabled(false);
    box.userSetText("10");
    EXPECT_EQ(box.text(), "9");
}

TEST(AScrollBar, StartsFromZeroToAHundred) {
    const ScrollBar bar;
    EXPECT_EQ(bar.minimum(), 0);
    EXPECT_EQ(bar.maximum(), 100);
    EXPECT_EQ(bar.value(), 0);
}

TEST(AScrollBar, RefusesTheProgramsValueOutsideItsRange) {
    ScrollBar bar;
    bar.setRange(0, 400, 5, 25);
    EXPECT_THROW(bar.setValue(401), Error);
    EXPECT_THROW(bar.setValue(-1), Error);
    EXPECT_EQ(bar.value(), 0);
    bar.setValue(400);
    EXPECT_EQ(bar.value(), 400);
    EXPECT_EQ(bar.smallChange(), 5);
    EXPECT_EQ(bar.largeChange(), 25);
}

TEST(AScrollBar, LimitsTheUsersValueToItsRange) {
    ScrollBar bar;
    bar.setRange(10, 400, 5, 25);
    bar.userSetValue(1000);
    EXPECT_EQ(bar.value(), 400);
    bar.userSetValue(-1000);
    EXPECT_EQ(bar.value(), 10);
    bar.setEnabled(false);
    bar.userSetValue(50);
    EXPECT_EQ(bar.value(), 10);
}

TEST(AScrollBar, RaisesChangeForANewValueOnly) {
    ScrollBar bar;
    Watch watch(bar);
    bar.onChange = watch.event("change");
    bar.setValue(0);
    EXPECT_EQ(watch.taken(), Log{});
    bar.setValue(7);
    bar.userSetValue(7);
    EXPECT_EQ(watch.taken(), (Log{"value", "change"}));
}

TEST(AScrollBar, MovesItsValueIntoANewRange) {
    ScrollBar bar;
    bar.setValue(50);
    Watch watch(bar);
    bar.onChange = watch.event("change");
    bar.setRange(0, 20, 1, 10);
    EXPECT_EQ(bar.value(), 20);
    EXPECT_EQ(watch.taken(), (Log{"range", "value", "change"}));
    bar.setRange(0, 20, 1, 10);
    EXPECT_EQ(watch.taken(), Log{});
}

TEST(AScrollBar, WithItsEndsTheWrongWayRoundHasOneValue) {
    ScrollBar bar;
    bar.setRange(30, 10, 1, 1);
    EXPECT_EQ(bar.minimum(), 30);
    EXPECT_EQ(bar.maximum(), 30);
    EXPECT_EQ(bar.value(), 30);
}

TEST(ATimer, StartsDisabledAndTicksOnlyWhileEnabledWithAnInterval) {
    Timer timer;
    int ticks = 0;
    timer.onTick = [&] { ++ticks; };
    EXPECT_FALSE(timer.enabled());
    timer.tick();
    timer.setEnabled(true);
    timer.tick(); // still without an interval
    EXPECT_EQ(ticks, 0);
    timer.setInterval(100);
    timer.tick();
    EXPECT_EQ(ticks, 1);
    timer.setEnabled(false);
    timer.tick();
    EXPECT_EQ(ticks, 1);
}

TEST(ATimer, DrivenByTheTestClockTicksAtItsInterval) {
    TestClock clock;
    Timer timer;
    int ticks = 0;
    timer.onTick = [&] { ++ticks; };
    timer.setInterval(250);
    clock.drive(timer);
    clock.advance(1000);
    EXPECT_EQ(ticks, 0);
    timer.setEnabled(true);
    clock.advance(249);
    EXPECT_EQ(ticks, 0);
    clock.advance(1);
    EXPECT_EQ(ticks, 1);
    clock.advance(750);
    EXPECT_EQ(ticks, 4);
}

TEST(ATimer, CanSwitchItselfOffAndChangeItsInterval) {
    TestClock clock;
    Timer timer;
    Watch watch(timer);
    int ticks = 0;
    timer.onTick = [&] {
        if (++ticks == 2) {
            timer.setEnabled(false);
        }
        timer.setInterval(50);
    };
    timer.setInterval(100);
    timer.setEnabled(true);
    clock.drive(timer);
    clock.advance(150);
    EXPECT_EQ(ticks, 2);
    clock.advance(1000);
    EXPECT_EQ(ticks, 2);
    EXPECT_EQ(watch.taken(), (Log{"range", "enabled", "range", "enabled"}));
}

TEST(ATestClock, MovesItsTimeOfDay) {
    TestClock clock;
    const double before = clock.seconds();
    clock.advance(1500);
    EXPECT_NEAR(clock.seconds() - before, 1.5, 1e-6);
}

TEST(ATextBox, LeavesForbiddenCharactersOutAndAnnouncesIt) {
    TextBox box;
    box.forbid("/:", "Not these.");
    Watch watch(box);
    box.userSetText("a/b:c");
    EXPECT_EQ(box.text(), "abc");
    EXPECT_EQ(watch.taken(), (Log{"value", "refused"}));
    box.userSetText("abc/");
    EXPECT_EQ(watch.taken(), Log{"refused"}) << "the view has to take the character back";
    EXPECT_EQ(box.refusal(), "Not these.");
    box.setText("/given/by/the/program");
    EXPECT_EQ(box.text(), "/given/by/the/program");
}

TEST(AScrollBar, StepsAndPagesWithinItsRange) {
    ScrollBar bar;
    bar.setRange(0, 400, 1, 20);
    bar.userStep(1);
    EXPECT_EQ(bar.value(), 1);
    bar.userPage(1);
    EXPECT_EQ(bar.value(), 21);
    bar.userPage(-2);
    EXPECT_EQ(bar.value(), 0);
    bar.userPage(30);
    EXPECT_EQ(bar.value(), 400);
}

TEST(AListMenu, ReportsTheEntryAndItsOpening) {
    ListMenu menu("mnuRecent");
    EXPECT_EQ(menu.name(), "mnuRecent");
    std::vector<int> clicked;
    menu.onClick = [&](int index) { clicked.push_back(index); };
    int opened = 0;
    menu.onOpen = [&] { ++opened; };
    menu.setItems({"a", "b"});
    menu.userOpen();
    menu.userClick(1);
    menu.userClick(2);
    menu.userClick(-1);
    menu.setEnabled(false);
    menu.userClick(0);
    EXPECT_EQ(clicked, std::vector<int>{1});
    EXPECT_EQ(opened, 1);
}

} // namespace
} // namespace veldara::test
