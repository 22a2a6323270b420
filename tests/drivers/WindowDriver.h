// Works the window of the trainer as an operator does, under whatever window system it is shown.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "trainer/window/TrainerWindow.h"

namespace dravik::test {

// A step that did not come out, in words.
class SessionFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Controls are found by the names of their widgets, in the topmost window that has one. Raises SessionFailure
// for what is not there or cannot be worked.
class WindowDriver {
  public:
    using Step = std::function<void()>;

    // The window outlives the driver.
    explicit WindowDriver(trainer::TrainerWindow& model) : model_(model) {}
    WindowDriver(const WindowDriver&) = delete;
    WindowDriver& operator=(const WindowDriver&) = delete;
    virtual ~WindowDriver() = default;

    // Shows the window and gives its title.
    virtual std::string show() = 0;
    void open(const std::vector<std::string>& images) { model_.open(images); }
    virtual void closeForms() = 0;

    virtual bool canClick(const std::string& name) const = 0;
    virtual void click(const std::string& name) = 0;
    virtual void clickTool(const std::string& bar, const std::string& key) = 0;
    // An entry of the menus, by the name of its action.
    void trigger(const std::string& action) { model_.actions.find(action).trigger(); }
    // Types over what stands in a text box.
    virtual void type(const std::string& name, const std::string& text) = 0;
    virtual std::string caption(const std::string& name) const = 0;
    // The screen's status line.
    virtual std::string message() const = 0;
    // Gives a view the focus and goes to the bar or the character before by key, at first to the last one.
    virtual void pressLeft(const std::string& view) = 0;

    // The next form of that name that comes up modally, the next message box, or the menu that the menu key
    // opens on a control, is worked by the step. A box is closed behind it; of a menu the item whose caption
    // begins so is picked, "" closes it.
    virtual void expectForm(const std::string& form, Step step) = 0;
    virtual void expectBox(Step step) = 0;
    virtual void openMenu(const std::string& menu, const std::string& at, const std::string& item,
                          Step step) = 0;
    // Answers the boxes that no step expects; messages() are their texts since the last call.
    virtual void answerBoxes(ui::Answer answer) = 0;
    virtual std::vector<std::string> messages() const = 0;
    // What did not come up, and what came up though nobody expected it.
    virtual std::vector<std::string> problems() const = 0;

    // Handles events until the condition holds; false when it does not within the time.
    virtual bool waitUntil(const std::function<bool()>& condition, int milliseconds) = 0;
    // Writes the window with everything that stands over it, as the operator sees it, as a PNG file.
    virtual void picture(const std::string& file) = 0;

  private:
    trainer::TrainerWindow& model_;
};

}  // namespace dravik::test
