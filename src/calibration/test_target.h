// The edge calibration test target: four coloured stripes along every edge of a picture of exactly
// one tile, and the messages shown when one is made.
#pragma once

#include "platform/dialogs.h"
#include "platform/image/image.h"
#include "platform/measures.h"
#include "platform/text/number_text.h"

#include <string>

namespace veldara {

constexpr int testTargetDotsPerInch = 128;
constexpr int testStripePixels = 8; // 1/16 inch

// The whole picture with its resolution. Sizes in inches. Throws Error.
Image createTestImage(double heightInches, double widthInches);

// Paints the four frames on a picture; the inner ones last, so that they win where a small picture
// makes them overlap.
void paintTestStripes(const MutablePixelView& pixels);

// The words in the middle, as large as `fraction` of each side allows.
void drawTestImageText(const MutablePixelView& pixels, double fraction = 0.5);

// The size used for the words: the first from 6 up to 200 that does not fit, or 201 when all do.
int testTextSize(int imageWidth, int imageHeight, double fraction);

// The save-file dialog; without a default name it proposes "edge_clipping_test".
SaveFileRequest testTargetSaveRequest(const std::string& defaultName);

// The messages in the order in which they may appear.
Message invalidPrintDimensionsMessage(double minInches, double maxInches,
                                      const std::string& tileSizeArea, NumberStyle style = {});
Message testTargetAnnouncement(double heightInches, double widthInches, Units units,
                               NumberStyle style = {});
Message testTargetFailedMessage(const std::string& reason);
Message testTargetCanceledMessage();
Message testTargetFileTypeMessage();
Message testTargetSaveFailedMessage(const std::string& reason);
Message testTargetDoneMessage(const std::string& fileName);

} // namespace veldara
