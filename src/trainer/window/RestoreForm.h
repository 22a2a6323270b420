// Font > Restore: the older versions of the fonts, those of deleted fonts and of discarded changes included,
// of which one is made a font again.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tool/FontHistory.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/Platform.h"
#include "ui/TextBox.h"

namespace dravik::trainer {

class RestoreForm : public ui::Form {
  public:
    // Restores a version under a name; what it raises is told in a box, and the form stays.
    using Restore = std::function<void(const tool::FontVersion&, const std::string& name)>;

    // Versions in the order in which they are listed; the first one of `font` is chosen at first. The
    // platform outlives the form.
    RestoreForm(ui::Platform& platform, std::vector<tool::FontVersion> versions, const std::string& font,
                Restore restore);

  private:
    const tool::FontVersion* chosen() const;
    void showChoice();
    void showPossible();
    void restoreChosen();

    ui::Label lblVersions{"lblVersions", "&Versions"};
    ui::ListBox lbVersions{"lbVersions"};
    ui::Label lblName{"lblName", "Restore &as"};
    ui::TextBox txtName{"txtName"};
    ui::Label lblHint{"lblHint"};
    ui::Button OKButton{"OKButton", "&Restore"};
    ui::Button CancelButton{"CancelButton", "Cancel"};

    ui::Platform& platform_;
    const std::vector<tool::FontVersion> versions_;
    const Restore restore_;
};

}  // namespace dravik::trainer
