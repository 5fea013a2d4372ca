#include "soak/photos.h"

#include "image/files.h"
#include "image/jpeg_files.h"
#include "image/tiff_files.h"
#include "platform/files/whole_file.h"

#include <string>

namespace veldara::test {
namespace {

class Folder {
  public:
    explicit Folder(std::filesystem::path path) : path_(std::move(path)) {}

    void add(const std::string& ending, const Bytes& bytes) {
        writeWholeFile(path_ / ("photo" + std::to_string(++count_) + ending), bytes);
    }
    // The same cut short, and with bytes that are not its own.
    void addBroken(const std::string& ending, Bytes bytes) {
        add(ending, Bytes(bytes.begin(), bytes.begin() + static_cast<long>(bytes.size() / 3)));
        for (std::size_t at = bytes.size() / 4; at < bytes.size(); at += 97) {
            bytes[at] = static_cast<std::uint8_t>(bytes[at] * 5 + 77);
        }
        add(ending, bytes);
    }
    int count() const { return count_; }

  private:
    std::filesystem::path path_;
    int count_ = 0;
};

void addJpegs(Folder& folder) {
    int width = 320;
    for (const JpegKind& kind : everyJpegKind()) {
        width += 23;
        folder.add(".jpg", makeJpeg(kind, photo(width, width * 2 / 3)));
    }
    for (const unsigned orientation : {2U, 3U, 5U, 6U, 8U}) {
        folder.add(".jpg", withSegment(makeJpeg(JpegKind{}, photo(400, 300)), 0xE1,
                                       exifContent(orientation, 300)));
    }
    folder.addBroken(".jpg", makeJpeg(JpegKind{}, photo(500, 400)));
    folder.add(".jpg", makeJpeg(JpegKind{}, photo(24, 24))); // too small to be used
    folder.add(".jpg", makeJpeg(JpegKind{}, photo(1800, 1200)));
}

void addTiffs(Folder& folder) {
    for (const TiffKind& kind : everyTiffSampleKind()) {
        folder.add(".tif", makeTiff(kind, 210, 150).bytes);
    }
    TiffKind kind;
    for (const int compression : {5, 8, 32773}) {
        kind.compression = compression;
        folder.add(".tif", makeTiff(kind, 600, 410).bytes);
    }
    folder.addBroken(".tif", makeTiff(kind, 300, 200).bytes);
}

void addBitmaps(Folder& folder) {
    for (const int width : {25, 160, 640, 1201}) {
        folder.add(".bmp", encodeImage(photo(width, 30 + width / 2).view(), TileFormat::bmp, 300,
                                       width == 160 ? rgbProfile() : ColourProfile{}));
    }
    folder.addBroken(".bmp", encodeImage(photo(99, 98).view(), TileFormat::bmp, 300, {}));
    folder.add(".bmp", {});
    folder.add(".jpg", noise(5000));
}

} // namespace

int writePhotos(const std::filesystem::path& path) {
    Folder folder(path);
    addJpegs(folder);
    addTiffs(folder);
    addBitmaps(folder);
    return folder.count();
}

} // namespace veldara::test
