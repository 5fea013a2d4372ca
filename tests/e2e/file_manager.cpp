#include "e2e/file_manager.h"

#include "gui/native_text.h"
#include "platform/text/path_text.h"

#include <cstring>

#include <wx/app.h>
#include <wx/dnd.h>
#include <wx/file.h>
#include <wx/frame.h>
#include <wx/init.h>
#include <wx/panel.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

namespace veldara::test {

namespace {

constexpr const char* asFileManager = "--file-manager";
const wxSize windowSize(160, 140);

// Its arguments are the file that is dragged, and the file that says that the window is up.
class FileManagerApp : public wxApp {
  public:
    bool OnInit() override {
        auto* window = new wxFrame(nullptr, wxID_ANY, "Files", wxPoint(0, 0), windowSize);
        auto* file = new wxPanel(window);
        file->Bind(wxEVT_LEFT_DOWN, [file, path = wxString(argv[2])](wxMouseEvent&) {
            wxFileDataObject data;
            data.AddFile(path);
            wxDropSource source(data, file);
            source.DoDragDrop(wxDrag_AllowMove);
        });
        file->Bind(wxEVT_PAINT, [ready = wxString(argv[3])](wxPaintEvent& event) {
            event.Skip();
            wxFile().Create(ready, true);
        });
        window->Show();
        return true;
    }
};

} // namespace

FileManager::FileManager(Driver& user, const std::filesystem::path& file) : user_(user) {
    const wxString ready = nativeText(pathText(flags_.path() / "ready"));
    process_ = user_.onWindowThread([&] {
        const std::wstring words[] = {wxStandardPaths::Get().GetExecutablePath().ToStdWstring(),
                                      wxString(asFileManager).ToStdWstring(),
                                      nativeText(pathText(file)).ToStdWstring(),
                                      ready.ToStdWstring()};
        const wchar_t* command[] = {words[0].c_str(), words[1].c_str(), words[2].c_str(),
                                    words[3].c_str(), nullptr};
        return wxExecute(command, wxEXEC_ASYNC);
    });
    user_.waitUntil("the file manager is up", [&] { return wxFileExists(ready); });
}

FileManager::~FileManager() {
    wxKill(process_, wxSIGKILL);
}

void FileManager::dropOn(const std::string& window, const std::string& widget) {
    user_.dragInto({windowSize.x / 2, windowSize.y / 2}, window, widget);
}

bool FileManager::isWanted(int argc, char** argv) {
    return argc == 4 && std::strcmp(argv[1], asFileManager) == 0;
}

int FileManager::run(int argc, char** argv) {
    wxApp::SetInstance(new FileManagerApp); // the toolkit deletes it
#ifdef __WXMSW__
    static_cast<void>(argc), static_cast<void>(argv);
    return wxEntry(); // takes the arguments from the system, whatever their letters
#else
    return wxEntry(argc, argv);
#endif
}

} // namespace veldara::test
