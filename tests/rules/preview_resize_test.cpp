// The crop's place in a preview of another size.
#include "layout/preview_resize.h"

#include <gtest/gtest.h>

namespace veldara::test {
namespace {

TEST(PreviewResize, CropGrowsAndShrinksWithThePreview) {
    const PreviewCrop crop{75, 50, 224, 149};
    EXPECT_EQ(rescaledCrop(crop, 0.1, 0.2), (PreviewCrop{150, 100, 448, 298}));
    EXPECT_EQ(rescaledCrop(crop, 0.2, 0.1), (PreviewCrop{38, 25, 112, 74}));
}

TEST(PreviewResize, SameScaleChangesNothing) {
    const PreviewCrop crop{1, 2, 3, 4};
    EXPECT_EQ(rescaledCrop(crop, 0.3, 0.3), crop);
}

TEST(PreviewResize, CropOfNoPreviewIsLeftAlone) {
    const PreviewCrop crop{1, 2, 3, 4};
    EXPECT_EQ(rescaledCrop(crop, 0.0, 0.3), crop);
}

} // namespace
} // namespace veldara::test
