#include "e2e/test_photos.h"

#include <cstdio>
// The JPEG library's header wants stdio's names first.
#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include <jpeglib.h>
#include <tiffio.h>

namespace veldara::test {

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("no file " + file.string());
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::int32_t number(const Bytes& bytes, std::size_t at, int size) {
    std::uint32_t value = 0;
    for (int i = 0; i < size; ++i) {
        value |= std::uint32_t{bytes.at(at + static_cast<std::size_t>(i))} << (8 * i);
    }
    return static_cast<std::int32_t>(value);
}

std::size_t bitmapStride(int width) {
    return (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
}

ReadPicture readBitmap(const std::filesystem::path& file) {
    const Bytes bytes = bytesOf(file);
    if (number(bytes, 28, 2) != 24 || number(bytes, 30, 4) != 0) {
        throw std::runtime_error("not an uncompressed 24-bit bitmap");
    }
    ReadPicture picture;
    picture.width = number(bytes, 18, 4);
    picture.height = number(bytes, 22, 4);
    picture.dotsPerInch = number(bytes, 38, 4) * 0.0254;
    const auto start = static_cast<std::size_t>(number(bytes, 10, 4));
    for (int y = picture.height - 1; y >= 0; --y) { // the last row comes first in the file
        const std::size_t row = start + bitmapStride(picture.width) * static_cast<std::size_t>(y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(picture.width); ++x) {
            for (const std::size_t channel : {2U, 1U, 0U}) {
                picture.pixels.push_back(bytes.at(row + 3 * x + channel));
            }
        }
    }
    return picture;
}

ReadPicture readTiff(const std::filesystem::path& file) {
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(file.string().c_str(), "r"),
                                                      TIFFClose);
    if (!tiff) {
        throw std::runtime_error("not a TIFF file: " + file.string());
    }
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    float resolution = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff.get(), TIFFTAG_XRESOLUTION, &resolution);
    std::vector<std::uint32_t> raster(std::size_t{width} * height);
    if (TIFFReadRGBAImageOriented(tiff.get(), width, height, raster.data(), ORIENTATION_TOPLEFT,
                                  1) == 0) {
        throw std::runtime_error("cannot decode " + file.string());
    }
    ReadPicture picture{static_cast<int>(width), static_cast<int>(height), resolution, {}};
    for (const std::uint32_t pixel : raster) {
        picture.pixels.push_back(static_cast<std::uint8_t>(TIFFGetR(pixel)));
        picture.pixels.push_back(static_cast<std::uint8_t>(TIFFGetG(pixel)));
        picture.pixels.push_back(static_cast<std::uint8_t>(TIFFGetB(pixel)));
    }
    return picture;
}

[[noreturn]] void failJpeg(j_common_ptr) {
    throw std::runtime_error("not a JPEG file");
}

ReadPicture readJpeg(const std::filesystem::path& file) {
    const Bytes bytes = bytesOf(file);
    jpeg_decompress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    errors.error_exit = failJpeg;
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, bytes.data(), static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&jpeg, TRUE);
    jpeg.out_color_space = JCS_RGB;
    jpeg_start_decompress(&jpeg);
    ReadPicture picture{static_cast<int>(jpeg.output_width),
                        static_cast<int>(jpeg.output_height),
                        jpeg.density_unit == 1 ? double(jpeg.X_density) : 0.0,
                        {}};
    const std::size_t stride = std::size_t{3} * jpeg.output_width;
    picture.pixels.resize(stride * jpeg.output_height);
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW row = picture.pixels.data() + stride * jpeg.output_scanline;
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    return picture;
}

void put(Bytes& bytes, std::size_t at, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

} // namespace

Colour ReadPicture::at(int x, int y) const {
    const std::size_t place = 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                   static_cast<std::size_t>(x));
    return {pixels.at(place), pixels.at(place + 1), pixels.at(place + 2)};
}

ReadPicture readPicture(const std::filesystem::path& file) {
    const std::filesystem::path ending = file.extension();
    if (ending == ".bmp") {
        return readBitmap(file);
    }
    return ending == ".tif" ? readTiff(file) : readJpeg(file);
}

Colour placeColour(int x, int y) {
    return {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y),
            static_cast<std::uint8_t>((x >> 8) | (y >> 8) << 4)};
}

Colour smoothColour(int x, int y) {
    const auto wave = [](double turns) {
        return static_cast<std::uint8_t>(std::lround(128 + 100 * std::sin(turns)));
    };
    return {wave(x / 90.0), wave(y / 110.0), wave((x + y) / 150.0)};
}

void writeBitmap(const std::filesystem::path& file, int width, int height, Painter painter) {
    constexpr std::size_t headerSize = 54;
    const std::size_t stride = bitmapStride(width);
    Bytes bytes(headerSize + stride * static_cast<std::size_t>(height));
    bytes[0] = 'B';
    bytes[1] = 'M';
    put(bytes, 2, static_cast<std::uint32_t>(bytes.size()), 4);
    put(bytes, 10, headerSize, 4);
    put(bytes, 14, 40, 4);
    put(bytes, 18, static_cast<std::uint32_t>(width), 4);
    put(bytes, 22, static_cast<std::uint32_t>(height), 4);
    put(bytes, 26, 1, 2);
    put(bytes, 28, 24, 2);
    for (int y = 0; y < height; ++y) {
        const std::size_t row = headerSize + stride * static_cast<std::size_t>(height - 1 - y);
        for (int x = 0; x < width; ++x) {
            const Colour colour = painter(x, y);
            for (std::size_t channel = 0; channel < 3; ++channel) {
                bytes[row + 3 * static_cast<std::size_t>(x) + channel] = colour[2 - channel];
            }
        }
    }
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

void writeJpeg(const std::filesystem::path& file, int width, int height) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(
        std::fopen(file.string().c_str(), "wb"), std::fclose);
    jpeg_compress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    errors.error_exit = failJpeg;
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, out.get());
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 90, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    Bytes row(static_cast<std::size_t>(width) * 3);
    std::uint32_t grain = 1;
    while (jpeg.next_scanline < jpeg.image_height) {
        for (int x = 0; x < width; ++x) {
            const Colour colour = smoothColour(x, static_cast<int>(jpeg.next_scanline));
            for (std::size_t channel = 0; channel < 3; ++channel) {
                grain = grain * 1664525U + 1013904223U;
                row[static_cast<std::size_t>(x) * 3 + channel] =
                    static_cast<std::uint8_t>(colour[channel] + (grain >> 28));
            }
        }
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&jpeg, &pointer, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
}

} // namespace veldara::test
