// The smallest photo that a poster can be made of.
#pragma once

#include <string>

namespace veldara {

constexpr int minimumPhotoSide = 25; // pixels

bool isPhotoLargeEnough(int width, int height);

// The message about a photo that is smaller.
std::string photoTooSmallText();

} // namespace veldara
