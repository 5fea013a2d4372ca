#include "controls/lists.h"
#include "controls/watch.h"
#include "platform/error.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

class AListBox : public ::testing::Test {
  protected:
    AListBox() : watch(list) {
        list.setItems({"a.jpg", "b.jpg", "c.jpg"});
        list.onClick = watch.event("click");
        watch.taken();
    }
    ListBox list;
    Watch watch;
};

TEST_F(AListBox, HasNothingChosenAtFirst) {
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(list.selectedText(), "");
    EXPECT_EQ(list.count(), 3);
}

TEST_F(AListBox, RaisesClickForANewChoiceOfTheProgramOnly) {
    list.setListIndex(1);
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
    list.setListIndex(1);
    EXPECT_EQ(watch.taken(), Log{});
    EXPECT_EQ(list.selectedText(), "b.jpg");
}

TEST_F(AListBox, RaisesClickForEveryClickOfTheUser) {
    list.userClick(2);
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
    list.userClick(2);
    EXPECT_EQ(watch.taken(), Log{"click"});
}

TEST_F(AListBox, IgnoresClicksBesideItsEntriesAndWhileItCannotBeReached) {
    list.userClick(3);
    list.userClick(-1);
    list.setEnabled(false);
    list.userClick(0);
    list.setEnabled(true);
    list.setVisible(false);
    list.userClick(0);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(watch.taken(), (Log{"enabled", "enabled", "visible"}));
}

