// The control's side of the histograms: asks the tool for the font's characters or for the Distances of one
// character's samples and shows them in dlgCharHist.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "screen/context/ToolBinding.h"
#include "screen/context/modErrors.h"
#include "screen/histogram/dlgCharHist.h"

namespace dravik::screen {

class CharHistogram {
  public:
    // The control's handlers of the form's events.
    struct Handlers {
        std::function<void(const std::string& character, double minimum, double maximum)> DeleteByDistance;
        std::function<void(const std::string& character)> ShowDistHist;
        std::function<void(const std::string& character)> ShowFontHist;
        std::function<void(const std::string& text)> UserMsg;
    };

    // `fontArray` is the control's list of the font's characters and outlives this object, as all else given
    // here.
    CharHistogram(const tool::ToolBinding& tool, modErrors& errors, const std::vector<std::string>& fontArray,
                  Handlers handlers);

    // Builds and shows one histogram, kFontHistogram or kCharacterDistance; other types show nothing. A form
    // that is open is filled again in its place, so that it counts deletions for as long as the operator
    // works in it.
    void DisplayCharHistogram(const std::string& character, std::int16_t type);
    // The largest Distance of the character's committed samples, 0 when it has none.
    double MaxCharDistance(const std::string& character);

    // The form, nothing before its first use and after release().
    dlgCharHist* m_dlgHist() const noexcept { return m_dlgHist_.get(); }
    // Closes and drops the form.
    void release();

  private:
    void openForm();
    void showCharacter(const tool::RecordTable& samples, const std::string& character);
    void showFont(const tool::RecordTable& characters);
    // The largest Distance of each record's character, in one pass over the committed samples.
    std::vector<double> maxCharDistances(const tool::RecordTable& characters);

    const tool::ToolBinding& tool_;
    modErrors& errors_;
    const std::vector<std::string>& fontArray_;
    Handlers handlers_;
    std::unique_ptr<dlgCharHist> m_dlgHist_;
};

}  // namespace dravik::screen
