// The save windows over the real disk: this system's own adaptors and the real writing of files,
// with only the user and the main window played.
#pragma once

#include "handlers/save_support.h"
#include "platform/linux/disk_file_system.h"
#include "platform/linux/mounted_drives.h"
#include "support/temp_folder.h"
#include "support/test_platform.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veldara::test {

class RealSave {
  public:
    // Six tiles of 100 by 100 pixels: as bitmaps a little over 30,000 bytes each.
    explicit RealSave(std::string folder, std::string mountTable = "/proc/self/mounts")
        : photos(std::move(folder)), drives(std::move(mountTable)) {
        owner.photo = std::make_shared<const Image>(patternedImage(300, 200));
        owner.tiles.clear();
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 3; ++column) {
                owner.tiles.push_back({100 * column, 100 * row, 100 * column + 99, 100 * row + 99});
            }
        }
        fakes.clock.drive(progress.tmrProgBar);
    }

    static constexpr long tileBytes = 30'054; // of one tile's file
    static constexpr std::size_t tileCount = 6;

    std::string photos;
    TestPlatform fakes{'/'};
    DiskFileSystem files{"/nowhere"};
    MountedDrives drives;
    FakeSaveOwner owner;
    Platform platform = fakes.withDisk(files, drives);
    frmMsg progress{platform, fakes.screen};
    frmSimpleMsg result{platform, fakes.screen};
    frmSaveTiles dialog{platform, fakes.screen, owner, progress, result};

    void save(const std::function<void()>& before = [] {}) {
        fakes.screen.whenModal("frmSaveTiles", [this, before](Window&) {
            before();
            dialog.cmdSaveNow.userClick();
            dialog.userClose();
        });
        dialog.OpenForPhoto(drives.driveOf(photos), photos, "photo.bmp");
    }

    std::string folder() const { return photos + "/photo_poster_images"; }
    std::string tile(std::size_t number) const {
        return folder() + "/photo00" + std::to_string(number) + ".bmp";
    }
    bool saved() const { return result.visible(); }
};

// The files of a folder with their content.
inline std::map<std::string, std::string> contentOf(const std::string& folder) {
    std::map<std::string, std::string> files;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(pathOf(folder), none)) {
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().filename().string()] =
            std::string(std::istreambuf_iterator<char>(file), {});
    }
    return files;
}

// What the six files hold when nothing goes wrong.
inline std::map<std::string, std::string> undisturbedTiles() {
    const TempFolder folder;
    RealSave save(folder.text());
    save.save();
    EXPECT_TRUE(save.saved());
    return contentOf(save.folder());
}

// Exactly the first tiles stand in the folder, each whole, and nothing else does.
inline void expectFirstTiles(const RealSave& save, std::size_t count,
                             const std::map<std::string, std::string>& expected) {
    std::map<std::string, std::string> first;
    for (const auto& [name, content] : expected) {
        if (first.size() < count) {
            first[name] = content;
        }
    }
    EXPECT_TRUE(contentOf(save.folder()) == first)
        << contentOf(save.folder()).size() << " files, expected " << count;
}

} // namespace veldara::test
