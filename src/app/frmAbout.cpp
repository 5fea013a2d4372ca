#include "app/frmAbout.h"

#include "app/main_messages.h"
#include "app/program_identity.h"
#include "app/registry_text.h"
#include "platform/error.h"
#include "platform/text/version_text.h"

namespace veldara {

frmAbout::frmAbout(Platform& platform, Screen& screen, const std::string& webAddress)
    : Window("frmAbout", screen), platform_(platform) {
    setCaption("About " + programTitle());
    lblVersion.setCaption("Version " + programVersion());
    lblDisclaimer.setCaption("Visit us at:");
    lnkWeb.setCaption(webAddress);
    lnkWeb.setTarget(webAddress);
    lblDisclaimer.setVisible(!webAddress.empty());
    lnkWeb.setVisible(!webAddress.empty());
    cmdOk.setCaption("OK");
    cmdSysInfo.setCaption("System Info...");
    lnkWeb.onClick = [this] { lnkWeb_Click(); };
    cmdOk.onClick = [this] { unload(); };
    cmdSysInfo.onClick = [this] { StartSysInfo(); };
}

void frmAbout::loadHandler() {
    setCaption(programTitle());
    lblTitle.setCaption(programTitle());
    lblVersion.setCaption("Version " + programVersion());
    lblCopyright.setCaption(copyrightText(platform_.clock.year()));
    const auto program = platform_.launcher.systemInformationProgram();
    cmdSysInfo.setVisible(!program || !program->empty());
}

void frmAbout::lnkWeb_Click() {
    try {
        platform_.launcher.openTarget(lnkWeb.target());
    } catch (const Error& error) {
        platform_.dialogs.showMessage(errorMessage(error.what()));
    }
}

bool frmAbout::GetKeyValue(RegistryRoot root, const std::string& key, const std::string& name,
                           std::string& text) {
    RegistryValue value;
    if (platform_.registry.queryValueFullAccess(root, key, name, value) != 0 ||
        value.type == RegistryType::none) {
        text.clear();
        return false;
    }
    text = registryValueText(value);
    return true;
}

std::string frmAbout::systemInformationProgram() {
    if (const auto program = platform_.launcher.systemInformationProgram()) {
        return *program;
    }
    std::string path;
    if (GetKeyValue(RegistryRoot::localMachine, R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)", "PATH",
                    path)) {
        return path;
    }
    if (!GetKeyValue(RegistryRoot::localMachine, R"(SOFTWARE\Microsoft\Shared Tools Location)",
                     "MSINFO", path)) {
        return "";
    }
    path += R"(\MSINFO32.EXE)";
    return platform_.fileSystem.createOrSubstitute()->fileExists(path) ? path : "";
}

void frmAbout::StartSysInfo() {
    try {
        const std::string program = systemInformationProgram();
        if (!program.empty()) {
            platform_.launcher.startProgram(program);
            return;
        }
    } catch (const Error&) {
        // whether it is missing or does not start makes no difference to the user
    }
    platform_.dialogs.showMessage({"System Information Is Unavailable At This Time", ""});
}

} // namespace veldara
