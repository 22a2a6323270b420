// What the operator did to the fonts, in the program around the screen: each act is told to the tool's
// history, can be taken back and done again, and is said in words where something was lost by it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "screen/shell/DravikDlg.h"
#include "tool/FontHistory.h"
#include "tool/FontTool.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class FontActs {
  public:
    using CurrentFont = std::function<std::optional<std::string>()>;

    // The history is the tool's; `currentFont` gives the tool's current font. All outlive this object.
    FontActs(screen::DravikDlg& control, tool::FontTool& tool, tool::FontHistory& history,
             CurrentFont currentFont);

    // "Undo deletion of 3 samples of B" as it stands in a menu; nothing when there is nothing to take back,
    // and during a run.
    std::optional<std::string> undoText() const;
    std::optional<std::string> redoText() const;
    // The font and the screen as they were before the last act, or after the next one. A failure is told on
    // the screen.
    void undo();
    void redo();

    // Changes the current font by `body` as one act: `words` name it behind "Undo ", "" has them found. The
    // screen then shows the font anew, and `notice` is said. A failure is told on the screen; what was done
    // of it is an act all the same.
    void change(const std::string& words, const std::function<void()>& body, const std::string& notice = {});

    // The current font has changes that are not in its file.
    bool isUnsaved() const;
    // Writes the current font to its file, in whatever state the screen is. A failure is told on the screen.
    void save();
    // Makes a font of an older version and shows it. Raises as FontHistory::restoreVersion().
    void restore(const tool::FontVersion& version, const std::string& name);
    // Makes a font of a file that lies elsewhere and shows it. Raises as FontHistory::importFont().
    void importFont(const std::string& file, const std::string& name);
    // Shows another font. A failure is told on the screen.
    void show(const std::string& name);
    // The screen waits for a decision about what was learnt, and neither Save nor Revert need be possible:
    // lets it go on. The changes stay unsaved.
    void leaveDecision();

    // What the last act deleted or what was taken back, e.g. "Deleted f, E, s", or why it failed, which
    // the screen's own messages soon cover; "" when there is nothing to say.
    const std::string& notice() const noexcept { return notice_; }
    // The failure that the screen has reported in the present act; "" when it has not.
    const std::string& failure() const noexcept { return failure_; }
    // Says something of the program's own in the same place.
    void say(std::string notice);
    // Changes of an earlier run of the program that were found unsaved and are in their fonts again: a line
    // each, once.
    std::vector<std::string> takeRecovered();

    // The font is about to be changed by change(), undo() or redo().
    ui::Signal<> moving;
    // Any of the above.
    ui::Signal<> changed;
    // The font went back or forth, or another one is shown.
    ui::Signal<> moved;

  private:
    void record(const screen::OperatorAct& act);
    void guardScreen(const screen::OperatorAct& act);
    void removeUnused(const std::string& brought);
    bool emptyTable();
    void fontMayHaveChanged();
    void forgetFailure();
    void step(const std::optional<std::string>& words, const char* source, const char* done,
              std::string (tool::FontHistory::*move)());
    screen::ScreenState plainState() const;
    bool isTraining() const;

    screen::DravikDlg& control_;
    tool::FontTool& tool_;
    tool::FontHistory& history_;
    const CurrentFont currentFont_;
    std::string shownFont_;
    std::string notice_;
    std::string failure_;  // of the present act
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