TEST_F(AListBox, RefusesAChoiceThatIsNotThere) {
    EXPECT_THROW(list.setListIndex(3), Error);
    EXPECT_THROW(list.setListIndex(-2), Error);
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_F(AListBox, LosesItsChoiceWithNewItemsAndRaisesNothing) {
    list.setListIndex(2);
    watch.taken();
    list.setItems({"x.jpg"});
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(watch.taken(), Log{"items"});
    list.clear();
    EXPECT_EQ(list.count(), 0);
}

TEST_F(AListBox, KeepsItsChoiceWhenItemsAreAddedOrRenamed) {
    list.setListIndex(0);
    watch.taken();
    list.addItem("d.jpg");
    list.setItem(0, "new.jpg");
    EXPECT_EQ(watch.taken(), (Log{"items", "items"}));
    EXPECT_EQ(list.selectedText(), "new.jpg");
    EXPECT_EQ(list.count(), 4);
    list.setItem(0, "new.jpg");
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_F(AListBox, RefusesToRenameAnEntryThatIsNotThere) {
    EXPECT_THROW(list.setItem(3, "x"), Error);
    EXPECT_THROW(list.setItem(-1, "x"), Error);
}

TEST(ADropDownList, FollowsItsChoiceWithItsText) {
    ComboBox box;
    Watch watch(box);
    box.onClick = watch.event("click");
    box.onChange = watch.event("change");
    box.setItems({"1", "2"});
    box.setListIndex(1);
    EXPECT_EQ(box.text(), "2");
    EXPECT_EQ(watch.taken(), (Log{"items", "value", "click"})); // it has no text of its own
    box.setListIndex(1);
    box.userSelect(1);
    EXPECT_EQ(watch.taken(), Log{});
    box.userSelect(0);
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
    box.setListIndex(-1);
    EXPECT_EQ(box.text(), "");
}

TEST(ADropDownList, TakesNoTypedText) {
    ComboBox box;
    box.setItems({"1", "2"});
    box.setText("2");
    box.userSetText("2");
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(box.text(), "");
}

TEST(ADropDownList, LosesItsChoiceAndTextWithNewItems) {
    ComboBox box;
    box.setItems({"1", "2"});
    box.setListIndex(0);
    Watch watch(box);
    box.onClick = watch.event("click");
    box.setItems({"3"});
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(watch.taken(), Log{"items"});
}

TEST(ADropDownList, RefusesAChoiceThatIsNotThereAndIgnoresOneOfTheUser) {
    ComboBox box;
    box.setItems({"1"});
    EXPECT_THROW(box.setListIndex(1), Error);
    EXPECT_THROW(box.setListIndex(-2), Error);
    box.userSelect(1);
    box.userSelect(-1);
    EXPECT_EQ(box.listIndex(), -1);
    box.setEnabled(false);
    box.userSelect(0);
    EXPECT_EQ(box.listIndex(), -1);
}

class AComboBox : public ::testing::Test {
  protected:
    AComboBox() : box("box", true), watch(box) {
        box.setItems({"0.25", "0.50"});
        box.onClick = watch.event("click");
        box.onChange = watch.event("change");
        watch.taken();
    }
    ComboBox box;
    Watch watch;
};

TEST_F(AComboBox, ChangesItsTextBeforeTheClickOfANewChoice) {
    box.userSelect(1);
    EXPECT_EQ(watch.taken(), (Log{"value", "change", "click"}));
    EXPECT_EQ(box.text(), "0.50");
}

TEST_F(AComboBox, HasTextAndChoiceInPlaceWhenTheFirstEventComes) {
    box.onChange = [&] {
        EXPECT_EQ(box.listIndex(), 1);
        EXPECT_EQ(box.text(), "0.50");
    };
    box.setListIndex(1);
    EXPECT_EQ(box.listIndex(), 1);
}

TEST_F(AComboBox, ChoosesTheEntryThatReadsLikeTheTypedText) {
    box.userSetText("0.50");
    EXPECT_EQ(box.listIndex(), 1);
    EXPECT_EQ(watch.taken(), (Log{"value", "change"})); // typing is no click
    box.userSetText("0.5");
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(watch.taken(), (Log{"value", "change"}));
    box.userSetText("0.5");
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_F(AComboBox, RaisesOnlyTheClickWhenTheChosenEntryReadsLikeTheText) {
    box.setText("other");
    box.setItems({"first", "other"});
    EXPECT_EQ(box.text(), "other"); // a typed text stays
    EXPECT_EQ(box.listIndex(), -1);
    watch.taken();
    box.setListIndex(1);
    EXPECT_EQ(watch.taken(), (Log{"value", "click"}));
}

TEST_F(AComboBox, GoesOnFromItsChoiceAndStopsAtItsEnds) {
    box.userSetText("0.25");
    watch.taken();
    box.userStep(1);
    EXPECT_EQ(box.text(), "0.50");
    EXPECT_EQ(watch.taken(), (Log{"value", "change", "click"}));
    box.userStep(1);
    EXPECT_EQ(box.text(), "0.50");
    box.userStep(-1);
    box.userStep(-1);
    EXPECT_EQ(box.text(), "0.25");
    EXPECT_EQ(box.listIndex(), 0);
}

TEST_F(AComboBox, GoesFromATypedTextToTheFirstEntryThatBeginsWithIt) {
    for (const int by : {1, -1}) {
        box.userSetText("0.5");
        box.userStep(by);
        EXPECT_EQ(box.text(), "0.50");
    }
    box.userSetText("0.");
    box.userStep(1);
    EXPECT_EQ(box.text(), "0.25");
    box.userSetText("7");
    box.userStep(1);
    EXPECT_EQ(box.text(), "7");
}

TEST_F(AComboBox, IsShutToTheUserWhileDisabledOrHidden) {
    box.setEnabled(false);
    box.userSetText("1");
    box.userSelect(0);
    box.userStep(1);
    box.setEnabled(true);
    box.setVisible(false);
    box.userSetText("1");
    box.userSelect(0);
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.listIndex(), -1);
}

TEST_F(AComboBox, EmptiesItsTextWithTheChoice) {
    box.setListIndex(0);
    watch.taken();
    box.setListIndex(-1);
    EXPECT_EQ(watch.taken(), (Log{"value", "change", "click"}));
    EXPECT_EQ(box.text(), "");
}

TEST(ChoosingInAList, KeepsTheChosenTextWhenTheEntriesAreReplaced) {
    ListBox list;
    list.setItems({"a", "b", "c"});
    list.setListIndex(1);
    Watch watch(list);
    list.onClick = watch.event("click");
    list.replaceItems({"0", "a", "b"});
    EXPECT_EQ(list.listIndex(), 2);
    EXPECT_EQ(watch.taken(), Log{"items"});
    list.replaceItems({"0", "a"});
    EXPECT_EQ(list.listIndex(), -1);
    list.replaceItems({"a", "b"});
    EXPECT_EQ(list.listIndex(), -1);
}

TEST(ChoosingInAList, StepsAsFarAsThereAreEntries) {
    ListBox list;
    int clicks = 0;
    list.onClick = [&] { ++clicks; };
    list.userStep(1);
    EXPECT_EQ(clicks, 0) << "an empty list";
    list.setItems({"a", "b", "c"});
    list.userStep(5);
    EXPECT_EQ(list.listIndex(), 0) << "the first step chooses the first entry";
    list.userStep(1);
    list.userStep(5);
    EXPECT_EQ(list.listIndex(), 2);
    list.userStep(1);
    EXPECT_EQ(clicks, 3) << "at the end nothing is chosen again";
    list.userStep(-9);
    EXPECT_EQ(list.listIndex(), 0);
}

class TypingInAList : public ::testing::Test {
  protected:
    TypingInAList() { list.setItems({"Apple", "banana", "Berry", "blueberry", "cherry"}); }
    std::string type(const std::string& letters, double seconds) {
        for (const char letter : letters) {
            list.userType(std::string(1, letter), seconds);
        }
        return list.selectedText();
    }
    ListBox list;
};

TEST_F(TypingInAList, ChoosesTheNextEntryThatBeginsSo) {
    EXPECT_EQ(type("b", 10), "banana");
    EXPECT_EQ(type("b", 11.5), "Berry");
    EXPECT_EQ(type("b", 13), "blueberry");
    EXPECT_EQ(type("b", 15), "banana") << "round to the first";
    EXPECT_EQ(type("A", 17), "Apple");
}

TEST_F(TypingInAList, LettersInQuickSuccessionBelongTogether) {
    EXPECT_EQ(type("blu", 10), "blueberry");
    EXPECT_EQ(type("be", 20), "Berry");
}

TEST_F(TypingInAList, SameLetterInQuickSuccessionGoesOn) {
    EXPECT_EQ(type("bb", 10), "Berry");
}

TEST_F(TypingInAList, ChoiceStaysWithoutAMatch) {
    type("ch", 10);
    int clicks = 0;
    list.onClick = [&] { ++clicks; };
    EXPECT_EQ(type("x", 20), "cherry");
    EXPECT_EQ(type("c", 30), "cherry") << "the only one";
    EXPECT_EQ(clicks, 0);
}

TEST(ATypingList, OfNoEntriesStaysEmpty) {
    ListBox list;
    list.userType("a", 1);
    EXPECT_EQ(list.listIndex(), -1);
}

} // namespace
} // namespace veldara::test
