// What the histogram form does under the pointer: hovering, threshold colours, the pop-up menus.
//
// Moving the pointer only stores its position; the timer does the work, at most four times a second.
#include <algorithm>
#include <limits>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "screen/context/dlgContextPopup.h"
#include "screen/histogram/dlgCharHist.h"

namespace dravik::screen {
namespace {

constexpr ui::Color kOverThreshold = ui::rgb(255, 0, 0);
constexpr ui::Color kBelowThreshold = ui::rgb(0, 0, 0);
constexpr ui::Color kHighlight = ui::rgb(255, 255, 0);
constexpr std::int16_t kManyDeletions = 5;

constexpr int kKeyLeft = 37;
constexpr int kKeyRight = 39;
constexpr int kKeyMenu = 93;
constexpr int kKeyF10 = 121;

}  // namespace

void dlgCharHist::Form_MouseMove(const ui::MouseEvent& event) {
    procedures_.run("", "MouseMove", [&] {
        pointerX_ = static_cast<float>(event.x);
        pointerY_ = static_cast<float>(event.y);
        if (tmrGraphics.enabled()) return;
        // The bars may have changed since, even where the pointer comes back to the same place.
        handledX_ = std::numeric_limits<float>::quiet_NaN();
        tmrGraphics.setEnabled(true);
    });
}

void dlgCharHist::tmrGraphics_Timer() {
    procedures_.run("", "GraphicsTimer", [this] {
        if (pointerX_ == handledX_ && pointerY_ == handledY_) return;
        overBar_ = false;
        if (mode_ == kFontHistogram) colourByThreshold();
        removeHighlight();
        if (const auto bar = drawing_.barAt(pointerX_, pointerY_)) {
            showBar(*bar);
        } else {
            sbr.panel("Samples").setText("");
            setMsg("");
        }
        handledX_ = pointerX_;
        handledY_ = pointerY_;
        drawScene();
    });
}

void dlgCharHist::colourByThreshold() {
    int exceeding = 0;
    for (std::size_t i = 0; i < drawing_.shpData.size() && i < max_.size(); ++i) {
        const bool over = max_[i] >= threshold_;
        drawing_.shpData[i].fill = over ? kOverThreshold : kBelowThreshold;
        if (over) ++exceeding;
    }
    txtExceed.setText(exceeding > 0
                          ? std::to_string(exceeding) + " characters have Distance values over the threshold"
                          : "All characters have Distance values below the threshold");
}

void dlgCharHist::showBar(std::size_t index) {
    overBar_ = true;
    HighlightData(index, true);
    if (mode_ == kCharacterDistance) {
        const double lower = static_cast<double>(index) * bins_.width;
        const double upper = static_cast<double>(index + 1) * bins_.width;
        setMsg("Distance = " + formatNumber(lower, "####0.000") + " to " + formatNumber(upper, "####0.000"));
        sbr.panel("Samples").setText(std::to_string(element(bins_.counts, index)));
        return;
    }
    sbr.panel("Samples").setText(numberText(element(data_, index)));
    sbr.panel("MaxDist").setText(formatNumber(element(max_, index), "0.000"));
    cboChar.setText(element(chars_, index));
    character_ = element(chars_, index);
    setMsg(character_ == "O" ? "Letter 'O'" : character_ == "0" ? "Numeral '0'" : "");
}

void dlgCharHist::HighlightData(std::size_t index, bool on) {
    procedures_.run("", "Highlight Data", [&] {
        drawing_.lblX.at(index).backColor = on ? kHighlight : backColor();
        highlighted_ = on ? std::optional(index) : std::nullopt;
    });
}

void dlgCharHist::removeHighlight() {
    if (highlighted_) HighlightData(*highlighted_, false);
}

void dlgCharHist::tmrVarState_Timer() {
    procedures_.run("", "tmrVarState", [this] {
        procedures_.trace(
            "dlgCharHist.tmrVarState; shpData.UBound = " + std::to_string(drawing_.shpData.size() - 1) +
            ", lblX.Ubound = " + std::to_string(drawing_.lblX.size() - 1) +
            ", tmrGraphics.Enabled = " + (tmrGraphics.enabled() ? "True" : "False"));
    });
}

void dlgCharHist::Form_MouseDown(const ui::MouseEvent& event) {
    if (event.button != ui::kRightButton) return;
    procedures_.run("dlgCharHist.Form_MouseDown, right button", "MouseDown", [&] {
        const auto bar = drawing_.barAt(static_cast<float>(event.x));
        if (!bar) return;
        if (mode_ == kCharacterDistance) {
            deleteBinMenu(*bar, event);
        } else {
            characterMenu(*bar, event);
        }
    });
}

void dlgCharHist::deleteBinMenu(std::size_t bin, const ui::MouseEvent& event) {
    if (!overBar_) return;
    const double lower = static_cast<double>(bin) * bins_.width;
    const double upper = static_cast<double>(bin + 1) * bins_.width;
    MenuPick pick;
    {
        dlgContextPopup popup(log_);
        popup.mnuHistogram.item("mnuHistogramShowChar").enabled = false;
        auto& deleteItem = popup.mnuHistogram.item("mnuHistogramDelete");
        deleteItem.enabled = true;
        deleteItem.caption = "Delete samples with Distance " + formatNumber(lower, "0.000") + " to " +
                             formatNumber(upper, "0.000");
        const std::weak_ptr<const bool> alive = alive_;
        pick = popup.popUp(platform_, popup.mnuHistogram, chart, event.x, event.y);
        if (alive.expired() || pick != MenuPick::HistogramDelete) return;
        setMsg("Deleting and updating...");
        control_.m_dlgHist_DeleteByDistance(character_, lower, upper);
    }
    deletions_ = toInt16(deletions_ + 1);
    tmrGraphics.setEnabled(false);
    control_.m_dlgHist_ShowDistHist(character_);
    if (deletions_ >= kManyDeletions)
        setMsg(std::to_string(deletions_) + " deletions have occurred. Learn recommended.");
}

void dlgCharHist::characterMenu(std::size_t bar, const ui::MouseEvent& event) {
    dlgContextPopup popup(log_);
    popup.mnuHistogram.item("mnuHistogramDelete").enabled = false;
    auto& showItem = popup.mnuHistogram.item("mnuHistogramShowChar");
    const bool enough = element(data_, bar) >= 2;
    if (!enough) setMsg("Minimum 2 samples required to generate character histogram.");
    showItem.enabled = enough;
    const std::string character = element(chars_, bar);
    const std::weak_ptr<const bool> alive = alive_;
    const MenuPick pick = popup.popUp(platform_, popup.mnuHistogram, chart, event.x, event.y);
    if (alive.expired() || pick != MenuPick::HistogramShowChar) return;
    tmrGraphics.setEnabled(false);
    control_.m_dlgHist_ShowDistHist(character);
}

// The arrow keys walk the pointer from bar to bar; the menu key opens the menu of the bar under it.
void dlgCharHist::Form_KeyDown(int key, int shift) {
    procedures_.run("", "KeyDown", [&] {
        const auto bars = drawing_.shpData.size();
        const auto current = highlighted_;
        if (key == kKeyLeft || key == kKeyRight) {
            const std::size_t last = bars - 1;
            const std::size_t next = !current           ? (key == kKeyRight ? 0 : last)
                                     : key == kKeyRight ? std::min(*current + 1, last)
                                     : *current > 0     ? *current - 1
                                                        : 0;
            pointAt(next);
        } else if (key == kKeyMenu || (key == kKeyF10 && (shift & ui::kShiftMask))) {
            Form_MouseDown({ui::kRightButton, 0, pointerX_, pointerY_});
        }
    });
}

// Near the right end of the zone in which the pointer finds the bar, where no earlier bar's zone reaches.
void dlgCharHist::pointAt(std::size_t index) {
    const auto& bar = drawing_.shpData.at(index);
    Form_MouseMove({0, 0, bar.left + 0.999 * bar.width, (bar.top - 5) / 2});
    tmrGraphics_Timer();
}

}  // namespace dravik::screen
