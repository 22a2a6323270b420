// The labelled images that could not be included, each with its reason, to be opened and corrected.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "trainer/BatchInclude.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"

namespace dravik::trainer {

class RefusedForm : public ui::Form {
  public:
    // `open` shows the image of a path.
    RefusedForm(const std::vector<BatchInclude::Refused>& refused,
                std::function<void(const std::string& path)> open);

  private:
    ui::Label lblRefused{"lblRefused"};
    ui::ListBox lbRefused{"lbRefused"};
    ui::Button cmdOpen{"cmdOpen", "&Open Image"};
    ui::Button CancelButton{"CancelButton", "Close"};
};

}  // namespace dravik::trainer
