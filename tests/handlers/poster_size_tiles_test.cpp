// A poster that is chosen by its size and saved in the windows has the same tiles, byte for byte,
// as the one that the command line makes of the same wish.
#include "app/frmMain.h"
#include "cli/tiles_program.h"
#include "platform/files/whole_file.h"
#include "platform/text/path_text.h"
#include "save_support.h"
#include "support/disk_file_system.h"
#include "support/temp_folder.h"

#include <map>

namespace veldara::test {
namespace {

using Files = std::map<std::string, std::string>; // contents by name

class SilentConsole : public Console {
  public:
    std::string said;

    void print(const std::string& text) override { said += text; }
    void complain(const std::string& text) override { said += text; }
    bool canAsk() const override { return false; }
    bool canDraw() const override { return false; }
    int columns() const override { return 80; }
    std::optional<std::string> readLine() override { return std::nullopt; }
    bool interrupted() const override { return false; }
};

class PosterSizeTiles : public ::testing::Test {
  protected:
    PosterSizeTiles() {
        fakes.registry.putText(key, "last_folder", temp.text());
        const Image photo = patternedImage(1200, 800);
        writeWholeFile(temp.path() / "lake.jpg",
                       encodeImage(photo.view(), TileFormat::jpeg, 300, {}));
    }

    // What the windows save for the user's choice.
    Files byWindow(const std::function<void(frmPosterSize&)>& user) {
        frmMain window(platform, fakes.screen);
        window.load();
        window.lstFiles.userClick(0);
        fakes.screen.whenModal("frmPosterSize", [&user](Window& dialog) {
            auto& posterSize = dynamic_cast<frmPosterSize&>(dialog);
            user(posterSize);
            posterSize.cmdOk.userClick();
        });
        window.mnuPosterSize.userClick();
        fakes.screen.whenModal("frmSaveTiles", [](Window& dialog) {
            dynamic_cast<frmSaveTiles&>(dialog).cmdSaveNow.userClick();
        });
        window.cmdSaveNow.userClick();
        EXPECT_TRUE(fakes.screen.allUsersPlayed());
        EXPECT_TRUE(fakes.dialogs.quiet());
        return filesOf("lake_poster_images");
    }

    Files byCommandLine(std::vector<std::string> wish) {
        const std::string folder = textOf(temp.path() / "by_command");
        wish.insert(wish.end(), {"--out", folder, textOf(temp.path() / "lake.jpg")});
        SilentConsole console;
        EXPECT_EQ(runTilesProgram(wish, console, [] { return std::vector<EdgeProfile>(); }),
                  statusDone)
            << console.said;
        return filesOf("by_command");
    }

    void expectSame(const Files& one, const Files& other, std::size_t count) const {
        EXPECT_EQ(one.size(), count);
        EXPECT_TRUE(one == other);
    }

    const char* const key = R"(Software\Korvane\omra)";
    const TempFolder temp;
    TestPlatform fakes{static_cast<char>(std::filesystem::path::preferred_separator)};
    DiskFileSystem files;
    DiskDrives drives{temp.path()};
    Platform platform = fakes.withDisk(files, drives);

  private:
    Files filesOf(const std::string& folder) const {
        Files found;
        for (const auto& entry : std::filesystem::directory_iterator(temp.path() / folder)) {
            const std::string name = textOf(entry.path().filename());
            found[name] = temp.content(std::string(folder).append("/").append(name));
        }
        return found;
    }
};

TEST_F(PosterSizeTiles, AWidthOnThisPaper) {
    // The first paper's tiles are 6 x 4 inches.
    expectSame(byWindow([](frmPosterSize& dialog) { dialog.txtWidth.userSetText("18"); }),
               byCommandLine({"--poster-width", "18"}), 9);
}

TEST_F(PosterSizeTiles, AHeightWithSheetsOnTheirSide) {
    const Files window = byWindow([](frmPosterSize& dialog) {
        dialog.txtHeight.userSetText("6");
        EXPECT_NE(dialog.lstChoices.items().at(0).find("on their side"), std::string::npos);
    });
    expectSame(window, byCommandLine({"--poster-height", "6"}), 2);
}

TEST_F(PosterSizeTiles, AnyPaperInMillimetres) {
    fakes.registry.putText(
        key, "paperRegLine",
        "|1|A4 - 210 x 297|210|297|25.4|31.75|25.4|31.75|25.4|31.75|25.4|31.75|");
    std::string line;
    const Files window = byWindow([&line](frmPosterSize& dialog) {
        dialog.opbAnyPaper.userSelect();
        dialog.txtWidth.userSetText("700");
        line = dialog.lstChoices.items().at(0);
    });
    EXPECT_EQ(line.find("A4 - 210"), std::string::npos) << "another paper fits better: " << line;
    const Files command = byCommandLine({"--units", "mm", "--poster-width", "700", "--any-paper"});
    expectSame(window, command, command.size());
    EXPECT_GT(command.size(), 1U);
}

TEST_F(PosterSizeTiles, AQualityWithCompensatedEdges) {
    fakes.registry.putText(key, "prefs_edgeAdjust", "1_02");
    const Files window = byWindow([](frmPosterSize& dialog) {
        dialog.cmbQuality.userSelect(1);
        EXPECT_EQ(dialog.cmbQuality.text(), "Very Good");
    });
    // The third of the profiles that a new list has.
    const Files command = byCommandLine({"--best-quality", "Very Good", "--clip", "2,6,3,6"});
    expectSame(window, command, command.size());
    EXPECT_FALSE(command.empty());
}

} // namespace
} // namespace veldara::test
