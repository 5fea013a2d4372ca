// JPEG files of every kind, written through libjpeg with its own settings, and decoded by its plain
// row-after-row loop for comparison.
#pragma once

#include "image/files.h"

#include <string>

namespace veldara::test {

struct JpegKind {
    std::string name;
    int components = 3;       // 1 grey, 3 colour, 4 inks
    bool rgb = false;         // colour without the change to brightness and differences
    bool ycck = false;        // inks with that change
    bool adobeMarker = false; // of four components; such files store light instead of ink
    int across = 1;           // sampling factors of the first component
    int down = 1;
    bool progressive = false;
    bool arithmetic = false;
    unsigned restartInterval = 0;
    int quality = 90;
    bool separateScans = false; // one scan a component, sequential
};

// All kinds that must load.
std::vector<JpegKind> everyJpegKind();

// samples: components bytes a pixel (inks: 255 is full ink).
Bytes makeJpeg(const JpegKind& kind, const Bytes& samples, int width, int height);

// The picture's pixels in that kind: grey of RGB, or inks made up from it.
Bytes samplesFor(const JpegKind& kind, const Image& picture);
Bytes makeJpeg(const JpegKind& kind, const Image& picture);

// What libjpeg says the file holds, as components bytes a pixel (RGB, grey or inks as stored).
struct Decoded {
    int width = 0;
    int height = 0;
    int components = 0;
    Bytes samples;
};
Decoded decodePlainly(const Bytes& file);

// As above, for grey and colour, as a picture.
Image decodedPicture(const Bytes& file);

// The file with a marker segment (without the two length bytes) put in behind the start marker.
Bytes withSegment(const Bytes& jpeg, int marker, const Bytes& content);

// An Exif segment's content with that orientation and, when not 0, dots per inch.
Bytes exifContent(unsigned orientation, unsigned dotsPerInch, bool bigEndian = false);

} // namespace veldara::test
