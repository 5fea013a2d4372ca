// Small pictures for choosing a poster: the sheets on the photo, and the poster on a wall beside a
// person and a sofa.
#pragma once

#include "layout/poster_choice.h"
#include "platform/image/image.h"

#include <array>
#include <cstdint>
#include <vector>

namespace veldara {

// A height that everybody has a feeling for.
constexpr double personInches = 175 / 2.54;

// The photo at most that large, its shape kept. An empty photo gives a grey one of 3 to 2.
Image choiceThumbnail(const PixelView& photo, int width, int height);

// The thumbnail with the choice's sheets drawn on it; what is cut off is dimmed. The layout is that
// of the choice, of the photo which the thumbnail shows.
Image drawSheets(const PixelView& thumbnail, const PosterLayout& layout);

// Several pictures beside each other in rows, each centred in a cell of that size and numbered from
// 1; the chosen one (from 0; -1: none) is framed. The numbers can be read on a light and on a dark
// ground.
Image drawGallery(const std::vector<Image>& pictures, int chosen, int columns, int cellWidth,
                  int cellHeight, const std::array<std::uint8_t, 3>& ground);

// Where a point of the gallery lies: the picture's index, or -1.
int galleryIndexAt(int x, int y, int count, int columns, int cellWidth, int cellHeight);

// A wall with the poster at its size in inches, a person of 1.75 m and a sofa of 2 m before it, all
// to one scale. `poster` is what the poster shows.
Image drawRoom(const PixelView& poster, double posterWidth, double posterHeight, int width,
               int height);

} // namespace veldara
