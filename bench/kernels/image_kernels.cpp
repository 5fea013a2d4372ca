// What is done to a photo's pixels, one kernel at a time, in bytes of RGB pixels per second, and as
// a share of what memcpy does with the same photo on the same machine.
#include "choice/choice_texts.h"
#include "layout/poster_choice.h"
#include "layout/preview_grid.h"
#include "output/edge_compensation.h"
#include "paper/paper_catalogue.h"
#include "platform/image/codec.h"
#include "platform/image/picture_bytes.h"
#include "platform/image/resample.h"
#include "platform/image/turn.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>
#include <tiffio.h>

namespace {

using namespace veldara;

constexpr int photoWidth = 6000;
constexpr int photoHeight = 4000;

// Clouds of several sizes with some grain: compresses about like a photograph.
const Image& photo() {
    static const Image picture = [] {
        Image image(photoWidth, photoHeight);
        std::mt19937 random(1);
        for (int y = 0; y < photoHeight; ++y) {
            std::uint8_t* row = image.row(y);
            for (int x = 0; x < photoWidth; ++x) {
                const double wide = std::sin(x * 0.003) * std::cos(y * 0.002);
                const double fine = std::sin(x * 0.11 + 3 * wide) * std::cos(y * 0.07);
                const int grain = static_cast<int>(random() % 9) - 4;
                row[3 * x] = static_cast<std::uint8_t>(120 + 70 * wide + 30 * fine + grain);
                row[3 * x + 1] = static_cast<std::uint8_t>(110 + 60 * wide - 20 * fine + grain);
                row[3 * x + 2] = static_cast<std::uint8_t>(140 - 80 * wide + 10 * fine + grain);
            }
        }
        return image;
    }();
    return picture;
}

const std::vector<std::uint8_t>& encodedPhoto(TileFormat type) {
    static const std::vector<std::uint8_t> jpeg =
        encodeImage(photo().view(), TileFormat::jpeg, 300, {});
    static const std::vector<std::uint8_t> tiff =
        encodeImage(photo().view(), TileFormat::tiff, 300, {});
    static const std::vector<std::uint8_t> bmp =
        encodeImage(photo().view(), TileFormat::bmp, 300, {});
    return type == TileFormat::jpeg ? jpeg : type == TileFormat::tiff ? tiff : bmp;
}

TileFormat typeOf(const benchmark::State& state) {
    return static_cast<TileFormat>(state.range(0));
}

// Bytes that memcpy copies in a second: the best of some copies of the photo.
double memcpyRate() {
    static const double rate = [] {
        Image copy = Image::filled(photoWidth, photoHeight, 0, 0, 0);
        double shortest = std::numeric_limits<double>::max();
        for (int i = 0; i < 10; ++i) {
            const auto start = std::chrono::steady_clock::now();
            std::memcpy(copy.row(0), photo().row(0), photo().byteCount());
            benchmark::DoNotOptimize(copy.row(0));
            benchmark::ClobberMemory();
            const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
            shortest = std::min(shortest, time.count());
        }
        return static_cast<double>(photo().byteCount()) / shortest;
    }();
    return rate;
}

// The bytes of the pixels that one iteration deals with.
void countBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    state.counters["of_memcpy"] = benchmark::Counter(static_cast<double>(bytes) / memcpyRate(),
                                                     benchmark::Counter::kIsIterationInvariantRate);
}

void countPhotoBytes(benchmark::State& state) {
    countBytes(state, photo().byteCount());
}

void memcpyOfThePhoto(benchmark::State& state) {
    const Image& source = photo(); // made outside of the loop
    Image copy = Image::filled(photoWidth, photoHeight, 0, 0, 0);
    for (auto step : state) {
        std::memcpy(copy.row(0), source.row(0), source.byteCount());
        benchmark::DoNotOptimize(copy.row(0));
        benchmark::ClobberMemory();
    }
    countPhotoBytes(state);
}
BENCHMARK(memcpyOfThePhoto)->Unit(benchmark::kMillisecond);

