#include "image/jpeg_files.h"
#include "image/tiff_files.h"
#include "platform/error.h"
#include "sheets/documents.h"
#include "sheets/guide_page.h"
#include "sheets/poster_pdf.h"
#include "sheets/sheet_jobs.h"
#include "sheets/slopes.h"
#include "support/said.h"
#include "support/sound_pdf.h"

#include <regex>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace veldara {
namespace {

using test::Bytes;
using test::expectSoundPdf;
using test::JpegKind;
using test::said;
using test::slopes;
using testing::Folder;
using testing::makeDocument;
using testing::meanDifference;
using testing::rendered;
using testing::Renderer;
using testing::smallJob;

Bytes jpegPhoto(const SheetJob& job, const JpegKind& kind = {}) {
    return test::makeJpeg(kind, test::photo(job.layout.photoWidth, job.layout.photoHeight));
}

// The sheet's own area as it has to come out of the renderer.
Image expectedSheet(const Image& turnedPhoto, const SheetJob& job, int number) {
    const SheetPlace place = sheetPlace(job, number);
    const PhotoRect& own = place.ownPhoto;
    const PixelView cut =
        turnedPhoto.view().cut(static_cast<int>(own.left), static_cast<int>(own.top),
                               static_cast<int>(own.width()), static_cast<int>(own.height()));
    return place.turned ? turned(cut, Turn::counterClockwise) : Image::copyOf(cut);
}

void expectShows(const Image& page, const Image& sheet) {
    ASSERT_EQ(page.width(), 500);
    ASSERT_EQ(page.height(), 700);
    const PixelView own = page.view().cut(50, 50, 400, 600);
    EXPECT_LE(meanDifference(sheet.view(), own), 1.0);
    const double right = meanDifference(sheet.view(), own);
    for (const auto& [x, y] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
        EXPECT_GT(meanDifference(sheet.view(), own, x, y), right) << x << "," << y;
    }
}

void expectAllPagesShow(const std::filesystem::path& document, const Image& photo,
                        const SheetJob& job, Renderer renderer, const Folder& folder) {
    const int sheets = job.layout.tilesWide * job.layout.tilesHigh;
    for (int number = 1; number <= sheets; ++number) {
        SCOPED_TRACE("sheet " + std::to_string(number));
        const Image page = rendered(document, number + 1, renderer, folder);
        expectShows(page, expectedSheet(photo, job, number));
    }
}

TEST(PosterPdf, IsSoundAndHasItsPages) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const std::filesystem::path document = makeDocument(folder, jpegPhoto(job), job);
    const std::string info = said("pdfinfo -f 1 -l 9 '" + document.string() + "'").text;
    EXPECT_NE(info.find("Pages:           5"), std::string::npos) << info;
    EXPECT_NE(info.find("Title:           lake.jpg"), std::string::npos) << info;
    EXPECT_NE(info.find("Page    5 size:  360 x 504 pts"), std::string::npos) << info;
    EXPECT_EQ(folder.count(), 2U) << "nothing but photo and document";
}

TEST(PosterPdf, AsksForNoScalingAndOneSide) {
    const Folder folder;
    const SheetJob job = smallJob(2, 1);
    const std::filesystem::path document = makeDocument(folder, jpegPhoto(job), job);
    const std::string text =
        said("qpdf --qdf --object-streams=disable '" + document.string() + "' - | strings").text;
    for (const char* words :
         {"/PrintScaling /None", "/Duplex /Simplex", "/PickTrayByPDFSize true"}) {
        EXPECT_NE(text.find(words), std::string::npos) << words;
    }
}

TEST(PosterPdf, PagesAreLabelledByTheirSheets) {
    const Folder folder;
    SheetJob job = smallJob(3, 2);
    job.choices.sheets = {2, 3, 6};
    const std::filesystem::path document = makeDocument(folder, jpegPhoto(job), job);
    const std::string text = said("qpdf --qdf '" + document.string() + "' - | strings").text;
    for (const char* words : {"/P (Guide)", "/St 2", "/St 6"}) {
        EXPECT_NE(text.find(words), std::string::npos) << words;
    }
    EXPECT_EQ(text.find("/St 3"), std::string::npos) << "it follows 2";
}

// The part of a page in which something is drawn: the share of pixels that are not white.
double inkIn(const Image& page, int left, int top, int right, int bottom) {
    int ink = 0;
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            ink += page.row(y)[3 * x + 1] < 250 ? 1 : 0;
        }
    }
    return static_cast<double>(ink) / ((right - left) * (bottom - top));
}

