// Help > Keys: what the keys do, in two columns.
#pragma once

#include <memory>
#include <vector>

#include "ui/Form.h"
#include "ui/Label.h"

namespace dravik::trainer {

class KeysForm : public ui::Form {
  public:
    KeysForm();

  private:
    std::vector<std::unique_ptr<ui::Label>> labels_;
    ui::Button ok_{"OKButton", "OK"};
};

}  // namespace dravik::trainer
