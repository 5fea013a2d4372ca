#include "gui/bindings.h"

#include "gui/inner_container.h"
#include "gui/layout.h"
#include "gui/native_text.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace veldara {

namespace {

constexpr Property allProperties[] = {Property::visible, Property::enabled, Property::caption,
                                      Property::toolTip, Property::items,   Property::range,
                                      Property::value,   Property::picture, Property::pointer};

wxStockCursor cursorOf(Pointer pointer) {
    switch (pointer) {
    case Pointer::crossHair:
        return wxCURSOR_CROSS;
    case Pointer::move:
        return wxCURSOR_SIZING;
    case Pointer::hourglass:
        return wxCURSOR_WAIT;
    case Pointer::arrow:
        break;
    }
    return wxCURSOR_ARROW;
}

void showIn(PictureBox& box, const Picture& model) {
    if (model.pixels()) {
        box.showPixels(model.pixels());
    } else {
        box.showDrawing(model.drawing());
    }
}

} // namespace

Bindings::Bindings(wxTopLevelWindow& window) : window_(window) {
    window_.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (!focusByLetter(event)) {
            event.Skip();
        }
    });
}

void Bindings::release() {
    *alive_ = false;
    for (Control* model : followed_) {
        model->observe({});
    }
    followed_.clear();
    timers_.clear();
    letters_.clear();
}

void Bindings::follow(Control& model, Sync sync) {
    for (const Property property : allProperties) {
        sync(property);
    }
    model.observe(std::move(sync));
    followed_.push_back(&model);
}

void Bindings::followWidget(Control& model, wxWindow& widget, Sync more) {
    follow(model, [this, &model, &widget, more = std::move(more)](Property property) {
        syncCommon(model, widget, property);
        if (more) {
            more(property);
        }
    });
}

void Bindings::syncCommon(const Control& model, wxWindow& widget, Property property) {
    switch (property) {
    case Property::visible:
        if (widget.IsShown() != model.visible()) {
            widget.Show(model.visible());
            window_.Layout();
            if (onVisibilityChanged) {
                onVisibilityChanged();
            }
        }
        break;
    case Property::enabled:
        widget.Enable(model.enabled());
        break;
    case Property::toolTip:
        if (model.toolTip().empty()) {
            widget.UnsetToolTip();
        } else {
            widget.SetToolTip(nativeText(model.toolTip()));
        }
        break;
    case Property::focus:
        widget.SetFocus();
        break;
    default:
        break;
    }
}

void Bindings::later(std::function<void()> act) {
    window_.CallAfter([alive = alive_, act = std::move(act)] {
        if (*alive) {
            act();
        }
    });
}

void Bindings::window(Window& model) {
    follow(model, [this, &model](Property property) {
        if (property == Property::caption) {
            window_.SetTitle(nativeText(model.caption()));
        } else if (property == Property::pointer) {
            applyPointer(model.pointer());
        } else if (property == Property::focus) {
            window_.Raise();
        }
    });
}

// The cross and the four-way arrow tell what the mouse does in a picture; over the other controls
// they would mean nothing. The hourglass counts everywhere.
void Bindings::applyPointer(Pointer pointer) {
    const wxCursor cursor(cursorOf(pointer));
    for (PictureBox* box : pictureBoxes_) {
        box->SetCursor(cursor);
    }
    window_.SetCursor(pointer == Pointer::hourglass ? cursor : wxNullCursor);
}

void Bindings::menu(wxMenuBar& bar, wxMenu* menu, MenuItem& model) {
    const std::size_t place = bar.GetMenuCount();
    bar.Append(menu, nativeText(model.caption()));
    follow(model, [&bar, &model, place](Property property) {
        if (property == Property::enabled) {
            bar.EnableTop(place, model.enabled());
        }
    });
}

void Bindings::menuItem(wxMenu& menu, MenuItem& model, const std::string& name,
                        const std::string& key) {
    const auto label = [&model, key] {
        return nativeText(key.empty() ? model.caption() : model.caption() + "\t" + key);
    };
    wxMenuItem* item = menu.Append(wxID_ANY, label());
    item->SetHelp(nativeText(name));
    window_.Bind(
        wxEVT_MENU, [&model](wxCommandEvent&) { model.userClick(); }, item->GetId());
    follow(model, [item, &model, label](Property property) {
        if (property == Property::caption) {
            item->SetItemLabel(label());
        } else if (property == Property::enabled) {
            item->Enable(model.enabled());
        }
    });
}

