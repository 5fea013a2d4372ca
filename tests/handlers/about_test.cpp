// The About box: its texts, its link, and the way to System Information.
#include "app/frmAbout.h"
#include "app/frmAppEnd.h"
#include "app/frmStorage.h"
#include "support/test_platform.h"

#include <memory>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* infoKey = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)";
constexpr const char* locationKey = R"(SOFTWARE\Microsoft\Shared Tools Location)";

class AboutBox : public ::testing::Test {
  protected:
    frmAbout& open(const std::string& webAddress = "https://www.example.org/") {
        platform.emplace(fakes.platform());
        about = std::make_unique<frmAbout>(*platform, fakes.screen, webAddress);
        return *about;
    }
    Message unavailable() const {
        return {"System Information Is Unavailable At This Time", "", MessageIcon::none,
                MessageButtons::ok};
    }

    TestPlatform fakes{'\\'};
    std::optional<Platform> platform;
    std::unique_ptr<frmAbout> about;
};

TEST_F(AboutBox, IsNamedInTheDesignUntilItIsLoaded) {
    EXPECT_EQ(open().caption(), "About Veldara");
    EXPECT_EQ(about->lblVersion.caption(), "Version " VELDARA_VERSION);
    EXPECT_EQ(about->cmdOk.caption(), "OK");
    EXPECT_EQ(about->cmdSysInfo.caption(), "System Info...");
}

TEST_F(AboutBox, ShowsTitleVersionAndCopyrightOfThisYear) {
    fakes.clock.currentYear = 2029;
    open().load();
    EXPECT_EQ(about->caption(), "Veldara");
    EXPECT_EQ(about->lblTitle.caption(), "Veldara");
    EXPECT_EQ(about->lblVersion.caption(), "Version " VELDARA_VERSION);
    EXPECT_EQ(about->lblCopyright.caption(), "Copyright © 2029 Korvane Software, LLC");
    EXPECT_EQ(about->lblDisclaimer.caption(), "Visit us at:");
}

TEST_F(AboutBox, YearIsThatOfEachOpening) {
    open().load();
    about->unload();
    fakes.clock.currentYear = 2040;
    about->load();
    EXPECT_EQ(about->lblCopyright.caption(), "Copyright © 2040 Korvane Software, LLC");
}

TEST_F(AboutBox, LinkOpensItsAddress) {
    open().lnkWeb.userClick();
    EXPECT_EQ(about->lnkWeb.caption(), "https://www.example.org/");
    EXPECT_TRUE(about->lnkWeb.visible());
    EXPECT_TRUE(about->lblDisclaimer.visible());
    EXPECT_THAT(fakes.launcher.log, ElementsAre("open https://www.example.org/"));
}

TEST_F(AboutBox, WithoutAnAddressTheLinkIsHidden) {
    open("");
    EXPECT_FALSE(about->lnkWeb.visible());
    EXPECT_FALSE(about->lblDisclaimer.visible());
    about->lnkWeb.userClick();
    EXPECT_THAT(fakes.launcher.log, IsEmpty());
}

TEST_F(AboutBox, LinkThatCannotBeOpenedIsReported) {
    fakes.launcher.fails = true;
    open().lnkWeb.userClick();
    const Message message = fakes.dialogs.onlyMessage();
    EXPECT_EQ(message.title, "Error");
    EXPECT_EQ(message.icon, MessageIcon::critical);
}

TEST_F(AboutBox, OkClosesAndUnloads) {
    fakes.screen.whenModal(
        "frmAbout", [](Window& window) { dynamic_cast<frmAbout&>(window).cmdOk.userClick(); });
    open().showModal();
    EXPECT_FALSE(about->loaded());
    EXPECT_THAT(fakes.screen.log, ElementsAre("modal frmAbout", "hide frmAbout"));
}

TEST_F(AboutBox, SystemInformationIsTakenFromItsPath) {
    fakes.registry.putText(infoKey, "PATH", R"(c:\tools\msinfo32.exe)");
    fakes.registry.putText(locationKey, "MSINFO", R"(c:\other)");
    open().cmdSysInfo.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre(R"(start c:\tools\msinfo32.exe)"));
    EXPECT_TRUE(fakes.dialogs.quiet());
}

TEST_F(AboutBox, SystemInformationIsTakenFromTheSharedToolsFolder) {
    fakes.registry.putText(locationKey, "MSINFO", R"(c:\tools)");
    fakes.tree.addFile(R"(c:\tools\MSINFO32.EXE)");
    open().cmdSysInfo.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre(R"(start c:\tools\MSINFO32.EXE)"));
}

