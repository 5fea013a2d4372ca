#include "e2e/stage.h"

#include "app/preference_text.h"

#include <cstdlib>
#include <iostream>

#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/utils.h>

#ifdef __WXMSW__
#include <windows.h>
#endif

namespace veldara::test {

namespace {

// The settings of whoever runs the tests stay out of it.
void setHome(const TempFolder& home) {
    const auto set = [&](const char* variable, const std::string& folder) {
        wxSetEnv(variable, wxString::FromUTF8(home.addFolder(folder)));
    };
    set("HOME", "");
    set("XDG_CONFIG_HOME", ".config");
    set("XDG_DATA_HOME", ".local/share");
    for (const char* folder : {"XDG_DESKTOP_DIR", "XDG_DOCUMENTS_DIR", "XDG_PICTURES_DIR"}) {
        wxUnsetEnv(folder);
    }
    home.addFolder("Desktop");
    home.addFolder("Documents");
}

void forgetStoredValues() {
#ifdef __WXMSW__
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, companyKey);
#endif
}

} // namespace

Stage::Stage() {
    setHome(home_);
    forgetStoredValues();
#ifdef __WXMSW__
    store("app_dir", home_.text()); // the profiles of this test alone
#endif
    home_.addFolder("photos");
}

Stage::~Stage() {
    try {
        stop();
    } catch (const DriverError& error) {
        // Nothing that comes after could be relied on.
        std::cerr << "The program could not be taken away: " << error.what() << std::endl;
        std::abort();
    }
    forgetStoredValues();
}

void Stage::store(const std::string& name, const std::string& text) {
    SystemPlatform system;
    Registry& registry = system.registry();
    for (const char* key : {companyKey, preferencesKey}) {
        registry.createKey(RegistryRoot::localMachine, key);
    }
    registry.setString(RegistryRoot::localMachine, preferencesKey, name, text);
}

std::string Stage::stored(const std::string& name) {
    SystemPlatform system;
    RegistryValue value;
    if (system.registry().queryValue(RegistryRoot::localMachine, preferencesKey, name, value) !=
        0) {
        return {};
    }
    return value.type == RegistryType::dword ? std::to_string(value.number) : value.text;
}

void Stage::start() {
    if (stored("last_folder").empty()) {
        store("last_folder", home_ / "photos");
    }
    startAsStored();
}

void Stage::startAsStored() {
    ended_ = false;
    user_.onWindowThread([this] {
        program_ = std::make_unique<DesktopProgram>([this] { ended_ = true; });
        program_->start();
    });
    user_.waitForWindow("frmMain");
}

void Stage::waitForEnd() {
    user_.waitUntil("the program has ended", [this] { return ended_.load(); });
}

void Stage::stop() {
    if (program_) {
        leaveDialogs();
        user_.onWindowThread([this] { program_.reset(); });
    }
}

// The program may be taken away only when none of its handlers is under way.
void Stage::leaveDialogs() {
    user_.waitUntil("all dialogs are closed", [] {
        for (wxWindow* one : wxTopLevelWindows) {
            auto* dialog = dynamic_cast<wxDialog*>(one);
            if (dialog != nullptr && dialog->IsModal()) {
                dialog->EndModal(wxID_CANCEL);
            }
        }
        const wxEventLoopBase* loop = wxEventLoopBase::GetActive();
        return loop != nullptr && loop->IsMain() && !loop->IsYielding();
    });
}

void Stage::openFolder(const std::string& name) {
    user_.openFolderEntry("frmMain", "Dir1", name);
    waitForFolder(name);
}

void Stage::waitForFolder(const std::string& name) {
    waitFor("the folder \"" + name + "\" is open", [&](frmMain& main) {
        return std::filesystem::path(main.Dir1.path()).filename() == name;
    });
}

void Stage::pickPhoto(const std::string& name) {
    user_.clickListEntry("frmMain", "lstFiles", name);
    user_.waitUntil("the photo \"" + name + "\" is shown", [this] {
        return program_->mainWindow().bImgSelected && program_->mainWindow().picCur.pixels();
    });
}

} // namespace veldara::test
