// The copy of a photo that the window's file list does not take.
#include "output/photo_copy.h"
#include "platform/error.h"
#include "platform/files/whole_file.h"
#include "platform/image/byte_source.h"
#include "platform/image/coded_colour.h"
#include "platform/image/input_format.h"
#include "support/temp_folder.h"

#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

Image photo(int width, int height) {
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int i = 0; i < 3 * width; ++i) {
            image.row(y)[i] = static_cast<std::uint8_t>(i * 7 + y * 13 + i * y % 31);
        }
    }
    return image;
}

bool same(const Image& one, const Image& other) {
    return one.width() == other.width() && one.height() == other.height() &&
           std::memcmp(one.row(0), other.row(0), one.byteCount()) == 0;
}

ColourProfile profile() {
    return profileOf(CodedColour{12, 13});
}

ImageHeader headerAs(const char* kind) {
    ImageHeader header;
    header.format = &inputFormat(kind);
    return header;
}

std::string nameFor(const std::string& photo, const char* kind,
                    const std::set<std::string>& there) {
    return photoCopyName(photo, headerAs(kind),
                         [&](const std::string& name) { return there.count(name) != 0; });
}

Bytes contentOf(const std::filesystem::path& file) {
    const auto source = openFileBytes(file);
    Bytes bytes(static_cast<std::size_t>(source->size()));
    EXPECT_TRUE(source->readFully(0, bytes.data(), bytes.size()));
    return bytes;
}

void copyWhole(const std::filesystem::path& photo, const std::filesystem::path& target) {
    PhotoCopy copy(photo, target);
    double before = -1;
    while (!copy.done()) {
        EXPECT_FALSE(std::filesystem::exists(target));
        EXPECT_GT(copy.fraction(), before);
        before = copy.fraction();
        copy.step();
    }
    EXPECT_EQ(copy.fraction(), 1);
}

std::size_t filesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                  std::filesystem::directory_iterator()));
}

TEST(PhotoCopyName, HasTheEndingOfWhatTheCopyIs) {
    EXPECT_EQ(nameFor("IMG_0001.HEIC", "HEIC", {}), "IMG_0001.tif");
    EXPECT_EQ(nameFor("a.jpeg", "JPEG", {}), "a.jpg");
    EXPECT_EQ(nameFor("a.b.webp", "WebP", {}), "a.b.tif");
    EXPECT_EQ(nameFor("a.tiff", "TIFF", {}), "a.tif");
    EXPECT_EQ(nameFor("a.dib", "BMP", {}), "a.tif");
    EXPECT_EQ(nameFor("a.png", "JPEG", {}), "a.jpg"); // what it is counts, not what it is called
    EXPECT_EQ(nameFor("noending", "AVIF", {}), "noending.tif");
    EXPECT_EQ(nameFor(".heic", "HEIC", {}), ".heic.tif");
}

TEST(PhotoCopyName, IsNeverThatOfAFileThatExists) {
    EXPECT_EQ(nameFor("IMG_0001.HEIC", "HEIC", {"IMG_0001.tif"}), "IMG_0001 (2).tif");
    EXPECT_EQ(nameFor("a.jpeg", "JPEG", {"a.jpg", "a (2).jpg", "a (3).jpg"}), "a (4).jpg");
}

TEST(PhotoCopyOffer, NamesBoth) {
    const Message offer = photoCopyOffer("IMG_0001.HEIC", "IMG_0001.tif");
    EXPECT_EQ(offer.text, "IMG_0001.HEIC is not a file that can be cut into tiles as it is. Make a "
                          "copy of it as IMG_0001.tif and open that?");
    EXPECT_EQ(offer.buttons, MessageButtons::yesNo);
}

TEST(PictureEnding, IsThatOfAnyKindWhateverItsCase) {
    for (const char* name : {"a.HEIC", "a.heif", "a.avif", "a.WebP", "a.png", "a.jpeg", "a.jpe",
                             "a.tiff", "a.dib", "a.jpg"}) {
        EXPECT_TRUE(hasPictureEnding(name)) << name;
    }
    for (const char* name : {"notes.text", "png", ".png", "a.pngx", ""}) {
        EXPECT_FALSE(hasPictureEnding(name)) << name;
    }
}

TEST(PhotoCopyOfAJpeg, IsTheSameBytes) {
    const TempFolder folder;
    const Bytes bytes = encodeImage(photo(60, 40).view(), TileFormat::jpeg, 300, profile());
    writeWholeFile(folder.path() / "a.jpeg", bytes);
    copyWhole(folder.path() / "a.jpeg", folder.path() / "a.jpg");
    EXPECT_EQ(contentOf(folder.path() / "a.jpg"), bytes);
}

TEST(PhotoCopyOfAnotherKind, IsALosslessTiffWithProfileAndResolution) {
    const TempFolder folder;
    const Image picture = photo(150, 333);
    writeWholeFile(folder.path() / "a.dib",
                   encodeImage(picture.view(), TileFormat::bmp, 240, profile()));
    copyWhole(folder.path() / "a.dib", folder.path() / "a.tif");
    const Image copy = loadImage(folder.path() / "a.tif");
    EXPECT_TRUE(same(copy, picture));
    EXPECT_EQ(copy.dotsPerInch, 240);
    EXPECT_EQ(copy.colourProfile, profile());
}

TEST(PhotoCopyThatFails, LeavesNoFile) {
    const TempFolder folder;
    Bytes bytes = encodeImage(photo(150, 333).view(), TileFormat::bmp, 240, {});
    bytes.resize(bytes.size() / 2 + 100);
    writeWholeFile(folder.path() / "a.dib", bytes);
    EXPECT_THROW(copyWhole(folder.path() / "a.dib", folder.path() / "a.tif"), Error);
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PhotoCopyThatIsStopped, LeavesNoFile) {
    const TempFolder folder;
    writeWholeFile(folder.path() / "a.dib",
                   encodeImage(photo(150, 333).view(), TileFormat::bmp, 240, {}));
    {
        PhotoCopy copy(folder.path() / "a.dib", folder.path() / "a.tif");
        copy.step();
        copy.step();
    }
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PhotoCopy, NeverReplacesAFile) {
    const TempFolder folder;
    writeWholeFile(folder.path() / "a.dib",
                   encodeImage(photo(60, 40).view(), TileFormat::bmp, 0, {}));
    const Bytes old = {1, 2, 3};
    writeWholeFile(folder.path() / "a.tif", old);
    PhotoCopy copy(folder.path() / "a.dib", folder.path() / "a.tif");
    EXPECT_THROW(
        {
            while (!copy.done()) {
                copy.step();
            }
        },
        Error);
    EXPECT_EQ(contentOf(folder.path() / "a.tif"), old);
}

TEST(AFolder, ThatTakesFilesIsLeftAsItWas) {
    const TempFolder folder;
    EXPECT_TRUE(mayWriteIn(folder.path()));
    EXPECT_EQ(filesIn(folder.path()), 0U);
    EXPECT_FALSE(mayWriteIn(folder.path() / "missing"));
}

} // namespace
} // namespace veldara::test
