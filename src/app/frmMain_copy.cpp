// A photo that the file list does not take, opened in another way than from the list: a copy that
// it does take is offered, made beside it and opened.
#include "app/frmMain.h"
#include "app/main_messages.h"
#include "platform/error.h"
#include "platform/text/path_text.h"

#include <exception>
#include <utility>

namespace veldara {

void frmMain::offerCopy(const std::string& path, const std::string& name) {
    if (copying_) {
        return; // one at a time
    }
    ImageHeader header;
    try {
        header = copyHooks_.readHeader(textPath(path));
    } catch (const Error& error) {
        platform_.dialogs.showMessage(hasPictureEnding(name) ? photoUnreadableMessage(error.what())
                                                             : photoNameMessage(name));
        return;
    }
    const std::string folder = path.substr(0, path.size() - name.size());
    const std::string copy = photoCopyName(
        name, header, [&](const std::string& taken) { return fileExists(folder + taken); });
    if (platform_.dialogs.showMessage(photoCopyOffer(name, copy)) != Answer::yes) {
        return;
    }
    std::string target = folder + copy;
    if (!copyHooks_.mayWriteIn(textPath(folder))) {
        target = askForCopy(copy);
    }
    if (!target.empty() && makeCopy(path, target)) {
        openPath(target);
    }
}

// Where the copy of a photo goes whose own folder takes none. Empty: nowhere.
std::string frmMain::askForCopy(const std::string& copy) {
    SaveFileRequest request;
    request.title = "Save Copy";
    const TileFormatRow& row = tileFormatRow(*tileFormatByName(copy));
    request.filters = {{std::string(row.filterText), "*" + std::string(row.ending)}};
    request.defaultName = copy.substr(0, copy.size() - row.ending.size());
    request.folder = platform_.specialFolders.path(specialFolderIdentifier(documentsKind));
    return platform_.dialogs.askSaveFile(request);
}

// False: stopped by the user, or failed with a message.
bool frmMain::makeCopy(const std::string& path, const std::string& target) {
    copying_ = true;
    stopCopy_.clear();
    progress_.onCancel = [this] { stopCopy_.set(); };
    const bool couldSave = cmdSaveNow.enabled();
    cmdSaveNow.setEnabled(false); // a run that writes tiles has the same progress window
    progress_.bAllowCancel = true;
    progress_.SetMode(progressMode);
    progress_.ShowProgressBar("Making a copy of the photo");
    std::string problem;
    bool done = false;
    try {
        std::unique_ptr<CopySteps> copy;
        platform_.eventPump.runWhileServing(
            [&] { copy = copyHooks_.begin(textPath(path), textPath(target), stopCopy_); });
        while (!copy->done() && !stopCopy_.isSet()) {
            platform_.eventPump.runWhileServing([&] { copy->step(); });
            progress_.SetProgressVal(copy->fraction());
        }
        done = copy->done();
    } catch (const WorkStopped&) {
        // Nobody waits for the copy any more.
    } catch (const Error& error) {
        problem = error.what();
    } catch (const std::exception&) { // no memory, or no thread
        problem = "The copy could not be made: there is not enough memory.";
    }
    copying_ = false;
    progress_.onCancel = {};
    progress_.unload();
    cmdSaveNow.setEnabled(couldSave);
    if (!problem.empty()) {
        platform_.dialogs.showMessage(photoUnreadableMessage(problem));
    }
    return done && !ended_ && loaded();
}

} // namespace veldara
