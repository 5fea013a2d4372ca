#include "controls/browsing.h"
#include "controls/watch.h"
#include "platform/error.h"
#include "support/fake_drives.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

class Browsing : public ::testing::TestWithParam<char> {
  protected:
    Browsing() : tree{GetParam(), {}, {}, {}}, drives(tree), letters(GetParam() == '\\') {
        drives.plug(stick());
        tree.addFolder(photos());
        tree.addFolder(photos() + GetParam() + "lake");
    }
    std::string home() const { return letters ? "c" : "/"; }
    std::string root() const { return letters ? "c:\\" : "/"; }
    std::string photos() const { return letters ? "c:\\my\\photos" : "/my/photos"; }
    std::string stick() const { return letters ? "e" : "/media/stick"; }
    std::string stickRoot() const { return letters ? "e:\\" : "/media/stick"; }

    FolderTree tree;
    FakeDrives drives;
    bool letters;
};

INSTANTIATE_TEST_SUITE_P(PathStyles, Browsing, ::testing::Values('/', '\\'),
                         [](const auto& style) { return style.param == '/' ? "unix" : "windows"; });

TEST_P(Browsing, ADriveListShowsTheDrivesWithNoneChosen) {
    const DriveList list("list", drives);
    EXPECT_EQ(list.items(), (std::vector<std::string>{home(), stick()}));
    EXPECT_EQ(list.drive(), "");
}

TEST_P(Browsing, ADriveListRaisesChangeForANewDriveOnly) {
    DriveList list("list", drives);
    Watch watch(list);
    list.onChange = watch.event("change");
    list.setDrive(home());
    list.setDrive(home());
    list.userSelect(0);
    EXPECT_EQ(watch.taken(), (Log{"value", "change"}));
    list.userSelect(1);
    EXPECT_EQ(watch.taken(), (Log{"value", "change"}));
    EXPECT_EQ(list.drive(), stick());
}

TEST_P(Browsing, ADriveListRefusesADriveThatIsNotThere) {
    DriveList list("list", drives);
    list.setDrive(home());
    EXPECT_THROW(list.setDrive("q"), Error);
    EXPECT_THROW(list.setDrive(""), Error);
    EXPECT_EQ(list.drive(), home());
}

TEST_P(Browsing, ADriveListFindsADriveThatWasPluggedIn) {
    DriveList list("list", drives);
    const std::string fresh = letters ? "f" : "/media/card";
    drives.plug(fresh);
    list.setDrive(fresh);
    EXPECT_EQ(list.drive(), fresh);
    EXPECT_EQ(list.items().size(), 3U);
}

TEST_P(Browsing, ADriveListKeepsTheChosenDriveThatWasUnplugged) {
    DriveList list("list", drives);
    list.setDrive(stick());
    Watch watch(list);
    drives.unplug(stick());
    list.refresh();
    list.refresh();
    EXPECT_EQ(watch.taken(), Log{"items"});
    EXPECT_EQ(list.drive(), stick());
}

TEST_P(Browsing, ADriveListIsShutToTheUserWhileDisabled) {
    DriveList list("list", drives);
    list.setEnabled(false);
    list.userSelect(1);
    list.setEnabled(true);
    list.userSelect(2);
    list.userSelect(-1);
    EXPECT_EQ(list.drive(), "");
}

TEST_P(Browsing, AFolderListShowsTheWayDownAndTheFoldersBelow) {
    FolderList list("list", drives);
    list.setPath(photos());
    ASSERT_EQ(list.entries().size(), 4U);
    const char separator = GetParam();
    EXPECT_EQ(list.entries()[0], (FolderList::Entry{root(), root(), 0, true}));
    EXPECT_EQ(list.entries()[1], (FolderList::Entry{"my", root() + "my", 1, true}));
    EXPECT_EQ(list.entries()[2], (FolderList::Entry{"photos", photos(), 2, true}));
    EXPECT_EQ(list.entries()[3],
              (FolderList::Entry{"lake", photos() + separator + "lake", 3, false}));
    EXPECT_EQ(list.currentEntry(), 2);
}

