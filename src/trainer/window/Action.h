// Something that the operator can do with the program: an entry of its menus, a button of the part's toolbar,
// a key. What it does and when it is possible stands here; a window shows it and triggers it.
#pragma once

#include <string>
#include <vector>

#include "ui/Picture.h"
#include "ui/Signal.h"

namespace dravik::trainer {

// How an action is shown.
struct ActionFace {
    std::string name;  // by which scripts and tests find it
    std::string text;  // in a menu at first; "&" marks the access key
    std::string tip;
    // As in "Ctrl+Shift+O": shift states, then a letter, digit or mark as the keyboard types it without them,
    // or "Left", "Right", "F1" and so on. The first one stands in the menu.
    std::vector<std::string> keys{};
    ui::Picture picture{};
    bool checkable = false;
};

class Action {
  public:
    explicit Action(ActionFace face) : face_(std::move(face)), text_(face_.text) {}
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;

    const std::string& name() const noexcept { return face_.name; }
    const ActionFace& face() const noexcept { return face_; }
    // As it stands in the menu now; "&" marks the access key.
    const std::string& text() const noexcept { return text_; }
    bool enabled() const noexcept { return enabled_; }
    bool checked() const noexcept { return checked_; }
    void setText(std::string text) {
        if (std::exchange(text_, text) != text) changed();
    }
    void setEnabled(bool enabled) {
        if (std::exchange(enabled_, enabled) != enabled) changed();
    }
    void setChecked(bool checked) {
        if (std::exchange(checked_, checked) != checked) changed();
    }

    // As if the operator chose it; nothing happens while it is disabled. Raises what its subscribers raise.
    void trigger() {
        if (enabled_) triggered();
    }

    ui::Signal<> triggered;
    // Text, enabled or checked.
    ui::Signal<> changed;

  private:
    const ActionFace face_;
    std::string text_;
    bool enabled_ = true;
    bool checked_ = false;
};

// A menu of the menu bar, or what stands on a toolbar; a null entry is a separator.
using ActionList = std::vector<Action*>;
struct ActionMenu {
    std::string caption;  // "&" marks the access key
    ActionList entries;
};

}  // namespace dravik::trainer
