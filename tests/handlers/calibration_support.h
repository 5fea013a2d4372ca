// What the tests of the calibration dialog share.
#pragma once

#include "calibration/frmBtm.h"
#include "platform/error.h"
#include "platform/text/path_text.h"
#include "support/test_platform.h"

#include <optional>
#include <string>
#include <vector>

namespace veldara::test {

class FakeCalibrationOwner : public CalibrationOwner {
  public:
    int units = 0;
    bool sizesOk = true;
    double widthInches = 1.0;
    double heightInches = 1.25;
    std::string folder; // of "app_dir"
    std::vector<std::string> names;
    int active = -1;
    int listFillings = 0;
    int outputUpdates = 0;

    int getCurUnits() const override { return units; }
    void UpdateOutputSize() override { ++outputUpdates; }
    bool CheckTileSizesNoTrim(double& width, double& height) const override {
        width = widthInches;
        height = heightInches;
        return sizesOk;
    }
    double getConstMinTileSize() const override { return 0.75; }
    double getConstMaxTileSize() const override { return 50.0; }
    std::string tileSizeAreaName() const override { return "Print Size Per Tile"; }
    void fillProfileList(const std::vector<std::string>& list, int selected) override {
        names = list;
        active = selected;
        ++listFillings;
    }
    int activeProfile() const override { return active; }
    std::string applicationFolder() const override { return folder; }
    bool printTestImage(std::shared_ptr<const Image> image) override {
        printed = std::move(image);
        return wantsFile;
    }
    std::shared_ptr<const Image> printed;
    bool wantsFile = false;

    std::string activeName() const { return names.at(static_cast<std::size_t>(active)); }
};

class CalibrationWindow {
  public:
    using Names = std::vector<std::string>;

    TestPlatform fakes{'\\'};
    FakeCalibrationOwner owner;
    bool createFails = false;
    bool writeFails = false;
    std::vector<std::pair<std::string, std::vector<std::uint8_t>>> written;
    Platform platform = fakes.platform();
    frmBtm dialog{platform, fakes.screen, owner, hooks()};

    static std::string path() { return "c:\\program\\printer_edge_config"; }

    void haveFile(const std::string& text) { fakes.tree.addFile(path(), text); }
    // What stands in the file; nothing when there is none.
    std::optional<std::string> file() const {
        const auto found = fakes.tree.files.find(path());
        return found == fakes.tree.files.end() ? std::nullopt
                                               : std::optional<std::string>(found->second);
    }
    void removeFile() { fakes.tree.files.erase(path()); }

    template <typename User>
    void open(User user) {
        fakes.screen.whenModal("frmBtm", [&, user](Window&) {
            user();
            dialog.userClose();
        });
        dialog.Open();
    }

    std::vector<int> choices() const {
        return {dialog.cmbTopEdge.listIndex(), dialog.cmbRightEdge.listIndex(),
                dialog.cmbBottomEdge.listIndex(), dialog.cmbLeftEdge.listIndex()};
    }
    Names descriptions() const {
        return {dialog.lblTopEdgeDesc.caption(), dialog.lblRightEdgeDesc.caption(),
                dialog.lblBottomEdgeDesc.caption(), dialog.lblLeftEdgeDesc.caption()};
    }

  private:
    TestTargetHooks hooks() {
        TestTargetHooks made;
        made.create = [this](double height, double width) {
            if (createFails) {
                throw Error("There is not enough memory.");
            }
            return createTestImage(height, width);
        };
        made.write = [this](const std::filesystem::path& file,
                            const std::vector<std::uint8_t>& bytes) {
            if (writeFails) {
                throw Error("The disk is full.");
            }
            written.emplace_back(pathText(file), bytes);
        };
        return made;
    }
};

inline std::string builtInFile() {
    return "default\t00,00,00,00,\r\n"
           "Kodak photo lab default\t03,04,03,02,\r\n"
           "Fuji photo lab default\t02,06,03,06,\r\n";
}

} // namespace veldara::test
