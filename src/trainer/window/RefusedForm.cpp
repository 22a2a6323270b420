#include "trainer/window/RefusedForm.h"

#include <utility>

#include "base/Paths.h"

namespace dravik::trainer {

RefusedForm::RefusedForm(const std::vector<BatchInclude::Refused>& refused,
                         std::function<void(const std::string& path)> open)
    : ui::Form("refusedForm", "Not Included") {
    std::vector<std::string> lines, paths;
    for (const BatchInclude::Refused& one : refused) {
        lines.push_back(fromPath(toPath(one.path).filename()) + ": " + one.reason);
        paths.push_back(one.path);
    }
    lblRefused.setCaption(refused.size() == 1
                              ? "This image is not included. Open it to correct its text:"
                              : "These images are not included. Open one to correct its text:");
    lbRefused.setAccessibleName("Images that are not included");
    lbRefused.setItems(lines);
    lbRefused.setListIndex(lines.empty() ? -1 : 0);
    setLayout(ui::column({ui::item(lblRefused), ui::item(lbRefused).stretched().atLeast(6600, 3000),
                          ui::row({ui::space(), ui::item(cmdOpen), ui::item(CancelButton)})}));
    defaultButton = &cmdOpen;
    cancelButton = &CancelButton;
    resizable = true;
    activated.subscribe([this] { lbRefused.setFocus(); });
    const auto openChosen = [this, paths, open = std::move(open)] {
        const int index = lbRefused.listIndex();
        unload();
        if (index >= 0) open(paths[static_cast<std::size_t>(index)]);
    };
    cmdOpen.click.subscribe(openChosen);
    lbRefused.doubleClick.subscribe(openChosen);
    CancelButton.click.subscribe([this] { unload(); });
}

}  // namespace dravik::trainer
