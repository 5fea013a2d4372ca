#include "calibration/frmBtm.h"

#include "calibration/profile_file.h"
#include "calibration/profile_list.h"
#include "calibration/profile_messages.h"
#include "controls/scoped_flag.h"
#include "platform/error.h"

#include <algorithm>
#include <optional>

namespace veldara {

frmBtm::frmBtm(Platform& platform, Screen& screen, CalibrationOwner& owner, TestTargetHooks hooks)
    : Window("frmBtm", screen), platform_(platform), owner_(owner), hooks_(std::move(hooks)) {
    fillTexts();
    bindHandlers();
}

std::array<ComboBox*, 4> frmBtm::edgeLists() {
    return {&cmbTopEdge, &cmbRightEdge, &cmbBottomEdge, &cmbLeftEdge};
}

std::array<Label*, 4> frmBtm::edgeDescriptions() {
    return {&lblTopEdgeDesc, &lblRightEdgeDesc, &lblBottomEdgeDesc, &lblLeftEdgeDesc};
}

// Opening and closing

void frmBtm::Open() {
    SetStep1DescUnits();
    initControls();
    showModal();
}

void frmBtm::loadHandler() {
    initControls();
}

void frmBtm::initControls() {
    if (profiles_.empty() && ReadBorderPrefs() < 1) {
        SetDefaultProfiles();
    }
    fillConfigurations(0);
    fillMainDialog();
}

void frmBtm::cmdOk_Click() {
    closeBox();
}

// The dialog stays open while a test target is being made.
void frmBtm::closeBox() {
    if (!working_) {
        hide();
        owner_.UpdateOutputSize();
    }
}

// The profile file

int frmBtm::ReadBorderPrefs() {
    ProfileFileContent content = readProfileFile(platform_.fileSystem, GetProfileFilePath());
    profileFileUnread_ = content.status == profilesUnreadable;
    if (content.status > 0) {
        profiles_ = std::move(content.profiles);
    }
    return content.status;
}

// If the file cannot be written, the old one stays and the profiles still apply until the end.
void frmBtm::WriteBorderPrefs() {
    try {
        const std::unique_ptr<FileSystemObject> files = platform_.fileSystem.createOrSubstitute();
        const std::string path = GetProfileFilePath();
        // Somebody's profiles may be in a file that could not be read: never replaced without a
        // copy.
        if (profileFileUnread_ && files->fileExists(path)) {
            files->keepCopy(path);
        }
        profileFileUnread_ = false;
        const std::unique_ptr<TextWriter> writer = files->createTextFile(path);
        for (const std::string& line : profileLines(profiles_)) {
            writer->writeLine(line);
        }
        writer->close();
    } catch (const Error&) {
        return;
    }
}

void frmBtm::SetDefaultProfiles() {
    profiles_ = builtInProfiles();
}

std::string frmBtm::GetProfileFilePath() const {
    return profileFilePath(owner_.applicationFolder(), platform_.profileFolder,
                           platform_.drives.separator());
}

// Queries of the main window

const EdgeProfile& frmBtm::active() const {
    const int position = owner_.activeProfile();
    if (position < 0 || position >= static_cast<int>(profiles_.size())) {
        throw Error("No edge calibration profile is selected.");
    }
    return profiles_[static_cast<std::size_t>(position)];
}

void frmBtm::GetCurEdgeTrimInches(int iEdge, double& dEdgeInches) const {
    const EdgeTrims trims = edgeTrims(active().clipCounts);
    if (iEdge < 1 || iEdge > static_cast<int>(trims.size())) {
        throw Error("A sheet has no edge number " + std::to_string(iEdge) + ".");
    }
    dEdgeInches = trims[static_cast<std::size_t>(iEdge - 1)];
}

void frmBtm::FillCurEdgeTrimInches(EdgeTrims& adTrim) const {
    adTrim = edgeTrims(active().clipCounts);
}

void frmBtm::IsInitialProfile(bool& bResult) const {
    const int position = owner_.activeProfile();
    bResult = position >= 0 && isInitialProfile(profiles_, static_cast<std::size_t>(position));
}

// The lists

std::vector<std::string> frmBtm::profileNames() const {
    std::vector<std::string> names;
    std::transform(profiles_.begin(), profiles_.end(), std::back_inserter(names),
                   [](const EdgeProfile& profile) { return profile.name; });
    return names;
}

void frmBtm::fillConfigurations(int select) {
    const ScopedFlag flag(loading_);
    lstConfigurations.setItems(profileNames());
    lstConfigurations.setListIndex(select);
    UpdateForNewPref();
}

void frmBtm::fillMainDialog() {
    const int last = static_cast<int>(profiles_.size()) - 1;
    owner_.fillProfileList(profileNames(), std::clamp(owner_.activeProfile(), 0, last));
}

void frmBtm::listChanged(int select, int activeNow) {
    WriteBorderPrefs();
    fillConfigurations(select);
    owner_.fillProfileList(profileNames(), activeNow);
}

bool frmBtm::isSelected() const {
    return lstConfigurations.listIndex() >= 0;
}

EdgeProfile& frmBtm::selected() {
    return profiles_.at(static_cast<std::size_t>(lstConfigurations.listIndex()));
}

void frmBtm::lstConfigurations_Click() {
    if (!loading_) {
        UpdateForNewPref();
    }
}

void frmBtm::UpdateForNewPref() {
    UpdateComboboxes();
    UpdateDescriptions();
}

// A count that was edited by hand and is not in the list selects nothing.
void frmBtm::UpdateComboboxes() {
    if (!isSelected()) {
        return;
    }
    const ScopedFlag flag(loading_);
    const std::array<ComboBox*, 4> lists = edgeLists();
    for (std::size_t edge = 0; edge < lists.size(); ++edge) {
        const int count = selected().clipCounts[edge];
        lists[edge]->setListIndex(count >= 0 && count < lists[edge]->count() ? count : -1);
    }
}

void frmBtm::UpdateDescriptions() {
    if (!isSelected()) {
        return;
    }
    const std::array<Label*, 4> labels = edgeDescriptions();
    for (std::size_t edge = 0; edge < labels.size(); ++edge) {
        labels[edge]->setCaption(edgeDescription(
            selected().clipCounts[edge], unitsOf(owner_.getCurUnits()), platform_.numberStyle));
    }
}

void frmBtm::ProcessFormChange() {
    if (loading_ || !isSelected()) {
        return;
    }
    const std::array<ComboBox*, 4> lists = edgeLists();
    for (std::size_t edge = 0; edge < lists.size(); ++edge) {
        if (lists[edge]->listIndex() >= 0) {
            selected().clipCounts[edge] = lists[edge]->listIndex();
        }
    }
    UpdateDescriptions();
    WriteBorderPrefs();
}

void frmBtm::cmdNew_Click() {
    const std::string name = platform_.dialogs.askText(
        "Enter name for new configuration:", "New Configuration", "My New Setting");
    if (name.empty()) {
        return;
    }
    const int activeNow = owner_.activeProfile();
    profiles_.push_back({profileName(name), {}});
    listChanged(static_cast<int>(profiles_.size()) - 1, activeNow);
}

void frmBtm::cmdRename_Click() {
    if (!isSelected()) {
        return;
    }
    const std::string name = platform_.dialogs.askText(
        "Enter new name for this configuration setting:", "Rename Configuration Settings",
        selected().name);
    if (name.empty()) {
        return;
    }
    selected().name = profileName(name);
    listChanged(lstConfigurations.listIndex(), owner_.activeProfile());
}

void frmBtm::cmdDel_Click() {
    if (profiles_.size() <= 1) {
        platform_.dialogs.showMessage(onlyProfileMessage());
        return;
    }
    if (!isSelected() ||
        platform_.dialogs.showMessage(deleteProfileQuestion(selected().name)) != Answer::yes) {
        return;
    }
    const int gone = lstConfigurations.listIndex();
    const int activeBefore = owner_.activeProfile();
    profiles_.erase(profiles_.begin() + gone);
    const int count = static_cast<int>(profiles_.size());
    listChanged(positionAfterDelete(gone, gone, count),
                positionAfterDelete(activeBefore, gone, count));
}

} // namespace veldara
