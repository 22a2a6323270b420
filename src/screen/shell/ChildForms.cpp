#include "screen/shell/ChildForms.h"

namespace dravik::screen {

ChildForms::ChildForms(ScreenContext& context, CharOverview& overview, SampleDeletion& deletion)
    : context_(context),
      overview_(overview),
      deletion_(deletion),
      array_(context, overview.FontArray(),
             {[this] { overview_.SetFontArray(); },
              [this](const std::string& character, std::int16_t mode) {
                  m_dlgArray_SetArray(character, mode);
              }}),
      histogram_(context, overview.FontArray(), *this) {
    // What the form itself has deleted it shows by itself.
    context.actEnded.subscribe([this](const OperatorAct& act) {
        using Kind = OperatorAct::Kind;
        if (act.kind != Kind::DeletionOfBin && act.kind != Kind::CharacterSet && act.kind != Kind::Save)
            refill();
    });
}

void ChildForms::DisplayCharArray(const std::string& character, bool bStdDev) {
    array_.DisplayCharArray(character, bStdDev);
}

void ChildForms::DisplayCharHistogram(const std::string& character, std::int16_t type,
                                      CharHistogram::In place) {
    const ui::BusyPointer busy(context_.platform);
    // The form's chooser lists the font's characters as they are now.
    if (type == kCharacterDistance) overview_.SetFontArray();
    histogram_.DisplayCharHistogram(character, type, place);
}

void ChildForms::refill() {
    if (!histogram_.isOpen()) return;
    refilling_ = true;
    overview_.SetFontArray();
    histogram_.refill();
    refilling_ = false;
}

void ChildForms::release() {
    histogram_.release();
    array_.release();
}

void ChildForms::m_dlgArray_SetArray(const std::string& character, std::int16_t mode) {
    context_.procedures.run("Dravikdlg.m_dlgArray_SetArray", "m_dlgArray_SetArray", [&] {
        if (mode == kCharArrayMode) DisplayCharArray(character, false);
        if (mode == kStdDevMode) DisplayCharArray(character, true);
    });
}

void ChildForms::m_dlgHist_DeleteByDistance(std::string character, double minimum, double maximum) {
    const ActScope act(context_, OperatorAct::Kind::DeletionOfBin, character);
    context_.procedures.run("Dravikdlg.m_dlgHist_DeleteByDistance", "m_dlgHist_DeleteByDistance", [&] {
        deletion_.DeleteSamplesByDistance(character, minimum, maximum);
        overview_.UpdateCharDisplay();
        context_.screen.sbr.panel("Message").setText("Samples delete. Click 'Train'.");
    });
}

void ChildForms::m_dlgHist_ShowDistHist(std::string character) {
    context_.procedures.run("Dravikdlg.m_dlgHist_ShowDistHist", "m_dlgHist_ShowDistHist", [&] {
        DisplayCharHistogram(character, kCharacterDistance, CharHistogram::In::OpenForm);
    });
}

void ChildForms::m_dlgHist_ShowFontHist(std::string character) {
    context_.procedures.run("Dravikdlg.m_dlgHist_ShowFontHist", "m_dlgHist_ShowFontHist", [&] {
        DisplayCharHistogram(character, kFontHistogram, CharHistogram::In::OpenForm);
    });
}

void ChildForms::m_dlgHist_UserMsg(std::string text) {
    context_.procedures.run("Dravikdlg.m_dlgHist_UserMsg", "m_dlgHist_UserMsg", [&] {
        if (!refilling_) context_.errors.UserMsg(text);
    });
}

}  // namespace dravik::screen
