#include "calibration/profile_list.h"

#include <algorithm>

namespace veldara {

std::string profileName(std::string_view entered) {
    std::string name(entered);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return name;
}

int positionAfterDelete(int position, int deleted, int count) {
    return std::min(position > deleted ? position - 1 : position, count - 1);
}

} // namespace veldara
