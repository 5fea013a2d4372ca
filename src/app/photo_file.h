// Which files of a folder are offered, and which of them can be a photo: both told by the name
// alone.
#pragma once

#include "layout/photo_limits.h"

#include <string>

namespace veldara {

// The entries of the file filter, by their position in its list.
enum FileFilterIndex {
    filterImages = 0,
    filterJpeg = 1,
    filterTiff = 2,
    filterBitmap = 3,
    filterAll = 4
};

// Whether the file list shows that name: longer than four characters, with an ending that the
// filter accepts. Only the last three characters count, large or small: "a.jpeg" is no "JPG",
// "a-jpg" is.
bool isListedFile(const std::string& name, int filterIndex);

// Whether the name may be that of a photo, whatever the filter: at least four characters that end
// in "BMP", "JPG" or "TIF", large or small.
bool isPhotoFile(const std::string& name);

// The angle that an entry of the rotation list stands for: the third is the turn by 270 degrees,
// the fourth the half turn. 0 when nothing is chosen.
int rotationAngle(int listIndex);

// The entry of the rotation list that stands for the angle.
int rotationIndex(int angle);

// By how much a photo that was turned by `from` is still to be turned, 0 to 270 degrees.
int rotationDelta(int from, int to);

} // namespace veldara
