// Pieces that are encoded from a photo's rows: their place, and what is in them.
#include "image/jpeg_files.h"
#include "image/tiff_files.h"
#include "platform/image/colour.h"
#include "sheets/row_pieces.h"
#include "support/temp_folder.h"

#include <fstream>

#include <gtest/gtest.h>
#include <zlib.h>

namespace veldara::test {

namespace {

class RowPieces : public testing::Test {
  protected:
    RowPieces() { write(encodeImage(picture.view(), TileFormat::bmp, 100, {})); }

    void write(const Bytes& file) const {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(file.data()),
                   static_cast<std::streamsize>(file.size()));
    }

    const Image picture = photo(120, 90);
    const TempFolder folder;
    const std::filesystem::path path = folder.path() / "photo.bmp";
};

} // namespace

TEST_F(RowPieces, ReachOnePixelFurtherWhereThePhotoGoesOn) {
    const auto pieces = openRowPieces(path, PieceFilter::flate, "");
    EXPECT_EQ(pieces->facts().width, 120);
    EXPECT_EQ(pieces->facts().height, 90);
    EXPECT_EQ(pieces->pieceFor({10, 20, 30, 40}), (PixelRectangle{9, 19, 32, 42}));
    EXPECT_EQ(pieces->pieceFor({0, 0, 120, 90}), (PixelRectangle{0, 0, 120, 90}));
}

TEST_F(RowPieces, AreJpegFilesOfTheirPartInTheOrderThatWasAsked) {
    const auto pieces = openRowPieces(path, PieceFilter::dct, "A notice.");
    EXPECT_EQ(pieces->facts().notice, "A notice.");
    const std::vector<PixelRectangle> wanted{
        {0, 0, 60, 45}, {60, 0, 60, 45}, {0, 45, 60, 45}, {60, 45, 60, 45}};
    pieces->start(wanted, 2);
    for (const PixelRectangle& one : wanted) {
        const PixelRectangle place = pieces->pieceFor(one);
        const Image decoded = decodedPicture(pieces->next([] {}));
        ASSERT_EQ(decoded.width(), place.width);
        ASSERT_EQ(decoded.height(), place.height);
        const Image part =
            Image::copyOf(picture.view().cut(place.left, place.top, place.width, place.height));
        EXPECT_LT(meanDistance(decoded, part), 3);
    }
}

TEST_F(RowPieces, OfGreysStayGreyWithTheirProfile) {
    TiffKind kind = tiffKindNamed("grey8");
    kind.profile = greyProfile();
    write(makeTiff(kind, 120, 90).bytes);
    const auto grey = openRowPieces(path, PieceFilter::flate, "");
    EXPECT_EQ(grey->facts().colour, PieceColour::grey);
    EXPECT_EQ(grey->facts().profile, greyProfile());
    const auto encoded = openRowPieces(path, PieceFilter::dct, "");
    EXPECT_EQ(encoded->facts().colour, PieceColour::rgb) << "JPEG pieces have three parts";
    EXPECT_EQ(profileKind(encoded->facts().profile), ProfileKind::rgb);
    kind = tiffKindNamed("rgb8");
    kind.profile = rgbProfile();
    write(makeTiff(kind, 120, 90).bytes);
    const auto colour = openRowPieces(path, PieceFilter::flate, "");
    EXPECT_EQ(colour->facts().colour, PieceColour::rgb);
    EXPECT_EQ(colour->facts().profile, rgbProfile());
}

TEST_F(RowPieces, OfInksStayInks) {
    write(makeTiff(tiffKindNamed("inks8"), 120, 90).bytes);
    const auto inks = openInkPieces(path);
    ASSERT_NE(inks, nullptr);
    EXPECT_EQ(inks->facts().colour, PieceColour::cmyk);
    EXPECT_EQ(inks->facts().width, 120);
    inks->start({{10, 20, 30, 40}}, 1);
    const Bytes stream = inks->next([] {});
    Bytes rows((4 * 32 + 1) * 42 + 1); // one pixel more on each side, a byte for the predictor
    uLongf size = static_cast<uLongf>(rows.size());
    EXPECT_EQ(uncompress(rows.data(), &size, stream.data(), static_cast<uLong>(stream.size())),
              Z_OK);
    EXPECT_EQ(size, rows.size() - 1);
}

TEST_F(RowPieces, OfRgbAreNoInks) {
    EXPECT_EQ(openInkPieces(path), nullptr);
}

} // namespace veldara::test
