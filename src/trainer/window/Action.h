// Something that the operator can do with the program: an entry of its menus, a button of the part's toolbar,
// a key. What it does and when it is possible stands here; a window shows it and triggers it. An action with
// entries is a menu inside of a menu.
#pragma once

#include <string>
#include <utility>
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

class Action;
// A menu of the menu bar, or what stands on a toolbar; a null entry is a separator.
using ActionList = std::vector<Action*>;

class Action {
  public:
    explicit Action(ActionFace face, ActionList entries = {})
        : face_(std::move(face)), entries_(std::move(entries)), text_(face_.text) {}
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;

    const std::string& name() const noexcept { return face_.name; }
    const ActionFace& face() const noexcept { return face_; }
    const ActionList& entries() const noexcept { return entries_; }
    // As it stands in the menu now; "&" marks the access key.
    const std::string& text() const noexcept { return text_; }
    bool enabled() const noexcept { return enabled_; }
    bool checked() const noexcept { return checked_; }
    // It stands in its menu.
    bool visible() const noexcept { return visible_; }
    void setText(const std::string& text) {
        if (std::exchange(text_, text) != text) changed();
    }
    void setEnabled(bool enabled) {
        if (std::exchange(enabled_, enabled) != enabled) changed();
    }
    void setChecked(bool checked) {
        if (std::exchange(checked_, checked) != checked) changed();
    }

    void setVisible(bool visible) {
        if (std::exchange(visible_, visible) != visible) changed();
    }

    // As if the operator chose it; nothing happens while it is disabled. Raises what its subscribers raise.
    void trigger() {
        if (enabled_) triggered();
    }

    ui::Signal<> triggered;
    // Text, enabled, checked or visible.
    ui::Signal<> changed;

  private:
    const ActionFace face_;
    const ActionList entries_;
    std::string text_;
    bool enabled_ = true;
    bool checked_ = false;
    bool visible_ = true;
};

// A text of the operator's own as it stands in a menu, where "&" would mark an access key.
inline std::string withoutAccessKeys(const std::string& text) {
    std::string result;
    for (const char one : text) result.append(one == '&' ? 2 : 1, one);
    return result;
}

struct ActionMenu {
    std::string caption;  // "&" marks the access key
    ActionList entries;
};

}  // namespace dravik::trainer
