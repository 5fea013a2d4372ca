#include "output/tile_folder.h"

#include <system_error>
#include <utility>

namespace veldara {

TileFolder::TileFolder(std::vector<std::filesystem::path> files, FileWriter write)
    : files_(std::move(files)), write_(std::move(write)) {}

void TileFolder::put(std::vector<std::uint8_t> tile) {
    write_(files_.at(next_), tile);
    ++next_;
}

std::optional<std::uint64_t> freeSpaceIn(const std::filesystem::path& folder) {
    std::error_code error;
    const std::filesystem::space_info space = std::filesystem::space(folder, error);
    return error ? std::nullopt : std::optional<std::uint64_t>(space.available);
}

} // namespace veldara
