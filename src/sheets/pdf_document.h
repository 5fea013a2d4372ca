// A poster's document as objects, with the pieces of the photo as streams that are asked for while
// the document is written, in the order in which the source makes them.
#pragma once

#include "sheets/photo_frame.h"
#include "sheets/piece_source.h"
#include "sheets/sheet_page.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace veldara {

struct PdfParts {
    std::string title; // UTF-8
    std::vector<SheetPage> pages;
    PhotoFrame frame;
    PieceFacts facts;
    std::vector<PixelRectangle> pieces; // of each page; the guide's is not used
    std::vector<std::size_t> order;     // the sheets' pages in the order of their pieces

    // The stream of that page's piece; called once for each page of `order`, in that order.
    std::function<std::vector<std::uint8_t>(std::size_t page)> piece;

    // The guide's small picture of an area of the photo, a JPEG; called after all pieces.
    std::function<std::vector<std::uint8_t>()> small;
    PhotoFrame smallFrame;
    PixelRectangle smallArea;
    int smallWidth = 0; // pixels
    int smallHeight = 0;
};

// Writes the document, the same bytes for the same parts. Whatever the functions throw passes
// through.
void writePdf(const PdfParts& parts,
              const std::function<void(std::span<const std::uint8_t>)>& output);

} // namespace veldara
