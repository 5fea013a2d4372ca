// A folder of photos of mixed kinds, whole and broken.
#pragma once

#include <filesystem>

namespace veldara::test {

// Writes them; returns how many there are.
int writePhotos(const std::filesystem::path& folder);

} // namespace veldara::test
