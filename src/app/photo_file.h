// Which files of a folder are listed, and which of them can be a photo: both decided by the name
// alone.
#pragma once

#include "layout/photo_limits.h"
#include "platform/dialogs.h"

#include <string>
#include <vector>

namespace veldara {

// The entries of the file filter, by their position in its list.
enum FileFilterIndex {
    filterImages = 0,
    filterJpeg = 1,
    filterTiff = 2,
    filterBitmap = 3,
    filterAll = 4
};

// The texts of those entries.
std::vector<std::string> fileFilterTexts();

// Every kind of photo that can be opened, in capital letters too: some systems tell them apart.
FileFilter openPhotoFilter();

// Whether the file list shows that name: longer than four characters, with an ending that the
// filter accepts. Only the last three characters count, large or small: "a.jpeg" is no "JPG",
// "a-jpg" is.
bool isListedFile(const std::string& name, int filterIndex);

// Whether the name may be that of a photo, whatever the filter: at least four characters that end
// in "BMP", "JPG" or "TIF", large or small.
bool isPhotoFile(const std::string& name);

} // namespace veldara
