#include "sheets/documents.h"

#include "support/said.h"
#include "support/sound_pdf.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace veldara::testing {

Folder::Folder() {
    static std::atomic<int> number{0};
    path_ = std::filesystem::temp_directory_path() /
            ("veldara_sheets_" + std::to_string(getpid()) + "_" + std::to_string(++number));
    std::filesystem::create_directories(path_);
}

Folder::~Folder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::size_t Folder::count() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
}

void writeFile(const std::filesystem::path& file, const test::Bytes& bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

test::Bytes readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

SheetJob smallJob(int sheetsWide, int sheetsHigh, bool tilesTurned) {
    SheetJob job;
    job.paperWidth = 360;
    job.paperHeight = 504;
    job.margins.fill(36);
    job.layout.tilesWide = sheetsWide;
    job.layout.tilesHigh = sheetsHigh;
    job.layout.tilesTurned = tilesTurned;
    job.layout.tileWidthInches = 4;
    job.layout.tileHeightInches = 6;
    job.layout.photoWidth = sheetsWide * (tilesTurned ? 600 : 400);
    job.layout.photoHeight = sheetsHigh * (tilesTurned ? 400 : 600);
    job.photoName = "lake.jpg";
    job.paperName = "Photo 5\" x 7\"";
    job.posterSize = "8 x 12 inches";
    return job;
}

std::filesystem::path makeDocument(const Folder& folder, const test::Bytes& photo,
                                   const SheetJob& job, Turn rotation) {
    const std::filesystem::path file = folder.file("photo");
    writeFile(file, photo);
    const PosterPdf poster{file, rotation, job, folder.file("poster.pdf")};
    writePosterPdf(
        poster, [] {}, [](std::size_t) {});
    test::expectSoundPdf(poster.file);
    return poster.file;
}

namespace {

Image readPixmap(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string kind;
    std::array<int, 3> numbers{};
    in >> kind;
    for (int& number : numbers) {
        while ((in >> std::ws).peek() == '#') {
            std::string comment;
            std::getline(in, comment);
        }
        in >> number;
    }
    in.get();
    if (kind != "P6" || !in) {
        return {};
    }
    Image image(numbers[0], numbers[1]);
    in.read(reinterpret_cast<char*>(image.row(0)), static_cast<std::streamsize>(image.byteCount()));
    return image;
}

} // namespace

Image rendered(const std::filesystem::path& document, int page, Renderer renderer,
               const Folder& folder) {
    const std::string number = std::to_string(page);
    const std::string source = " '" + document.string() + "' ";
    const std::filesystem::path target = folder.file("page" + number + ".ppm");
    test::Said done;
    switch (renderer) {
    case Renderer::poppler:
        done = test::said("pdftoppm -r 100 -singlefile -f " + number + " -l " + number + source +
                          "'" + folder.file("page" + number).string() + "'");
        break;
    case Renderer::mupdf:
        done = test::said("mutool draw -q -r 100 -c rgb -o '" + target.string() + "'" + source +
                          number);
        break;
    case Renderer::ghostscript:
        done =
            test::said("gs -q -dSAFER -dBATCH -dNOPAUSE -dGraphicsAlphaBits=4 -dTextAlphaBits=4 "
                       "-sDEVICE=ppmraw -r100 -dFirstPage=" +
                       number + " -dLastPage=" + number + " -o '" + target.string() + "'" + source);
        break;
    }
    EXPECT_TRUE(done.ok) << done.text;
    return readPixmap(target);
}

double meanDifference(const PixelView& one, const PixelView& other, int right, int down) {
    constexpr int border = 2;
    double sum = 0;
    double count = 0;
    for (int y = border; y < one.height() - border; ++y) {
        for (int x = border; x < one.width() - border; ++x) {
            for (int c = 0; c < 3; ++c, ++count) {
                sum += std::abs(one.row(y)[3 * x + c] - other.row(y + down)[3 * (x + right) + c]);
            }
        }
    }
    return sum / count;
}

} // namespace veldara::testing
