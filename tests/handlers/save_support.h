// What the tests of the save windows share: a scripted main window, a run whose files
// land in memory, and a reader of bitmap bytes of the tests' own.
#pragma once

#include "output/frmMsg.h"
#include "output/frmSaveTiles.h"
#include "output/frmSimpleMsg.h"
#include "platform/error.h"
#include "platform/text/path_text.h"
#include "support/test_platform.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

// Every pixel differs from its neighbours in all three channels.
inline Image patternedImage(int width, int height) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = image.row(y);
        for (int x = 0; x < width; ++x) {
            row[3 * x] = static_cast<std::uint8_t>(7 * x + 3 * y);
            row[3 * x + 1] = static_cast<std::uint8_t>(x + 11 * y);
            row[3 * x + 2] = static_cast<std::uint8_t>(5 * x * y + x);
        }
    }
    return image;
}

class FakeSaveOwner : public SaveOwner {
  public:
    std::shared_ptr<const Image> photo = std::make_shared<const Image>(patternedImage(60, 40));
    std::vector<TileRect> tiles{{0, 0, 29, 19}, {30, 0, 59, 19}, {0, 20, 29, 39}, {30, 20, 59, 39}};
    bool tableOk = true;
    bool sizesOk = true;
    double widthInches = 0.2; // 30 pixels: 150 dots per inch
    bool rotated = false;
    bool compensated = false;
    EdgeTrims trims{};

    PosterPlan planTiles(const TileFileParts& files) const override {
        if (!tableOk) {
            return failed(PlanProblem::noTiles);
        }
        PosterPlan plan = veldara::planTiles(
            tiles, rotated, widthInches, compensated ? std::optional(trims) : std::nullopt, files);
        if (!sizesOk) {
            plan.problem = PlanProblem::resolution;
        }
        return plan;
    }
    std::shared_ptr<const Image> currentPhoto() const override { return photo; }

  private:
    static PosterPlan failed(PlanProblem problem) {
        PosterPlan plan;
        plan.problem = problem;
        return plan;
    }
};

struct WrittenFile {
    std::string path;
    std::vector<std::uint8_t> bytes;
};

// An uncompressed bitmap taken apart.
struct Bitmap {
    explicit Bitmap(const std::vector<std::uint8_t>& file) : bytes(file) {
        width = number(18);
        height = number(22);
        dotsPerMetre = number(38);
    }
    int number(std::size_t at) const {
        unsigned value = 0;
        for (std::size_t byte = 4; byte-- > 0;) {
            value = value << 8U | bytes.at(at + byte);
        }
        return static_cast<int>(value);
    }
    // The three channels of a pixel, row 0 at the top.
    std::array<int, 3> at(int x, int y) const {
        const int stride = (3 * width + 3) / 4 * 4;
        const int rows = height < 0 ? -height : height;
        const int row = height < 0 ? y : rows - 1 - y;
        const int offset = number(10) + row * stride + 3 * x;
        const auto place = static_cast<std::size_t>(offset);
        return {bytes.at(place + 2), bytes.at(place + 1), bytes.at(place)};
    }
    int dotsPerInch() const { return static_cast<int>(std::lround(dotsPerMetre * 0.0254)); }

    std::vector<std::uint8_t> bytes;
    int width = 0;
    int height = 0;
    int dotsPerMetre = 0;
};

inline std::array<int, 3> pixelOf(const Image& image, int x, int y) {
    const std::uint8_t* pixel = image.row(y) + 3 * x;
    return {pixel[0], pixel[1], pixel[2]};
}

// The three windows over a platform of fakes; files that a run writes are kept in `written`.
class SaveWindows {
  public:
    explicit SaveWindows(char separator = '\\') : fakes(separator) {
        photos = separator == '\\' ? "c:\\photos" : "/photos";
        drive = separator == '\\' ? "c" : "/";
        fakes.tree.addFolder(photos);
        fakes.clock.drive(progress.tmrProgBar);
    }

    TestPlatform fakes;
    std::string photos;
    std::string drive;
    FakeSaveOwner owner;
    std::vector<WrittenFile> written;
    bool writeFails = false;
    std::function<void()> whileWriting; // before a file is there
    bool tileImageFails = false;
    std::vector<std::pair<int, int>> tileImagesMade; // width, height

    Platform platform = fakes.platform();
    frmMsg progress{platform, fakes.screen};
    frmSimpleMsg result{platform, fakes.screen};
    frmSaveTiles dialog{platform, fakes.screen, owner, progress, result, hooks()};

    // Opens the dialog for a photo and has the user do something in it, then close it.
    void open(const std::function<void()>& user, const std::string& photo = "IMG_0001.BMP") {
        fakes.screen.whenModal("frmSaveTiles", [this, user](Window&) {
            user();
            dialog.userClose();
        });
        dialog.OpenForPhoto(drive, photos, photo);
    }

    // The same, and saves.
    void save(
        const std::function<void()>& before = [] {}, const std::string& photo = "IMG_0001.BMP") {
        open(
            [&] {
                before();
                dialog.cmdSaveNow.userClick();
            },
            photo);
    }

    std::string folder() const { return photos + fakes.tree.separator + "IMG_0001_poster_images"; }

    std::vector<std::string> paths() const {
        std::vector<std::string> names;
        for (const WrittenFile& file : written) {
            names.push_back(file.path);
        }
        return names;
    }

    Bitmap bitmap(std::size_t tile) const { return Bitmap(written.at(tile).bytes); }

  private:
    SaveHooks hooks() {
        SaveHooks made;
        made.createTileImage = [this](int width, int height) {
            if (tileImageFails) {
                throw Error("There is not enough memory.");
            }
            tileImagesMade.emplace_back(width, height);
            return Image(width, height);
        };
        made.write = [this](const std::filesystem::path& file,
                            const std::vector<std::uint8_t>& bytes) {
            if (writeFails) {
                throw Error("The disk is full.");
            }
            if (whileWriting) {
                whileWriting();
            }
            written.push_back({pathText(file), bytes});
        };
        return made;
    }
};

} // namespace veldara::test
