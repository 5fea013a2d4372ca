// The JPEG cutter by itself: makes photos of any size without holding them, and cuts them.
//
//     cut_jpeg make WIDTH HEIGHT FILE [progressive]
//     cut_jpeg cut FILE COLUMNS ROWS [WORKERS]
//
// Cutting prints one line: seconds, pieces, their bytes, their share of the photo's bytes.
#include "platform/error.h"
#include "platform/image/byte_source.h"
#include "sheets/jpeg_cutter.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include <jpeglib.h>

namespace {

using namespace veldara;

// A lattice of random values, smoothly joined: one such layer has detail of one size.
class Layer {
  public:
    Layer(int width, double cell, double weight, unsigned seed)
        : cell_(cell), weight_(weight), seed_(seed),
          columns_(static_cast<std::size_t>(width / cell) + 2) {}

    // Adds the layer's row y to a row of colour samples.
    void addTo(std::vector<float>& row, int y) {
        const double at = y / cell_;
        const auto line = static_cast<std::uint32_t>(at);
        const auto down = static_cast<float>(at - line);
        std::vector<float> lattice(3 * columns_);
        for (std::size_t i = 0; i < lattice.size(); ++i) {
            lattice[i] = (1 - down) * value(i, line) + down * value(i, line + 1);
        }
        for (std::size_t x = 0; x < row.size() / 3; ++x) {
            const double column = static_cast<double>(x) / cell_;
            const auto left = static_cast<std::size_t>(column);
            const auto across = static_cast<float>(column - static_cast<double>(left));
            for (std::size_t c = 0; c < 3; ++c) {
                row[3 * x + c] +=
                    (1 - across) * lattice[3 * left + c] + across * lattice[3 * left + 3 + c];
            }
        }
    }

  private:
    float value(std::size_t column, std::uint32_t line) const {
        std::uint32_t hash =
            static_cast<std::uint32_t>(column) * 2654435761U ^ (line + seed_) * 2246822519U;
        hash = (hash ^ hash >> 15U) * 3266489917U;
        hash ^= hash >> 13U;
        return static_cast<float>(weight_ * ((hash & 255U) - 127.5));
    }

    double cell_;
    double weight_;
    std::uint32_t seed_;
    std::size_t columns_;
};

int make(int width, int height, const std::string& name, bool progressive) {
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (file == nullptr) {
        std::cerr << "cannot write " << name << '\n';
        return 1;
    }
    jpeg_compress_struct state{};
    jpeg_error_mgr errors{};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    jpeg_stdio_dest(&state, file);
    state.image_width = static_cast<JDIMENSION>(width);
    state.image_height = static_cast<JDIMENSION>(height);
    state.input_components = 3;
    state.in_color_space = JCS_RGB;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, 92, TRUE);
    if (progressive) {
        jpeg_simple_progression(&state);
    }
    jpeg_start_compress(&state, TRUE);
    std::vector<Layer> layers = {{width, 1256, 0.7, 1},
                                 {width, 251, 0.25, 2},
                                 {width, 37, 0.2, 3},
                                 {width, 6.3, 0.08, 4},
                                 {width, 2, 0.05, 5}};
    std::vector<float> values(3 * static_cast<std::size_t>(width));
    std::vector<JSAMPLE> samples(values.size());
    for (int y = 0; y < height; ++y) {
        values.assign(values.size(), 127.5F);
        for (Layer& layer : layers) {
            layer.addTo(values, y);
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            samples[i] = static_cast<JSAMPLE>(std::fmin(std::fmax(values[i], 0.0F), 255.0F));
        }
        JSAMPROW row = samples.data();
        jpeg_write_scanlines(&state, &row, 1);
    }
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    return std::fclose(file) == 0 ? 0 : 1;
}

std::vector<PixelRectangle> gridOf(const JpegFacts& photo, int columns, int rows) {
    std::vector<PixelRectangle> sheets;
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i) {
            const int left = static_cast<int>(std::int64_t{photo.width} * i / columns);
            const int top = static_cast<int>(std::int64_t{photo.height} * j / rows);
            const int right = static_cast<int>(std::int64_t{photo.width} * (i + 1) / columns);
            const int bottom = static_cast<int>(std::int64_t{photo.height} * (j + 1) / rows);
            sheets.push_back({left, top, right - left, bottom - top});
        }
    }
    return sheets;
}

int cut(const std::string& name, int columns, int rows, int workers) {
    const auto begin = std::chrono::steady_clock::now();
    JpegCutter cutter(openFileBytes(name));
    const std::vector<PixelRectangle> sheets = gridOf(cutter.facts(), columns, rows);
    cutter.start(sheets, workers);
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        bytes += cutter.next().bytes.size();
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    const auto whole = static_cast<double>(std::filesystem::file_size(name));
    std::printf("%.3f s, %zu pieces, %llu bytes, %.4f of the photo\n", time.count(), sheets.size(),
                static_cast<unsigned long long>(bytes), static_cast<double>(bytes) / whole);
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        if (words.size() >= 4 && words[0] == "make") {
            return make(std::stoi(words[1]), std::stoi(words[2]), words[3], words.size() > 4);
        }
        if (words.size() >= 4 && words[0] == "cut") {
            return cut(words[1], std::stoi(words[2]), std::stoi(words[3]),
                       words.size() > 4 ? std::stoi(words[4]) : 0);
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    std::cerr << "usage: cut_jpeg make WIDTH HEIGHT FILE [progressive]\n"
                 "       cut_jpeg cut FILE COLUMNS ROWS [WORKERS]\n";
    return 2;
}
