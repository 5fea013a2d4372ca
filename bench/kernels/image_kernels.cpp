// What is done to a photo's pixels, one kernel at a time, in bytes of RGB pixels per second; memcpy
// of the same bytes stands beside them as the measure of the machine.
#include "platform/image/codec.h"
#include "platform/image/operations.h"
#include "platform/image/picture_bytes.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

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

const std::vector<std::uint8_t>& encodedPhoto(FileType type) {
    static const std::vector<std::uint8_t> jpeg =
        encodeImage(photo().view(), FileType::jpeg, 300, {});
    static const std::vector<std::uint8_t> tiff =
        encodeImage(photo().view(), FileType::tiff, 300, {});
    static const std::vector<std::uint8_t> bmp =
        encodeImage(photo().view(), FileType::bmp, 300, {});
    return type == FileType::jpeg ? jpeg : type == FileType::tiff ? tiff : bmp;
}

FileType typeOf(const benchmark::State& state) {
    return static_cast<FileType>(state.range(0));
}

void countPhotoBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(photo().byteCount()));
}

void memcpyOfThePhoto(benchmark::State& state) {
    Image copy = Image::filled(photoWidth, photoHeight, 0, 0, 0);
    for (auto step : state) {
        std::memcpy(copy.row(0), photo().row(0), photo().byteCount());
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
        for (int i = 0; i < 600; ++i) {
            PixelView tile = photo().view().cut(i % 25 * 240, i / 25 * 160, 240, 160);
            benchmark::DoNotOptimize(tile);
        }
    }
    state.SetItemsProcessed(state.iterations() * 600);
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
    ->Arg(static_cast<int>(FileType::jpeg))
    ->Arg(static_cast<int>(FileType::tiff))
    ->Arg(static_cast<int>(FileType::bmp))
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
    ->Arg(static_cast<int>(FileType::jpeg))
    ->Arg(static_cast<int>(FileType::tiff))
    ->Arg(static_cast<int>(FileType::bmp))
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
    ->Arg(static_cast<int>(FileType::jpeg))
    ->Arg(static_cast<int>(FileType::tiff))
    ->Arg(static_cast<int>(FileType::bmp))
    ->ArgName("type")
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
