#include "output/tile_run.h"
#include "platform/error.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <thread>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using Bytes = std::vector<std::uint8_t>;

Image noise(int width, int height) {
    Image image(width, height);
    std::uint32_t state = 12345;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < 3 * width; ++x) {
            state = state * 1664525U + 1013904223U;
            image.row(y)[x] = static_cast<std::uint8_t>(state >> 24U);
        }
    }
    return image;
}

std::vector<TileRect> strips(const Image& photo, int count) {
    std::vector<TileRect> tiles;
    tiles.reserve(static_cast<std::size_t>(count));
    const int height = photo.height() / count;
    for (int i = 0; i < count; ++i) {
        tiles.push_back({0, i * height, photo.width() - 1, (i + 1) * height - 1});
    }
    return tiles;
}

// A disk in memory that can fail, and counts.
struct MemoryDisk {
    std::map<std::string, Bytes> files;
    std::vector<std::string> order;
    std::optional<std::uint64_t> space;
    std::string failing; // a name that cannot be written

    TileDisk doors() {
        TileDisk disk;
        disk.freeSpace = [this] { return space; };
        disk.write = [this](const std::filesystem::path& file, const Bytes& bytes) {
            const std::string name = pathText(file);
            if (name == failing) {
                throw Error("The disk does not want it.");
            }
            files[name] = bytes;
            order.push_back(name);
        };
        return disk;
    }
};

TileJob job(std::size_t tiles, FileType type = FileType::bmp) {
    TileJob result;
    for (std::size_t i = 0; i < tiles; ++i) {
        result.files.push_back(textPath("t" + std::to_string(i)));
    }
    result.treatment.resolution = 150;
    result.type = type;
    return result;
}

// As much of a profile as is looked at: its length, whose colours it describes, and its mark.
ColourProfile bareProfile() {
    ColourProfile profile(128);
    profile[3] = 128;
    const std::string colours = "RGB ";
    const std::string mark = "acsp";
    std::copy(colours.begin(), colours.end(), profile.begin() + 16);
    std::copy(mark.begin(), mark.end(), profile.begin() + 36);
    return profile;
}

// The outcome of the step that ended it.
TileStep runAll(TileRun& run) {
    TileStep step;
    while (!run.done() && step.outcome == TileOutcome::written) {
        step = run.next();
    }
    return step;
}

TEST(TileRun, writesEveryTileInOrder) {
    const Image photo = noise(40, 120);
    const std::vector<TileRect> tiles = strips(photo, 12);
    WholePhotoSource source(photo, tiles);
    MemoryDisk disk;
    TileRun run(source, job(12), disk.doors());
    EXPECT_EQ(run.count(), 12U);
    EXPECT_EQ(runAll(run).outcome, TileOutcome::written);
    EXPECT_TRUE(run.done());
    ASSERT_EQ(disk.order.size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(disk.order[i], "t" + std::to_string(i));
        const PixelView cut = photo.view().cut(0, tiles[i].top, 40, 10);
        EXPECT_EQ(disk.files["t" + std::to_string(i)], encodeImage(cut, FileType::bmp, 150, {}));
    }
    EXPECT_THROW(run.next(), Error);
}

TEST(TileRun, writesTheSameBytesWithAnyNumberOfWorkers) {
    const Image photo = noise(60, 90);
    std::map<std::string, Bytes> first;
    for (const int workers : {1, 2, 3, 8, 100}) {
        WholePhotoSource source(photo, strips(photo, 9));
        MemoryDisk disk;
        TileJob work = job(9, FileType::jpeg);
        work.workers = workers;
        work.treatment.turned = true;
        work.treatment.trims = EdgeTrims{0.1, 0.1, 0.1, 0.1};
        work.treatment.dotsPerInch = 50;
        TileRun run(source, work, disk.doors());
        ASSERT_EQ(runAll(run).outcome, TileOutcome::written);
        ASSERT_EQ(disk.files.size(), 9U);
        if (first.empty()) {
            first = disk.files;
        }
        EXPECT_EQ(disk.files, first) << workers;
    }
}

