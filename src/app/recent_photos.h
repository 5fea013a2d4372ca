// The photos that were opened last, the newest first.
#pragma once

#include <string>
#include <vector>

namespace veldara {

class RecentPhotos {
  public:
    static constexpr std::size_t limit = 10;

    RecentPhotos() = default;
    // As stored, the newest first: empty and repeated paths are dropped, and those over the limit.
    explicit RecentPhotos(const std::vector<std::string>& paths);

    const std::vector<std::string>& paths() const { return paths_; }

    // Makes the path the newest. False when it was that already.
    bool add(const std::string& path);

  private:
    std::vector<std::string> paths_;
};

} // namespace veldara
