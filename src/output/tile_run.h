// The shared way from a photo to tile files: for each tile in order it is cut, turned, enlarged and
// encoded, the free space is asked for, and the same encoded bytes are written. Tiles are encoded
// ahead on worker threads; what can be seen (order, failures, which files exist) is that of one
// tile after the other.
#pragma once

#include "output/tile_image.h"
#include "platform/image/codec.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldara {

// A tile's pixels in the photo, and whatever keeps them in memory.
struct TilePixels {
    PixelView view;
    std::shared_ptr<const void> owner;
};

// Where tiles' pixels come from. tile() is called for 0, 1, 2 ... in order, by one thread at a
// time.
class TileSource {
  public:
    virtual ~TileSource() = default;
    virtual TilePixels tile(std::size_t number) = 0; // throws Error
    virtual const ColourProfile& colourProfile() const = 0;
};

// A whole photo in memory, which outlives the source.
class WholePhotoSource : public TileSource {
  public:
    WholePhotoSource(const Image& photo, std::vector<TileRect> tiles)
        : photo_(photo), tiles_(std::move(tiles)) {}
    TilePixels tile(std::size_t number) override;
    const ColourProfile& colourProfile() const override { return photo_.colourProfile; }

  private:
    const Image& photo_;
    std::vector<TileRect> tiles_;
};

// What one step of a run came to. Every outcome but `written` ends the run.
enum class TileOutcome {
    written,
    sourceFailed,       // the tile's pixels could not be had
    compensationFailed, // the tile could not be turned or enlarged
    encodeFailed,
    outOfSpace,
    saveFailed,
};

struct TileStep {
    TileOutcome outcome = TileOutcome::written;
    std::string reason; // of a failure
};

// The doors to the disk, called on the thread that calls next(), in the tiles' order.
struct TileDisk {
    // Bytes free on the destination's drive; nothing when that cannot be told (it then fits).
    std::function<std::optional<std::uint64_t>()> freeSpace;
    // Writes the bytes under the file's name. Throws Error.
    std::function<void(const std::filesystem::path&, const std::vector<std::uint8_t>&)> write;
};

// The disk itself; the drive is the one that `folder` lies on.
TileDisk realDisk(const std::filesystem::path& folder);

struct TileJob {
    std::vector<std::filesystem::path> files; // one a tile, full paths
    TileTreatment treatment;
    FileType type = FileType::jpeg;
    int workers = 0; // threads that encode; 0: as many as the machine has cores
};

class TileRun {
  public:
    // Starts encoding ahead at once. The source must outlive the run.
    TileRun(TileSource& source, TileJob job, TileDisk disk);
    ~TileRun(); // leaves the tiles that were not asked for
    TileRun(const TileRun&) = delete;
    TileRun& operator=(const TileRun&) = delete;

    std::size_t count() const;
    std::size_t written() const;
    bool done() const { return written() == count(); }

    // Waits at most that long for the next tile to be encoded; true when next() will not wait. A
    // window lets its events run in between.
    bool waitReady(std::chrono::milliseconds time);

    // Takes the next tile: space check, then the write. Not to be called again after a failure, or
    // when done.
    TileStep next();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace veldara
