// A scripted session in the real window: makes a font through its dialogs, teaches it from images whose texts
// stand in a list beside them, learns, saves and reads other images. Says what happens and leaves a picture
// of each stage. What it does is the same under every window system; the hands that do it are not.
#pragma once

#include <functional>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "ui/Platform.h"

namespace dravik::trainer {

// A step that did not come out, in words.
class DemoFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Works the window of the program as an operator does. Controls are found by the names of their widgets, in
// the topmost window that has one. Raises DemoFailure for what is not there or cannot be worked.
class DemoHands {
  public:
    using Step = std::function<void()>;

    DemoHands() = default;
    DemoHands(const DemoHands&) = delete;
    DemoHands& operator=(const DemoHands&) = delete;
    virtual ~DemoHands() = default;

    // Shows the window and gives its title.
    virtual std::string show() = 0;
    virtual void open(const std::vector<std::string>& images) = 0;
    virtual void closeForms() = 0;

    virtual bool canClick(const std::string& name) const = 0;
    virtual void click(const std::string& name) = 0;
    virtual void clickTool(const std::string& bar, const std::string& key) = 0;
    // Types over what stands in a text box.
    virtual void type(const std::string& name, const std::string& text) = 0;
    virtual std::string caption(const std::string& name) const = 0;
    // The screen's status line.
    virtual std::string message() const = 0;
    // Gives a chart the focus and goes to its last bar by key.
    virtual void goToLastBar(const std::string& chart) = 0;

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
};

class DemoSession {
  public:
    enum class Kind {
        Story,  // new font, includes, learn, save, read; pictures are numbered
        Guide,  // every form and state that the operator guide shows; one sample is given a wrong label to be
                // found
    };

    // Pictures go to the folder, which exists; `out` gets a line for each step.
    DemoSession(DemoHands& hands, Trainer& trainer, std::string folder, std::ostream& out,
                Kind kind = Kind::Story);

    // Teaches from the images of all paths but the last and reads those of the last; of a single path the
    // last image is read. Raises DemoFailure.
    void run(const std::vector<std::string>& paths);

  private:
    struct Task {
        std::string image;
        std::string text;
    };

    void plan(const std::vector<std::string>& paths);
    void makeFont();
    void showMismatch(const Task& task);
    void include(const Task& task);
    void learn();
    void save();
    void read(const Task& task, bool& allRight);
    void inspect();
    void showOtherDialogs(const Task& task);

    void makeCurrent(const std::string& image);
    void say(const std::string& line);
    void picture(const std::string& name);

    DemoHands& hands_;
    Trainer& trainer_;
    const std::string folder_;
    std::ostream& out_;
    const Kind kind_;
    std::vector<Task> lessons_;
    std::vector<Task> readings_;
    int pictures_ = 0;
};

}  // namespace dravik::trainer
