// Pieces of a photo decode to the photo's own samples, for every kind of JPEG that the program
// reads.
#include "platform/error.h"
#include "sheets/jpeg_cutting.h"

#include <algorithm>
#include <random>

namespace veldara::test {

namespace {

class EveryJpegKind : public testing::TestWithParam<JpegKind> {};

PixelRectangle somewhereIn(std::mt19937& random, int width, int height) {
    const auto below = [&](int most) {
        return std::uniform_int_distribution<int>(0, most - 1)(random);
    };
    PixelRectangle rectangle;
    rectangle.left = below(width);
    rectangle.top = below(height);
    rectangle.width = 1 + below(width - rectangle.left);
    rectangle.height = 1 + below(height - rectangle.top);
    return rectangle;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(JpegCutter, EveryJpegKind, testing::ValuesIn(everyJpegKind()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(EveryJpegKind, GivesThePhotosOwnSamplesOnEverySheet) {
    const Bytes file = makeJpeg(GetParam(), photo(203, 157));
    expectExact(file, sheetsOf(203, 157, 3, 2, 9));
}

TEST_P(EveryJpegKind, GivesThemInAnyRectangle) {
    std::mt19937 random(7);
    for (int round = 0; round < 6; ++round) {
        const int width = 1 + static_cast<int>(random() % 150);
        const int height = 1 + static_cast<int>(random() % 150);
        const Bytes file = makeJpeg(GetParam(), photo(width, height, 3));
        std::vector<PixelRectangle> wanted(8);
        for (PixelRectangle& one : wanted) {
            one = somewhereIn(random, width, height);
        }
        expectExact(file, wanted);
        if (HasFailure()) {
            FAIL() << "in a photo of " << width << 'x' << height;
        }
    }
}

TEST_P(EveryJpegKind, GivesTheSameBytesWithAnyNumberOfWorkers) {
    const Bytes file = makeJpeg(GetParam(), photo(170, 600));
    const std::vector<PixelRectangle> wanted = sheetsOf(170, 600, 2, 3, 5);
    const std::vector<JpegPiece> one = cutAll(file, wanted, 1);
    const std::vector<JpegPiece> many = cutAll(file, wanted, 7);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(one[i].bytes, many[i].bytes) << "piece " << i;
    }
}

TEST_P(EveryJpegKind, PiecesAreWholeJpegFilesOfTheSameKind) {
    const Bytes file = makeJpeg(GetParam(), photo(100, 90));
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    cutter->start({{30, 30, 20, 20}});
    const JpegPiece piece = cutter->next();
    const std::unique_ptr<JpegCutter> again = cutterOf(piece.bytes);
    EXPECT_EQ(again->facts().width, piece.width);
    EXPECT_EQ(again->facts().height, piece.height);
    EXPECT_EQ(again->facts().components, cutter->facts().components);
    EXPECT_EQ(again->facts().colour, cutter->facts().colour);
    EXPECT_EQ(again->facts().inksInverted, cutter->facts().inksInverted);
    EXPECT_EQ(again->facts().colourTransform, cutter->facts().colourTransform);
    EXPECT_EQ(complaintOf(piece.bytes), "");
}

TEST(JpegCutter, CutsATallPhotoThroughItsRingOfRows) {
    JpegKind kind;
    kind.across = kind.down = 2;
    const Bytes file = makeJpeg(kind, photo(90, 3001));
    expectExact(file, sheetsOf(90, 3001, 2, 13, 4), 1);
    expectExact(file, sheetsOf(90, 3001, 1, 1, 0), 3);
}

TEST(JpegCutter, PiecesMayComeInAnyOrderAndMoreThanOnce) {
    const Bytes file = makeJpeg(JpegKind{}, photo(120, 900));
    expectExact(
        file,
        {{0, 800, 20, 100}, {0, 0, 120, 10}, {0, 0, 120, 10}, {50, 0, 5, 900}, {0, 400, 120, 1}});
}

TEST(JpegCutter, NumbersRestartMarkersThroughThePartsOfAPiece) {
    // Loading refuses wrong numbers: the library warns of them, and goes on with damaged pixels.
    for (const bool grey : {false, true}) {
        JpegKind kind;
        kind.components = grey ? 1 : 3;
        kind.down = 2;
        const Bytes file = makeJpeg(kind, photo(64, 1500));
        for (const JpegPiece& piece : cutAll(file, sheetsOf(64, 1500, 1, 3, 7))) {
            EXPECT_EQ(complaintOf(piece.bytes), "");
        }
    }
}

TEST(JpegCutter, TellsWhatTheHeaderSays) {
    JpegKind kind;
    kind.across = kind.down = 2;
    Bytes file = makeJpeg(kind, photo(50, 40));
    file = withSegment(file, 0xE1, exifContent(6, 300));
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    const JpegFacts& facts = cutter->facts();
    EXPECT_EQ(facts.width, 50);
    EXPECT_EQ(facts.height, 40);
    EXPECT_EQ(facts.components, 3);
    EXPECT_EQ(facts.colour, JpegColour::yCbCr);
    EXPECT_EQ(facts.colourTransform, 1);
    EXPECT_FALSE(facts.inksInverted);
    EXPECT_EQ(facts.orientation, Orientation::clockwise);
    EXPECT_EQ(facts.dotsPerInch, 300);
    EXPECT_TRUE(facts.profile.empty());
    EXPECT_TRUE(facts.streams);
    EXPECT_TRUE(cutter->fitsMemory());
    EXPECT_EQ(cutter->pieceFor({20, 20, 2, 2}), (PixelRectangle{0, 0, 48, 40}));
}

TEST(JpegCutter, TellsHowMuchMemoryAProgressivePhotoTakes) {
    JpegKind kind;
    kind.across = kind.down = 2;
    kind.progressive = true;
    const Bytes file = makeJpeg(kind, photo(50, 40));
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    EXPECT_FALSE(cutter->facts().streams);
    EXPECT_EQ(cutter->facts().coefficientBytes, 4U * 3U * 6U * 64U * 2U); // 4 x 3 MCUs of 6 blocks
    EXPECT_TRUE(cutter->fitsMemory());
}

TEST(JpegCutter, ReadsNoFurtherThanTheLastPiece) {
    Bytes file = makeJpeg(JpegKind{}, photo(200, 2000));
    file.resize(file.size() / 2);
    EXPECT_EQ(cuttingComplaint(file, {{0, 0, 200, 400}}), "");
    EXPECT_EQ(cuttingComplaint(file, {{0, 0, 200, 400}, {0, 1500, 200, 400}}),
              "its picture data is damaged or incomplete");
}

TEST(JpegCutter, NothingWantedIsNothingToDo) {
    const Bytes file = makeJpeg(JpegKind{}, photo(20, 20));
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    cutter->start({});
    EXPECT_TRUE(cutter->waitReady(std::chrono::milliseconds(0)));
    EXPECT_THROW(cutter->next(), Error);
}

TEST(JpegCutter, RefusesRectanglesOutsideOfThePhoto) {
    const Bytes file = makeJpeg(JpegKind{}, photo(20, 20));
    EXPECT_EQ(cuttingComplaint(file, {{0, 0, 20, 20}, {10, 10, 11, 5}}),
              "a part was asked for that the photo does not have");
}

TEST(JpegCutter, StopsWhenItIsDestroyed) {
    JpegKind kind;
    for (const bool progressive : {false, true}) {
        kind.progressive = progressive;
        const Bytes file = makeJpeg(kind, photo(300, 2500));
        for (int taken = 0; taken < 4; ++taken) {
            const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
            cutter->start(sheetsOf(300, 2500, 2, 5, 0), 3);
            for (int i = 0; i < taken; ++i) {
                cutter->next();
            }
        }
    }
}

TEST(JpegCutter, WaitsForAPieceAtMostAsLongAsAsked) {
    const Bytes file = makeJpeg(JpegKind{}, photo(100, 100));
    const std::unique_ptr<JpegCutter> cutter = cutterOf(file);
    cutter->start({{0, 0, 100, 100}});
    while (!cutter->waitReady(std::chrono::milliseconds(1))) {
    }
    EXPECT_FALSE(cutter->next().bytes.empty());
    EXPECT_TRUE(cutter->waitReady(std::chrono::milliseconds(0)));
}

TEST(JpegCutter, TablesMayChangeFromScanToScan) {
    JpegKind kind;
    kind.separateScans = true;
    const Bytes file = makeJpeg(kind, photo(100, 80));
    // Both colour components refer to table 1; a coarser one takes its place before the last scan.
    std::size_t lastScan = 0;
    for (std::size_t i = 0; i + 1 < file.size(); ++i) {
        lastScan = file[i] == 0xFF && file[i + 1] == 0xDA ? i : lastScan;
    }
    Bytes changed(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(lastScan));
    append(changed, {0xFF, 0xDB, 0x00, 0x43, 0x01});
    append(changed, Bytes(64, 50));
    changed.insert(changed.end(), file.begin() + static_cast<std::ptrdiff_t>(lastScan), file.end());
    EXPECT_NE(decodePlainly(changed).samples, decodePlainly(file).samples);
    expectExact(changed, sheetsOf(100, 80, 2, 2, 4));
}

TEST(JpegCutter, GroupsOfTooManyBlocksForOneScanStayInSeparateOnes) {
    JpegKind kind;
    kind.separateScans = true;
    kind.across = kind.down = 4; // eighteen blocks in a group; a scan may have ten
    const Bytes file = makeJpeg(kind, photo(203, 157));
    expectExact(file, sheetsOf(203, 157, 3, 2, 9));
}

TEST(JpegCutter, PiecesAreNoLargerThanTheirShareOfThePhoto) {
    for (const bool progressive : {false, true}) {
        JpegKind kind;
        kind.across = kind.down = 2;
        kind.progressive = progressive;
        const Bytes file = makeJpeg(kind, photo(1600, 1200));
        const std::vector<JpegPiece> pieces = cutAll(file, sheetsOf(1600, 1200, 1, 1, 0));
        const auto whole = static_cast<double>(file.size());
        EXPECT_LT(static_cast<double>(pieces[0].bytes.size()), 1.01 * whole + 1000);
    }
}

} // namespace veldara::test
