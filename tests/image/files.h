// Pictures and files for the tests of the imaging component: made in memory, read from memory.
#pragma once

#include "platform/image/image.h"
#include "platform/image/input_format.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

using Bytes = std::vector<std::uint8_t>;

// Smooth colour with some texture, different everywhere; the seed makes another one.
Image photo(int width, int height, unsigned seed = 1);

// Independent bytes.
Bytes noise(std::size_t count, unsigned seed = 1);

ImageHeader headerOf(const Bytes& file);
Image load(const Bytes& file);
std::unique_ptr<RowReader> reader(const Bytes& file); // the bytes must outlive it

// The sentence that loading fails with; empty when it does not fail.
std::string complaintOf(const Bytes& file);

// Same size, same pixels.
testing::AssertionResult same(const PixelView& one, const PixelView& other);
testing::AssertionResult same(const Image& one, const Image& other);

// The greatest difference of a channel, and the mean one.
int distance(const Image& one, const Image& other);
double meanDistance(const Image& one, const Image& other);

// Loads the file cut off after every number of bytes (or every step-th): each must be refused with
// a sentence, or be the whole picture. Returns how many were refused.
std::size_t refusedTruncations(const Bytes& file, std::size_t step = 1);

// Damages bytes at random, one to four at a time: every result must be a refusal or a picture of
// the size that its header says.
void expectSurvivesDamage(const Bytes& file, unsigned rounds);

// A minimal ICC profile with that colour space ("RGB ", "GRAY", "CMYK"), made by the colour engine.
Bytes rgbProfile();
Bytes greyProfile(double gamma = 2.2);

void append(Bytes& bytes, const Bytes& more);
void put16(Bytes& bytes, unsigned value);      // low byte first
void put32(Bytes& bytes, std::uint32_t value); // low byte first

} // namespace veldara::test
