// The bindings of the controls that show entries to choose from.
#include "gui/bindings.h"
#include "gui/native_text.h"

#include <cctype>
#include <utility>

namespace veldara {

namespace {

// Entries may be added to a model one by one, thousands of them: the native list is filled once,
// when the program comes back to its events.
struct FillState {
    bool pending = false;
};

wxString driveLabel(const std::string& drive) {
    if (drive.size() == 1 && std::isalpha(static_cast<unsigned char>(drive[0])) != 0) {
        return nativeText(drive).Upper() + ":";
    }
    return nativeText(drive);
}

template <typename Native>
void selectEntry(Native& native, int index) {
    if (native.GetSelection() != index) {
        native.SetSelection(index < 0 ? wxNOT_FOUND : index);
    }
}

} // namespace

wxChoice* Bindings::choice(wxWindow* parent, ComboBox& model, const std::string& name) {
    auto* native = new wxChoice(parent, wxID_ANY);
    native->SetName(name);
    native->Bind(wxEVT_CHOICE, [native, &model, alive = alive_](wxCommandEvent&) {
        model.userSelect(native->GetSelection());
        if (*alive) {
            selectEntry(*native, model.listIndex()); // the handler may have turned it back
        }
    });
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::items) {
            native->Set(nativeTexts(model.items()));
            native->SetMinSize(wxDefaultSize);
            native->InvalidateBestSize();
        }
        if (property == Property::items || property == Property::value) {
            selectEntry(*native, model.listIndex());
        }
    });
    return native;
}

wxComboBox* Bindings::freeCombo(wxWindow* parent, ComboBox& model, const std::string& name) {
    auto* native = new wxComboBox(parent, wxID_ANY);
    native->SetName(name);
    const auto showText = [native, &model] {
        const wxString text = nativeText(model.text());
        if (native->GetValue() == text) {
            return;
        }
        if (model.listIndex() >= 0) {
            native->SetSelection(model.listIndex()); // so that the list opens there
        } else {
            native->ChangeValue(text);
        }
    };
    native->Bind(wxEVT_TEXT,
                 [native, &model](wxCommandEvent&) { model.userSetText(enteredLine(*native)); });
    native->Bind(wxEVT_COMBOBOX,
                 [native, &model](wxCommandEvent&) { model.userSelect(native->GetSelection()); });
    // The native list does not know what is typed beside it, and its keys begin at its first entry.
    native->Bind(wxEVT_KEY_DOWN, [&model](wxKeyEvent& event) {
        const bool up = event.GetKeyCode() == WXK_UP;
        if (event.HasAnyModifiers() || (!up && event.GetKeyCode() != WXK_DOWN)) {
            event.Skip();
        } else {
            model.userStep(up ? -1 : 1);
        }
    });
    followWidget(model, *native, [native, &model, showText](Property property) {
        if (property == Property::items) {
            native->Set(nativeTexts(model.items()));
            showText();
        } else if (property == Property::value) {
            showText();
        }
    });
    return native;
}

wxListBox* Bindings::listBox(wxWindow* parent, ListBox& model, const std::string& name,
                             const wxSize& size) {
    auto* native = new wxListBox(parent, wxID_ANY, wxDefaultPosition, size, 0, nullptr,
                                 wxLB_SINGLE | wxLB_NEEDED_SB | wxLB_HSCROLL);
    native->SetName(name);
    native->SetMinSize(size);
    native->Bind(wxEVT_LISTBOX, [native, &model, alive = alive_](wxCommandEvent&) {
        model.userClick(native->GetSelection());
        if (*alive) {
            selectEntry(*native, model.listIndex());
        }
    });
    reclaimSelectedEntry(model, *native);
    auto fill = std::make_shared<FillState>();
    followWidget(model, *native, [this, native, &model, fill](Property property) {
        if (property == Property::value && !fill->pending) {
            selectEntry(*native, model.listIndex());
        }
        if (property == Property::items && !fill->pending) {
            fill->pending = true;
            later([native, &model, fill] {
                fill->pending = false;
                native->Set(nativeTexts(model.items()));
                selectEntry(*native, model.listIndex());
            });
        }
    });
    return native;
}

// A native list says nothing when the entry that is already chosen is clicked again.
void Bindings::reclaimSelectedEntry(ListBox& model, wxListBox& list) {
    auto before = std::make_shared<int>(wxNOT_FOUND);
    list.Bind(wxEVT_LEFT_DOWN, [&list, before](wxMouseEvent& event) {
        *before = list.GetSelection();
        event.Skip();
    });
    list.Bind(wxEVT_LEFT_UP, [this, &list, &model, before](wxMouseEvent& event) {
        event.Skip();
        const int hit = list.HitTest(event.GetPosition());
        if (hit != wxNOT_FOUND && hit == *before && hit == model.listIndex()) {
            later([&model, hit] { model.userClick(hit); });
        }
        *before = wxNOT_FOUND;
    });
}

wxChoice* Bindings::driveList(wxWindow* parent, DriveList& model, const std::string& name) {
    auto* native = new wxChoice(parent, wxID_ANY);
    native->SetName(name);
    const auto select = [native, &model] {
        for (std::size_t i = 0; i < model.items().size(); ++i) {
            if (model.items()[i] == model.drive()) {
                selectEntry(*native, static_cast<int>(i));
                return;
            }
        }
        selectEntry(*native, -1);
    };
    native->Bind(wxEVT_CHOICE, [native, &model, select, alive = alive_](wxCommandEvent&) {
        model.userSelect(native->GetSelection());
        if (*alive) {
            select();
        }
    });
    followWidget(model, *native, [native, &model, select](Property property) {
        if (property == Property::items) {
            native->Clear();
            for (const std::string& drive : model.items()) {
                native->Append(driveLabel(drive));
            }
        }
        if (property == Property::items || property == Property::value) {
            select();
        }
    });
    return native;
}

FolderListBox* Bindings::folderList(wxWindow* parent, FolderList& model, const std::string& name,
                                    const wxSize& size) {
    FolderListBox* native = FolderListBox::make(parent, nativeText(name), size);
    native->onOpen = [this, &model](int entry) {
        later([&model, entry] { model.userOpen(entry); });
    };
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::items || property == Property::value) {
            native->showEntries(model.entries(), model.currentEntry());
        }
    });
    return native;
}

} // namespace veldara
