#include "app/recent_photos.h"

#include <algorithm>

namespace veldara {

RecentPhotos::RecentPhotos(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        const bool known = std::find(paths_.begin(), paths_.end(), path) != paths_.end();
        if (!path.empty() && !known && paths_.size() < limit) {
            paths_.push_back(path);
        }
    }
}

bool RecentPhotos::add(const std::string& path) {
    if (!paths_.empty() && paths_.front() == path) {
        return false;
    }
    std::erase(paths_, path);
    paths_.insert(paths_.begin(), path);
    if (paths_.size() > limit) {
        paths_.pop_back();
    }
    return true;
}

} // namespace veldara
