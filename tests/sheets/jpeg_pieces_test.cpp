// What a JPEG photo's pieces have in common, as the document has to say it.
#include "image/jpeg_files.h"
#include "platform/error.h"
#include "platform/image/colour.h"
#include "sheets/jpeg_pieces.h"
#include "support/temp_folder.h"

#include <fstream>

#include <gtest/gtest.h>

namespace veldara::test {

namespace {

class JpegPieces : public testing::Test {
  protected:
    std::filesystem::path save(const Bytes& file) const {
        std::filesystem::path path = folder.path() / "photo.jpg";
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(file.data()),
                   static_cast<std::streamsize>(file.size()));
        return path;
    }

    PieceFacts factsOf(const JpegKind& kind) const {
        return openJpegPieces(save(makeJpeg(kind, photo(90, 60))))->facts();
    }

    TempFolder folder;
};

} // namespace

TEST_F(JpegPieces, AreOfThePhotosColours) {
    for (const JpegKind& kind : everyJpegKind()) {
        SCOPED_TRACE(kind.name);
        const PieceFacts facts = factsOf(kind);
        EXPECT_EQ(facts.width, 90);
        EXPECT_EQ(facts.height, 60);
        EXPECT_EQ(facts.filter, PieceFilter::dct);
        EXPECT_EQ(facts.colour, kind.components == 1   ? PieceColour::grey
                                : kind.components == 4 ? PieceColour::cmyk
                                                       : PieceColour::rgb);
        EXPECT_EQ(facts.inverted, kind.components == 4 && (kind.adobeMarker || kind.ycck));
        EXPECT_EQ(facts.colourTransform, kind.components == 1   ? -1
                                         : kind.components == 4 ? (kind.ycck ? 1 : 0)
                                                                : (kind.rgb ? 0 : 1));
    }
}

TEST_F(JpegPieces, OfGreysHaveAGreyProfile) {
    JpegKind grey;
    grey.components = 1;
    for (const Bytes& profile : {greyProfile(), rgbProfile()}) {
        Bytes content{'I', 'C', 'C', '_', 'P', 'R', 'O', 'F', 'I', 'L', 'E', 0, 1, 1};
        append(content, profile);
        const Bytes file = withSegment(makeJpeg(grey, photo(90, 60)), 0xE2, content);
        EXPECT_EQ(profileKind(openJpegPieces(save(file))->facts().profile), ProfileKind::grey);
    }
}

TEST_F(JpegPieces, ReachOneBlockGroupBeyondWhatIsWanted) {
    JpegKind kind;
    kind.across = kind.down = 2; // groups of 16 x 16 pixels
    const auto pieces = openJpegPieces(save(makeJpeg(kind, photo(200, 100))));
    EXPECT_EQ(pieces->pieceFor({40, 20, 30, 30}), (PixelRectangle{16, 0, 80, 80}));
}

TEST_F(JpegPieces, AskWhetherTheRunIsToEnd) {
    struct Ended {};
    const auto end = [] { throw Ended(); };
    const auto pieces = openJpegPieces(save(makeJpeg({}, photo(900, 600))));
    ASSERT_TRUE(pieces->wantSmall({0, 0, 900, 600}, {90, 60}));
    pieces->start({{0, 0, 900, 600}}, 1);
    EXPECT_THROW(pieces->next(end), Ended);
    EXPECT_FALSE(pieces->next([] {}).empty()) << "it can go on";
    EXPECT_THROW(pieces->small(end), Ended);
    EXPECT_EQ(pieces->small([] {}).width(), 90);
}

TEST_F(JpegPieces, OfADamagedPhotoNameItInTheError) {
    Bytes file = makeJpeg({}, photo(90, 60));
    file.resize(30);
    const std::filesystem::path path = save(file);
    try {
        openJpegPieces(path);
        FAIL();
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("photo.jpg\": "), std::string::npos);
    }
}

} // namespace veldara::test
