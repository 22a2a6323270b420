// A scripted session in the real window: makes a font through its dialogs, teaches it from images whose texts
// stand in a list beside them, learns, saves and reads other images. Says what happens and leaves a picture
// of each stage. It finds every control by its name and works it by messages, wherever the screen lives.
#pragma once

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

#include "activex/host/DialogScript.h"
#include "activex/host/MainWindow.h"

namespace dravik {

// A step that did not come out, in words.
class DemoFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class DemoSession {
  public:
    enum class Kind {
        Story,  // new font, includes, learn, save, read; pictures are numbered
        Guide,  // every form and state that the operator guide shows; one sample is given a wrong label to be
                // found
    };

    // Pictures go to the folder, which exists; `out` gets a line for each step.
    DemoSession(MainWindow& window, Trainer& trainer, std::string folder, std::ostream& out,
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
    void openMenu(const char* cell, const std::wstring& item, const char* pictureName);
    void closeForms();

    void makeCurrent(const std::string& image);
    void say(const std::string& line);
    void picture(const std::string& name);
    void require(bool condition, const std::string& what) const;
    HWND find(const std::string& name) const;
    void click(const std::string& name);
    void clickTool(const std::string& bar, int index);
    void typeInto(const std::string& name, const std::string& text);
    bool canClick(const std::string& name) const { return IsWindowEnabled(find(name)) != FALSE; }
    std::string message() const;

    MainWindow& window_;
    Trainer& trainer_;
    const std::string folder_;
    std::ostream& out_;
    const Kind kind_;
    DialogScript script_;
    std::vector<Task> lessons_;
    std::vector<Task> readings_;
    int pictures_ = 0;
};

}  // namespace dravik
