// The main window comes up on whatever its settings and its profile file hold.
#include "agreement.h"
#include "app/frmMain.h"
#include "app/preference_text.h"
#include "platform/error.h"
#include "platform/preference_keys.h"
#include "platform/text/characters.h"
#include "support/test_platform.h"

#include <array>
#include <optional>

namespace veldara::fuzz {
namespace {

constexpr std::array<PreferenceId, 10> everyPreference{
    prefAppDir,    prefLastFolder,        prefNumTiles, prefPrintSize,    prefEdgeAdjust,
    prefShowTiles, prefHeightEqualsWidth, prefUnits,    prefPaperRegLine, prefMarginLocked};

RegistryValue valueOf(std::uint8_t kind, const std::string& text) {
    RegistryValue value;
    switch (kind % 4) {
    case 0:
        value.type = RegistryType::dword;
        value.number = readInteger(text).value_or(static_cast<int>(text.size()));
        break;
    case 1:
        value.type = RegistryType::other;
        value.bytes.assign(text.begin(), text.end());
        break;
    default:
        value.type = RegistryType::string;
        value.text = text;
        break;
    }
    return value;
}

// Lines: a byte for the preference, a byte for its type, the value. An eleventh "preference" is a
// line of the profile file.
std::string fill(test::TestPlatform& fakes, const std::string& input) {
    std::string profiles;
    for (const std::string& line : splitLines(input)) {
        if (line.size() < 2) {
            continue;
        }
        const std::size_t which = static_cast<std::uint8_t>(line[0]) % (everyPreference.size() + 1);
        if (which == everyPreference.size()) {
            profiles += line.substr(1) + "\n";
        } else {
            fakes.registry.put(preferencesKey, preferenceName(everyPreference.at(which)),
                               valueOf(static_cast<std::uint8_t>(line[1]), line.substr(2)));
        }
    }
    return profiles;
}

// What the lists and figures show, as one text.
std::string stateOf(const frmMain& main) {
    std::string state;
    for (const int number :
         {main.cmbTilesWide.listIndex(), main.cmbTilesHigh.listIndex(), main.chkLockWh.value(),
          main.chkPrinterClips.value(), main.cmbCurBtm.listIndex(), main.chkPreviewTiles.value()}) {
        state += " " + std::to_string(number);
    }
    return state + main.lblPaperName.caption() + main.lblPaperSize.caption() +
           main.lblTileSize.caption() + main.lblFinalSize.caption();
}

void checkWindow(const frmMain& main) {
    double width = 0.0;
    double height = 0.0;
    require(main.CheckTileSizesNoTrim(width, height), "the size of a tile is within its limits");
    require(main.GetNumTilesWide() >= 1 && main.GetNumTilesWide() <= 25 &&
                main.GetNumTilesHigh() >= 1 && main.GetNumTilesHigh() <= 25,
            "1 to 25 tiles a side");
    require(main.cmbCurBtm.listIndex() >= 0 && main.cmbCurBtm.listIndex() < main.cmbCurBtm.count(),
            "a profile is chosen");
    require(!main.bSkipSettingWrite && !main.bSkipOutputUpdate && !main.bImgSelected,
            "the window is ready");
    require(!main.cmdSaveNow.enabled(), "nothing can be saved without a photo");
}

// Comes up, is looked at, saves its settings with a click, and is closed.
std::string runOnce(test::TestPlatform& fakes) {
    Platform platform = fakes.platform();
    frmMain main(platform, fakes.screen,
                 [](const auto&, const auto&) -> Image { throw Error("No photo."); });
    main.load();
    checkWindow(main);
    const std::string state = stateOf(main);
    main.chkPreviewTiles.userSetChecked(!main.chkPreviewTiles.checked());
    main.chkPreviewTiles.userSetChecked(!main.chkPreviewTiles.checked());
    require(stateOf(main) == state, "two clicks on a switch leave it as it was");
    main.unload();
    return state;
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldara;
    test::TestPlatform fakes;
    const std::string profiles = fuzz::fill(fakes, fuzz::asText(data, size));
    if (!profiles.empty()) {
        fakes.tree.addFile("/data/veldara/printer_edge_config", profiles);
    }
    const std::string first = fuzz::runOnce(fakes);
    fuzz::require(fakes.dialogs.messages.empty(), "stored values are nobody's mistake");
    fuzz::require(fuzz::runOnce(fakes) == first, "what was saved brings the same window up");
    return 0;
}