TEST(PosterPdf, MarksAndLabelStandInTheMargins) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const std::filesystem::path document = makeDocument(folder, jpegPhoto(job), job);
    for (const Renderer renderer : {Renderer::poppler, Renderer::mupdf, Renderer::ghostscript}) {
        SCOPED_TRACE(static_cast<int>(renderer));
        const Image page = rendered(document, 2, renderer, folder);
        ASSERT_EQ(page.width(), 500);
        for (const int x : {28, 455}) { // marks from 4 to 24 pixels beyond the corners
            for (const int y : {48, 648}) {
                EXPECT_GT(inkIn(page, x, y, x + 17, y + 4), 0.2) << x << ", " << y;
            }
        }
        EXPECT_GT(inkIn(page, 60, 660, 200, 690), 0.02) << "the label";
        EXPECT_EQ(inkIn(page, 60, 5, 440, 45), 0) << "nothing in the margin at the top";
    }
}

void expectGuideShowsSlopes(const Image& page, const SheetJob& job) {
    const std::vector<PagePhoto> photos = testing::itemsOf<PagePhoto>(guidePage(job).items);
    ASSERT_EQ(photos.size(), 1U);
    const PageRect& target = photos[0].target;
    constexpr double pixel = 0.72; // points
    // Away from the grid's lines and the numbers in the sheets' middles.
    for (const double across : {0.1, 0.4, 0.6, 0.9}) {
        for (const double down : {0.1, 0.4, 0.6, 0.9}) {
            const std::uint8_t* is =
                page.row(static_cast<int>((target.top + down * target.height()) / pixel)) +
                3 * static_cast<int>((target.left + across * target.width()) / pixel);
            EXPECT_NEAR(is[0], 255 * across, 10) << across << ", " << down;
            EXPECT_NEAR(is[1], 255 * down, 10) << across << ", " << down;
        }
    }
}

TEST(PosterPdf, TheGuideShowsThePosterAsItStands) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const Image shown = slopes(job.layout.photoWidth, job.layout.photoHeight);
    for (const TileFormat type : {TileFormat::jpeg, TileFormat::tiff}) {
        for (const auto& [turn, back] : {std::pair{Turn::none, Turn::none},
                                         {Turn::clockwise, Turn::counterClockwise},
                                         {Turn::half, Turn::half}}) {
            SCOPED_TRACE(static_cast<int>(turn));
            const Image stored = turned(shown.view(), back);
            const std::filesystem::path document =
                makeDocument(folder, encodeImage(stored.view(), type, 100, {}), job, turn);
            expectGuideShowsSlopes(rendered(document, 1, Renderer::poppler, folder), job);
        }
    }
}

TEST(PosterPdf, AllRenderersShowEverySheetInItsPlace) {
    const Folder folder;
    for (const bool tilesTurned : {false, true}) {
        const SheetJob job = smallJob(2, 2, tilesTurned);
        const Bytes photo = jpegPhoto(job);
        const std::filesystem::path document = makeDocument(folder, photo, job);
        const Image whole = test::load(photo);
        for (const Renderer renderer :
             {Renderer::poppler, Renderer::mupdf, Renderer::ghostscript}) {
            SCOPED_TRACE(static_cast<int>(renderer));
            expectAllPagesShow(document, whole, job, renderer, folder);
        }
    }
}

TEST(PosterPdf, EveryOrientationAndTurnStandsAsItShould) {
    const Folder folder;
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        for (const Turn turn : {Turn::none, Turn::clockwise, Turn::half, Turn::counterClockwise}) {
            SCOPED_TRACE("orientation " + std::to_string(orientation) + ", turn " +
                         std::to_string(static_cast<int>(turn)));
            const SheetJob job = smallJob(2, 2);
            int width = job.layout.photoWidth;
            int height = job.layout.photoHeight;
            const bool quarter = turn == Turn::clockwise || turn == Turn::counterClockwise;
            if ((orientation >= 5) != quarter) {
                std::swap(width, height);
            }
            const Bytes photo = test::withSegment(test::makeJpeg({}, test::photo(width, height)),
                                                  0xE1, test::exifContent(orientation, 0));
            const std::filesystem::path document = makeDocument(folder, photo, job, turn);
            const Image upright = turned(test::load(photo).view(), turn);
            expectShows(rendered(document, 3, Renderer::poppler, folder),
                        expectedSheet(upright, job, 2));
        }
    }
}

