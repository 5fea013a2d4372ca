// The bindings of the controls that show entries to choose from.
#include "gui/bindings.h"
#include "gui/name_list_box.h"
#include "gui/native_text.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <utility>

#include <wx/time.h>
#include <wx/utils.h>

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

// A drop-down that is closed and has no keyboard ignores the wheel, which was meant for what the
// user looks at.
void ignoreWheel(wxWindow& list) {
    list.Bind(wxEVT_MOUSEWHEEL, [&list](wxMouseEvent& event) { event.Skip(list.HasFocus()); });
}

template <typename Native>
void selectEntry(Native& native, int index) {
    if (native.GetSelection() != index) {
        native.SetSelection(index < 0 ? wxNOT_FOUND : index);
    }
}

} // namespace

wxChoice* Bindings::choice(wxWindow* parent, ComboBox& model) {
    auto* native = new wxChoice(parent, wxID_ANY);
    ignoreWheel(*native);
    native->SetName(nativeText(model.name()));
    native->Bind(wxEVT_CHOICE, [native, &model, alive = alive_](wxCommandEvent&) {
        model.userSelect(native->GetSelection());
        if (*alive) {
            selectEntry(*native, model.listIndex()); // the handler may have turned it back
        }
    });
    followField(model, *native, [native, &model](Property property) {
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

wxComboBox* Bindings::freeCombo(wxWindow* parent, ComboBox& model) {
    auto* native = new wxComboBox(parent, wxID_ANY);
    ignoreWheel(*native);
    native->SetName(nativeText(model.name()));
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
    followField(model, *native, [native, &model, showText](Property property) {
        if (property == Property::items) {
            native->Set(nativeTexts(model.items()));
            showText();
        } else if (property == Property::value) {
            showText();
        }
    });
    return native;
}

wxListBox* Bindings::listBox(wxWindow* parent, ListBox& model, const wxSize& size) {
    auto* native = new NameListBox(parent, nativeText(model.name()), size);
    choose(model, *native);
    chooseByKeys(model, *native);
    reclaimSelectedEntry(model, *native);
    auto fill = std::make_shared<FillState>();
    followField(model, *native, [this, native, &model, fill](Property property) {
        if (property == Property::value && !fill->pending) {
            selectEntry(*native, model.listIndex());
        }
        if (property == Property::items && !fill->pending) {
            fill->pending = true;
            later([native, &model, fill] {
                fill->pending = false;
                const int top = native->GetTopItem();
                native->Set(nativeTexts(model.items()));
                selectEntry(*native, model.listIndex());
                if (top > 0 && top < model.count() && model.listIndex() >= 0) {
                    native->SetFirstItem(top); // the list was filled again where the user looks
                }
            });
        }
    });
    return native;
}

// The model is called after the native event has ended: loading a photo serves events, and the
// native list loses keys that arrive in the middle of its own handler. A list that receives the
// keyboard by Tab selects its first entry on some systems; nobody has chosen that.
void Bindings::choose(ListBox& model, wxListBox& list) {
    auto focusing = std::make_shared<bool>(false);
    list.Bind(wxEVT_SET_FOCUS, [this, focusing](wxFocusEvent& event) {
        event.Skip();
        if (!wxGetMouseState().LeftIsDown()) {
            *focusing = true;
            later([focusing] { *focusing = false; });
        }
    });
    list.Bind(wxEVT_LISTBOX, [this, &list, &model, focusing](wxCommandEvent&) {
        const int index = list.GetSelection();
        const bool chosen = !*focusing;
        later([&list, &model, index, chosen, alive = alive_] {
            if (chosen) {
                model.userClick(index);
            }
            if (*alive && list.GetSelection() == index) { // else it is on another entry by now
                selectEntry(list, model.listIndex());
            }
        });
    });
}

// The keys move the model's choice, not the native one, which may still be behind.
void Bindings::chooseByKeys(ListBox& model, wxListBox& list) {
    list.Bind(wxEVT_KEY_DOWN, [this, &list, &model](wxKeyEvent& event) {
        const int page = std::max(1, list.GetCountPerPage() - 1);
        const std::map<int, int> steps{{WXK_UP, -1},         {WXK_DOWN, 1},
                                       {WXK_PAGEUP, -page},  {WXK_PAGEDOWN, page},
                                       {WXK_HOME, -1000000}, {WXK_END, 1000000}};
        const auto step = steps.find(event.GetKeyCode());
        if (step == steps.end() || event.HasAnyModifiers()) {
            event.Skip();
            return;
        }
        later([&model, by = step->second] { model.userStep(by); });
    });
    list.Bind(wxEVT_CHAR, [this, &model](wxKeyEvent& event) {
        const wxChar letter = event.GetUnicodeKey();
        if (letter <= ' ' || letter == WXK_DELETE || event.ControlDown() || event.AltDown()) {
            event.Skip();
            return;
        }
        const double seconds = wxGetUTCTimeMillis().ToDouble() / 1000;
        later([&model, typed = portableText(wxString(letter)), seconds] {
            model.userType(typed, seconds);
        });
    });
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

wxChoice* Bindings::driveList(wxWindow* parent, DriveList& model) {
    auto* native = new wxChoice(parent, wxID_ANY);
    ignoreWheel(*native);
    native->SetName(nativeText(model.name()));
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
    followField(model, *native, [native, &model, select](Property property) {
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

FolderListBox* Bindings::folderList(wxWindow* parent, FolderList& model, const wxSize& size) {
    auto* native = new FolderListBox(parent, nativeText(model.name()), size);
    native->onOpen = [this, &model](int entry) {
        later([&model, entry] { model.userOpen(entry); });
    };
    followField(model, *native, [native, &model](Property property) {
        if (property == Property::items || property == Property::value) {
            native->showEntries(model.entries(), model.currentEntry());
        }
    });
    return native;
}

} // namespace veldara
