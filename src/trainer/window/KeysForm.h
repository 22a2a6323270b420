// Help > Keys: what the keys do, as a table that scrolls where the screen is small.
#pragma once

#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Grid.h"

namespace dravik::trainer {

class KeysForm : public ui::Form {
  public:
    KeysForm();

    ui::Grid grid{"gridKeys"};

  private:
    ui::Button ok_{"OKButton", "OK"};
};

}  // namespace dravik::trainer