void copyIntoANewImage(benchmark::State& state) {
    for (auto step : state) {
        benchmark::DoNotOptimize(Image::copyOf(photo().view()));
    }
    countPhotoBytes(state);
}
BENCHMARK(copyIntoANewImage)->Unit(benchmark::kMillisecond);

void cutTiles(benchmark::State& state) {
    for (auto step : state) {
        for (int i = 0; i < 625; ++i) {
            PixelView tile = photo().view().cut(i % 25 * 240, i / 25 * 160, 240, 160);
            benchmark::DoNotOptimize(tile);
        }
    }
    countPhotoBytes(state);
}
BENCHMARK(cutTiles);

void turn(benchmark::State& state) {
    const auto by = static_cast<Turn>(state.range(0));
    for (auto step : state) {
        benchmark::DoNotOptimize(turned(photo().view(), by));
    }
    countPhotoBytes(state);
}
BENCHMARK(turn)
    ->Arg(static_cast<int>(Turn::clockwise))
    ->Arg(static_cast<int>(Turn::half))
    ->Arg(static_cast<int>(Turn::counterClockwise))
    ->ArgName("turn")
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

// The border of a printer that clips a quarter of an inch off every edge.
void compensate(benchmark::State& state) {
    const EdgeTrims trims = {0.25, 0.25, 0.25, 0.25};
    const PixelView tile = photo().view().cut(0, 0, photoWidth / 3, photoHeight / 2);
    for (auto step : state) {
        benchmark::DoNotOptimize(applyEdgeClipComp(tile, 250, trims));
    }
    countBytes(state, photo().byteCount() / 6);
}
BENCHMARK(compensate)->Unit(benchmark::kMillisecond);

// 25 x 25 tiles on a full-screen preview, whose bytes are counted as a whole.
void drawGrid(benchmark::State& state) {
    Image preview = resampled(photo().view(), 1620, 1080);
    for (auto step : state) {
        drawEvenGrid(preview.mutableView(), 25, 25);
        benchmark::ClobberMemory();
    }
    countBytes(state, preview.byteCount());
}
BENCHMARK(drawGrid)->Unit(benchmark::kMillisecond);

void resample(benchmark::State& state) {
    const auto width = static_cast<int>(state.range(0));
    const int height = width * photoHeight / photoWidth;
    for (auto step : state) {
        benchmark::DoNotOptimize(resampled(photo().view(), width, height));
    }
    countPhotoBytes(state);
}
BENCHMARK(resample)
    ->Arg(800)
    ->Arg(1920)
    ->Arg(5999)
    ->ArgName("width")
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

void decode(benchmark::State& state) {
    const std::vector<std::uint8_t>& file = encodedPhoto(typeOf(state));
    for (auto step : state) {
        benchmark::DoNotOptimize(loadImage(std::make_unique<MemoryBytes>(file), "photo"));
    }
    countPhotoBytes(state);
}
BENCHMARK(decode)
    ->Arg(static_cast<int>(TileFormat::jpeg))
    ->Arg(static_cast<int>(TileFormat::tiff))
    ->Arg(static_cast<int>(TileFormat::bmp))
    ->ArgName("type")
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

// One ninth of the photo, in its middle.
void decodeRowsOfTheMiddle(benchmark::State& state) {
    const std::vector<std::uint8_t>& file = encodedPhoto(typeOf(state));
    Image band(photoWidth / 3, photoHeight / 3);
    for (auto step : state) {
        const auto reader = openRowReader(std::make_unique<MemoryBytes>(file), "photo");
        reader->wantColumns(photoWidth / 3, photoWidth / 3);
        reader->skipRows(photoHeight / 3);
        reader->readRows(band.mutableView());
    }
    countPhotoBytes(state);
}
BENCHMARK(decodeRowsOfTheMiddle)
    ->Arg(static_cast<int>(TileFormat::jpeg))
    ->Arg(static_cast<int>(TileFormat::tiff))
    ->Arg(static_cast<int>(TileFormat::bmp))
    ->ArgName("type")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void encode(benchmark::State& state) {
    for (auto step : state) {
        benchmark::DoNotOptimize(encodeImage(photo().view(), typeOf(state), 300, {}));
    }
    countPhotoBytes(state);
}
BENCHMARK(encode)
    ->Arg(static_cast<int>(TileFormat::jpeg))
    ->Arg(static_cast<int>(TileFormat::tiff))
    ->Arg(static_cast<int>(TileFormat::bmp))
    ->ArgName("type")
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

