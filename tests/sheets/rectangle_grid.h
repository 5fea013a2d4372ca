// Rectangles of a grid over a photo, as sheets want them of the cutter.
#pragma once

#include "sheets/jpeg_geometry.h"

#include <algorithm>
#include <vector>

namespace veldara::test {

// Row by row; each reaches overlap pixels into its neighbours at the right and below.
inline std::vector<PixelRectangle> sheetsOf(int width, int height, int columns, int rows,
                                            int overlap) {
    std::vector<PixelRectangle> sheets;
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i) {
            const int left = width * i / columns;
            const int top = height * j / rows;
            const int right = std::min(width, width * (i + 1) / columns + overlap);
            const int bottom = std::min(height, height * (j + 1) / rows + overlap);
            sheets.push_back({left, top, right - left, bottom - top});
        }
    }
    return sheets;
}

} // namespace veldara::test
