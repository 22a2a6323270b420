// The control's side of the feature viewer: reads a character's features and the features of its committed
// samples from the tool and fills the cells of dlgCharArray with them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "screen/context/ScreenContext.h"
#include "screen/inspection/dlgCharArray.h"

namespace dravik::screen {

class CharArray {
  public:
    // What the viewer asks of the control.
    struct Control {
        std::function<void()> SetFontArray;  // rebuilds the font array
        std::function<void(const std::string& character, std::int16_t mode)> SetArray;  // the form's event
    };

    // `fontArray` is the control's list of the font's characters and outlives this object, as all else given
    // here.
    CharArray(ScreenContext& context, const std::vector<std::string>& fontArray, Control control)
        : context_(context), fontArray_(fontArray), control_(std::move(control)) {}

    // Fills and shows the form; a form that is open is used again, in its place.
    void DisplayCharArray(const std::string& character, bool bStdDev);
    // Writes the standard deviation of each feature over the character's committed samples into the open
    // form's cells, in units of the scaled value; "n/a" when it has none.
    // False when they could not be calculated, which is reported.
    bool CalculateStdDev(const std::string& character);
    // Traces how many uncommitted samples there are.
    void PrintFeatureVect();

    // The form, nothing before its first use and after release().
    dlgCharArray* m_dlgArray() const noexcept { return m_dlgArray_.get(); }
    // Closes and drops the form.
    void release();

  private:
    void openForm();

    ScreenContext& context_;
    const std::vector<std::string>& fontArray_;
    Control control_;
    std::unique_ptr<dlgCharArray> m_dlgArray_;
};

}  // namespace dravik::screen
