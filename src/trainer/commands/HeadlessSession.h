// The training screen without a display: bound to the embedded tool, its dialogs worked by script, and
// everything that it says written down.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "engine/embedded/EmbeddedTool.h"
#include "screen/shell/DravikDlg.h"
#include "trainer/commands/HeadlessPlatform.h"

namespace dravik::trainer {

class HeadlessSession {
  public:
    explicit HeadlessSession(JobFolder folder);

    engine::EmbeddedTool& tool() noexcept { return *tool_; }
    screen::Screen& screen() noexcept { return control_.screen(); }
    screen::DravikDlg& control() noexcept { return control_; }
    const HeadlessPlatform& platform() const noexcept { return platform_; }
    const JobFolder& folder() const noexcept { return folder_; }

    // Presses a button of the screen as the operator would, after forgetting what was said and asked before.
    // Raises Failure when the button is disabled.
    void press(ui::Button& button);
    void forget();

    // Chooses a font in the font manager and makes it there when it is missing. Raises Failure with the
    // reason.
    void selectFont(const std::string& name);

    // The status bar's message.
    std::string message();
    // True when the status bar said exactly this since it was last forgotten.
    bool said(const std::string& text) const;
    // The description of the first failure reported on the status bar since then, nothing when all went well.
    std::optional<std::string> failure() const;

  private:
    void useFontManager(ui::Form& manager, const std::string& name);

    JobFolder folder_;
    HeadlessPlatform platform_;
    std::shared_ptr<engine::EmbeddedTool> tool_;
    screen::DravikDlg control_;
    std::vector<std::string> messages_;
    ui::Connection connection_;
};

// The font of a list that the operator means: the one of that name, else the one of the name as the new-font
// dialog writes it; nothing when there is none.
std::optional<std::string> fontNamed(const std::string& name, const std::vector<std::string>& fonts);

// The text on one line: line breaks and tabs become blanks, and blanks in a row become one.
std::string onOneLine(const std::string& text);

}  // namespace dravik::trainer
