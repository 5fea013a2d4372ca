// What is told of a run that writes tile files: questions, refusals, failures, success.
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

// Of the windows that go with it.
constexpr const char* savingText = "Saving Images Now";
constexpr const char* savedTitle = "Images Saved Successfully";
constexpr const char* savedText =
    "You poster images were saved successfully and are now ready for you to print.  They are "
    "located in the following folder:";
Message invalidDriveMessage();

} // namespace veldara