// A file in memory that libtiff writes to.
struct MemoryFile {
    std::vector<std::uint8_t> bytes;
    std::size_t position = 0;

    static MemoryFile& of(thandle_t handle) { return *static_cast<MemoryFile*>(handle); }

    static tmsize_t read(thandle_t handle, void* target, tmsize_t count) {
        MemoryFile& file = of(handle);
        const std::size_t left = file.bytes.size() - std::min(file.position, file.bytes.size());
        const std::size_t taken = std::min(left, static_cast<std::size_t>(count));
        std::memcpy(target, file.bytes.data() + file.position, taken);
        file.position += taken;
        return static_cast<tmsize_t>(taken);
    }

    static tmsize_t write(thandle_t handle, void* source, tmsize_t count) {
        MemoryFile& file = of(handle);
        const std::size_t end = file.position + static_cast<std::size_t>(count);
        file.bytes.resize(std::max(file.bytes.size(), end));
        std::memcpy(file.bytes.data() + file.position, source, static_cast<std::size_t>(count));
        file.position = end;
        return count;
    }

    static toff_t seek(thandle_t handle, toff_t offset, int from) {
        MemoryFile& file = of(handle);
        const std::size_t start = from == SEEK_SET   ? 0
                                  : from == SEEK_CUR ? file.position
                                                     : file.bytes.size();
        file.position = start + static_cast<std::size_t>(offset);
        return file.position;
    }

    static int close(thandle_t) { return 0; }
    static toff_t size(thandle_t handle) { return of(handle).bytes.size(); }
};

// The measure for our TIFF writer: the same photo, compression and predictor by libtiff alone.
void encodeTiffByLibtiff(benchmark::State& state) {
    const PixelView pixels = photo().view();
    for (auto step : state) {
        MemoryFile file;
        TIFF* tiff =
            TIFFClientOpen("memory", "wm", &file, MemoryFile::read, MemoryFile::write,
                           MemoryFile::seek, MemoryFile::close, MemoryFile::size, nullptr, nullptr);
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, pixels.width());
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, pixels.height());
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
        std::vector<std::uint8_t> row(static_cast<std::size_t>(pixels.width()) * 3);
        for (int y = 0; y < pixels.height(); ++y) {
            std::memcpy(row.data(), pixels.row(y), row.size()); // the predictor works in place
            TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y), 0);
        }
        TIFFClose(tiff);
        benchmark::DoNotOptimize(file.bytes.data());
    }
    countPhotoBytes(state);
}
BENCHMARK(encodeTiffByLibtiff)
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

// Every count of tiles on every paper of the units, upright and on its side.
void choosePosterBySize(benchmark::State& state) {
    const Units units = state.range(0) == 0 ? Units::inches : Units::millimetres;
    const std::vector<ChoicePaper> papers =
        offeredPapers(buildPaperTables().catalogue(units), units, std::nullopt);
    ChoiceLimits limits;
    limits.photoWidth = photoWidth;
    limits.photoHeight = photoHeight;
    PosterWish wish;
    wish.width = 39.37;
    for (auto step : state) {
        benchmark::DoNotOptimize(choosePoster(wish, limits, papers));
    }
    state.counters["papers"] = static_cast<double>(papers.size());
}
BENCHMARK(choosePosterBySize)
    ->ArgName("millimetres")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
