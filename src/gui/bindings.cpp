#include "gui/bindings.h"

#include "gui/accessibility.h"
#include "gui/first_show.h"
#include "gui/inner_container.h"
#include "gui/layout.h"
#include "gui/native_text.h"
#include "gui/refusal_tip.h"

#include <algorithm>
#include <utility>

namespace veldara {

namespace {

constexpr Property allProperties[] = {
    Property::visible, Property::enabled, Property::caption, Property::toolTip, Property::items,
    Property::range,   Property::value,   Property::picture, Property::overlay, Property::pointer};

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

// The caret stays behind what it stood behind.
void showText(wxTextCtrl& field, const wxString& text) {
    if (field.GetValue() != text) {
        const long fromEnd = field.GetLastPosition() - field.GetInsertionPoint();
        field.ChangeValue(text);
        field.SetInsertionPoint(std::max(0L, field.GetLastPosition() - fromEnd));
    }
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
        if (!focusByLetter(event) && !runShortcut(event)) {
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
    shortcuts_.clear();
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
            bringToFront(window_);
            // On Windows the frame itself would take the keyboard from the control that has it.
            wxWindow* const focused = wxWindow::FindFocus();
            if (focused == nullptr || !window_.IsDescendant(focused)) {
                window_.SetFocus();
            }
        } else if (property == Property::range && onLayoutChanged) {
            onLayoutChanged();
        }
    });
}

// The cross and the four-way arrow tell what the mouse does in a picture; over the other controls
// they would mean nothing. The hourglass counts everywhere.
void Bindings::applyPointer(Pointer pointer) {
    const wxCursor cursor(cursorOf(pointer));
    for (PictureBox* box : pictureBoxes_) {
        box->showPointer(cursor, pointer == Pointer::move);
    }
    window_.SetCursor(pointer == Pointer::hourglass ? cursor : wxNullCursor);
}

void Bindings::menu(wxMenuBar& bar, wxMenu* menu, const MenuItem& model) {
    bar.Append(menu, nativeText(model.caption()));
    const std::size_t letter = model.caption().find('&') + 1; // 0: none
    claimLetter(letter == 0 ? '\0' : model.caption()[letter]);
}

void Bindings::menuItem(wxMenu& menu, MenuItem& model, const std::string& key) {
    const auto label = [&model, key] {
        return nativeText(key.empty() ? model.caption() : model.caption() + "\t" + key);
    };
    wxMenuItem* item = menu.Append(wxID_ANY, label());
    item->SetHelp(nativeText(model.name()));
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

void Bindings::checkItem(wxMenu& menu, CheckBox& model, std::function<void(bool)> changed) {
    wxMenuItem* item = menu.AppendCheckItem(wxID_ANY, nativeText(model.caption()));
    item->SetHelp(nativeText(model.name()));
    window_.Bind(
        wxEVT_MENU, [&model](wxCommandEvent& event) { model.userSetChecked(event.IsChecked()); },
        item->GetId());
    follow(model, [item, &model, changed = std::move(changed)](Property property) {
        if (property == Property::value) {
            item->Check(model.checked());
            changed(model.checked());
        }
    });
}

void Bindings::listMenu(wxMenu& opener, ListMenu& model) {
    auto* submenu = new wxMenu;
    wxMenuItem* item = opener.AppendSubMenu(submenu, nativeText(model.caption()));
    window_.Bind(wxEVT_MENU_OPEN, [&opener, &model](wxMenuEvent& event) {
        if (event.GetMenu() == &opener) {
            model.userOpen();
        }
        event.Skip();
    });
    follow(model, [this, submenu, item, &model](Property property) {
        if (property == Property::items) {
            fillListMenu(*submenu, model);
        }
        if (property == Property::items || property == Property::enabled) {
            item->Enable(model.enabled() && !model.items().empty());
        }
    });
}

void Bindings::fillListMenu(wxMenu& menu, ListMenu& model) {
    while (menu.GetMenuItemCount() > 0) {
        menu.Destroy(menu.FindItemByPosition(0));
    }
    for (std::size_t i = 0; i < model.items().size(); ++i) {
        // The keys 1 to 9, and 0 for the tenth.
        const wxString key = wxString::Format("&%d ", static_cast<int>((i + 1) % 10));
        wxMenuItem* entry = menu.Append(wxID_ANY, key + nativeLabel(model.items()[i], 0));
        const int index = static_cast<int>(i);
        menu.Bind(
            wxEVT_MENU, [&model, index](wxCommandEvent&) { model.userClick(index); },
            entry->GetId());
    }
}

void Bindings::shortcut(int modifiers, int key, std::function<void()> act) {
    shortcuts_[{modifiers, key}] = std::move(act);
}

bool Bindings::runShortcut(const wxKeyEvent& event) {
    const auto found = shortcuts_.find({event.GetModifiers(), event.GetKeyCode()});
    if (found == shortcuts_.end()) {
        return false;
    }
    later(found->second);
    return true;
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

wxStaticBox* Bindings::frame(wxWindow* parent, Frame& model) {
    auto* native =
        new InnerContainer<wxStaticBox>(parent, wxID_ANY, nativeLabel(model.caption(), 0));
    native->SetName(nativeText(model.name()));
    followWidget(model, *native, [native, &model](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), 0));
        }
    });
    return native;
}

