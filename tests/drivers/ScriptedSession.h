// A scripted session in the real window: makes a font through its dialogs, teaches it from images whose texts
// stand in a list beside them, learns, saves and reads other images. Says what happens and leaves a picture
// of each stage. What it does is the same under every window system; the driver is not.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "drivers/WindowDriver.h"
#include "trainer/Trainer.h"

namespace dravik::test {

class ScriptedSession {
  public:
    enum class Kind {
        Story,  // new font, includes, learn, save, read; pictures are numbered
        Guide,  // every form and state that the operator guide shows; one sample is given a wrong label to be
                // found
    };

    // Pictures go to the folder, which exists; `out` gets a line for each step.
    ScriptedSession(WindowDriver& driver, trainer::Trainer& trainer, std::string folder, std::ostream& out,
                    Kind kind = Kind::Story);

    // Teaches from all images but the last, which is read. Raises SessionFailure.
    void run(const std::vector<std::string>& images);

  private:
    struct Task {
        std::string image;
        std::string text;
    };

    Task taskOf(const std::string& image) const;
    void makeFont();
    void showMismatch(const Task& task);
    void include(const Task& task);
    void learn();
    void save();
    void read();
    void inspect();
    void showOtherDialogs(const Task& task);
    void showImageTools();

    void makeCurrent(const std::string& image);
    void say(const std::string& line);
    void picture(const std::string& name);

    WindowDriver& driver_;
    trainer::Trainer& trainer_;
    const std::string folder_;
    std::ostream& out_;
    const Kind kind_;
    std::vector<Task> lessons_;
    Task reading_;
    int pictures_ = 0;
};

}  // namespace dravik::test
