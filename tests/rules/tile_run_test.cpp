#include "output/tile_folder.h"
#include "output/tile_pool.h"
#include "output/tile_run.h"
#include "platform/error.h"
#include "platform/text/path_text.h"
#include "support/noise.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <thread>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::noise;

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

    std::unique_ptr<TileDestination> folder(std::size_t tiles) {
        std::vector<std::filesystem::path> names;
        for (std::size_t i = 0; i < tiles; ++i) {
            names.push_back(textPath("t" + std::to_string(i)));
        }
        return std::make_unique<TileFolder>(
            std::move(names), [this](const std::filesystem::path& file, const Bytes& bytes) {
                const std::string name = pathText(file);
                if (name == failing) {
                    throw Error("The disk does not want it.");
                }
                files[name] = bytes;
                order.push_back(name);
            });
    }
};

struct Work {
    std::size_t tiles = 0;
    TileTreatment treatment;
    TileFormat type = TileFormat::bmp;
    int workers = 0;
};

Work job(std::size_t tiles, TileFormat type = TileFormat::bmp) {
    Work work;
    work.tiles = tiles;
    work.treatment.resolution = 150;
    work.type = type;
    return work;
}

// A run of tiles that are whole in memory.
class TestRun : public TileRun {
  public:
    TestRun(TileSource& source, const Work& work, MemoryDisk& disk)
        : TileRun(std::make_unique<TilePool>(source, work.tiles, work.treatment, work.type,
                                             work.workers),
                  work.tiles, disk.folder(work.tiles)),
          disk_(disk) {}
    TileStep next() { return TileRun::next(disk_.space); }

  private:
    MemoryDisk& disk_;
};

// As much of a profile as is looked at: its length, whose colours it describes, and its signature.
ColourProfile bareProfile() {
    ColourProfile profile(128);
    profile[3] = 128;
    const std::string colours = "RGB ";
    const std::string signature = "acsp";
    std::copy(colours.begin(), colours.end(), profile.begin() + 16);
    std::copy(signature.begin(), signature.end(), profile.begin() + 36);
    return profile;
}

// The outcome of the step that ended it.
TileStep runAll(TestRun& run) {
    TileStep step;
    while (!run.done() && step.outcome == TileOutcome::written) {
        step = run.next();
    }
    return step;
}

TEST(TileRun, WritesEveryTileInOrder) {
    const Image photo = noise(40, 120);
    const std::vector<TileRect> tiles = strips(photo, 12);
    WholePhotoSource source(photo, tiles);
    MemoryDisk disk;
    TestRun run(source, job(12), disk);
    EXPECT_EQ(run.count(), 12U);
    EXPECT_EQ(runAll(run).outcome, TileOutcome::written);
    EXPECT_TRUE(run.done());
    ASSERT_EQ(disk.order.size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(disk.order[i], "t" + std::to_string(i));
        const PixelView cut = photo.view().cut(0, tiles[i].top, 40, 10);
        EXPECT_EQ(disk.files["t" + std::to_string(i)], encodeImage(cut, TileFormat::bmp, 150, {}));
    }
    EXPECT_THROW(run.next(), Error);
}

TEST(TileRun, WritesTheSameBytesWithAnyNumberOfWorkers) {
    const Image photo = noise(60, 90);
    std::map<std::string, Bytes> first;
    for (const int workers : {1, 2, 3, 8, 100}) {
        WholePhotoSource source(photo, strips(photo, 9));
        MemoryDisk disk;
        Work work = job(9, TileFormat::jpeg);
        work.workers = workers;
        work.treatment.turned = true;
        work.treatment.trims = EdgeTrims{0.1, 0.1, 0.1, 0.1};
        work.treatment.dotsPerInch = 50;
        TestRun run(source, work, disk);
        ASSERT_EQ(runAll(run).outcome, TileOutcome::written);
        ASSERT_EQ(disk.files.size(), 9U);
        if (first.empty()) {
            first = disk.files;
        }
        EXPECT_EQ(disk.files, first) << workers;
    }
}

TEST(TileRun, StopsBeforeATileThatDoesNotFit) {
    const Image photo = noise(40, 40);
    WholePhotoSource source(photo, strips(photo, 4));
    const std::size_t tileBytes =
        encodeImage(photo.view().cut(0, 0, 40, 10), TileFormat::bmp, 150, {}).size();
    MemoryDisk disk;
    disk.space = tileBytes; // just enough
    TestRun run(source, job(4), disk);
    EXPECT_EQ(run.next().outcome, TileOutcome::written);
    disk.space = tileBytes - 1;
    EXPECT_EQ(run.next().outcome, TileOutcome::outOfSpace);
    EXPECT_EQ(disk.files.size(), 1U);
}

TEST(TileRun, WritesWhenTheSpaceCannotBeTold) {
    const Image photo = noise(40, 40);
    WholePhotoSource source(photo, strips(photo, 2));
    MemoryDisk disk;
    TestRun run(source, job(2), disk);
    EXPECT_EQ(runAll(run).outcome, TileOutcome::written);
    EXPECT_EQ(disk.files.size(), 2U);
}

