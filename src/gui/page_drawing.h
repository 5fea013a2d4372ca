// Draws a page of a print job on any device of the toolkit, a printer or a bitmap, band by band.
#pragma once

#include "platform/print_system.h"
#include "printing/print_placement.h"

#include <wx/dc.h>

namespace veldara {

// So much of a page is in memory at once.
constexpr std::size_t bandBytes = std::size_t{12} << 20;

// Throws what the source throws.
void drawPageOn(wxDC& device, PrintSource& source, std::size_t page, const PrinterDots& dots);

} // namespace veldara
