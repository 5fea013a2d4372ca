#include "image/files.h"
#include "image/jpeg_files.h"
#include "image/tiff_files.h"
#include "platform/error.h"
#include "platform/files/whole_file.h"
#include "platform/image/byte_source.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include <gmock/gmock.h>

namespace veldara::test {

namespace {

std::string failureOf(const std::function<void()>& act) {
    try {
        act();
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

void expectComplaint(const std::filesystem::path& file, const std::string& reason) {
    const std::string sentence = "Could not read \"" + textOf(file) + "\": " + reason + ".";
    EXPECT_EQ(failureOf([&] { readImageHeader(file); }), sentence);
    EXPECT_EQ(failureOf([&] { loadImage(file); }), sentence);
    EXPECT_EQ(failureOf([&] { openRowReader(file); }), sentence);
}

void write(const std::filesystem::path& file, const Bytes& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

std::string tooSmall(int width, int height) {
    return "Could not read \"picture\": the file is too small to hold the " +
           std::to_string(width) + " x " + std::to_string(height) + " pixels that it claims.";
}

// Sets the size in the frame header of a JPEG file.
Bytes withJpegSize(Bytes file, unsigned width, unsigned height) {
    for (std::size_t i = 0; i + 9 < file.size(); ++i) {
        if (file[i] == 0xFF && file[i + 1] >= 0xC0 && file[i + 1] <= 0xC2) {
            file[i + 5] = static_cast<std::uint8_t>(height >> 8);
            file[i + 6] = static_cast<std::uint8_t>(height & 255U);
            file[i + 7] = static_cast<std::uint8_t>(width >> 8);
            file[i + 8] = static_cast<std::uint8_t>(width & 255U);
            return file;
        }
    }
    ADD_FAILURE() << "no frame header";
    return file;
}

} // namespace

TEST(BadFiles, EverySentenceNamesTheFileAndTheReason) {
    const TempFolder folder;
    expectComplaint(folder.path() / pathOf("fehlt ü.jpg"), "the file does not exist");
    expectComplaint(folder.path(), "it is a folder");
#ifndef _WIN32
    expectComplaint("/dev/null", "it is not an ordinary file");
#endif
    const std::filesystem::path file = folder.path() / pathOf("Bild ü.jpg");
    write(file, {});
    expectComplaint(file, "the file is empty");
    write(file, {1});
    expectComplaint(file, "it is not a JPEG, TIFF, BMP, PNG, WebP, HEIC or AVIF picture");
    write(file, noise(1000));
    expectComplaint(file, "it is not a JPEG, TIFF, BMP, PNG, WebP, HEIC or AVIF picture");
    write(file, {'B', 'M', 0, 0});
    expectComplaint(file, "the file ends within its header");
    write(file, {0xFF, 0xD8, 0xFF});
    expectComplaint(file, "the file ends within its header");
    write(file, {'I', 'I', 42, 0, 8, 0, 0, 0});
    expectComplaint(file, "its header is damaged or incomplete");
}

TEST(BadFiles, TheJpegLibraryNamesItsReason) {
    const TempFolder folder;
    Bytes file = makeJpeg({}, photo(40, 30));
    const Bytes table = {0xFF, 0xDB};
    const auto found = std::search(file.begin(), file.end(), table.begin(), table.end());
    ASSERT_NE(found, file.end());
    found[4] = 0x0F; // the table's number, of four
    write(folder.path() / "lake.jpg", file);
    expectComplaint(folder.path() / "lake.jpg", "Bogus DQT index 15");
}

TEST(BadFiles, TheTypeIsToldByTheContent) {
    const TempFolder folder;
    const Image image = photo(10, 10);
    const std::filesystem::path file = folder.path() / "picture.jpg";
    write(file, encodeImage(image.view(), TileFormat::bmp, 0, {}));
    EXPECT_EQ(readImageHeader(file).format->name, "BMP");
    EXPECT_TRUE(same(loadImage(file), image));
}

TEST(BadFiles, FilesOnADriveReadAsThoseInMemory) {
    const TempFolder folder;
    const Image image = photo(700, 300);
    for (const TileFormat type : {TileFormat::jpeg, TileFormat::tiff, TileFormat::bmp}) {
        const Bytes bytes = encodeImage(image.view(), type, 0, {});
        const std::filesystem::path file = folder.path() / "picture";
        writeWholeFile(file, bytes);
        EXPECT_TRUE(same(loadImage(file), load(bytes)));
    }
}

TEST(BadFiles, GigapixelsInTheHeaderAndLittleBehindIt) {
    // 1.3 gigapixels and some 20 KB, in every format and way of coding.
    for (const JpegKind& kind : everyJpegKind()) {
        Bytes file = withJpegSize(makeJpeg(kind, photo(130, 130)), 36000, 36000);
        append(file, noise(20000));
        EXPECT_EQ(complaintOf(file), tooSmall(36000, 36000)) << kind.name;
        EXPECT_EQ(failureOf([&] { headerOf(file); }), tooSmall(36000, 36000));
    }
    Bytes bitmap = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0};
    put32(bitmap, 40), put32(bitmap, 36000), put32(bitmap, 36000), put16(bitmap, 1);
    Bytes runs = bitmap;
    put16(bitmap, 24), bitmap.resize(54), append(bitmap, noise(20000));
    EXPECT_EQ(complaintOf(bitmap), tooSmall(36000, 36000));
    put16(runs, 8), put32(runs, 1), runs.resize(54), append(runs, noise(20000));
    EXPECT_EQ(complaintOf(runs), tooSmall(36000, 36000));
    for (const std::uint32_t compression : {1U, 5U, 7U, 8U, 32773U}) {
        for (const std::uint32_t rows : {1U, 100U, 36000U}) {
            const Bytes file = bareTiff({{256, 36000},
                                         {257, 36000},
                                         {258, 8},
                                         {259, compression},
                                         {262, 2},
                                         {273, dataPositionOfBareTiff(9)},
                                         {277, 3},
                                         {278, rows},
                                         {279, 20000}},
                                        noise(20000));
            EXPECT_NE(complaintOf(file), "") << compression << " " << rows;
        }
    }
}

TEST(BadFiles, AFaxOfGigapixelsIsRefusedAtItsFirstWrongCode) {
    // Fax codes can be so dense that the size alone proves nothing; the code has to be wrong.
    const Bytes file = bareTiff({{256, 36000},
                                 {257, 36000},
                                 {258, 1},
                                 {259, 4},
                                 {262, 0},
                                 {273, dataPositionOfBareTiff(9)},
                                 {277, 1},
                                 {278, 36000},
                                 {279, 20000}},
                                noise(20000));
    // On a machine that is short of memory at the moment, that is the reason.
    EXPECT_THAT(
        complaintOf(file),
        testing::AnyOf(
            "Could not read \"picture\": its picture data is damaged or incomplete.",
            "Could not read \"picture\": there is not enough memory for a picture of 36000 x 36000 "
            "pixels."));
}

TEST(BadFiles, TilesLargerThanThePicture) {
    const Bytes file = bareTiff({{256, 10},
                                 {257, 10},
                                 {258, 8},
                                 {259, 5},
                                 {262, 1},
                                 {277, 1},
                                 {322, 1 << 20},
                                 {323, 1 << 20},
                                 {324, dataPositionOfBareTiff(10)},
                                 {325, 100}},
                                noise(100));
    EXPECT_EQ(complaintOf(file), tooSmall(10, 10));
}

TEST(BadFiles, AStripThatIsLargerThanTheFile) {
    const Bytes whole = makeTiff(tiffKindNamed("grey8"), 20, 20).bytes;
    Bytes counts; // of strips of seven rows
    for (const unsigned count : {140U, 140U, 120U}) {
        put16(counts, count);
    }
    const auto found = std::search(whole.begin(), whole.end(), counts.begin(), counts.end());
    ASSERT_NE(found, whole.end());
    const auto complaintWith = [&](std::size_t lastCount) {
        Bytes changed;
        put16(changed, static_cast<unsigned>(lastCount));
        Bytes file = whole;
        std::copy(changed.begin(), changed.end(), file.begin() + (found - whole.begin()) + 4);
        return complaintOf(file);
    };
    constexpr const char* damaged =
        "Could not read \"picture\": its picture data is damaged or incomplete.";
    EXPECT_EQ(complaintWith(120), "");
    EXPECT_EQ(complaintWith(whole.size()), damaged);
    EXPECT_EQ(complaintWith(whole.size() + 1), damaged);
}

TEST(BadFiles, ATiffWithoutASide) {
    const auto complaint = [](std::uint32_t width, std::uint32_t height) {
        return complaintOf(bareTiff({{256, width},
                                     {257, height},
                                     {258, 8},
                                     {259, 1},
                                     {262, 1},
                                     {273, dataPositionOfBareTiff(9)},
                                     {277, 1},
                                     {278, 10},
                                     {279, 100}},
                                    noise(100)));
    };
    EXPECT_EQ(complaint(10, 10), "");
    EXPECT_NE(complaint(0, 10), "");
    EXPECT_NE(complaint(10, 0), "");
}

TEST(BadFiles, RowsAskedForWronglyAreRefused) {
    const Bytes file = encodeImage(photo(20, 10).view(), TileFormat::bmp, 0, {});
    const auto rows = reader(file);
    EXPECT_THROW(rows->wantColumns(-1, 5), Error);
    EXPECT_THROW(rows->wantColumns(16, 5), Error);
    EXPECT_THROW(rows->wantColumns(0, 0), Error);
    EXPECT_THROW(rows->skipRows(11), Error);
    EXPECT_THROW(rows->skipRows(-1), Error);
    Image band(20, 11);
    EXPECT_THROW(rows->readRows(band.mutableView()), Error);
    EXPECT_THROW(rows->readRows(band.mutableView().cut(0, 0, 19, 5)), Error);
    EXPECT_NO_THROW(rows->readRows(band.mutableView().cut(0, 0, 20, 10)));
    EXPECT_THROW(rows->readRows(band.mutableView().cut(0, 0, 20, 1)), Error);
}

TEST(BadFiles, RowsOfAPictureDecodedAsAWholeAreRefusedLikewise) {
    JpegKind kind;
    kind.progressive = true;
    const auto rows = reader(makeJpeg(kind, photo(20, 10)));
    ASSERT_FALSE(rows->streams());
    EXPECT_THROW(rows->wantColumns(16, 5), Error);
    EXPECT_THROW(rows->skipRows(11), Error);
    Image band(20, 11);
    EXPECT_THROW(rows->readRows(band.mutableView()), Error);
    EXPECT_THROW(rows->readRows(band.mutableView().cut(0, 0, 19, 5)), Error);
    EXPECT_NO_THROW(rows->readRows(band.mutableView().cut(0, 0, 20, 10)));
}

TEST(BadFiles, APictureWithoutPixelsIsNotWritten) {
    for (const TileFormat type : {TileFormat::jpeg, TileFormat::tiff, TileFormat::bmp}) {
        EXPECT_THROW(encodeImage(PixelView(), type, 0, {}), Error);
    }
}

TEST(OpenFiles, ThatBecomeShorterGiveWhatIsLeft) {
    const TempFolder folder;
    const std::filesystem::path file = folder / "bytes";
    write(file, Bytes(100, 7));
    const auto source = openFileBytes(file);
    std::filesystem::resize_file(file, 60);
    Bytes bytes(100);
    EXPECT_EQ(source->readAt(20, bytes.data(), bytes.size()), 40U);
    EXPECT_FALSE(source->readFully(20, bytes.data(), bytes.size()));
}

} // namespace veldara::test
