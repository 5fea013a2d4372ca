#include "app/main_messages.h"

#include "layout/photo_limits.h"

namespace veldara {

namespace {

Message unusablePhoto(const std::string& text) {
    return criticalMessage("Invalid Image File Selected", text);
}

} // namespace

Message driveNotAccessibleMessage() {
    return criticalMessage("Invalid Drive", "The drive you chose could not be accessed.");
}

Message folderNotKnownMessage(const std::string& folderName) {
    return criticalMessage("Problem", "Could not determine the location of the " + folderName +
                                          " folder.  Please navigate there "
                                          "manually using the folder listbox below here.");
}

Message photoTooSmallMessage() {
    return unusablePhoto(photoTooSmallText());
}

Message photoNameMessage(const std::string& fileName) {
    return unusablePhoto("The file \"" + fileName +
                         "\" can not be used: the names of image files end in .jpg, .tif or .bmp.");
}

Message photoNotListedMessage(const std::string& fileName) {
    Message message = photoNameMessage(fileName);
    message.text += "  \"Open Photo...\" in the File menu can take it.";
    return message;
}

Message photoMemoryMessage(const std::string& fileName) {
    return unusablePhoto("The file \"" + fileName +
                         "\" can not be loaded: there is not enough memory for it.");
}

Message photoUnreadableMessage(const std::string& reason) {
    return unusablePhoto(reason);
}

std::string photoCaption(const std::string& fileName, int width, int height) {
    return fileName + ", " + std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

Message invalidTileConfigurationMessage() {
    return criticalMessage("Invalid", "Invalid tile configuration");
}

Message turnMemoryMessage() {
    return errorMessage("There is not enough memory to turn the photo.");
}

Message previewMemoryMessage() {
    return errorMessage("There is not enough memory for the full screen preview.");
}

Message edgeCalibrationIntroduction() {
    return {"This option "
            "compensates for the amount that "
            "your printer clips off from the top, bottom, left and right edges "
            "of your image while printing.  "
            "This edge clipping primarily happens with borderless printing.  "
            "\r\n"
            "Click on the Edit button to the right of the Edge Calibration dropdown control to "
            "create a customized Edge Calibration Profile for your printer "
            "(see the help file for more details about this).",
            "Edge Calibration Introduction", MessageIcon::information};
}

Message noImageSelectedMessage() {
    return {"No image selected.  Please select an image "
            "from the file listbox",
            "No Image Selected", MessageIcon::exclamation};
}

Message invalidPosterMessage() {
    return criticalMessage("Can not continue",
                           "Invalid image/tile information.  Can not continue.");
}

Message helpMissingMessage() {
    return criticalMessage("Can not find help file",
                           "The help file (omra.chm) is missing.  Please reinstall this software.");
}

Message errorMessage(const std::string& sentence) {
    return criticalMessage("Error", sentence);
}

} // namespace veldara
