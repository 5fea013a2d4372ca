#include "gui/views.h"

#include "platform/error.h"

#include <array>
#include <utility>

namespace veldara {

const ViewKind& viewKind(const std::string& windowName) {
    static const std::array<std::pair<const char*, ViewKind>, 10> kinds{{
        {"frmMain", {makeMainView}},
        {"frmAbout", {makeAboutView}},
        {"frmSaveTiles", {makeSaveTilesView}},
        {"frmSheets", {makeSheetsView}},
        {"frmMsg", {makeProgressView, false, true}},
        {"frmSimpleMsg", {makeResultView, true, false}},
        {"frmTileSize", {makePaperView}},
        {"frmBtm", {makeCalibrationView}},
        {"frmPosterSize", {makePosterSizeView}},
        {"frmPreview", {makePreviewView}},
    }};
    for (const auto& [name, kind] : kinds) {
        if (windowName == name) {
            return kind;
        }
    }
    throw Error("There is no window called \"" + windowName + "\".");
}

} // namespace veldara