TEST(TileRun, TellsWhyATileCouldNotBeWritten) {
    const Image photo = noise(40, 60);
    WholePhotoSource source(photo, strips(photo, 6));
    MemoryDisk disk;
    disk.failing = "t2";
    TestRun run(source, job(6), disk);
    const TileStep step = runAll(run);
    EXPECT_EQ(step.outcome, TileOutcome::saveFailed);
    EXPECT_EQ(step.reason, "The disk does not want it.");
    EXPECT_EQ(disk.order, (std::vector<std::string>{"t0", "t1"})); // and nothing behind it
    EXPECT_EQ(run.written(), 2U);
}

TEST(TileRun, WritesWhatComesBeforeATileThatCannotBeHad) {
    const Image photo = noise(40, 60);
    std::vector<TileRect> tiles = strips(photo, 6);
    tiles[3].right = 5000;
    WholePhotoSource source(photo, tiles);
    MemoryDisk disk;
    TestRun run(source, job(6), disk);
    EXPECT_EQ(runAll(run).outcome, TileOutcome::sourceFailed);
    EXPECT_EQ(disk.order, (std::vector<std::string>{"t0", "t1", "t2"}));
}

TEST(TileRun, TellsOfATileThatCannotBeEnlarged) {
    const Image photo = noise(40, 60);
    WholePhotoSource source(photo, strips(photo, 3));
    MemoryDisk disk;
    Work work = job(3);
    work.treatment.trims = EdgeTrims{};
    work.treatment.dotsPerInch = 0;
    TestRun run(source, work, disk);
    EXPECT_EQ(runAll(run).outcome, TileOutcome::compensationFailed);
    EXPECT_TRUE(disk.files.empty());
}

TEST(TileRun, TellsOfATileThatCannotBeEncoded) {
    const Image photo = noise(65501, 1); // one more than a JPEG file can be wide
    WholePhotoSource source(photo, strips(photo, 1));
    MemoryDisk disk;
    Work work = job(1);
    work.type = TileFormat::jpeg;
    TestRun run(source, work, disk);
    const TileStep step = runAll(run);
    EXPECT_EQ(step.outcome, TileOutcome::encodeFailed);
    EXPECT_FALSE(step.reason.empty());
    EXPECT_TRUE(disk.files.empty());
}

// Tiles of more pixels than any memory holds: one row of the photo, over and over.
class EndlessSource : public TileSource {
  public:
    TilePixels tile(std::size_t) override {
        return {PixelView(row_.row(0), 1 << 20, 1 << 30, 0), nullptr};
    }
    const ColourProfile& colourProfile() const override { return row_.colourProfile; }

  private:
    Image row_{1 << 20, 1};
};

TEST(TileRun, TellsAFailedTurnFromFailedCompensation) {
    for (const bool turned : {true, false}) {
        EndlessSource source;
        MemoryDisk disk;
        Work work = job(1);
        work.treatment.turned = turned;
        work.treatment.dotsPerInch = 100;
        work.treatment.trims = EdgeTrims{};
        TestRun run(source, work, disk);
        EXPECT_EQ(run.next().outcome,
                  turned ? TileOutcome::turnFailed : TileOutcome::compensationFailed);
    }
}

