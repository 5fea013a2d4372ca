// The bindings of labels, and of what belongs to a text beside a widget: the key that reaches the
// widget, and its name for screen readers.
#include "gui/accessibility.h"
#include "gui/bindings.h"
#include "gui/label_text.h"
#include "gui/layout.h"
#include "gui/native_text.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <utility>

namespace veldara {

namespace {

// "Wide:" names a field as "Wide".
wxString fieldName(const std::string& caption) {
    wxString name = nativeText(caption);
    name.EndsWith(":", &name);
    return name;
}

// The whole text where the label has no room for it, else the tool tip of the model.
void showToolTip(LabelText& label, const Label& model) {
    const wxString text = nativeText(model.caption());
    const bool cut = label.GetTextExtent(text).x > label.GetClientSize().x;
    const wxString tip = cut ? text : nativeText(model.toolTip());
    if (tip != label.GetToolTipText()) {
        label.SetToolTip(tip);
    }
}

} // namespace

wxStaticText* Bindings::label(wxWindow* parent, Label& model, char letter) {
    auto* native = new LabelText(parent);
    native->SetName(nativeText(model.name()));
    followWidget(model, *native, [native, &model, letter](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), letter));
        }
    });
    return native;
}

wxStaticText* Bindings::labelForNext(wxWindow* parent, Label& model, char letter) {
    wxStaticText* native = label(parent, model, letter);
    pendingLabel_ = {native, &model, letter};
    return native;
}

wxStaticText* Bindings::valueLabel(wxWindow* parent, Label& model, const wxString& sample) {
    return valueText(parent, model, sample, {});
}

wxStaticText* Bindings::liveLabel(wxWindow* parent, const Label& caption, Label& model,
                                  const wxString& sample) {
    return valueText(parent, model, sample, [this, &caption, &model](wxStaticText& native) {
        speakLater(native, nativeText(caption.caption() + " " + model.caption()));
    });
}

wxStaticText* Bindings::valueText(wxWindow* parent, Label& model, const wxString& sample,
                                  const std::function<void(wxStaticText&)>& changed) {
    auto* native = new LabelText(parent, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    native->SetName(nativeText(model.name()));
    native->SetMinSize(native->GetTextExtent(sample) + wxSize(native->FromDIP(4), 0));
    followWidget(model, *native, [native, &model, changed](Property property) {
        if (property == Property::caption) {
            native->SetLabelText(nativeText(model.caption()));
            if (changed) {
                changed(*native);
            }
        }
        if (property == Property::caption || property == Property::toolTip) {
            showToolTip(*native, model);
        }
    });
    native->Bind(wxEVT_SIZE, [native, &model, alive = alive_](wxSizeEvent& event) {
        event.Skip();
        if (*alive) {
            showToolTip(*native, model);
        }
    });
    return native;
}

// What changes several times while an event is handled is spoken once.
void Bindings::speakLater(wxWindow& widget, const wxString& text) {
    if (!widget.IsShownOnScreen()) {
        return; // the first value is no change
    }
    if (unspoken_.empty()) {
        later([this] {
            for (const auto& [speaker, words] : std::exchange(unspoken_, {})) {
                announce(*speaker, words);
            }
        });
    }
    const auto known = std::find_if(unspoken_.begin(), unspoken_.end(),
                                    [&](const auto& one) { return one.first == &widget; });
    if (known == unspoken_.end()) {
        unspoken_.emplace_back(&widget, text);
    } else {
        known->second = text;
    }
}

wxStaticText* Bindings::paragraph(wxWindow* parent, Label& model, int width, int lines) {
    auto* native = new LabelText(parent, wxST_NO_AUTORESIZE);
    native->SetName(nativeText(model.name()));
    followWidget(model, *native, [this, native, &model, width, lines](Property property) {
        if (property != Property::caption) {
            return;
        }
        const wxString text = wrappedText(*native, nativeText(model.caption()), width);
        native->SetLabelText(text);
        const int height = std::max(lines, text.Freq('\n') + 1) * native->GetCharHeight();
        if (native->GetMinSize().y != height) {
            native->SetMinSize(wxSize(textLength(*native, width), height));
            if (wxSizer* contents = window_.GetSizer()) {
                contents->SetSizeHints(&window_);
            }
        }
    });
    return native;
}

// A field is named by the label before it, else by the caption of its model, which it does not
// show.
void Bindings::followField(Control& model, wxWindow& field, Sync more) {
    const PendingLabel label = std::exchange(pendingLabel_, {});
    followWidget(model, field, [&model, &field, label, more = std::move(more)](Property property) {
        if (more) {
            more(property);
        }
        if (property == Property::caption) {
            setAccessibleName(field, fieldName(label.model == nullptr ? model.caption()
                                                                      : label.model->caption()));
        }
    });
    if (label.native != nullptr) {
        setLabelOf(*label.native, field);
        mnemonic(label.letter, field);
    }
}

void Bindings::mnemonic(char letter, wxWindow& target) {
    claimLetter(letter);
    if (letter != 0) {
        letters_[std::toupper(static_cast<unsigned char>(letter))] = &target;
    }
}

void Bindings::claimLetter(char letter) {
    const int key = std::toupper(static_cast<unsigned char>(letter));
    if (letter != 0 && !letters_.emplace(key, nullptr).second) {
        throw std::logic_error(std::string("Two controls of one window have the key Alt+") +
                               static_cast<char>(key));
    }
}

void Bindings::pressByLetter(char letter, wxWindow& native, const std::function<void()>& press) {
    claimLetter(letter);
#ifdef __WXMSW__
    // The system looks for the letter only among the neighbours of the control with the keyboard,
    // and the main window has panels within panels.
    if (letter != 0) {
        shortcut(wxMOD_ALT, std::toupper(static_cast<unsigned char>(letter)), [&native, press] {
            if (native.IsShownOnScreen() && native.IsEnabled()) {
                press();
            }
        });
    }
#else
    static_cast<void>(native); // the toolkit does it
    static_cast<void>(press);
#endif
}

bool Bindings::focusByLetter(const wxKeyEvent& event) {
    if (event.GetModifiers() != wxMOD_ALT) {
        return false;
    }
    const int key = event.GetKeyCode();
    const auto found = key > 0 && key < 128 ? letters_.find(std::toupper(key)) : letters_.end();
    if (found == letters_.end() || found->second == nullptr || !found->second->IsShownOnScreen() ||
        !found->second->IsEnabled()) {
        return false;
    }
    found->second->SetFocus();
#ifdef __WXMSW__
    // When Alt goes up, the system turns to the menus if it has seen no other key since.
    window_.MSWDefWindowProc(WM_SYSKEYDOWN, event.GetRawKeyCode(),
                             static_cast<WXLPARAM>(event.GetRawKeyFlags()));
#endif
    return true;
}

} // namespace veldara
