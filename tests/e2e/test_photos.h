// Photos made for the tests, and files read back by readers that have nothing in common with the
// program's own.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace veldara::test {

using Colour = std::array<std::uint8_t, 3>;

struct ReadPicture {
    int width = 0;
    int height = 0;
    double dotsPerInch = 0;           // as the file says, 0: it does not
    std::vector<std::uint8_t> pixels; // red, green, blue, rows from the top

    Colour at(int x, int y) const;
};

// Reads a file by its ending: bmp, tif or jpg. Throws std::runtime_error.
ReadPicture readPicture(const std::filesystem::path& file);

// A colour that says where it stands: no two pixels of a picture up to 4096 a side are alike.
Colour placeColour(int x, int y);
// A colour that changes slowly, so that a lossy file keeps it nearly.
Colour smoothColour(int x, int y);

using Painter = Colour (*)(int x, int y);

// Writes an uncompressed 24-bit bitmap.
void writeBitmap(const std::filesystem::path& file, int width, int height, Painter painter);

// Writes a JPEG of that size, grainy as a camera's.
void writeJpeg(const std::filesystem::path& file, int width, int height);

} // namespace veldara::test
