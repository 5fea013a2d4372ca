#include "layout/photo_limits.h"

namespace veldara {

bool isPhotoLargeEnough(int width, int height) {
    return width >= minimumPhotoSide && height >= minimumPhotoSide;
}

std::string photoTooSmallText() {
    return "The image you selected is EXTREMELY small.  It has a height and/or width that is below "
           "the minimum allowable size of " +
           std::to_string(minimumPhotoSide) + " pixels.  Please select a larger image.  ";
}

} // namespace veldara
