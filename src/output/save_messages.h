// Messages of a run that writes tile files: questions, refusals, failures, success.
#pragma once

#include "platform/dialogs.h"

#include <string>

namespace veldara {

// Before the save dialog opens.
Message invalidPhotoNameMessage();
Message invalidPhotoTypeMessage();

// In the order in which a run may show them.
Message tileTableFailedMessage();
Message fileSystemObjectFailedMessage();
Message folderExistsQuestion(const std::string& folder);
Message folderNotCreatedMessage(const std::string& folder);
Message imageObjectFailedMessage();
Message invalidTileSizesMessage();
Message tileNameProblemMessage(const std::string& problem);
Message compensationFailedMessage();
Message outOfDiskSpaceMessage();
Message tileNotSavedMessage();
Message canceledMessage();

// Texts of the progress and result windows.
constexpr const char* savingText = "Saving Images Now";
constexpr const char* documentTitle = "PDF Saved Successfully";
constexpr const char* documentText =
    "Your poster was saved as one PDF.  Print it at 100 % (actual size), one side only.  Click on "
    "the file name to open it.";
constexpr const char* savedTitle = "Images Saved Successfully";
constexpr const char* savedText =
    "You poster images were saved successfully and are now ready for you to print.  They are "
    "located in the following folder:";
Message invalidDriveMessage();

// Shown at a name box that was given a character which no name can have.
std::string refusedCharacterText(char separator);

} // namespace veldara