TEST(TileRun, stopsBeforeATileThatDoesNotFit) {
    const Image photo = noise(40, 40);
    WholePhotoSource source(photo, strips(photo, 4));
    const std::size_t tileBytes =
        encodeImage(photo.view().cut(0, 0, 40, 10), FileType::bmp, 150, {}).size();
    MemoryDisk disk;
    disk.space = tileBytes; // just enough
    TileRun run(source, job(4), disk.doors());
    EXPECT_EQ(run.next().outcome, TileOutcome::written);
    disk.space = tileBytes - 1;
    EXPECT_EQ(run.next().outcome, TileOutcome::outOfSpace);
    EXPECT_EQ(disk.files.size(), 1U);
}

TEST(TileRun, writesWhenTheSpaceCannotBeTold) {
    const Image photo = noise(40, 40);
    WholePhotoSource source(photo, strips(photo, 2));
    MemoryDisk disk;
    TileRun run(source, job(2), disk.doors());
    EXPECT_EQ(runAll(run).outcome, TileOutcome::written);
    EXPECT_EQ(disk.files.size(), 2U);
}

TEST(TileRun, tellsWhyATileCouldNotBeWritten) {
    const Image photo = noise(40, 60);
    WholePhotoSource source(photo, strips(photo, 6));
    MemoryDisk disk;
    disk.failing = "t2";
    TileRun run(source, job(6), disk.doors());
    const TileStep step = runAll(run);
    EXPECT_EQ(step.outcome, TileOutcome::saveFailed);
    EXPECT_EQ(step.reason, "The disk does not want it.");
    EXPECT_EQ(disk.order, (std::vector<std::string>{"t0", "t1"})); // and nothing behind it
    EXPECT_EQ(run.written(), 2U);
}

TEST(TileRun, writesWhatComesBeforeATileThatCannotBeHad) {
    const Image photo = noise(40, 60);
    std::vector<TileRect> tiles = strips(photo, 6);
    tiles[3].right = 5000;
    WholePhotoSource source(photo, tiles);
    MemoryDisk disk;
    TileRun run(source, job(6), disk.doors());
    EXPECT_EQ(runAll(run).outcome, TileOutcome::sourceFailed);
    EXPECT_EQ(disk.order, (std::vector<std::string>{"t0", "t1", "t2"}));
}

TEST(TileRun, tellsOfATileThatCannotBeEnlarged) {
    const Image photo = noise(40, 60);
    WholePhotoSource source(photo, strips(photo, 3));
    MemoryDisk disk;
    TileJob work = job(3);
    work.treatment.trims = EdgeTrims{};
    work.treatment.dotsPerInch = 0;
    TileRun run(source, work, disk.doors());
    EXPECT_EQ(runAll(run).outcome, TileOutcome::compensationFailed);
    EXPECT_TRUE(disk.files.empty());
}

TEST(TileRun, tellsOfATileThatCannotBeEncoded) {
    const Image photo = noise(65501, 1); // one more than a JPEG file can be wide
    WholePhotoSource source(photo, strips(photo, 1));
    MemoryDisk disk;
    TileJob work = job(1);
    work.type = FileType::jpeg;
    TileRun run(source, work, disk.doors());
    const TileStep step = runAll(run);
    EXPECT_EQ(step.outcome, TileOutcome::encodeFailed);
    EXPECT_FALSE(step.reason.empty());
    EXPECT_TRUE(disk.files.empty());
}

TEST(TileRun, canBeLeftAtAnyTile) {
    const Image photo = noise(64, 640);
    for (std::size_t after = 0; after <= 5; ++after) {
        WholePhotoSource source(photo, strips(photo, 40));
        MemoryDisk disk;
        {
            TileRun run(source, job(40), disk.doors());
            for (std::size_t i = 0; i < after; ++i) {
                run.next();
            }
        }
        EXPECT_EQ(disk.files.size(), after);
    }
}

// Tells how many tiles are held at once.
class CountingSource : public TileSource {
  public:
    explicit CountingSource(const Image& photo) : photo_(photo) {}
    TilePixels tile(std::size_t) override {
        const int now = ++held_;
        int most = most_;
        while (now > most && !most_.compare_exchange_weak(most, now)) {
        }
        return {photo_.view(),
                std::shared_ptr<const void>(&photo_, [this](const void*) { --held_; })};
    }
    const ColourProfile& colourProfile() const override { return photo_.colourProfile; }
    int most() const { return most_; }