TEST_P(Browsing, AFolderListShowsAVolumeAsTheTop) {
    FolderList list("list", drives);
    list.setPath(stickRoot());
    ASSERT_EQ(list.entries().size(), 1U);
    EXPECT_EQ(list.entries()[0].path, stickRoot());
    EXPECT_EQ(list.currentEntry(), 0);
}

TEST_P(Browsing, AFolderListHasNothingBeforeAFolderIsChosen) {
    FolderList list("list", drives);
    EXPECT_EQ(list.path(), "");
    EXPECT_EQ(list.currentEntry(), -1);
    Watch watch(list);
    list.refresh();
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_P(Browsing, AFolderListRaisesChangeForANewFolderOnly) {
    FolderList list("list", drives);
    Watch watch(list);
    list.onChange = watch.event("change");
    list.setPath(photos());
    EXPECT_EQ(watch.taken(), (Log{"items", "value", "change"}));
    list.setPath(photos());
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_P(Browsing, AFolderListStaysWhereItIsWhenAFolderCannotBeRead) {
    FolderList list("list", drives);
    list.setPath(root());
    const auto entries = list.entries();
    Watch watch(list);
    list.onChange = watch.event("change");
    drives.takeMediumOut(stick());
    EXPECT_THROW(list.setPath(stickRoot()), Error);
    EXPECT_EQ(list.path(), root());
    EXPECT_EQ(list.entries(), entries);
    EXPECT_EQ(watch.taken(), Log{});
}

TEST_P(Browsing, OpeningAnEntryGoesThere) {
    FolderList list("list", drives);
    list.setPath(photos());
    list.userOpen(3);
    EXPECT_EQ(list.path(), photos() + GetParam() + "lake");
    list.userOpen(0);
    EXPECT_EQ(list.path(), root());
}

TEST_P(Browsing, OpeningAFolderThatHasGoneStaysAndShowsThatItHasGone) {
    FolderList list("list", drives);
    list.setPath(photos());
    tree.remove(photos() + GetParam() + "lake");
    list.userOpen(3);
    EXPECT_EQ(list.path(), photos());
    EXPECT_EQ(list.entries().size(), 3U);
}

TEST_P(Browsing, OpeningAFolderWithoutRightsEntersItAndShowsNothing) {
    FolderList list("list", drives);
    list.setPath(photos());
    const std::string lake = photos() + GetParam() + "lake";
    tree.unreadable.insert(lake);
    Watch watch(list);
    list.onChange = watch.event("change");
    list.userOpen(3);
    EXPECT_EQ(list.path(), lake);
    EXPECT_EQ(list.entries().back().path, lake);
    EXPECT_TRUE(list.entries().back().isOpen);
    EXPECT_EQ(watch.taken(), (Log{"items", "value", "change"}));
}

TEST_P(Browsing, OpeningDoesNothingWhileDisabledAndBesideTheEntries) {
    FolderList list("list", drives);
    list.setPath(photos());
    list.setEnabled(false);
    list.userOpen(0);
    list.setEnabled(true);
    list.userOpen(4);
    list.userOpen(-1);
    EXPECT_EQ(list.path(), photos());
}

TEST_P(Browsing, RefreshShowsNewFoldersAndSurvivesAFolderThatHasGone) {
    FolderList list("list", drives);
    list.setPath(photos());
    Watch watch(list);
    list.onChange = watch.event("change");
    list.refresh();
    EXPECT_EQ(watch.taken(), Log{});
    tree.addFolder(photos() + GetParam() + "sea");
    list.refresh();
    EXPECT_EQ(watch.taken(), Log{"items"});
    EXPECT_EQ(list.entries().size(), 5U);
    tree.remove(photos());
    list.refresh();
    EXPECT_EQ(list.entries().size(), 3U);
    EXPECT_EQ(list.path(), photos());
}

} // namespace
} // namespace veldara::test
