#include "calibration/test_target.h"

namespace veldara {
namespace {

constexpr const char* paragraph = "\r\n\r\n";

} // namespace

Message invalidPrintDimensionsMessage(double minInches, double maxInches,
                                      const std::string& tileSizeArea, NumberStyle style) {
    return criticalMessage(
        "Invalid print dimensions",
        "The custom print size that you currently have entered in not valid.  The "
        "height and width must both be between " +
            trimmed(formatNumber(minInches, "##0.00", style)) + " and " +
            trimmed(formatNumber(maxInches, "##0.00", style)) +
            " inches long.  Please enter valid values in the \"" + tileSizeArea +
            "\" section of the main dialog.");
}

Message testTargetAnnouncement(double heightInches, double widthInches, Units units,
                               NumberStyle style) {
    const bool metric = units == Units::millimetres;
    const char* pattern = metric ? "##0.0" : "##0.00";
    const double factor = metric ? millimetresPerInch : 1.0;
    const std::string unit = metric ? "mm" : "inch";
    const std::string stripe = metric ? "1.6 mm" : "1/16 inch";
    const auto shown = [&](double inches) {
        return trimmed(formatNumber(inches * factor, pattern, style)) + " " + unit;
    };
    Message message;
    message.title = "Create Test Target";
    message.buttons = MessageButtons::okCancel;
    message.text = "A " + shown(heightInches) + " high x " + shown(widthInches) +
                   " wide test image will now be created.  The target will have 4 colored stripes "
                   "printed around each edge.  Each stripe is " +
                   stripe + " wide." + paragraph +
                   "In order to to test how much your printer clips off of each edge, please do "
                   "the following: " +
                   paragraph + "(1) When prompted, save the image to your hard drive" + paragraph +
                   "(2) Print the image on your printer" + paragraph +
                   "(3) Count how many of the 4 colored stripes are visible on each edge of your "
                   "print and input that information in the dialog box below here." +
                   paragraph + "Click OK to continue or cancel to quit";
    return message;
}

Message testTargetFailedMessage(const std::string& reason) {
    return criticalMessage("Error", "Error occurred while creating test image - " + reason);
}

Message testTargetCanceledMessage() {
    return criticalMessage("canceled", "Test Target Creation canceled");
}

Message testTargetFileTypeMessage() {
    return criticalMessage("Invalid file type",
                           "Invalid image filename.  Must save image as bmp, tif or jpg file");
}

Message testTargetSaveFailedMessage(const std::string& reason) {
    Message message;
    message.text = "Error occurred while saving image to disk - " + reason;
    return message;
}

Message testTargetDoneMessage(const std::string& fileName) {
    Message message;
    message.title = "Test Image Creation Completed";
    message.icon = MessageIcon::information;
    message.text =
        std::string("Image successfully saved to disk.") + paragraph +
        "Next you need to:" + paragraph + "(1) Print this image (" + fileName +
        ") using the same printer, paper and printer settings that you will use when printing "
        "your poster images." +
        paragraph +
        "(2) Count the number of visible stripes along each edge of the resulting test print." +
        paragraph +
        "(3) Make sure that you currently have selected the Edge Calibration Profile which you "
        "would like to modify." +
        paragraph +
        "(4) Using the four dropdown controls located below here, indicate how many stripes are "
        "visible at each edge of your print (this tells the software how much your printer clips "
        "off of each edge of your prints).";
    return message;
}

} // namespace veldara
