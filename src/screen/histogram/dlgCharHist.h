// The histogram form: the Distances of one character's samples in ten bins, or the sample counts of the whole
// font with the characters over a threshold in red. The operator hovers over the bars, deletes a bin's
// samples or opens a character's histogram from the pop-up menu. The form changes no sample itself: it raises
// events to the control, which fills the same form again.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "screen/context/PointedBar.h"
#include "screen/context/Procedure.h"
#include "screen/histogram/HistogramModel.h"
#include "ui/Bars.h"
#include "ui/Chart.h"
#include "ui/Form.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"

namespace dravik::screen {

// What the form asks of the control, which answers the form's four events: DeleteByDistance, ShowDistHist,
// ShowFontHist and UserMsg. The texts are copies, since showing a histogram changes those of the form.
class HistogramControl {
  public:
    // The character's samples whose Distance is in the range, both ends included, are to go.
    virtual void m_dlgHist_DeleteByDistance(std::string character, double minimum, double maximum) = 0;
    // The form is to be filled again: with the character's Distances, or with the whole font.
    virtual void m_dlgHist_ShowDistHist(std::string character) = 0;
    virtual void m_dlgHist_ShowFontHist(std::string character) = 0;
    virtual void m_dlgHist_UserMsg(std::string text) = 0;
    // The pointer has come to a bar: one of a character's Distances, both ends included, or a character's.
    virtual void m_dlgHist_BarPointed(const PointedBar&) {}

  protected:
    ~HistogramControl() = default;
};

class dlgCharHist : public ui::Form {
  public:
    // The log, the platform and whom the form speaks to outlive it.
    dlgCharHist(TraceLog& log, ui::Platform& platform, HistogramControl& control);

    ui::Toolbar tlbMain{"tlbMain"};
    ui::TextBox txtCharCaption{"txtCharCaption", "Character"};
    ui::ComboBox cboChar{"cboChar"};
    ui::TextBox txtThreshCaption{"txtThreshCaption", "Threshold"};
    ui::TextBox txtThreshold{"txtThreshold", "0.000"};
    ui::UpDown udThreshold{"udThreshold", 0, 10, 1};  // tenths
    ui::TextBox txtExceed{"txtExceed", "Number of characters over threshold"};
    ui::Chart chart{"chart"};
    ui::StatusBar sbr{"sbr"};
    ui::Timer tmrGraphics{"tmrGraphics", 250};
    ui::Timer tmrVarState{"tmrVarState", 2000};

    // kFontHistogram or kCharacterDistance.
    void SetMode(std::int16_t mode);
    // Refills cboChar from the char array and chooses the current character in it.
    void SetCharCombo();
    void SetLocalDataArray(const std::vector<double>& data);
    void SetLocalMaxArray(const std::vector<double>& max);
    void SetLocalCharArray(const std::vector<std::string>& chars);
    // Sample count and largest Distance of each character. Labels or Distances that are fewer than the counts
    // are reported as Subscript out of range (9).
    void SetFontHistogram(const std::vector<double>& data, const std::vector<std::string>& chars,
                          const std::vector<double>& max);
    // The Distances of the character's samples; `chars` are the font's characters.
    void SetCharHistogram(const std::vector<double>& data, const std::string& character,
                          const std::vector<std::string>& chars);
    void CreateHashMarks(std::int16_t max);

    std::int16_t mode() const noexcept { return model_.mode; }
    const std::string& currentCharacter() const noexcept { return character_; }
    const HistogramDrawing& drawing() const noexcept { return model_.drawing; }

  private:
    void createControls();
    void Form_Load();
    void Form_Unload();
    void udThreshold_Change();
    void tlbMain_ButtonClick(const ui::ToolButton& button);
    void showCharHistogramFromToolbar();
    void showModeButtons();
    void cboChar_GotFocus();
    void cboChar_LostFocus();
    void cboChar_Click();

    void Form_MouseMove(const ui::MouseEvent& event);
    void Form_MouseDown(const ui::MouseEvent& event);
    void Form_KeyDown(int key, int shift);
    void deleteBinMenu(std::size_t bin, const ui::MouseEvent& event);
    void characterMenu(std::size_t bar, const ui::MouseEvent& event);
    void tmrGraphics_Timer();
    void tmrVarState_Timer();
    void colourByThreshold();
    void showBar(std::size_t index);
    void HighlightData(std::size_t index, bool on);
    void removeHighlight();
    void pointAt(std::size_t bar);

    void offerOthers(const std::string& character, const std::vector<std::string>& chars);
    // As a form that was just opened: nothing drawn, no data.
    void forgetHistogram();
    void drawScene();
    void reportFailure(std::string_view source, const Failure& failure);
    void setMsg(std::string text) { sbr.panel("Msg").setText(std::move(text)); }

    Procedures procedures_;
    ui::Platform& platform_;
    TraceLog& log_;
    HistogramControl& control_;
    // Gone once the form is: a menu can outlast it.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);

    HistogramModel model_;
    std::string character_;
    bool m_bHistSet_ = false;
    bool filled_ = false;  // since the form was loaded
    std::int16_t deletions_ = 0;

    struct Point {
        float x = 0;
        float y = 0;
        bool operator==(const Point&) const = default;
    };
    // Until it is first moved the pointer is taken to rest in the left-top corner, off every bar.
    Point pointer_{-5, 120};
    std::optional<Point> handled_ =
        pointer_;  // the place that the last tick saw; none makes the next one look
    bool overBar_ = false;
    std::optional<std::size_t> highlighted_;
};

}  // namespace dravik::screen
