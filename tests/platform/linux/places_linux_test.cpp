#include "platform/linux/mounted_drives.h"
#include "platform/linux/user_folders.h"
#include "platform/running_system.h"
#include "support/temp_folder.h"

#include <map>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using Names = std::vector<std::string>;

TEST(UserVolumes, AreTheRealOnesMountedForTheUser) {
    EXPECT_EQ(userVolumes("/dev/sda1 / ext4 rw 0 0\n"
                          "proc /proc proc rw 0 0\n"
                          "/dev/sdb1 /media/me/STICK vfat rw 0 0\n"
                          "tmpfs /media/me/ram tmpfs rw 0 0\n"
                          "/dev/sda2 /boot/efi vfat rw 0 0\n"
                          "/dev/sdc1 /run/media/me/card10 exfat rw 0 0\n"
                          "/dev/sdd1 /run/media/me/Card9 exfat rw 0 0\n"
                          "nas:/photos /mnt/nas nfs4 rw 0 0\n"
                          "//nas/share /mnt/share cifs rw 0 0\n"
                          "me@host: /mnt/far fuse.sshfs rw 0 0\n"
                          "gvfsd-fuse /run/user/1000/gvfs fuse.gvfsd-fuse rw 0 0\n"
                          "portal /mnt/doc fuse.portal rw 0 0\n"
                          "overlay /mnt/layers overlay rw 0 0\n"
                          "systemd-1 /mnt/auto autofs rw 0 0\n"
                          "/dev/sde1 /mnt ext4 rw 0 0\n"),
              (Names{"/media/me/STICK", "/mnt", "/mnt/far", "/mnt/nas", "/mnt/share",
                     "/run/media/me/Card9", "/run/media/me/card10"}));
}

TEST(UserVolumes, HaveTheirNamesUnescapedAndStandOnce) {
    EXPECT_EQ(userVolumes("/dev/sdb1 /media/My\\040Stick\\134x\\011y vfat rw 0 0\n"
                          "/dev/sdb1 /media/My\\040Stick\\134x\\011y vfat ro 0 0\n"
                          "/dev/sdb2 /media/odd\\04 vfat rw 0 0\n"),
              (Names{"/media/My Stick\\x\ty", "/media/odd\\04"}));
}

TEST(UserVolumes, AreNoneInATableThatIsNone) {
    EXPECT_EQ(userVolumes(""), Names{});
    EXPECT_EQ(userVolumes("\n\n   \n/dev/sdb1\n/dev/sdb1 /media\n\xFF\xFE\n"), Names{});
}

class DrivesOfATable : public ::testing::Test {
  protected:
    TempFolder folder;
    MountedDrives drives{folder.addFile("mounts", "/dev/sdb1 /media/stick vfat rw 0 0\n"
                                                  "/dev/sdb2 /media/stick/inner vfat rw 0 0\n")};
};

TEST_F(DrivesOfATable, StartWithTheRoot) {
    EXPECT_EQ(drives.list(), (Names{"/", "/media/stick", "/media/stick/inner"}));
    EXPECT_EQ(MountedDrives(folder / "missing").list(), Names{"/"});
    EXPECT_EQ(MountedDrives(folder.text()).list(), Names{"/"});
}

TEST_F(DrivesOfATable, AreFoundByTheLongestFolderThatAPathLiesBelow) {
    EXPECT_EQ(drives.driveOf("/"), "/");
    EXPECT_EQ(drives.driveOf("/home/me"), "/");
    EXPECT_EQ(drives.driveOf("/media"), "/");
    EXPECT_EQ(drives.driveOf("/media/sticky"), "/");
    EXPECT_EQ(drives.driveOf("/media/stick"), "/media/stick");
    EXPECT_EQ(drives.driveOf("/media/stick/"), "/media/stick");
    EXPECT_EQ(drives.driveOf("/media/stick/photos"), "/media/stick");
    EXPECT_EQ(drives.driveOf("/media/stick/inner/x"), "/media/stick/inner");
    EXPECT_EQ(drives.driveOf("/media/stick/../other"), "/");
    EXPECT_EQ(drives.driveOf("media/stick"), "");
}

TEST_F(DrivesOfATable, AreTheTopOfTheWayToAFolder) {
    EXPECT_EQ(drives.foldersDownTo("/"), Names{"/"});
    EXPECT_EQ(drives.foldersDownTo("/a"), (Names{"/", "/a"}));
    EXPECT_EQ(drives.foldersDownTo("/home/me"), (Names{"/", "/home", "/home/me"}));
    EXPECT_EQ(drives.foldersDownTo("/media/stick/a/b/"),
              (Names{"/media/stick", "/media/stick/a", "/media/stick/a/b"}));
    EXPECT_EQ(drives.foldersDownTo("/media/stick/inner"), Names{"/media/stick/inner"});
    EXPECT_EQ(drives.foldersDownTo("/a//b/./c/.."), (Names{"/", "/a", "/a/b"}));
    EXPECT_EQ(drives.foldersDownTo("relative"), Names{"relative"});
    EXPECT_EQ(drives.foldersDownTo("relative/"), Names{"relative"});
}

TEST_F(DrivesOfATable, AreTheirOwnRoot) {
    EXPECT_EQ(drives.rootOf("/media/stick"), "/media/stick");
    EXPECT_EQ(drives.separator(), '/');
}

