#include "output/tile_stream.h"
#include "platform/error.h"
#include "support/noise.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <random>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::noise;

// Returns rows of a photo in memory; fails at a row on request.
class MemoryReader : public RowReader {
  public:
    explicit MemoryReader(const Image& photo, int brokenRow = -1)
        : photo_(photo), brokenRow_(brokenRow), width_(photo.width()) {
        header_.width = photo.width();
        header_.height = photo.height();
    }
    const ImageHeader& header() const override { return header_; }
    const ColourProfile& colourProfile() const override { return photo_.colourProfile; }
    bool streams() const override { return true; }
    void wantColumns(int left, int width) override {
        left_ = left;
        width_ = width;
    }
    void skipRows(int count) override { row_ += count; }
    void readRows(const MutablePixelView& rows) override {
        EXPECT_EQ(rows.width(), width_);
        for (int y = 0; y < rows.height(); ++y, ++row_) {
            if (row_ == brokenRow_) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                throw Error("The photo ends here.");
            }
            std::copy_n(photo_.row(row_) + 3 * left_, 3 * width_, rows.row(y));
        }
    }

  private:
    const Image& photo_;
    ImageHeader header_;
    int brokenRow_;
    int left_ = 0;
    int width_;
    int row_ = 0;
};

PosterLayout squareTiles(const Image& photo, int wide, int high) {
    PosterLayout layout;
    layout.photoWidth = photo.width();
    layout.photoHeight = photo.height();
    layout.tilesWide = wide;
    layout.tilesHigh = high;
    layout.tileWidthInches = 4;
    layout.tileHeightInches = 4;
    return layout;
}

Bytes expectedFile(const Image& photo, const TileRect& rect, const TileTreatment& treatment,
                   TileFormat type) {
    const PixelView cut = photo.view().cut(rect.left, rect.top, rect.width(), rect.height());
    return encodeImage(makeTileImage(cut, treatment).view(), type, treatment.resolution,
                       photo.colourProfile);
}

TEST(TileStream, MakesTheSameFilesAsAWholePhoto) {
    std::mt19937 random(2026);
    const auto pick = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int round = 0; round < 150; ++round) {
        const Image photo = noise(pick(60, 400), pick(60, 700));
        PosterLayout layout = squareTiles(photo, pick(1, 6), pick(1, 9));
        layout.zoom = pick(0, 60);
        layout.horzPos = pick(0, 200);
        layout.vertPos = pick(0, 200);
        const std::vector<TileRect> tiles = calcTileCoord(layout);
        std::optional<EdgeTrims> trims;
        if (pick(0, 1) == 1) {
            trims = EdgeTrims{pick(0, 16) / 64.0, pick(0, 16) / 64.0, pick(0, 16) / 64.0,
                              pick(0, 16) / 64.0};
        }
        // Small print widths give many dots per inch, large ones a tile that is resampled.
        const TileTreatment treatment =
            tileTreatment(tiles, pick(0, 2) == 0, pick(0, 1) == 1 ? 0.25 : 1.5, trims);
        const std::array<TileFormat, 3> types{TileFormat::bmp, TileFormat::tiff, TileFormat::jpeg};
        const TileFormat type = types.at(static_cast<std::size_t>(pick(0, 2)));

        TileStream stream(std::make_unique<MemoryReader>(photo), tiles, layout.tilesWide, treatment,
                          type, pick(1, 4));
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            const EncodedTile tile = stream.take(i);
            ASSERT_EQ(tile.step.outcome, TileOutcome::written) << tile.step.reason;
            ASSERT_EQ(tile.bytes, expectedFile(photo, tiles[i], treatment, type))
                << "round " << round << " tile " << i;
            stream.commit(i);
        }
    }
}

TEST(TileStream, ResamplesATileOfWhichOneSideAloneGrows) {
    for (const TileRect& tile : {TileRect{0, 0, 0, 99}, TileRect{0, 0, 99, 0}}) {
        const Image photo = noise(100, 100);
        const TileTreatment treatment{false, EdgeTrims{}, 63, 63}; // 100 pixels become 102
        TileStream stream(std::make_unique<MemoryReader>(photo), {tile}, 1, treatment,
                          TileFormat::bmp, 1);
        EXPECT_EQ(stream.take(0).bytes, expectedFile(photo, tile, treatment, TileFormat::bmp));
    }
}

