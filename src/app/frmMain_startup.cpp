// How the main window comes up, and its settings: applied once at the start, saved as a whole.
#include "app/frmMain.h"
#include "app/preference_text.h"
#include "platform/error.h"
#include "platform/text/characters.h"
#include "platform/text/path_text.h"

#include <algorithm>

namespace veldara {

namespace {

constexpr const char* defaultDesktop = R"(c:\windows\desktop)";
constexpr const char* defaultDocuments = R"(c:\My Documents)";

// Where the browser starts when it does not know better: the drive that the system lives on.
std::string startDrive(Drives& drives) {
    const std::vector<std::string> names = drives.list();
    const bool lettered = std::find(names.begin(), names.end(), "c") != names.end();
    return lettered || names.empty() ? "c" : names.front();
}

} // namespace

// The order matters: what comes later reads controls that were set before, and nothing may be saved
// until every control shows what was stored.
void frmMain::loadHandler() {
    bSkipSettingWrite = true;
    initControls();
    forgetPhoto();
    ClearPreview();
    cmbRotate.setListIndex(0);
    cmbFileType.setListIndex(0);
    FillFileList();
    UpdateMainFormCaption();
    unloadOtherWindows();
    appEnd_.load();
    show();
    preview_.pan = Pan{};
    arrowPad_.homeLeft = imgArrow.left();
    bSkipSettingWrite = false;
    recent_ = RecentPhotos(preferences_.readRecentPhotos());
    showRecentPhotos();
    findHelpFile();
    findSpecialFolders();
}

void frmMain::initControls() {
    bInitializing = true;
    restoreLastFolder();
    applySettings();
    bSkipSettingWrite = true;
    bInitializing = false;
    platform_.eventPump.doEvents();
    UpdatePlacementLabels();
    btm_.initControls();
    selectProfile(storedProfileIndex());
    UpdateOutputSize();
}

void frmMain::restoreLastFolder() {
    try {
        const std::string folder = preferences_.read(prefLastFolder);
        if (!platform_.drives.answersSoon(folder)) {
            throw Error("The folder \"" + folder + "\" does not answer.");
        }
        sCurDrive = platform_.drives.driveOf(folder);
        Drive1.setDrive(sCurDrive);
        Dir1.setPath(folder);
        return;
    } catch (const Error&) {
        sCurDrive = startDrive(platform_.drives);
    }
    for (const std::string& folder : firstFolders()) {
        try {
            Drive1.setDrive(platform_.drives.driveOf(folder));
            Dir1.setPath(folder);
            sCurDrive = Drive1.drive();
            return;
        } catch (const Error&) {
            continue; // when none of them can be read the browser starts empty
        }
    }
}

// Where the browser starts without a remembered folder: where the user's photos are likely to be.
// Where drives have letters it is the start drive's root.
std::vector<std::string> frmMain::firstFolders() const {
    std::vector<std::string> folders;
    if (platform_.drives.separator() == '/') {
        for (const int identifier : {picturesIdentifier, homeIdentifier}) {
            folders.push_back(platform_.specialFolders.path(identifier));
        }
        std::erase(folders, "");
    }
    folders.push_back(platform_.drives.rootOf(sCurDrive));
    return folders;
}

void frmMain::applySettings() {
    applyPaperLine();
    static_cast<void>(readPrintSize(preferences_.read(prefPrintSize))); // nothing depends on it
    chkLockWh.setChecked(readSwitch(preferences_.read(prefHeightEqualsWidth), 0) == 1);
    applyTileCounts();
    applyEdgeAdjust();
    chkPreviewTiles.setChecked(readSwitch(preferences_.read(prefShowTiles), 1) == 1);
    paper_.marginsLocked = readSwitch(preferences_.read(prefMarginLocked), 0);
    mnuDimOutside.setChecked(readSwitch(preferences_.read(prefDimOutside), 1) == 1);
    bSkipSettingWrite = false;
}

void frmMain::applyPaperLine() {
    paper_.preferenceLine = preferences_.read(prefPaperRegLine);
    tileSize_.initPaperSizes();
    tileSize_.setPrefFromRegLine(paper_.preferenceLine);
    tileSize_.getWhuValues(paper_.tileWidth, paper_.tileHeight, paper_.width, paper_.height,
                           iCurUnits, paper_.name);
    refreshPaperLabels();
    tileSize_.unload();
}

void frmMain::applyTileCounts() {
    const TileCountPreference counts =
        readTileCounts(preferences_.read(prefNumTiles), cmbTilesWide.count());
    cmbTilesWide.setListIndex(counts.wideIndex);
    cmbTilesHigh.setListIndex(counts.highIndex);
}

void frmMain::applyEdgeAdjust() {
    const EdgeAdjustPreference adjust = readEdgeAdjust(preferences_.read(prefEdgeAdjust), 0);
    bSkipOutputUpdate = true;
    chkPrinterClips.setChecked(adjust.checked == 1);
    bSkipOutputUpdate = false;
    btm_.load(); // reads the profiles, so that one of them can be chosen
    btm_.SetStep1DescUnits();
    selectProfile(storedProfileIndex());
}

int frmMain::storedProfileIndex() const {
    return readEdgeAdjust(preferences_.read(prefEdgeAdjust), cmbCurBtm.count()).profileIndex;
}

void frmMain::selectProfile(int index) {
    if (index >= -1 && index < cmbCurBtm.count()) {
        cmbCurBtm.setListIndex(index);
    }
}

void frmMain::saveSettings() {
    bSkipSettingWrite = true;
    preferences_.write(prefNumTiles,
                       tileCountText({cmbTilesWide.listIndex(), cmbTilesHigh.listIndex()}));
    preferences_.write(prefPaperRegLine, getPaperRegLine());
    preferences_.write(prefEdgeAdjust,
                       edgeAdjustText({chkPrinterClips.value(), cmbCurBtm.listIndex()}));
    preferences_.write(prefShowTiles, std::to_string(chkPreviewTiles.value()));
    preferences_.write(prefHeightEqualsWidth, std::to_string(chkLockWh.value()));
    preferences_.write(prefMarginLocked, std::to_string(paper_.marginsLocked));
    bSkipSettingWrite = false;
}

void frmMain::saveSettingsUnlessSkipped() {
    if (!bSkipSettingWrite) {
        saveSettings();
    }
}

std::string frmMain::applicationFolder() const {
    // Any user of the machine can change this value. A folder of another machine would make every
    // start ask that machine, and what lies on a stick goes with it.
    const std::string folder = preferences_.read(prefAppDir);
    return platform_.drives.isOnFixedDrive(folder) ? folder : std::string();
}

bool frmMain::fileExists(const std::string& path) const {
    try {
        return platform_.fileSystem.createOrSubstitute()->fileExists(path);
    } catch (const Error&) {
        return false;
    }
}

void frmMain::findHelpFile() {
    sHelpFile.clear();
    for (const std::string& folder : {applicationFolder(), platform_.helpFolder}) {
        if (folder.empty()) {
            continue;
        }
        const std::string candidate =
            withSeparator(folder, platform_.drives.separator()) + platform_.helpFileName;
        if (fileExists(candidate)) {
            sHelpFile = candidate;
            return;
        }
    }
}

// One flag for both folders: where either is missing, neither button moves the lists.
void frmMain::findSpecialFolders() {
    foldersKnown_ = false;
    const auto lookUp = [this](int kind, const char* otherwise) {
        const std::string path = platform_.specialFolders.path(specialFolderIdentifier(kind));
        return path.empty() ? std::string(otherwise) : path;
    };
    try {
        const auto files = platform_.fileSystem.createOrSubstitute();
        const std::string desktop = lookUp(desktopKind, defaultDesktop);
        if (!files->folderExists(desktop)) {
            return;
        }
        desktopFolder_ = desktop;
        const std::string documents = lookUp(documentsKind, defaultDocuments);
        if (files->folderExists(documents)) {
            documentsFolder_ = documents;
            foldersKnown_ = true;
        }
    } catch (const Error&) {
        foldersKnown_ = false; // without the file-system object nothing can be said to exist
    }
}

} // namespace veldara
