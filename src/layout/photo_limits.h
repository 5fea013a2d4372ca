// The smallest photo that a poster can be made of.
#pragma once

#include <string>

namespace veldara {

constexpr int minimumPhotoSide = 25; // pixels

bool isPhotoLargeEnough(int width, int height);

// What is told of a photo that is smaller.
std::string photoTooSmallText();

} // namespace veldara