TileStep streamedStep(const Image& photo, const TileTreatment& treatment, TileFormat type) {
    const TileRect all{0, 0, photo.width() - 1, photo.height() - 1};
    TileStream stream(std::make_unique<MemoryReader>(photo), {all}, 1, treatment, type, 2);
    return stream.take(0).step;
}

TEST(TileStream, SaysWhichPartOfATileFailed) {
    const Image wide = noise(65501, 2); // one more than a JPEG file can be wide
    TileTreatment treatment{false, std::nullopt, 150, 150};
    const TileStep plain = streamedStep(wide, treatment, TileFormat::jpeg);
    EXPECT_EQ(plain.outcome, TileOutcome::encodeFailed);
    EXPECT_FALSE(plain.reason.empty());

    treatment.trims = EdgeTrims{};
    EXPECT_EQ(streamedStep(wide, treatment, TileFormat::jpeg).outcome, TileOutcome::encodeFailed);
    treatment.dotsPerInch = 60; // the tile is resampled, so it is encoded when it is whole
    EXPECT_EQ(streamedStep(wide, treatment, TileFormat::jpeg).outcome, TileOutcome::encodeFailed);

    treatment.trims = EdgeTrims{0, -0.5, 0, 0};
    const TileStep shrunk = streamedStep(wide, treatment, TileFormat::bmp);
    EXPECT_EQ(shrunk.outcome, TileOutcome::compensationFailed);
}

// Makes tiles until one fails, and gives the number of those before it.
std::size_t wholeTiles(const Image& photo, int brokenRow, int wide, int high, TileFormat type) {
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(photo, wide, high));
    TileStream stream(std::make_unique<MemoryReader>(photo, brokenRow), tiles, wide,
                      tileTreatment(tiles, false, 4, std::nullopt), type, 3);
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const EncodedTile tile = stream.take(i);
        if (tile.step.outcome != TileOutcome::written) {
            EXPECT_EQ(tile.step.outcome, TileOutcome::sourceFailed);
            EXPECT_EQ(tile.step.reason, "The photo ends here.");
            return i;
        }
        stream.commit(i);
    }
    return tiles.size();
}

// Rows are read in strips of 128: what is missing is missing from the strip's first row on.
TEST(TileStream, FinishesWhatLiesAboveAMissingRow) {
    const Image photo = noise(64, 640);
    EXPECT_EQ(wholeTiles(photo, -1, 2, 20, TileFormat::bmp), 40U);
    for (const int broken : {0, 1, 100, 351, 352, 639}) {
        EXPECT_EQ(wholeTiles(photo, broken, 2, 20, TileFormat::bmp),
                  static_cast<std::size_t>(broken / 128 * 128 / 32 * 2))
            << broken;
    }
}

TEST(TileStream, MissesATileThatLacksOnlyItsLastRow) {
    const Image photo = noise(43, 3 * 43); // the last row is the first of the second strip
    EXPECT_EQ(wholeTiles(photo, 128, 1, 3, TileFormat::bmp), 2U);
}

TEST(TileStream, FinishesATileThatIsInWorkWhenTheRowsBelowItTurnOutToBeMissing) {
    const Image photo = noise(1024, 1024);
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ(wholeTiles(photo, 600, 2, 2, TileFormat::jpeg), 2U);
    }
}

// Holds the first tile in work until the rows below have turned out to be missing.
struct HeldTile {
    std::promise<void> inWork, missing;

    class Reader : public MemoryReader {
      public:
        Reader(const Image& photo, std::future<void> inWork)
            : MemoryReader(photo), inWork_(std::move(inWork)) {}
        void readRows(const MutablePixelView& rows) override {
            if (std::exchange(begun_, true)) {
                inWork_.wait();
                throw Error("The photo ends here.");
            }
            MemoryReader::readRows(rows);
        }

      private:
        std::future<void> inWork_;
        bool begun_ = false;
    };

    class Sink : public TileSink {
      public:
        explicit Sink(HeldTile& held) : held_(held) {}
        void writeRows(const PixelView&) override {
            held_.inWork.set_value();
            held_.missing.get_future().wait();
        }
        std::vector<std::uint8_t> finish() override { return {}; }

      private:
        HeldTile& held_;
    };
};