TEST_F(AboutBox, SystemInformationMustExistInTheSharedToolsFolder) {
    fakes.registry.putText(locationKey, "MSINFO", R"(c:\tools)");
    open().cmdSysInfo.userClick();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), unavailable());
    EXPECT_THAT(fakes.launcher.log, IsEmpty());
}

TEST_F(AboutBox, SystemInformationOfNeitherKeyIsUnavailable) {
    open().StartSysInfo();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), unavailable());
    EXPECT_THAT(fakes.registry.log, ElementsAre(std::string("query ") + infoKey + "|PATH",
                                                std::string("query ") + locationKey + "|MSINFO"));
}

TEST_F(AboutBox, WithoutFullAccessSystemInformationIsUnavailable) {
    fakes.registry.putText(infoKey, "PATH", R"(c:\tools\msinfo32.exe)");
    fakes.registry.fullAccessFails = 5;
    open().StartSysInfo();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), unavailable());
}

TEST_F(AboutBox, SystemInformationThatDoesNotStartIsUnavailable) {
    fakes.registry.putText(infoKey, "PATH", R"(c:\tools\msinfo32.exe)");
    fakes.launcher.fails = true;
    open().StartSysInfo();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), unavailable());
}

TEST_F(AboutBox, WithoutAFileSystemObjectTheSharedToolsFolderIsUnavailable) {
    fakes.registry.putText(locationKey, "MSINFO", R"(c:\tools)");
    fakes.fileSystem.faults.creationFails = true;
    open().StartSysInfo();
    EXPECT_EQ(fakes.dialogs.onlyMessage(), unavailable());
}

TEST_F(AboutBox, GetKeyValueReturnsWhetherItWasRead) {
    std::string text = "before";
    EXPECT_FALSE(open().GetKeyValue(RegistryRoot::localMachine, "Software\\Key", "name", text));
    EXPECT_EQ(text, "");
    fakes.registry.putText("Software\\Key", "name", "value");
    EXPECT_TRUE(about->GetKeyValue(RegistryRoot::localMachine, "Software\\Key", "name", text));
    EXPECT_EQ(text, "value");
    fakes.registry.putNumber("Software\\Key", "number", 0x01020A0B);
    EXPECT_TRUE(about->GetKeyValue(RegistryRoot::localMachine, "Software\\Key", "number", text));
    EXPECT_EQ(text, "&h01020A0B");
}

TEST(PictureStore, KeepsTheSevenPictures) {
    ScriptedScreen screen;
    const frmStorage storage(screen);
    EXPECT_EQ(storage.picLoadingImg1.drawing(), Drawing::loading1);
    EXPECT_EQ(storage.picLoadingImg4.drawing(), Drawing::loading4);
    EXPECT_EQ(storage.picError.drawing(), Drawing::error);
    EXPECT_EQ(storage.picPickImage.drawing(), Drawing::pickImage);
    EXPECT_EQ(storage.picPickFolder.drawing(), Drawing::pickFolder);
    EXPECT_FALSE(storage.visible());
}

TEST(PictureStore, FramesFollowEachOtherInACircle) {
    ScriptedScreen screen;
    const frmStorage storage(screen);
    EXPECT_EQ(storage.loadingFrameAfter(Drawing::loading1).drawing(), Drawing::loading2);
    EXPECT_EQ(storage.loadingFrameAfter(Drawing::loading2).drawing(), Drawing::loading3);
    EXPECT_EQ(storage.loadingFrameAfter(Drawing::loading3).drawing(), Drawing::loading4);
    EXPECT_EQ(storage.loadingFrameAfter(Drawing::loading4).drawing(), Drawing::loading1);
    EXPECT_EQ(storage.loadingFrameAfter(Drawing::none).drawing(), Drawing::loading1);
}

TEST_F(AboutBox, DesktopsOwnProgramShowsTheSystemInformation) {
    fakes.launcher.systemInformation = "/usr/bin/about-this-system";
    open().load();
    EXPECT_TRUE(about->cmdSysInfo.visible());
    about->cmdSysInfo.userClick();
    EXPECT_THAT(fakes.launcher.log, ElementsAre("start /usr/bin/about-this-system"));
}

TEST_F(AboutBox, DesktopWithoutSuchAProgramOffersNone) {
    fakes.launcher.systemInformation = "";
    open().load();
    EXPECT_FALSE(about->cmdSysInfo.visible());
}

TEST(HiddenEndWindow, HasATimerThatDoesNothing) {
    ScriptedScreen screen;
    frmAppEnd window(screen);
    EXPECT_EQ(window.Timer1.interval(), 250);
    EXPECT_TRUE(window.Timer1.enabled());
    window.Timer1.tick();
    EXPECT_THAT(screen.log, IsEmpty());
}

} // namespace
} // namespace veldara::test
