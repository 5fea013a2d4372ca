#include "platform/system_platform.h"

#include "platform/system_adaptors.h"

namespace veldara {

SystemPlatform::SystemPlatform() : adaptors_(adaptorsOfThisSystem()) {}
SystemPlatform::~SystemPlatform() = default;

Registry& SystemPlatform::registry() {
    return *adaptors_->registry;
}
FileSystem& SystemPlatform::fileSystem() {
    return *adaptors_->fileSystem;
}
SpecialFolders& SystemPlatform::specialFolders() {
    return *adaptors_->specialFolders;
}
Drives& SystemPlatform::drives() {
    return *adaptors_->drives;
}
Launcher& SystemPlatform::launcher() {
    return *adaptors_->launcher;
}
Clock& SystemPlatform::clock() {
    return *adaptors_->clock;
}
NumberStyle SystemPlatform::numberStyle() const {
    return adaptors_->numberStyle;
}
std::string SystemPlatform::profileFolder() const {
    return adaptors_->profileFolder;
}
std::string SystemPlatform::helpFolder() const {
    return adaptors_->helpFolder;
}
std::string SystemPlatform::helpFileName() const {
    return adaptors_->helpFileName;
}

Platform SystemPlatform::with(Dialogs& dialogs, EventPump& eventPump, PrintSystem& printing) {
    return {registry(),      fileSystem(), specialFolders(), drives(), dialogs,
            launcher(),      eventPump,    clock(),          printing, numberStyle(),
            profileFolder(), helpFolder(), helpFileName()};
}

} // namespace veldara