TEST(TileStream, GivesUpATileInWorkThatLacksRows) {
    const Image photo = noise(640, 320);
    HeldTile held;
    const TileSinks sinks = [&](std::size_t tile) {
        EXPECT_EQ(tile, 0U);
        return std::make_unique<HeldTile::Sink>(held);
    };
    TileStream stream(std::make_unique<HeldTile::Reader>(photo, held.inWork.get_future()),
                      calcTileCoord(squareTiles(photo, 2, 1)), 2, sinks, 2);
    // The second tile is not in work: it is given up as soon as the rows are missing.
    EXPECT_TRUE(stream.waitReady(1, std::chrono::minutes(1)));
    held.missing.set_value();
    ASSERT_TRUE(stream.waitReady(0, std::chrono::minutes(1)));
    const EncodedTile first = stream.take(0);
    EXPECT_EQ(first.step.outcome, TileOutcome::sourceFailed);
    EXPECT_EQ(first.step.reason, "The photo ends here.");
}

TEST(TileStream, TellsOfATileThatCannotBeMade) {
    const Image photo = noise(64, 640);
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(photo, 2, 20));
    TileTreatment treatment = tileTreatment(tiles, false, 4, EdgeTrims{});
    treatment.dotsPerInch = 0;
    TileStream stream(std::make_unique<MemoryReader>(photo), tiles, 2, treatment, TileFormat::bmp,
                      3);
    EXPECT_EQ(stream.take(0).step.outcome, TileOutcome::compensationFailed);
}

TEST(TileStream, CanBeLeftAtAnyTime) {
    const Image photo = noise(200, 2000);
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(photo, 2, 20));
    const TileTreatment treatment = tileTreatment(tiles, false, 4, std::nullopt);
    for (std::size_t after = 0; after < 6; ++after) {
        TileStream stream(std::make_unique<MemoryReader>(photo), tiles, 2, treatment,
                          TileFormat::tiff, 3);
        for (std::size_t i = 0; i < after; ++i) {
            EXPECT_EQ(stream.take(i).step.outcome, TileOutcome::written);
            stream.commit(i);
        }
    }
}

// Counts the rows that were read.
class CountingReader : public MemoryReader {
  public:
    CountingReader(const Image& photo, std::atomic<int>& rows) : MemoryReader(photo), rows_(rows) {}
    void readRows(const MutablePixelView& view) override {
        MemoryReader::readRows(view);
        rows_ += view.height();
    }

  private:
    std::atomic<int>& rows_;
};

TEST(TileStream, GoesNoFurtherThanTwoRowsOfTilesAheadOfTheDisk) {
    const Image photo = noise(900, 9000);
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(photo, 1, 10)); // rows of 900
    const TileTreatment treatment = tileTreatment(tiles, false, 4, std::nullopt);
    std::atomic<int> rows{0};
    TileStream stream(std::make_unique<CountingReader>(photo, rows), tiles, 1, treatment,
                      TileFormat::bmp, 2);
    stream.take(1); // both tiles of the first two rows are encoded
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_LE(rows, 1800 + 128);
    EXPECT_FALSE(stream.waitReady(2, std::chrono::milliseconds(1)));
    stream.commit(0);
    stream.commit(1);
    EXPECT_EQ(stream.take(2).step.outcome, TileOutcome::written);
    EXPECT_EQ(stream.take(3).step.outcome, TileOutcome::written);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_LE(rows, 3600 + 128) << "two rows of tiles beyond the two that are on the disk";
}

TEST(TileStream, GoesNoFurtherAheadWhereRowsOfTilesAreWide) {
    const Image photo = noise(900, 2700);
    const std::vector<TileRect> tiles = calcTileCoord(squareTiles(photo, 3, 9)); // rows of 300
    std::atomic<int> rows{0};
    TileStream stream(std::make_unique<CountingReader>(photo, rows), tiles, 3,
                      tileTreatment(tiles, false, 4, std::nullopt), TileFormat::bmp, 2);
    for (std::size_t tile = 0; tile < 3; ++tile) {
        stream.take(tile);
        stream.commit(tile);
    }
    stream.take(8); // the last of the third row
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_LE(rows, 900 + 128) << "one row of tiles is on the disk, and two are ahead";
}

} // namespace
} // namespace veldara
