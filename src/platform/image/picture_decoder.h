// What each format's decoder offers to the rest of the component: facts from the header, then rows
// in the order in which the file stores the picture, before any turn by the orientation tag.
#pragma once

#include "platform/image/byte_source.h"
#include "platform/image/image.h"
#include "platform/stop_flag.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace veldara {

// How the stored picture has to be turned and mirrored to stand upright; the values of the Exif and
// TIFF orientation tag.
enum class Orientation {
    upright = 1,
    mirrored = 2,
    halfTurned = 3,
    flipped = 4,
    transposed = 5,
    clockwise = 6, // to be turned clockwise
    transversed = 7,
    counterClockwise = 8,
};

inline bool exchangesSides(Orientation orientation) {
    return orientation >= Orientation::transposed;
}

// The orientation that a tag's number stands for; upright when it stands for none.
inline Orientation orientationOf(unsigned number) {
    return number >= 1 && number <= 8 ? static_cast<Orientation>(number) : Orientation::upright;
}

struct PictureFacts {
    int width = 0; // as stored
    int height = 0;
    int dotsPerInch = 0;
    Orientation orientation = Orientation::upright;

    bool lossless = false; // known to hold every pixel as it was, though its kind is a lossy one

    // Rows are decoded as they are asked for, with little memory.
    bool streams = true;

    // Bytes that the decoder holds beside the rows that it returns, where they are many.
    std::uint64_t heldBytes = 0;
};

class PictureDecoder {
  public:
    PictureDecoder() = default;
    PictureDecoder(const PictureDecoder&) = delete;
    PictureDecoder& operator=(const PictureDecoder&) = delete;
    virtual ~PictureDecoder() = default;

    const PictureFacts& facts() const { return facts_; }

    // To be looked at during work that lasts long before it returns the first row. The flag
    // outlives the decoder.
    void stopBy(const StopFlag& flag) { stop_ = &flag; }

    // The profile that describes the decoder's RGB rows; empty when there is none. Costs some work
    // for grey pictures, so it is not done with the header.
    virtual ColourProfile colourProfile() = 0;

    // For a picture that is stored in greys, so that its rows are equal triples: the profile of one
    // of the three values, empty when there is none. Nothing when the picture has colours, or a
    // profile that only describes triples.
    virtual std::optional<ColourProfile> greyProfile() { return std::nullopt; }

    // Makes the rows of a picture of four printing inks those of the inks themselves, 255 for full
    // ink: for each pixel two, (cyan, magenta, yellow) and (black, 0, 0). To be called first.
    // Returns the inks' profile, empty when there is none; nothing, and changes nothing, when the
    // picture has other colours.
    virtual std::optional<ColourProfile> keepInks() { return std::nullopt; }

    // As RowReader, in stored rows and columns. Errors carry the bare reason.
    virtual void wantColumns(int left, int width) = 0;
    virtual void skipRows(int count) = 0;
    virtual void readRows(const MutablePixelView& rows) = 0;

  protected:
    bool shallStop() const { return stop_ != nullptr && stop_->isSet(); }

    PictureFacts facts_;

  private:
    const StopFlag* stop_ = nullptr;
};

} // namespace veldara