TEST(TileRun, CanBeLeftAtAnyTile) {
    const Image photo = noise(64, 640);
    for (std::size_t after = 0; after <= 5; ++after) {
        WholePhotoSource source(photo, strips(photo, 40));
        MemoryDisk disk;
        {
            TestRun run(source, job(40), disk);
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

TEST(TileRun, HoldsNoMoreTilesThanItHasWorkers) {
    const Image photo = noise(64, 64);
    CountingSource source(photo);
    MemoryDisk disk;
    Work work = job(50, TileFormat::tiff);
    work.workers = 3;
    {
        TestRun run(source, work, disk);
        EXPECT_EQ(runAll(run).outcome, TileOutcome::written);
    }
    EXPECT_LE(source.most(), 3);
}

// Notes how often each tile was asked for; one of them fails.
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

TEST(TileRun, StaysAsFarAheadOfTheWritingAsItHasWorkers) {
    const Image photo = noise(8, 8);
    NotingSource source(photo, 20, 20);
    MemoryDisk disk;
    Work work = job(20);
    work.workers = 2;
    TestRun run(source, work, disk);
    for (std::size_t written = 0; written < 3; ++written) {
        std::this_thread::sleep_for(timeToGoTooFar);
        EXPECT_EQ(source.asked(written + 3), 0) << written; // two in work, one waiting
        ASSERT_EQ(run.next().outcome, TileOutcome::written);
    }
}

TEST(TileRun, AsksForNoTileAgainAndForNoneBehindAMissingOne) {
    const Image photo = noise(8, 8);
    NotingSource source(photo, 10, 3);
    MemoryDisk disk;
    Work work = job(10);
    work.workers = 2;
    TestRun run(source, work, disk);
    EXPECT_EQ(runAll(run).outcome, TileOutcome::sourceFailed);
    std::this_thread::sleep_for(timeToGoTooFar);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(source.asked(i), i <= 3 ? 1 : 0) << i;
    }
}

TEST(TileRun, HandsThePhotosColoursOnToEveryTile) {
    Image photo = noise(40, 20);
    photo.colourProfile = bareProfile();
    WholePhotoSource source(photo, strips(photo, 2));
    MemoryDisk disk;
    TestRun run(source, job(2, TileFormat::tiff), disk);
    ASSERT_EQ(runAll(run).outcome, TileOutcome::written);
    for (int i = 0; i < 2; ++i) {
        const PixelView cut = photo.view().cut(0, 10 * i, 40, 10);
        const Bytes& tile = disk.files["t" + std::to_string(i)];
        EXPECT_EQ(tile, encodeImage(cut, TileFormat::tiff, 150, photo.colourProfile));
        EXPECT_NE(tile, encodeImage(cut, TileFormat::tiff, 150, {}));
    }
}

TEST(TileRun, SaysWhenTheNextTileIsReady) {
    const Image photo = noise(64, 64);
    WholePhotoSource source(photo, strips(photo, 2));
    MemoryDisk disk;
    TestRun run(source, job(2), disk);
    while (!run.waitReady(std::chrono::milliseconds(1))) {
    }
    EXPECT_EQ(run.next().outcome, TileOutcome::written);
}

TEST(TileRun, WithoutTilesIsDone) {
    const Image photo = noise(8, 8);
    WholePhotoSource source(photo, {});
    MemoryDisk disk;
    TestRun run(source, job(0), disk);
    EXPECT_TRUE(run.done());
}

// Notes how a run treats its destination.
class NotedDestination : public TileDestination {
  public:
    explicit NotedDestination(std::vector<std::string>& calls) : calls_(calls) {}
    void put(std::vector<std::uint8_t> tile) override {
        EXPECT_FALSE(tile.empty());
        calls_.emplace_back("put");
    }
    void finish() override {
        calls_.emplace_back("finish");
        if (finishFails) {
            throw Error("The last page is missing.");
        }
    }
    void giveUp() noexcept override { calls_.emplace_back("give up"); }
    bool finishFails = false;

  private:
    std::vector<std::string>& calls_;
};

using Calls = std::vector<std::string>;

std::unique_ptr<TileRun> notedRun(TileSource& source, Calls& calls, bool finishFails = false) {
    auto destination = std::make_unique<NotedDestination>(calls);
    destination->finishFails = finishFails;
    TileTreatment treatment;
    treatment.resolution = 150;
    return std::make_unique<TileRun>(
        std::make_unique<TilePool>(source, 3, treatment, TileFormat::bmp, 1), 3,
        std::move(destination));
}

TEST(TileRun, FinishesItsDestinationWithTheLastTile) {
    const Image photo = noise(8, 9);
    WholePhotoSource source(photo, strips(photo, 3));
    Calls calls;
    auto run = notedRun(source, calls);
    run->next(std::nullopt);
    run->next(std::nullopt);
    EXPECT_EQ(calls, (Calls{"put", "put"}));
    run->next(std::nullopt);
    EXPECT_TRUE(run->done());
    run.reset();
    EXPECT_EQ(calls, (Calls{"put", "put", "put", "finish"}));
}

TEST(TileRun, GivesUpADestinationThatIsNotFinished) {
    const Image photo = noise(8, 9);
    WholePhotoSource source(photo, strips(photo, 3));
    Calls calls;
    auto run = notedRun(source, calls);
    run->next(std::nullopt);
    EXPECT_EQ(run->next(0).outcome, TileOutcome::outOfSpace);
    run.reset();
    EXPECT_EQ(calls, (Calls{"put", "give up"}));
}

TEST(TileRun, GivesUpADestinationThatCannotBeFinished) {
    const Image photo = noise(8, 9);
    WholePhotoSource source(photo, strips(photo, 3));
    Calls calls;
    auto run = notedRun(source, calls, true);
    run->next(std::nullopt);
    run->next(std::nullopt);
    const TileStep step = run->next(std::nullopt);
    EXPECT_EQ(step.outcome, TileOutcome::saveFailed);
    EXPECT_EQ(step.reason, "The last page is missing.");
    EXPECT_FALSE(run->done());
    run.reset();
    EXPECT_EQ(calls, (Calls{"put", "put", "put", "finish", "give up"}));
}

TEST(TileFolder, KnowsItsFreeSpace) {
    EXPECT_GT(freeSpaceIn(std::filesystem::temp_directory_path()).value_or(0), 0U);
    EXPECT_EQ(freeSpaceIn("/no/such/folder/anywhere"), std::nullopt);
}

} // namespace
} // namespace veldara
