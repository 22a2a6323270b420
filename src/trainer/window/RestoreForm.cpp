#include "trainer/window/RestoreForm.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"
#include "base/TimeText.h"
#include "tool/FontName.h"

namespace dravik::trainer {
namespace {

using tool::FontVersion;

std::string kindText(FontVersion::Kind kind) {
    switch (kind) {
        case FontVersion::Kind::Deleted:
            return "deleted";
        case FontVersion::Kind::Discarded:
            return "changes not kept";
        default:
            return "replaced by a later save";
    }
}

// "hack, 2026-11-22 14:03:10: 222 samples, trained (deleted)"
std::string versionText(const FontVersion& version) {
    return version.font + ", " + localTimeText(version.when) + ": " +
           (version.samples == 1 ? std::string("1 sample") : std::to_string(version.samples) + " samples") +
           (version.trained ? ", trained" : ", not trained") + " (" + kindText(version.kind) + ")";
}

constexpr char kHint[] = "A font of that name is kept as a version itself.";

}  // namespace

RestoreForm::RestoreForm(ui::Platform& platform, std::vector<FontVersion> versions, const std::string& font,
                         Restore restore)
    : ui::Form("restoreForm", "Restore Font"),
      platform_(platform),
      versions_(std::move(versions)),
      restore_(std::move(restore)) {
    std::vector<std::string> lines;
    for (const FontVersion& version : versions_) lines.push_back(versionText(version));
    lbVersions.setItems(std::move(lines));
    lbVersions.setAccessibleName("Versions");
    txtName.setAccessibleName("Restore as");
    lblHint.setUsesMnemonic(false);
    setLayout(ui::column({
        ui::item(lblVersions),
        ui::item(lbVersions).stretched().atLeast(8400, 3600),
        ui::row({ui::item(lblName), ui::item(txtName).stretched()}),
        ui::item(lblHint),
        ui::row({ui::space(), ui::item(OKButton), ui::item(CancelButton)}),
    }));
    defaultButton = &OKButton;
    cancelButton = &CancelButton;
    resizable = true;

    loading.subscribe([this, font] {
        const auto first = std::find_if(versions_.begin(), versions_.end(),
                                        [&](const FontVersion& version) { return version.font == font; });
        const auto index = first == versions_.end() ? 0 : first - versions_.begin();
        lbVersions.setListIndex(versions_.empty() ? -1 : static_cast<int>(index));
        showChoice();
    });
    activated.subscribe([this] { lbVersions.setFocus(); });
    lbVersions.click.subscribe([this] { showChoice(); });
    lbVersions.doubleClick.subscribe([this] { OKButton.press(); });
    txtName.textChanged.subscribe([this] { showPossible(); });
    OKButton.click.subscribe([this] { restoreChosen(); });
    CancelButton.click.subscribe([this] { unload(); });
}

const FontVersion* RestoreForm::chosen() const {
    const int index = lbVersions.listIndex();
    return index < 0 ? nullptr : &versions_[static_cast<std::size_t>(index)];
}

void RestoreForm::showChoice() {
    const FontVersion* version = chosen();
    lblHint.setCaption(versions_.empty() ? "There are no older versions yet." : kHint);
    txtName.setText(version ? version->font : "");
    showPossible();
}

void RestoreForm::showPossible() {
    const std::string name = tool::CleanFontName(txtName.text());
    OKButton.setEnabled(chosen() && !name.empty() && !tool::isReservedFontName(name));
}

void RestoreForm::restoreChosen() {
    const FontVersion* version = chosen();
    if (!version) return;
    try {
        restore_(*version, tool::CleanFontName(txtName.text()));
    } catch (...) {
        platform_.messageBox({currentFailure().description(), "Not Restored", ui::MessageBox::Buttons::Ok,
                              ui::MessageBox::Icon::Critical});
        return;
    }
    unload();
}

}  // namespace dravik::trainer
