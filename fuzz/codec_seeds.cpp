// Writes small files of every kind that the codecs read into corpus folders, as seeds to fuzz from.
#include "image/files.h"
#include "image/jpeg_files.h"
#include "image/tiff_files.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

using namespace veldara;
using namespace veldara::test;

void save(const std::filesystem::path& folder, const std::string& name, const Bytes& bytes) {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

void saveJpegs(const std::filesystem::path& folder) {
    for (JpegKind kind : everyJpegKind()) {
        kind.quality = 40;
        save(folder, kind.name, makeJpeg(kind, photo(21, 18)));
    }
    const Bytes plain = makeJpeg(JpegKind{}, photo(9, 10));
    save(folder, "exif", withSegment(plain, 0xE1, exifContent(6, 300)));
    save(folder, "exifBigEndian", withSegment(plain, 0xE1, exifContent(3, 300, true)));
}

// Several MCUs wide and high, so that there is something to cut.
void saveJpegsToCut(const std::filesystem::path& folder) {
    for (JpegKind kind : everyJpegKind()) {
        kind.quality = 30;
        save(folder, kind.name, makeJpeg(kind, photo(70, 61)));
    }
}

void saveTiffs(const std::filesystem::path& folder) {
    for (TiffKind kind : everyTiffSampleKind()) {
        save(folder, kind.name, makeTiff(kind, 13, 11).bytes);
    }
    TiffKind kind;
    for (const int compression : {32773, 5, 8}) {
        kind.compression = compression;
        kind.predictor = compression == 32773 ? 1 : 2;
        save(folder, "compression" + std::to_string(compression), makeTiff(kind, 13, 11).bytes);
        kind.separate = true;
        kind.bigEndian = true;
        save(folder, "planes" + std::to_string(compression), makeTiff(kind, 13, 11).bytes);
        kind = {};
    }
    kind.compression = 7;
    kind.rowsPerStrip = 8;
    save(folder, "jpeg", makeTiff(kind, 13, 11).bytes);
    kind = {};
    kind.tileSide = 16;
    kind.big = true;
    save(folder, "tilesWideOffsets", makeTiff(kind, 20, 17).bytes);
    kind = {};
    kind.bits = 1;
    kind.samples = 1;
    kind.photometric = 0;
    for (const auto& [compression, options] : {std::pair{2, 0U}, {3, 0U}, {3, 1U}, {4, 0U}}) {
        kind.compression = compression;
        kind.faxOptions = options;
        save(folder, "fax" + std::to_string(compression) + std::to_string(options),
             makeTiff(kind, 40, 11).bytes);
    }
}

void saveBitmaps(const std::filesystem::path& folder) {
    save(folder, "colour24", encodeImage(photo(9, 7).view(), TileFormat::bmp, 300, {}));
    save(folder, "colour24profile",
         encodeImage(photo(3, 2).view(), TileFormat::bmp, 300, rgbProfile()));
    const auto header = [](unsigned bits, std::uint32_t compression, std::uint32_t colours) {
        Bytes file = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0};
        put32(file, 54 + 4 * colours + (compression == 3 ? 12 : 0));
        put32(file, 40), put32(file, 8), put32(file, 2), put16(file, 1), put16(file, bits);
        put32(file, compression), put32(file, 0), put32(file, 2835), put32(file, 2835);
        put32(file, colours), put32(file, 0);
        append(file, noise(std::size_t{4} * colours));
        return file;
    };
    for (const unsigned bits : {1U, 4U, 8U}) {
        Bytes file = header(bits, 0, 1U << bits > 16 ? 16 : 1U << bits);
        append(file, noise(16));
        save(folder, "palette" + std::to_string(bits), file);
    }
    Bytes runs8 = header(8, 1, 16);
    append(runs8, {5, 9, 0, 3, 1, 2, 3, 0, 0, 0, 0, 2, 2, 0, 6, 7, 0, 1});
    save(folder, "runs8", runs8);
    Bytes runs4 = header(4, 2, 16);
    append(runs4, {8, 0x1A, 0, 0, 3, 0xA5, 0, 5, 0x12, 0x34, 0x50, 0, 0, 1});
    save(folder, "runs4", runs4);
    for (const unsigned bits : {16U, 32U}) {
        Bytes masks = header(bits, 3, 0);
        put32(masks, 0xF800), put32(masks, 0x07E0), put32(masks, 0x001F);
        append(masks, noise(64));
        save(folder, "masks" + std::to_string(bits), masks);
    }
    Bytes core = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 26, 0,  0,
                  0,   12,  0, 0, 0, 3, 0, 2, 0, 1, 0,  24, 0};
    append(core, noise(24));
    save(folder, "core", core);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: fuzz_codec_seeds CORPUS\n";
        return 2;
    }
    const std::filesystem::path corpus = arguments[1];
    saveJpegs(corpus / "fuzz_jpeg");
    saveJpegsToCut(corpus / "fuzz_jpeg_cutter");
    saveTiffs(corpus / "fuzz_tiff");
    saveBitmaps(corpus / "fuzz_bmp");
    save(corpus / "fuzz_colour_profile", "rgb", rgbProfile());
    save(corpus / "fuzz_colour_profile", "grey", greyProfile());
    return 0;
}
