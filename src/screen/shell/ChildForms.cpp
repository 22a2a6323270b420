#include "screen/shell/ChildForms.h"

namespace dravik::screen {
namespace {

constexpr std::int16_t kCharacterArray = 0;
constexpr std::int16_t kDeviationArray = 1;

}  // namespace

ChildForms::ChildForms(const tool::ToolBinding& tool, modErrors& errors, CharOverview& overview,
                       SampleDeletion& deletion)
    : errors_(errors),
      overview_(overview),
      deletion_(deletion),
      array_(tool, errors, overview.FontArray(),
             {[this] { overview_.SetFontArray(); },
              [this](const std::string& character, std::int16_t mode) {
                  m_dlgArray_SetArray(mode, character);
              }}),
      histogram_(tool, errors, overview.FontArray(),
                 {[this](const std::string& character, double minimum, double maximum) {
                      m_dlgHist_DeleteByDistance(character, minimum, maximum);
                  },
                  [this](const std::string& character) { m_dlgHist_ShowDistHist(character); },
                  [this](const std::string& character) { m_dlgHist_ShowFontHist(character); },
                  [this](const std::string& text) { m_dlgHist_UserMsg(text); }}) {}

void ChildForms::DisplayCharArray(const std::string& character, bool bStdDev) {
    array_.DisplayCharArray(character, bStdDev);
}

void ChildForms::DisplayCharHistogram(const std::string& character, std::int16_t type) {
    const ui::BusyPointer busy(errors_.procedures().log().platform());
    // The form's chooser lists the font's characters as they are now.
    overview_.SetFontArray();
    histogram_.DisplayCharHistogram(character, type);
}

void ChildForms::release() {
    histogram_.release();
    array_.release();
}

void ChildForms::m_dlgArray_SetArray(std::int16_t kind, const std::string& character) {
    errors_.procedures().run("Dravikdlg.m_dlgArray_SetArray", "m_dlgArray_SetArray", [&] {
        if (kind == kCharacterArray) DisplayCharArray(character, false);
        if (kind == kDeviationArray) DisplayCharArray(character, true);
    });
}

void ChildForms::m_dlgHist_DeleteByDistance(const std::string& character, double minimum, double maximum) {
    errors_.procedures().run("Dravikdlg.m_dlgHist_DeleteByDistance", "m_dlgHist_DeleteByDistance", [&] {
        deletion_.DeleteSamplesByDistance(character, minimum, maximum);
        overview_.UpdateCharDisplay();
        errors_.sbr().panel("Message").setText("Samples delete. Click 'Train'.");
    });
}

void ChildForms::m_dlgHist_ShowDistHist(const std::string& character) {
    errors_.procedures().run("Dravikdlg.m_dlgHist_ShowDistHist", "m_dlgHist_ShowDistHist",
                             [&] { DisplayCharHistogram(character, kCharacterDistance); });
}

void ChildForms::m_dlgHist_ShowFontHist(const std::string& character) {
    errors_.procedures().run("Dravikdlg.m_dlgHist_ShowFontHist", "m_dlgHist_ShowFontHist",
                             [&] { DisplayCharHistogram(character, kFontHistogram); });
}

void ChildForms::m_dlgHist_UserMsg(const std::string& text) {
    errors_.procedures().run("Dravikdlg.m_dlgHist_UserMsg", "m_dlgHist_UserMsg",
                             [&] { errors_.UserMsg(text); });
}

}  // namespace dravik::screen
