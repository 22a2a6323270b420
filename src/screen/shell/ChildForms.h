// The two viewers that the control opens, and one place that handles what they say back.
#pragma once

#include <cstdint>
#include <string>

#include "screen/context/ScreenContext.h"
#include "screen/histogram/CharHistogram.h"
#include "screen/inspection/CharArray.h"
#include "screen/inspection/CharOverview.h"
#include "screen/samples/SampleDeletion.h"

namespace dravik::screen {

class ChildForms : HistogramControl {
  public:
    ChildForms(ScreenContext& context, CharOverview& overview, SampleDeletion& deletion);

    void DisplayCharArray(const std::string& character, bool bStdDev);
    // kFontHistogram or kCharacterDistance.
    void DisplayCharHistogram(const std::string& character, std::int16_t type,
                              CharHistogram::In place = CharHistogram::In::NewForm);

    // The tool's samples have changed: fills an open histogram again, in its place and without a message.
    void refill();
    // Another font was loaded: a histogram of the one before would delete from this one.
    void closeHistogram() { histogram_.release(); }
    // Closes the histogram viewer, then the array viewer.
    void release();

  private:
    void m_dlgArray_SetArray(const std::string& character, std::int16_t mode);
    void m_dlgHist_DeleteByDistance(std::string character, double minimum, double maximum) override;
    void m_dlgHist_ShowDistHist(std::string character) override;
    void m_dlgHist_ShowFontHist(std::string character) override;
    void m_dlgHist_UserMsg(std::string text) override;
    void m_dlgHist_BarPointed(const PointedBar& bar) override { context_.barPointed(bar); }

    ScreenContext& context_;
    CharOverview& overview_;
    SampleDeletion& deletion_;
    CharArray array_;
    CharHistogram histogram_;
    bool refilling_ = false;
};

}  // namespace dravik::screen