void Bindings::timer(Timer& model) {
    timers_.push_back(std::make_unique<wxTimer>());
    wxTimer* native = timers_.back().get();
    native->Bind(wxEVT_TIMER, [&model](wxTimerEvent&) { model.tick(); });
    follow(model, [native, &model](Property property) {
        if (property != Property::enabled && property != Property::range) {
            return;
        }
        if (model.enabled() && model.interval() > 0) {
            native->Start(model.interval());
        } else {
            native->Stop();
        }
    });
}

wxStaticText* Bindings::label(wxWindow* parent, Label& model, const std::string& name) {
    auto* native = new wxStaticText(parent, wxID_ANY, wxString());
    native->SetName(name);
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::caption) {
            native->SetLabelText(nativeText(model.caption()));
        }
    });
    return native;
}

wxStaticText* Bindings::valueLabel(wxWindow* parent, Label& model, const std::string& name,
                                   const wxString& sample) {
    auto* native = new wxStaticText(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                    wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    native->SetName(name);
    native->SetMinSize(native->GetTextExtent(sample) + wxSize(native->FromDIP(4), 0));
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::caption) {
            native->SetLabelText(nativeText(model.caption()));
        }
    });
    return native;
}

wxStaticText* Bindings::paragraph(wxWindow* parent, Label& model, const std::string& name,
                                  int width, int lines) {
    auto* native = new wxStaticText(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                    wxST_NO_AUTORESIZE);
    native->SetName(name);
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

wxStaticText* Bindings::labelFor(wxWindow& target, wxWindow* parent, Label& model,
                                 const std::string& name, char letter) {
    auto* native = new wxStaticText(parent, wxID_ANY, wxString());
    native->SetName(name);
    followWidget(model, *native, [native, &model, letter](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), letter));
        }
    });
    mnemonic(letter, target);
    return native;
}

void Bindings::mnemonic(char letter, wxWindow& target) {
    if (letter != 0) {
        letters_[std::toupper(static_cast<unsigned char>(letter))] = &target;
    }
}

bool Bindings::focusByLetter(const wxKeyEvent& event) {
    if (event.GetModifiers() != wxMOD_ALT) {
        return false;
    }
    const int key = event.GetKeyCode();
    const auto found = key > 0 && key < 128 ? letters_.find(std::toupper(key)) : letters_.end();
    if (found == letters_.end() || !found->second->IsShownOnScreen() ||
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

wxStaticBox* Bindings::frame(wxWindow* parent, Frame& model, const std::string& name) {
    auto* native =
        new InnerContainer<wxStaticBox>(parent, wxID_ANY, nativeLabel(model.caption(), 0));
    native->SetName(name);
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), 0));
        }
    });
    return native;
}

wxButton* Bindings::button(wxWindow* parent, Button& model, const std::string& name,
                           char mnemonic) {
    auto* native = new wxButton(parent, wxID_ANY, nativeLabel(model.caption(), mnemonic));
    native->SetName(name);
    native->Bind(wxEVT_BUTTON, [&model](wxCommandEvent&) { model.userClick(); });
    followWidget(model, *native, [native, &model, mnemonic](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), mnemonic));
        }
    });
    return native;
}

wxCheckBox* Bindings::checkBox(wxWindow* parent, CheckBox& model, const std::string& name,
                               char mnemonic) {
    auto* native = new wxCheckBox(parent, wxID_ANY, nativeLabel(model.caption(), mnemonic));
    native->SetName(name);
    native->Bind(wxEVT_CHECKBOX, [native, &model](wxCommandEvent&) {
        model.userSetChecked(native->GetValue());
        native->SetValue(model.checked()); // the handler may have turned it back
    });
    followWidget(model, *native, [native, &model, mnemonic](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), mnemonic));
        } else if (property == Property::value && native->GetValue() != model.checked()) {
            native->SetValue(model.checked());
        }
    });
    return native;
}

wxRadioButton* Bindings::option(wxWindow* parent, OptionButton& model, const std::string& name,
                                char mnemonic, bool firstOfGroup) {
    auto* native =
        new wxRadioButton(parent, wxID_ANY, nativeLabel(model.caption(), mnemonic),
                          wxDefaultPosition, wxDefaultSize, firstOfGroup ? wxRB_GROUP : 0);
    native->SetName(name);
    native->Bind(wxEVT_RADIOBUTTON, [&model](wxCommandEvent&) { model.userSelect(); });
    followWidget(model, *native, [native, &model, mnemonic](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), mnemonic));
        } else if (property == Property::value && model.selected()) {
            // Switching one on switches the others of its group off; a native one cannot be
            // switched off by itself.
            native->SetValue(true);
        }
    });
    return native;
}

