#include "gui/page_drawing.h"

#include "platform/image/image.h"

#include <algorithm>

#include <wx/bitmap.h>
#include <wx/image.h>

namespace veldara {

namespace {

wxImage toolkitImage(const Image& picture) {
    wxImage image(picture.width(), picture.height(), false);
    const std::size_t bytes = 3 * static_cast<std::size_t>(picture.width());
    for (int y = 0; y < picture.height(); ++y) {
        std::copy_n(picture.row(y), bytes, image.GetData() + bytes * static_cast<std::size_t>(y));
    }
    return image;
}

} // namespace

void drawPageOn(wxDC& device, PrintSource& source, std::size_t page, const PrinterDots& dots) {
    for (const PlacedBand& band :
         placedBands(source.pageWidth(), source.pageHeight(), dots, bandBytes)) {
        wxImage drawn =
            toolkitImage(source.drawBand(page, {dots.perInchAcross, band.firstRow, band.rows}));
        if (band.height != band.rows) { // dots that are not square
            drawn.Rescale(band.width, std::max(band.height, 1));
        }
        device.DrawBitmap(wxBitmap(drawn, 24), band.left, band.top);
    }
}

} // namespace veldara
