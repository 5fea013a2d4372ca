#include "printing/test_image_sheet.h"

namespace veldara {

SheetJob testImageJob(const SheetJob& sheet, int width, int height) {
    SheetJob job = sheet;
    job.trims = {}; // what the printer cuts off is what the image shows
    job.choices = {};
    job.choices.marks = SheetMarks::none;
    job.choices.labels = false;
    job.choices.guide = false;
    job.layout = {};
    job.layout.tilesWide = 1;
    job.layout.tilesHigh = 1;
    job.layout.photoWidth = width;
    job.layout.photoHeight = height;
    // Of the image's own shape, so that the crop leaves nothing of it out.
    job.layout.tileWidthInches = width;
    job.layout.tileHeightInches = height;
    return job;
}

} // namespace veldara