wxTextCtrl* Bindings::textBox(wxWindow* parent, TextBox& model, const std::string& name) {
    auto* native = new wxTextCtrl(parent, wxID_ANY);
    native->SetName(name);
    native->Bind(wxEVT_TEXT,
                 [native, &model](wxCommandEvent&) { model.userSetText(enteredLine(*native)); });
    followWidget(model, *native, [native, &model](Property property) {
        const wxString text = nativeText(model.text());
        if (property == Property::value && native->GetValue() != text) {
            native->ChangeValue(text);
        }
    });
    return native;
}

wxSlider* Bindings::slider(wxWindow* parent, ScrollBar& model, const std::string& name) {
    auto* native = new wxSlider(parent, wxID_ANY, model.value(), model.minimum(),
                                std::max(model.maximum(), model.minimum() + 1));
    native->SetName(name);
    // Only where the thumb comes to rest counts: the picture is not redrawn for every step between.
    native->Bind(wxEVT_SCROLL_CHANGED,
                 [native, &model](wxScrollEvent&) { model.userSetValue(native->GetValue()); });
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::range) {
            native->SetRange(model.minimum(), std::max(model.maximum(), model.minimum() + 1));
            native->SetLineSize(model.smallChange());
            native->SetPageSize(model.largeChange());
        } else if (property == Property::value && native->GetValue() != model.value()) {
            native->SetValue(model.value());
        }
    });
    return native;
}

LinkText* Bindings::link(wxWindow* parent, LinkLabel& model, const std::string& name, int width) {
    auto* native = new LinkText(parent, nativeText(name), width);
    native->onOpen = [&model] { model.userClick(); };
    followWidget(model, *native, [this, native, &model](Property property) {
        if (property == Property::caption) {
            native->setText(nativeText(model.caption()));
            if (onLinkChanged) {
                onLinkChanged();
            }
        }
    });
    return native;
}

PictureBox* Bindings::pictureBox(wxWindow* parent, Picture& model, const std::string& name,
                                 const wxSize& smallest, PictureBox::Keyboard keyboard,
                                 PictureBox::Ground ground) {
    auto* native = new PictureBox(parent, nativeText(name), smallest, keyboard, ground);
    pictureBoxes_.push_back(native);
    native->onMouseDown = [&model](MouseButton button, int x, int y) {
        model.userMouseDown(button, x, y);
    };
    native->onMouseMove = [&model](int x, int y) { model.userMouseMove(x, y); };
    native->onMouseUp = [&model](MouseButton button, int x, int y) {
        model.userMouseUp(button, x, y);
    };
    native->onResized = [alive = alive_, &model](wxSize size) {
        if (*alive) {
            model.userResize(size.x, size.y);
        }
    };
    return native;
}

PictureBox* Bindings::picture(wxWindow* parent, Picture& model, const std::string& name,
                              const wxSize& smallest, PictureBox::Keyboard keyboard,
                              PictureBox::Ground ground) {
    PictureBox* native = pictureBox(parent, model, name, smallest, keyboard, ground);
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::picture) {
            showIn(*native, model);
        }
    });
    return native;
}

PictureBox* Bindings::placedPicture(wxWindow* parent, Picture& model, const std::string& name) {
    PictureBox* native = picture(parent, model, name, wxSize(1, 1), PictureBox::Keyboard::ignored,
                                 PictureBox::Ground::window);
    native->onResized = {};
    return native;
}

PictureBox* Bindings::pictureStack(wxWindow* parent, const std::vector<Picture*>& models,
                                   const std::string& name, const wxSize& smallest,
                                   PictureBox::Keyboard keyboard) {
    PictureBox* native =
        pictureBox(parent, *models.front(), name, smallest, keyboard, PictureBox::Ground::window);
    const int home = models.front()->left();
    for (Picture* model : models) {
        follow(*model, [native, models, home](Property property) {
            if (property != Property::range && property != Property::visible &&
                property != Property::picture) {
                return;
            }
            for (const Picture* one : models) {
                if (one->visible() && one->left() == home) {
                    showIn(*native, *one);
                    return;
                }
            }
        });
    }
    return native;
}

} // namespace veldara
