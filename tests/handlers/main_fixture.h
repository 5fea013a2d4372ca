// The main window on a platform of fakes, with photos that exist only as sizes.
#pragma once

#include "app/frmMain.h"
#include "platform/error.h"
#include "platform/text/path_text.h"
#include "support/test_platform.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {

inline constexpr const char* settingsKey = R"(Software\Korvane\omra)";

class MainWindowTest : public ::testing::Test {
  protected:
    explicit MainWindowTest(char separator = '/')
        : fakes(separator), photoFolder(separator == '/' ? "/photos" : R"(c:\photos)") {
        fakes.tree.addFolder(photoFolder);
        fakes.registry.putText(settingsKey, "last_folder", photoFolder);
    }

    // What the loader makes of a file: a grey picture of that size, or an exception.
    void addPhoto(const std::string& name, int width, int height) {
        fakes.tree.addFile(pathOf(name));
        sizes[name] = {width, height};
    }
    std::string pathOf(const std::string& name) const {
        return photoFolder + fakes.tree.separator + name;
    }

    void store(const std::string& name, const std::string& text) {
        fakes.registry.putText(settingsKey, name, text);
    }
    void store(const std::string& name, int number) {
        fakes.registry.putNumber(settingsKey, name, number);
    }
    RegistryValue stored(const std::string& name) const {
        return fakes.registry.stored(settingsKey, name);
    }
    std::string storedText(const std::string& name) const { return stored(name).text; }

    // The preferences written, in their order, without the list of recent photos.
    std::vector<std::string> namesWritten() const {
        const std::string set = std::string("set ") + settingsKey + "|";
        std::vector<std::string> names;
        for (const std::string& call : fakes.registry.log) {
            if (call.rfind(set, 0) == 0 && call != set + "recent_photos") {
                names.push_back(call.substr(set.size()));
            }
        }
        return names;
    }
    // The six values of a full write.
    static std::vector<std::string> fullWrite() {
        return {"prefs_numTiles",          "paperRegLine",   "prefs_edgeAdjust", "prefs_showTiles",
                "prefs_heightEqualsWidth", "cmbMarginLocked"};
    }
    bool saved() const { return !namesWritten().empty(); }
    void forgetWrites() { fakes.registry.log.clear(); }

    frmMain& create() {
        platform.emplace(fakes.platform());
        window = std::make_unique<frmMain>(
            *platform, fakes.screen,
            [this](const auto& path, const StopFlag& stop) { return loadFake(path, stop); });
        window->picCur.setSize(300, 200);
        window->imgArrow.setSize(100, 100);
        return *window;
    }
    frmMain& start() {
        create().load();
        fakes.registry.log.clear();
        return *window;
    }

    void clickFile(const std::string& name) {
        const std::vector<std::string>& items = window->lstFiles.items();
        const auto found = std::find(items.begin(), items.end(), name);
        ASSERT_NE(found, items.end()) << name << " is not listed";
        window->lstFiles.userClick(static_cast<int>(found - items.begin()));
    }
    // Comes up with one photo loaded: 3000 x 2000 pixels unless said otherwise; the preview is
    // 300 x 200, a tenth of it.
    frmMain& startWithPhoto(int width = 3000, int height = 2000) {
        addPhoto("photo.jpg", width, height);
        start();
        clickFile("photo.jpg");
        EXPECT_TRUE(window->bImgSelected);
        fakes.registry.log.clear();
        return *window;
    }

    // Tiles of that size in inches without margins.
    void setTileInches(double width, double height) {
        int done = 0;
        window->setNewTileVals("Paper", 0, width, height, width, height, "line", done);
        EXPECT_EQ(done, 1);
    }

    Image loadFake(const std::filesystem::path& path, const StopFlag& stop) {
        const std::string name = pathText(path.filename());
        loaded.push_back(pathText(path));
        if (whileLoading) {
            whileLoading(name);
        }
        stop.check();
        decoded.push_back(name);
        const auto found = sizes.find(name);
        if (found == sizes.end()) {
            throw Error("The file \"" + name + "\" is no picture.");
        }
        return Image::filled(found->second.first, found->second.second, 90, 120, 150);
    }

    // The pixel of what picCur shows.
    std::array<int, 3> shownPixel(int x, int y) const {
        const std::uint8_t* pixel = window->picCur.pixels()->row(y) + std::ptrdiff_t{3} * x;
        return {pixel[0], pixel[1], pixel[2]};
    }
    static constexpr std::array<int, 3> lineColour{255, 0, 0};

    TestPlatform fakes;
    std::string photoFolder;
    std::map<std::string, std::pair<int, int>> sizes;
    std::vector<std::string> loaded;  // paths given to the loader
    std::vector<std::string> decoded; // names of those that it was not stopped in
    std::function<void(const std::string&)> whileLoading;
    std::optional<Platform> platform;
    std::unique_ptr<frmMain> window;
};

// The same in the path style of drive letters.
class LetteredMainWindowTest : public MainWindowTest {
  protected:
    LetteredMainWindowTest() : MainWindowTest('\\') {}
};

} // namespace veldara::test