  private:
    const Image& photo_;
    std::atomic<int> held_{0};
    std::atomic<int> most_{0};
};

TEST(TileRun, holdsNoMoreTilesThanItHasWorkers) {
    const Image photo = noise(64, 64);
    CountingSource source(photo);
    MemoryDisk disk;
    TileJob work = job(50, FileType::tiff);
    work.workers = 3;
    {
        TileRun run(source, work, disk.doors());
        EXPECT_EQ(runAll(run).outcome, TileOutcome::written);
    }
    EXPECT_LE(source.most(), 3);
}

// Notes how often each tile was asked for; one of them cannot be had.
class NotingSource : public TileSource {
  public:
    NotingSource(const Image& photo, std::size_t tiles, std::size_t missing)
        : photo_(photo), asked_(tiles), missing_(missing) {}
    TilePixels tile(std::size_t number) override {
        ++asked_.at(number);
        if (number == missing_) {
            throw Error("The tile is missing.");
        }
        return {photo_.view(), nullptr};
    }
    const ColourProfile& colourProfile() const override { return photo_.colourProfile; }
    int asked(std::size_t number) const { return asked_.at(number); }

  private:
    const Image& photo_;
    std::vector<std::atomic<int>> asked_;
    std::size_t missing_;
};

constexpr auto timeToGoTooFar = std::chrono::milliseconds(100);

TEST(TileRun, staysAsFarAheadOfTheWritingAsItHasWorkers) {
    const Image photo = noise(8, 8);
    NotingSource source(photo, 20, 20);
    MemoryDisk disk;
    TileJob work = job(20);
    work.workers = 2;
    TileRun run(source, work, disk.doors());
    for (std::size_t written = 0; written < 3; ++written) {
        std::this_thread::sleep_for(timeToGoTooFar);
        EXPECT_EQ(source.asked(written + 3), 0) << written; // two in work, one waiting
        ASSERT_EQ(run.next().outcome, TileOutcome::written);
    }
}

TEST(TileRun, asksForNoTileAgainAndForNoneBehindAMissingOne) {
    const Image photo = noise(8, 8);
    NotingSource source(photo, 10, 3);
    MemoryDisk disk;
    TileJob work = job(10);
    work.workers = 2;
    TileRun run(source, work, disk.doors());
    EXPECT_EQ(runAll(run).outcome, TileOutcome::sourceFailed);
    std::this_thread::sleep_for(timeToGoTooFar);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(source.asked(i), i <= 3 ? 1 : 0) << i;
    }
}

TEST(TileRun, handsThePhotosColoursOnToEveryTile) {
    Image photo = noise(40, 20);
    photo.colourProfile = bareProfile();
    WholePhotoSource source(photo, strips(photo, 2));
    MemoryDisk disk;
    TileRun run(source, job(2, FileType::tiff), disk.doors());
    ASSERT_EQ(runAll(run).outcome, TileOutcome::written);
    for (int i = 0; i < 2; ++i) {
        const PixelView cut = photo.view().cut(0, 10 * i, 40, 10);
        const Bytes& tile = disk.files["t" + std::to_string(i)];
        EXPECT_EQ(tile, encodeImage(cut, FileType::tiff, 150, photo.colourProfile));
        EXPECT_NE(tile, encodeImage(cut, FileType::tiff, 150, {}));
    }
}

TEST(TileRun, saysWhenTheNextTileIsReady) {
    const Image photo = noise(64, 64);
    WholePhotoSource source(photo, strips(photo, 2));
    MemoryDisk disk;
    TileRun run(source, job(2), disk.doors());
    while (!run.waitReady(std::chrono::milliseconds(1))) {
    }
    EXPECT_EQ(run.next().outcome, TileOutcome::written);
}

TEST(TileRun, withoutTilesIsDone) {
    const Image photo = noise(8, 8);
    WholePhotoSource source(photo, {});
    MemoryDisk disk;
    TileRun run(source, job(0), disk.doors());
    EXPECT_TRUE(run.done());
}

TEST(RealDisk, knowsItsFreeSpace) {
    EXPECT_GT(realDisk(std::filesystem::temp_directory_path()).freeSpace().value_or(0), 0U);
    EXPECT_EQ(realDisk("/no/such/folder/anywhere").freeSpace(), std::nullopt);
}

} // namespace
} // namespace veldara
