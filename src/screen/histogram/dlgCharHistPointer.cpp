// What the histogram form does under the pointer: hovering, threshold colours, the pop-up menus.
//
// Moving the pointer only stores its position; the timer does the work, at most four times a second.
#include <algorithm>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "screen/context/dlgContextPopup.h"
#include "screen/histogram/dlgCharHist.h"

namespace dravik::screen {
namespace {

constexpr ui::Color kHighlight = ui::rgb(255, 255, 0);
constexpr std::int16_t kManyDeletions = 5;

constexpr int kKeyLeft = 37;
constexpr int kKeyRight = 39;
constexpr int kKeyF10 = 121;

}  // namespace

void dlgCharHist::Form_MouseMove(const ui::MouseEvent& event) {
    procedures_.run("", "MouseMove", [&] {
        pointer_ = {static_cast<float>(event.x), static_cast<float>(event.y)};
        if (tmrGraphics.enabled()) return;
        // The bars may have changed since, even where the pointer comes back to the same place.
        handled_.reset();
        tmrGraphics.setEnabled(true);
    });
}

void dlgCharHist::tmrGraphics_Timer() {
    procedures_.run("", "GraphicsTimer", [this] {
        if (filled_) showModeButtons();  // a click on the one that is down has released it
        if (handled_ == pointer_) return;
        overBar_ = false;
        if (model_.mode == kFontHistogram) colourByThreshold();
        removeHighlight();
        if (const auto bar = model_.drawing.barAt(pointer_.x, pointer_.y)) {
            showBar(*bar);
        } else {
            sbr.panel("Samples").setText("");
            setMsg("");
        }
        handled_ = pointer_;
        drawScene();
    });
}

void dlgCharHist::colourByThreshold() {
    const int exceeding = model_.colourByThreshold();
    txtExceed.setText(exceeding > 0
                          ? std::to_string(exceeding) + " characters have Distance values over the threshold"
                          : "All characters have Distance values below the threshold");
}

void dlgCharHist::showBar(std::size_t index) {
    overBar_ = true;
    HighlightData(index, true);
    if (model_.mode == kCharacterDistance) {
        const auto [lower, upper] = model_.rangeOf(index);
        setMsg("Distance = " + formatNumber(lower, "####0.000") + " to " + formatNumber(upper, "####0.000"));
        sbr.panel("Samples").setText(std::to_string(model_.countOf(index)));
        const auto whole = model_.deletedWith(index);
        control_.m_dlgHist_BarPointed({character_, false, whole.lower, whole.upper});
        return;
    }
    sbr.panel("Samples").setText(numberText(model_.samplesOf(index)));
    sbr.panel("MaxDist").setText(formatNumber(model_.maxOf(index), "0.000"));
    cboChar.setText(model_.nameOf(index));
    character_ = model_.nameOf(index);
    setMsg(character_ == "O" ? "Letter 'O'" : character_ == "0" ? "Numeral '0'" : "");
    control_.m_dlgHist_BarPointed({character_, true});
}

void dlgCharHist::HighlightData(std::size_t index, bool on) {
    procedures_.run("", "Highlight Data", [&] {
        model_.drawing.lblX.at(index).backColor = on ? kHighlight : backColor();
        highlighted_ = on ? std::optional(index) : std::nullopt;
    });
}

void dlgCharHist::removeHighlight() {
    if (highlighted_) HighlightData(*highlighted_, false);
}

void dlgCharHist::tmrVarState_Timer() {
    procedures_.run("", "tmrVarState", [this] {
        procedures_.trace(
            "dlgCharHist.tmrVarState; shpData.UBound = " + std::to_string(model_.drawing.shpData.size() - 1) +
            ", lblX.Ubound = " + std::to_string(model_.drawing.lblX.size() - 1) +
            ", tmrGraphics.Enabled = " + (tmrGraphics.enabled() ? "True" : "False"));
    });
}

void dlgCharHist::Form_MouseDown(const ui::MouseEvent& event) {
    if (event.button != ui::kRightButton) return;
    procedures_.run("dlgCharHist.Form_MouseDown, right button", "MouseDown", [&] {
        const auto bar = model_.drawing.barAt(static_cast<float>(event.x));
        if (!bar) return;
        if (model_.mode == kCharacterDistance) {
            deleteBinMenu(*bar, event);
        } else {
            characterMenu(*bar, event);
        }
    });
}

void dlgCharHist::deleteBinMenu(std::size_t bin, const ui::MouseEvent& event) {
    if (!overBar_) return;
    const auto [lower, upper] = model_.rangeOf(bin);
    const auto deleted = model_.deletedWith(bin);
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
        control_.m_dlgHist_DeleteByDistance(character_, deleted.lower, deleted.upper);
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
    const bool enough = model_.samplesOf(bar) >= 2;
    if (!enough) setMsg("Minimum 2 samples required to generate character histogram.");
    showItem.enabled = enough;
    const std::string character = model_.nameOf(bar);
    const std::weak_ptr<const bool> alive = alive_;
    const MenuPick pick = popup.popUp(platform_, popup.mnuHistogram, chart, event.x, event.y);
    if (alive.expired() || pick != MenuPick::HistogramShowChar) return;
    tmrGraphics.setEnabled(false);
    control_.m_dlgHist_ShowDistHist(character);
}

// The arrow keys walk the pointer from bar to bar, over empty ones; the menu key opens the menu of the bar
// under it.
void dlgCharHist::Form_KeyDown(int key, int shift) {
    procedures_.run("", "KeyDown", [&] {
        if (key == kKeyLeft || key == kKeyRight) {
            const auto& bars = model_.drawing.shpData;
            const int step = key == kKeyRight ? 1 : -1;
            const int count = static_cast<int>(bars.size());
            int next = highlighted_ ? static_cast<int>(*highlighted_) : step > 0 ? -1 : count;
            do next += step;
            while (next >= 0 && next < count && !bars[static_cast<std::size_t>(next)].visible);
            if (next >= 0 && next < count) pointAt(static_cast<std::size_t>(next));
        } else if (key == ui::kKeyMenu || (key == kKeyF10 && (shift & ui::kShiftMask))) {
            Form_MouseDown({ui::kRightButton, 0, pointer_.x, pointer_.y});
        }
    });
}

// Near the right end of the zone in which the pointer finds the bar, where no earlier bar's zone reaches.
void dlgCharHist::pointAt(std::size_t index) {
    const auto& bar = model_.drawing.shpData.at(index);
    Form_MouseMove({0, 0, bar.left + 0.999 * bar.width, (bar.top - 5) / 2});
    tmrGraphics_Timer();
}

}  // namespace dravik::screen
