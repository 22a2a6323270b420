// The control's side of the histograms: asks the tool for the font's characters or for the Distances of one
// character's samples and shows them in dlgCharHist.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "screen/context/ScreenContext.h"
#include "screen/histogram/dlgCharHist.h"

namespace dravik::screen {

class CharHistogram {
  public:
    // `fontArray` is the control's list of the font's characters and outlives this object, as all else given
    // here.
    CharHistogram(ScreenContext& context, const std::vector<std::string>& fontArray,
                  HistogramControl& control)
        : context_(context), fontArray_(fontArray), control_(control) {}

    // NewForm closes a form that is open. What the form itself asks for comes in OpenForm, so that it counts
    // deletions for as long as the operator works in it.
    enum class In { NewForm, OpenForm };

    // Builds and shows one histogram, kFontHistogram or kCharacterDistance; other types show nothing. Without
    // data no form is opened, and the open one is emptied.
    void DisplayCharHistogram(const std::string& character, std::int16_t type, In place = In::NewForm);
    // Fills an open form again in its place with what the tool holds now; closes it when that is nothing.
    void refill();
    bool isOpen() const;
    // The largest Distance of the character's committed samples, 0 when it has none.
    double MaxCharDistance(const std::string& character);

    // The form, nothing before its first use and after release().
    dlgCharHist* m_dlgHist() const noexcept { return m_dlgHist_.get(); }
    // Closes and drops the form.
    void release();

  private:
    // Nothing for another type.
    tool::RecordTablePtr recordsFor(std::int16_t type);
    void openForm(In place);
    void showCharacter(const tool::RecordTablePtr& samples, const std::string& character);
    void showFont(const tool::RecordTablePtr& characters);
    // The procedure on the committed samples as fetched; fetches them where they were not yet.
    double MaxCharDistance(const std::string& character, std::optional<tool::RecordTablePtr>& samples);

    ScreenContext& context_;
    const std::vector<std::string>& fontArray_;
    HistogramControl& control_;
    std::unique_ptr<dlgCharHist> m_dlgHist_;
};

}  // namespace dravik::screen