TEST_F(DrivesOfATable, VanishWithTheirMount) {
    EXPECT_EQ(drives.list().size(), 3U);
    folder.addFile("mounts", "");
    EXPECT_EQ(drives.list(), Names{"/"});
    EXPECT_EQ(drives.driveOf("/media/stick/photos"), "/");
}

class ProgramFolders : public OnTheRunningSystem {};

// In the tree that it was built in, or where it would lie beside the installed program.
TEST_F(ProgramFolders, HaveTheHelp) {
    const std::filesystem::path place =
        std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
    const std::filesystem::path built = place.parent_path() / "help";
    const std::filesystem::path installed = place / "share/veldara/help";
    EXPECT_EQ(system.helpFolder(),
              std::filesystem::exists(built / "index.html") ? built : installed);
}

class UserFolderSearch : public ::testing::Test {
  protected:
    UserFolderSearch() { variables["HOME"] = home.text(); }
    UserFolders folders() {
        return UserFolders([this](const std::string& name) {
            const auto found = variables.find(name);
            return found == variables.end() ? std::string() : found->second;
        });
    }
    Environment environment() {
        return [this](const std::string& name) { return variables[name]; };
    }
    TempFolder home;
    std::map<std::string, std::string> variables;
};

TEST_F(UserFolderSearch, TakesTheEnvironmentFirst) {
    home.addFile(".config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/fromFile\"\n");
    home.addFolder("Desktop");
    variables["XDG_DESKTOP_DIR"] = "/from/environment/";
    EXPECT_EQ(folders().path(0), "/from/environment");
    variables["XDG_DESKTOP_DIR"] = "not/absolute";
    EXPECT_EQ(folders().path(0), home / "fromFile");
}

TEST_F(UserFolderSearch, TakesTheDesktopsListNext) {
    home.addFile(".config/user-dirs.dirs", "# comment\n"
                                           "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                                           " XDG_DOCUMENTS_DIR = \"/data/My \\\"Papers\\\"\" \n");
    EXPECT_EQ(folders().path(0), home / "Schreibtisch");
    EXPECT_EQ(folders().path(16), home / "Schreibtisch");
    EXPECT_EQ(folders().path(5), "/data/My \"Papers\"");
}

TEST_F(UserFolderSearch, FindsTheListWhereTheSettingsAre) {
    home.addFile("settings/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papiere/\"\n");
    variables["XDG_CONFIG_HOME"] = home / "settings";
    EXPECT_EQ(folders().path(5), home / "Papiere");
}

TEST_F(UserFolderSearch, TakesTheUsualNamesLastAndOnlyWhereTheyExist) {
    EXPECT_EQ(folders().path(0), "");
    EXPECT_EQ(folders().path(5), "");
    home.addFolder("Desktop");
    home.addFolder("Documents");
    EXPECT_EQ(folders().path(0), home / "Desktop");
    EXPECT_EQ(folders().path(5), home / "Documents");
}

TEST_F(UserFolderSearch, KnowsNoOtherKinds) {
    for (const int identifier : {1, 2, 33}) {
        EXPECT_EQ(folders().path(identifier), "");
    }
}

TEST_F(UserFolderSearch, PassesOverLinesThatNameNothing) {
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR=$HOME/x\n", "XDG_DESKTOP_DIR", "/h"), "");
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR=x/half\"\n", "XDG_DESKTOP_DIR", "/h"), "");
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR=\"x\"\n", "XDG_DESKTOP_DIR", "/h"), "");
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR=\"$HOMEx\"\n", "XDG_DESKTOP_DIR", "/h"), "");
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR=\"/open\n", "XDG_DESKTOP_DIR", "/h"), "");
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR", "XDG_DESKTOP_DIR", "/h"), "");
    EXPECT_EQ(userDirectory("XDG_DESKTOP_DIR=\"$HOME\"", "XDG_DESKTOP_DIR", "/h"), "/h");
    EXPECT_EQ(
        userDirectory("XDG_DESKTOP_DIR=\"/a\"\nXDG_DESKTOP_DIR=\"/b\"", "XDG_DESKTOP_DIR", "/h"),
        "/b");
}

TEST_F(UserFolderSearch, KnowsWhereSettingsAndDataAre) {
    EXPECT_EQ(configFolder(environment()), home / ".config");
    EXPECT_EQ(dataFolder(environment()), home / ".local/share");
    variables["XDG_CONFIG_HOME"] = "/etc/mine/";
    variables["XDG_DATA_HOME"] = "relative";
    EXPECT_EQ(configFolder(environment()), "/etc/mine");
    EXPECT_EQ(dataFolder(environment()), home / ".local/share");
}

TEST_F(UserFolderSearch, FindsAHomeWithoutAnEnvironment) {
    variables.clear();
    EXPECT_EQ(homeFolder(environment()).front(), '/');
    variables["HOME"] = "relative";
    EXPECT_EQ(homeFolder(environment()).front(), '/');
}

class TheUsersPlaces : public OnTheRunningSystem {};

TEST_F(TheUsersPlaces, AreTheOnesOfTheBaseDirectories) {
    EXPECT_EQ(system.profileFolder(), home / "data/veldara");
    EXPECT_EQ(system.helpFileName(), "index.html");
    EXPECT_FALSE(std::filesystem::exists(system.profileFolder()));
    EXPECT_EQ(system.registry().setNumber(RegistryRoot::localMachine, "Software\\x", "n", 1), 0);
    EXPECT_TRUE(std::filesystem::exists(home / "config/veldara/values"));
}

} // namespace
} // namespace veldara::test
