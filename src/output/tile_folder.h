// Tiles as files of their own in a folder.
#pragma once

#include "output/tile_destination.h"
#include "platform/files/whole_file.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace veldara {

// Writes the bytes under the file's final name. Throws Error.
using FileWriter =
    std::function<void(const std::filesystem::path&, const std::vector<std::uint8_t>&)>;

class TileFolder : public TileDestination {
  public:
    // files: one for each tile, full paths.
    explicit TileFolder(std::vector<std::filesystem::path> files,
                        FileWriter write = writeWholeFile);
    void put(std::vector<std::uint8_t> tile) override;
    void finish() override {}
    void giveUp() noexcept override {} // the files of whole tiles stay

  private:
    std::vector<std::filesystem::path> files_;
    FileWriter write_;
    std::size_t next_ = 0;
};

// Bytes free for this user on the file system of that folder; nothing when that is not known.
std::optional<std::uint64_t> freeSpaceIn(const std::filesystem::path& folder);

} // namespace veldara