TEST(PosterPdf, EveryKindOfJpegComesThrough) {
    const Folder folder;
    const SheetJob job = smallJob(1, 2);
    for (const JpegKind& kind : test::everyJpegKind()) {
        SCOPED_TRACE(kind.name);
        const Bytes photo = jpegPhoto(job, kind);
        const std::filesystem::path document = makeDocument(folder, photo, job);
        if (kind.components != 4 && !kind.arithmetic) { // inks look as each renderer mixes them
            expectAllPagesShow(document, test::load(photo), job, Renderer::poppler, folder);
        }
    }
}

TEST(PosterPdf, PicturesWithoutLossComeThrough) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const Image photo = test::photo(job.layout.photoWidth, job.layout.photoHeight);
    test::TiffKind grey = test::tiffKindNamed("grey8");
    for (const Bytes& file :
         {encodeImage(photo.view(), TileFormat::tiff, 100, {}),
          encodeImage(photo.view(), TileFormat::bmp, 100, {}),
          test::makeTiff(grey, job.layout.photoWidth, job.layout.photoHeight).bytes}) {
        for (const Turn turn : {Turn::none, Turn::half}) {
            const std::filesystem::path document = makeDocument(folder, file, job, turn);
            const Image upright = turned(test::load(file).view(), turn);
            expectAllPagesShow(document, upright, job, Renderer::poppler, folder);
            for (const Renderer renderer : {Renderer::mupdf, Renderer::ghostscript}) {
                SCOPED_TRACE(static_cast<int>(renderer));
                expectShows(rendered(document, 3, renderer, folder),
                            expectedSheet(upright, job, 2));
            }
        }
    }
}

TEST(PosterPdf, ProfilesGoAlong) {
    const Folder folder;
    const SheetJob job = smallJob(1, 1);
    const Image photo = test::photo(job.layout.photoWidth, job.layout.photoHeight);
    const std::filesystem::path document = makeDocument(
        folder, encodeImage(photo.view(), TileFormat::jpeg, 100, test::rgbProfile()), job);
    EXPECT_NE(said("pdfimages -list '" + document.string() + "'").text.find(" icc "),
              std::string::npos);
}

TEST(PosterPdf, TheGuidesPictureHasAProfileOfTheSameGreys) {
    const Folder folder;
    const SheetJob job = smallJob(1, 1);
    test::TiffKind grey = test::tiffKindNamed("grey8");
    grey.profile = test::greyProfile(1.0);
    const Bytes file = test::makeTiff(grey, job.layout.photoWidth, job.layout.photoHeight).bytes;
    const std::string list =
        said("pdfimages -list '" + makeDocument(folder, file, job).string() + "'").text;
    EXPECT_TRUE(std::regex_search(list, std::regex("icc +3 +8 +jpeg"))) << list;
    EXPECT_TRUE(std::regex_search(list, std::regex("icc +1 +8 +image"))) << list;
}

TEST(PosterPdf, TheSameInputGivesTheSameBytes) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const Bytes photo = jpegPhoto(job);
    const Bytes first = testing::readFile(makeDocument(folder, photo, job));
    EXPECT_EQ(first, testing::readFile(makeDocument(folder, photo, job)));
}

TEST(PosterPdf, TextsCanBeSearchedWhateverTheNameHolds) {
    const Folder folder;
    SheetJob job = smallJob(1, 1);
    job.photoName = "Grüße € \xE6\xB9\x96 \xF0\x9F\x8C\x8A.jpg"; // the font lacks the last two
    const std::filesystem::path document = makeDocument(folder, jpegPhoto(job), job);
    const std::string text = said("pdftotext '" + document.string() + "' -").text;
    EXPECT_NE(text.find("Grüße €"), std::string::npos) << text;
    EXPECT_NE(text.find("\xE6\xB9\x96"), std::string::npos) << text;
    EXPECT_NE(text.find("\xF0\x9F\x8C\x8A"), std::string::npos) << text;
    EXPECT_NE(text.find("Print at 100 % (actual size), one side only"), std::string::npos);
    EXPECT_NE(said("pdffonts '" + document.string() + "'").text.find("yes yes yes"),
              std::string::npos)
        << "embedded, a subset, with a table of characters";
}

// What begins the name of a font of which only some glyphs are embedded.
std::string subsetTag(const std::filesystem::path& document) {
    std::smatch found;
    const std::string fonts = said("pdffonts '" + document.string() + "'").text;
    EXPECT_TRUE(std::regex_search(fonts, found, std::regex("\n([A-Z]{6})\\+"))) << fonts;
    return found.size() == 2 ? found[1].str() : "";
}

