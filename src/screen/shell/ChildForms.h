// The two viewers that the control opens, and one place that handles what they say back.
#pragma once

#include <cstdint>
#include <string>

#include "screen/context/modErrors.h"
#include "screen/histogram/CharHistogram.h"
#include "screen/inspection/CharArray.h"
#include "screen/inspection/CharOverview.h"
#include "screen/samples/SampleDeletion.h"

namespace dravik::screen {

class ChildForms {
  public:
    ChildForms(const tool::ToolBinding& tool, modErrors& errors, CharOverview& overview,
               SampleDeletion& deletion);

    void DisplayCharArray(const std::string& character, bool bStdDev);
    // kFontHistogram or kCharacterDistance.
    void DisplayCharHistogram(const std::string& character, std::int16_t type);

    // Closes the histogram viewer, then the array viewer.
    void release();

  private:
    void m_dlgArray_SetArray(std::int16_t kind, const std::string& character);
    void m_dlgHist_DeleteByDistance(const std::string& character, double minimum, double maximum);
    void m_dlgHist_ShowDistHist(const std::string& character);
    void m_dlgHist_ShowFontHist(const std::string& character);
    void m_dlgHist_UserMsg(const std::string& text);

    modErrors& errors_;
    CharOverview& overview_;
    SampleDeletion& deletion_;
    CharArray array_;
    CharHistogram histogram_;
};

}  // namespace dravik::screen
