// Renders the sample photograph, a mountain lake at sunrise, into a JPEG file. The same program
// gives the same picture every time; nothing in it is taken from a photograph.
#include "pines.h"
#include "view.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include <jpeglib.h>

namespace veldara::sample {

namespace {

constexpr int fullWidth = 4608;
constexpr int fullHeight = 3072;

// Each finished pixel is the mean of a square of painted ones, so that edges are smooth.
Canvas reduced(const Canvas& canvas, int times) {
    if (times == 1)
        return canvas;
    Canvas result(canvas.width() / times, canvas.height() / times);
    const float share = 1.0f / static_cast<float>(times * times);
    forEachParallel(result.height(), [&](int y) {
        for (int x = 0; x < result.width(); ++x) {
            Vec3 sum{};
            for (int dy = 0; dy < times; ++dy)
                for (int dx = 0; dx < times; ++dx)
                    sum = sum + canvas.at(x * times + dx, y * times + dy);
            result.at(x, y) = sum * share;
        }
    });
    return result;
}

// Film: a soft shoulder for the lights, then the sRGB curve.
float filmed(float light) {
    const float v = light * 0.92f;
    const float shoulder = (v * (2.51f * v + 0.03f)) / (v * (2.43f * v + 0.59f) + 0.14f);
    const float c = clamped(shoulder);
    return c <= 0.0031308f ? 12.92f * c : 1.055f * std::pow(c, 1.0f / 2.4f) - 0.055f;
}

unsigned char quantised(float value, float dither) {
    return static_cast<unsigned char>(std::clamp(value * 255.0f + dither, 0.0f, 255.0f));
}

// The finished row as bytes. A little grain hides the steps of 8 bits in the smooth sky.
std::vector<unsigned char> developedRow(const Canvas& canvas, int y) {
    std::vector<unsigned char> row;
    row.reserve(static_cast<std::size_t>(canvas.width()) * 3);
    const float v = static_cast<float>(y) / static_cast<float>(canvas.height()) - 0.5f;
    for (int x = 0; x < canvas.width(); ++x) {
        const float u = static_cast<float>(x) / static_cast<float>(canvas.width()) - 0.5f;
        const float vignette = 1.0f - 0.30f * (u * u + v * v);
        const Vec3 light = canvas.at(x, y) * vignette;
        const float grain = latticeRandom(x, y, 141);
        row.push_back(quantised(filmed(light.x), grain));
        row.push_back(quantised(filmed(light.y), grain));
        row.push_back(quantised(filmed(light.z), grain));
    }
    return row;
}

std::vector<unsigned char> encodeJpeg(const Canvas& canvas, int quality) {
    jpeg_compress_struct compressor{};
    jpeg_error_mgr errors{};
    compressor.err = jpeg_std_error(&errors);
    jpeg_create_compress(&compressor);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&compressor, &memory, &size);
    compressor.image_width = static_cast<JDIMENSION>(canvas.width());
    compressor.image_height = static_cast<JDIMENSION>(canvas.height());
    compressor.input_components = 3;
    compressor.in_color_space = JCS_RGB;
    jpeg_set_defaults(&compressor);
    jpeg_set_quality(&compressor, quality, TRUE);
    compressor.optimize_coding = TRUE;
    compressor.density_unit = 1; // dots per inch
    compressor.X_density = 300;
    compressor.Y_density = 300;
    jpeg_start_compress(&compressor, TRUE);
    for (int y = 0; y < canvas.height(); ++y) {
        std::vector<unsigned char> row = developedRow(canvas, y);
        std::array<JSAMPROW, 1> rows{row.data()};
        jpeg_write_scanlines(&compressor, rows.data(), 1);
    }
    jpeg_finish_compress(&compressor);
    std::vector<unsigned char> bytes(memory, memory + size);
    jpeg_destroy_compress(&compressor);
    std::free(memory);
    return bytes;
}

int run(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::cerr << "usage: render-sample FILE.jpg [REDUCTION [SAMPLES [QUALITY]]]\n";
        return 2;
    }
    const auto number = [&](int index, int otherwise) {
        return index < argumentCount ? std::stoi(arguments[index]) : otherwise;
    };
    const int reduction = std::clamp(number(2, 1), 1, 32);
    const int samples = std::clamp(number(3, 2), 1, 4);
    const int quality = std::clamp(number(4, 90), 1, 100);
    const SunShadow shadow;
    Canvas canvas =
        paintView(fullWidth / reduction * samples, fullHeight / reduction * samples, shadow);
    paintPines(canvas);
    const std::vector<unsigned char> bytes = encodeJpeg(reduced(canvas, samples), quality);
    std::ofstream file(arguments[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error(std::string("cannot write ") + arguments[1]);
    return 0;
}

} // namespace

} // namespace veldara::sample

int main(int argumentCount, char** arguments) {
    try {
        return veldara::sample::run(argumentCount, arguments);
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
}
