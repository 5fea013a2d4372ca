// From the samples of a TIFF row, as the decompressor leaves them, to 8-bit RGB.
#pragma once

#include "platform/image/colour.h"
#include "platform/image/indexed_pixels.h"
#include "platform/image/tiff_layout.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace veldara {

class TiffSamples {
  public:
    // Reads what else the page says about its colours (palette, printing inks, black and white).
    TiffSamples(const TiffLayout& layout, TIFF* tiff, const ColourProfile& profile);

    // Converts count pixels from pixel `first` of a row. There is one pointer to the start of the
    // row for pixels stored together, one a sample for separate planes. For colour differences
    // shared by several pixels the pointer is to the row of data units, and rowInUnit says which of
    // its rows is meant.
    void convert(std::span<const std::uint8_t* const> planes, std::size_t first, std::size_t count,
                 unsigned rowInUnit, std::uint8_t* rgb);

    bool grey() const { return grey_; }

    // From now on convert() gives inks in six bytes a pixel, as PictureDecoder::keepInks() says.
    void keepInks() { inksKept_ = true; }

  private:
    void fillPalette(TIFF* tiff);
    void fillGreyLevels();
    void readChromaRange(TIFF* tiff);
    unsigned sample16(std::span<const std::uint8_t* const> planes, std::size_t pixel,
                      unsigned sample) const;
    void convertRgbOrGrey(std::span<const std::uint8_t* const> planes, std::size_t first,
                          std::size_t count, std::uint8_t* rgb) const;
    void convertInks(std::span<const std::uint8_t* const> planes, std::size_t first,
                     std::size_t count, std::uint8_t* rgb);
    void convertChroma(std::span<const std::uint8_t* const> planes, std::size_t first,
                       std::size_t count, unsigned rowInUnit, std::uint8_t* rgb) const;
    void chromaToRgb(unsigned y, unsigned cb, unsigned cr, std::uint8_t* rgb) const;

    TiffLayout layout_;
    bool grey_ = false;
    Palette palette_{};
    IndexedPixels indexed_;
    std::optional<CmykToRgb> inks_;
    std::vector<std::uint8_t> inkRow_;
    bool inksKept_ = false;
    std::array<float, 3> luma_{};
    std::array<float, 6> range_{};
};

} // namespace veldara
