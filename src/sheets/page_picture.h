// A page as a picture on the screen, drawn from the same description as the
// document.
#pragma once

#include "platform/image/image.h"
#include "sheets/sheet_page.h"

#include <memory>

namespace veldara {

// A picture of the turned photo in its shape, of any size; it stands for width
// x height pixels.
struct PhotoPicture {
    std::shared_ptr<const Image> pixels; // none: grey instead
    int width = 0;
    int height = 0;
};

// The page, fitted into a box of that many pixels of the screen. Throws Error
// for an empty box.
Image drawPage(const SheetPage& page, const PhotoPicture& photo, int boxWidth, int boxHeight);

// That many rows of the page from firstRow on, as a printer of that resolution
// prints them: bands put one below the other are the whole page.
Image drawPageBand(const SheetPage& page, const PhotoPicture& photo, double dotsPerInch,
                   int firstRow, int rows);

} // namespace veldara
