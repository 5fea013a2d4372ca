#include "output/save_messages.h"

namespace veldara {
namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

} // namespace

Message invalidPhotoNameMessage() {
    return criticalMessage("Problem", "Invalid file chosen.  Can not continue.");
}

Message invalidPhotoTypeMessage() {
    return criticalMessage("Error", "Unable to save - invalid image file type");
}

Message tileTableFailedMessage() {
    return criticalMessage("Error", "Error calculating tile coordinates");
}

Message fileSystemObjectFailedMessage() {
    return criticalMessage("Error", "Error creating FileSystemObject - Windows component missing");
}

Message folderExistsQuestion(const std::string& folder) {
    return {"The folder " + quoted(folder) +
                " already exists.  Some files could be overwritten.  Do you want to continue?",
            "Folder Exists", MessageIcon::none, MessageButtons::yesNoCancel, Answer::no};
}

Message folderNotCreatedMessage(const std::string& folder) {
    return criticalMessage("Error",
                           "Could not create the folder " + quoted(folder) +
                               " to save your poster tile images into.  Possible causes of this "
                               "are that you do not have access rights to the drive that you "
                               "selected, the disk drive is full, or that you provided an "
                               "invalid folder name.  Can not continue.");
}

Message imageObjectFailedMessage() {
    return criticalMessage("Error", "Error creating imgX object");
}

Message invalidTileSizesMessage() {
    return criticalMessage("Error", "Can not continue - Invalid tile print sizes entered");
}

Message tileNameProblemMessage(const std::string& problem) {
    return criticalMessage("Error", "Problem: " + problem);
}

Message compensationFailedMessage() {
    return criticalMessage("Error", "Error applying printer edge clipping compensation");
}

Message outOfDiskSpaceMessage() {
    return criticalMessage("Out of disk space",
                           "Not enough disk space on selected drive.  Can not save images.");
}

Message tileNotSavedMessage() {
    return criticalMessage("Error",
                           "Error saving tile image file to disk.  Possible cause is that the "
                           "disk is full.  Can not continue.");
}

Message canceledMessage() {
    return criticalMessage("Canceled", "Canceled by user");
}

Message invalidDriveMessage() {
    return criticalMessage("Invalid Drive", "The drive you chose could not be accessed.");
}

std::string refusedCharacterText(char separator) {
    return separator == '/' ? "A name cannot contain \"/\"."
                            : "A name cannot contain any of these characters: \\ / : * ? \" < > |";
}

} // namespace veldara
