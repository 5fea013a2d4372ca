// Cutting JPEG files in memory, and the comparison of what comes out with the whole photo.
#pragma once

#include "image/jpeg_files.h"
#include "sheets/jpeg_cutter.h"
#include "sheets/rectangle_grid.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

// A cutter of that file; the bytes must outlive it.
std::unique_ptr<JpegCutter> cutterOf(const Bytes& file);

std::vector<JpegPiece> cutAll(const Bytes& file, const std::vector<PixelRectangle>& wanted,
                              int workers = 2);

// The reason that cutting fails with; empty when it does not fail.
std::string cuttingComplaint(const Bytes& file, const std::vector<PixelRectangle>& wanted);

// The wanted rectangle of the piece decodes to the same samples as in the whole photo.
testing::AssertionResult sameSamples(const Decoded& whole, const JpegPiece& piece,
                                     const PixelRectangle& wanted);

// Cuts the file, and looks at every piece: samples, place, size.
void expectExact(const Bytes& file, const std::vector<PixelRectangle>& wanted, int workers = 2);

} // namespace veldara::test