wxButton* Bindings::button(wxWindow* parent, Button& model, char mnemonic) {
    auto* native = new wxButton(parent, wxID_ANY, nativeLabel(model.caption(), mnemonic));
    pressByLetter(mnemonic, *native, [&model] { model.userClick(); });
    native->SetName(nativeText(model.name()));
    native->Bind(wxEVT_BUTTON, [&model](wxCommandEvent&) { model.userClick(); });
    followWidget(model, *native, [native, &model, mnemonic](Property property) {
        if (property == Property::caption) {
            native->SetLabel(nativeLabel(model.caption(), mnemonic));
        }
    });
    return native;
}

wxCheckBox* Bindings::checkBox(wxWindow* parent, CheckBox& model, char mnemonic) {
    auto* native = new wxCheckBox(parent, wxID_ANY, nativeLabel(model.caption(), mnemonic));
    pressByLetter(mnemonic, *native, [&model] { model.userSetChecked(!model.checked()); });
    native->SetName(nativeText(model.name()));
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

wxRadioButton* Bindings::option(wxWindow* parent, OptionButton& model, char mnemonic,
                                bool firstOfGroup) {
    auto* native =
        new wxRadioButton(parent, wxID_ANY, nativeLabel(model.caption(), mnemonic),
                          wxDefaultPosition, wxDefaultSize, firstOfGroup ? wxRB_GROUP : 0);
    pressByLetter(mnemonic, *native, [native, &model] {
        native->SetFocus(); // as the system does, so that Tab goes on from here
        model.userSelect();
    });
    native->SetName(nativeText(model.name()));
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

wxTextCtrl* Bindings::textBox(wxWindow* parent, TextBox& model) {
    auto* native = new wxTextCtrl(parent, wxID_ANY);
    native->SetName(nativeText(model.name()));
    native->Bind(wxEVT_TEXT,
                 [native, &model](wxCommandEvent&) { model.userSetText(enteredLine(*native)); });
    followField(model, *native, [native, &model](Property property) {
        if (property == Property::value || property == Property::refused) {
            showText(*native, nativeText(model.text()));
        }
        if (property == Property::refused) {
            RefusalTip::show(*native, nativeText(model.refusal()));
        }
    });
    return native;
}

wxSlider* Bindings::slider(wxWindow* parent, ScrollBar& model) {
    auto* native = new wxSlider(parent, wxID_ANY, model.value(), model.minimum(),
                                std::max(model.maximum(), model.minimum() + 1));
    native->SetName(nativeText(model.name()));
    // Only where the thumb comes to rest counts: the picture is not redrawn for every step between.
    zoomByKeys(model, *native);
    native->Bind(wxEVT_SCROLL_CHANGED,
                 [native, &model](wxScrollEvent&) { model.userSetValue(native->GetValue()); });
    followField(model, *native, [native, &model](Property property) {
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

// Up and Page Up go to the maximum, as the wheel does: on some systems they would go to the left.
void Bindings::zoomByKeys(ScrollBar& model, wxSlider& slider) {
    slider.Bind(wxEVT_KEY_DOWN, [&model](wxKeyEvent& event) {
        const int key = event.HasAnyModifiers() ? WXK_NONE : event.GetKeyCode();
        if (key == WXK_UP || key == WXK_DOWN) {
            model.userStep(key == WXK_UP ? 1 : -1);
        } else if (key == WXK_PAGEUP || key == WXK_PAGEDOWN) {
            model.userPage(key == WXK_PAGEUP ? 1 : -1);
        } else {
            event.Skip();
        }
    });
}

LinkText* Bindings::link(wxWindow* parent, LinkLabel& model, int width) {
    auto* native = new LinkText(parent, nativeText(model.name()), width);
    setAccessibleRole(*native, AccessibleRole::link);
    native->onOpen = [&model] { model.userClick(); };
    followWidget(model, *native, [this, native, &model](Property property) {
        if (property == Property::caption) {
            native->setText(nativeText(model.caption()));
            setAccessibleName(*native, nativeText(model.caption()));
            if (onLinkChanged) {
                onLinkChanged();
            }
        }
    });
    return native;
}

PictureBox* Bindings::pictureBox(wxWindow* parent, Picture& model, const wxSize& smallest,
                                 PictureBox::Keyboard keyboard, PictureBox::Ground ground) {
    auto* native = new PictureBox(parent, nativeText(model.name()), smallest, keyboard, ground);
    pictureBoxes_.push_back(native);
    setAccessibleRole(*native, AccessibleRole::picture);
    setAccessibleName(*native, nativeText(model.caption()));
    native->onMouseDown = [&model](MouseButton button, int x, int y) {
        model.userMouseDown(button, x, y);
    };
    native->onDoubleClick = [&model] { model.userDoubleClick(); };
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

PictureBox* Bindings::picture(wxWindow* parent, Picture& model, const wxSize& smallest,
                              PictureBox::Keyboard keyboard, PictureBox::Ground ground) {
    PictureBox* native = pictureBox(parent, model, smallest, keyboard, ground);
    if (ground == PictureBox::Ground::list) {
        native->onColoursChanged = [alive = alive_, native, &model] {
            if (*alive) {
                const wxColour colour = native->groundColour();
                model.userSetGround({colour.Red(), colour.Green(), colour.Blue()});
            }
        };
        native->onColoursChanged();
    }
    followWidget(model, *native, [this, native, &model](Property property) {
        if (property == Property::picture) {
            showIn(*native, model);
        } else if (property == Property::overlay) {
            native->showOverlay(model.overlay());
        } else if (property == Property::caption && !model.caption().empty()) {
            setAccessibleName(*native, nativeText(model.caption()));
            speakLater(*native, nativeText(model.caption()));
        }
    });
    return native;
}

PictureBox* Bindings::placedPicture(wxWindow* parent, Picture& model) {
    PictureBox* native = picture(parent, model, wxSize(1, 1), PictureBox::Keyboard::ignored,
                                 PictureBox::Ground::window);
    native->onResized = {};
    return native;
}

PictureBox* Bindings::pictureStack(wxWindow* parent, const std::vector<Picture*>& models,
                                   const wxSize& smallest, PictureBox::Keyboard keyboard) {
    PictureBox* native =
        pictureBox(parent, *models.front(), smallest, keyboard, PictureBox::Ground::window);
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