TEST(PosterPdf, OtherGlyphsGiveTheFontAnotherName) {
    const Folder folder;
    SheetJob job = smallJob(1, 1);
    const Bytes photo = jpegPhoto(job);
    std::set<std::string> tags;
    for (const char* name : {"abc.jpg", "QXZ.jpg", "\u00E4.jpg"}) {
        job.photoName = name;
        tags.insert(subsetTag(makeDocument(folder, photo, job)));
    }
    EXPECT_EQ(tags.size(), 3U);
}

TEST(PosterPdf, HasOnlyTheSheetsThatWereChosen) {
    const Folder folder;
    SheetJob job = smallJob(3, 2);
    job.choices.sheets = {2, 6};
    job.choices.guide = false;
    const Bytes photo = jpegPhoto(job);
    const std::filesystem::path document = makeDocument(folder, photo, job);
    const Image whole = test::load(photo);
    expectShows(rendered(document, 1, Renderer::poppler, folder), expectedSheet(whole, job, 2));
    expectShows(rendered(document, 2, Renderer::poppler, folder), expectedSheet(whole, job, 6));
}

TEST(PosterPdf, EachPageCarriesItsOwnPieceOnly) {
    const Folder folder;
    SheetJob job = smallJob(3, 3);
    job.choices.guide = false;
    const std::filesystem::path document = makeDocument(folder, jpegPhoto(job), job);
    const std::string list = said("pdfimages -list '" + document.string() + "'").text;
    int images = 0;
    std::istringstream lines(list);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        int page = 0;
        int number = 0;
        std::string kind;
        int width = 0;
        int height = 0;
        if (words >> page >> number >> kind >> width >> height) {
            ++images;
            EXPECT_EQ(page, images);
            EXPECT_LE(width, 400 + 4 * 16);
            EXPECT_LE(height, 600 + 4 * 16);
        }
    }
    EXPECT_EQ(images, 9) << list;
}

TEST(PosterPdf, NeverTakesThePhotosPlace) {
    const Folder folder;
    const SheetJob job = smallJob(1, 1);
    const Bytes photo = jpegPhoto(job);
    const std::filesystem::path file = folder.file("photo.jpg");
    testing::writeFile(file, photo);
    EXPECT_THROW(writePosterPdf(
                     {file, Turn::none, job, file}, [] {}, [](std::size_t) {}),
                 Error);
    EXPECT_EQ(testing::readFile(file), photo);
}

TEST(PosterPdf, CanceledLeavesWhatWasThere) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const std::filesystem::path file = folder.file("photo.jpg");
    testing::writeFile(file, jpegPhoto(job));
    const std::filesystem::path document = folder.file("poster.pdf");
    testing::writeFile(document, {1, 2, 3});
    std::size_t written = 0;
    EXPECT_THROW(writePosterPdf(
                     {file, Turn::none, job, document},
                     [&] {
                         if (written == 2) {
                             throw PdfCanceled();
                         }
                     },
                     [&](std::size_t sheets) { written = sheets; }),
                 PdfCanceled);
    EXPECT_EQ(testing::readFile(document), (Bytes{1, 2, 3}));
    EXPECT_EQ(folder.count(), 2U);
}

TEST(PosterPdf, ADamagedPhotoLeavesNothing) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    Bytes photo = jpegPhoto(job);
    photo.resize(photo.size() / 2);
    const std::filesystem::path file = folder.file("photo.jpg");
    testing::writeFile(file, photo);
    try {
        writePosterPdf(
            {file, Turn::none, job, folder.file("poster.pdf")}, [] {}, [](std::size_t) {});
        FAIL();
    } catch (const Error& error) { // the reason alone, and not what a library makes of it
        EXPECT_EQ(std::string(error.what()).find("Could not read \"" + file.string() + "\": "), 0U)
            << error.what();
    }
    EXPECT_EQ(folder.count(), 1U);
}

TEST(PosterPdf, RunsOnAThreadOfItsOwn) {
    const Folder folder;
    const SheetJob job = smallJob(2, 2);
    const std::filesystem::path file = folder.file("photo.jpg");
    testing::writeFile(file, jpegPhoto(job));
    PdfRun run({file, Turn::none, job, folder.file("poster.pdf")});
    EXPECT_EQ(run.sheets(), 4U);
    while (!run.waitDone(std::chrono::milliseconds(50))) {
    }
    EXPECT_EQ(run.result(), "");
    EXPECT_EQ(run.written(), 4U);
    expectSoundPdf(folder.file("poster.pdf"));
}

} // namespace
} // namespace veldara
