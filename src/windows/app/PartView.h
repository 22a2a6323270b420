// The current part image with a box around every found character and below it the label that the typed text
// gives it. Zooms with Ctrl and the wheel or by zoomIn() and zoomOut(), pans by dragging and with the scroll
// bars.
#pragma once

#include <functional>
#include <vector>
#include "windows/app/DrawnWindow.h"

#include "trainer/Trainer.h"

namespace dravik::app {

class PartView : public DrawnWindow {
  public:
    PartView(HWND parent, SharedLook& look);

    // An empty image shows the message instead. A new image is fitted unless the operator has chosen a scale.
    // The image is borrowed until the next call.
    void setImage(const engine::GreyImage* image, std::string message);
    // `mismatch` as Trainer::mismatch(): characters that lack a label are then marked as a warning.
    void setCharacters(std::vector<trainer::LabelledCharacter> characters, int mismatch);

    // Pixels of the screen for one of the image.
    double scale() const noexcept { return scale_; }
    bool fits() const noexcept { return fits_; }
    void fit();
    void setScale(double scale);
    void zoomIn();
    void zoomOut();

    std::function<void()> scaleChanged;

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    bool isShown() const { return image_ && !image_->empty(); }
    double fittingScale() const;
    void zoomAround(double scale, POINT place);
    void scrollTo(int x, int y);
    void showScrollBars();
    POINT origin() const;
    SIZE contentSize() const;
    RECT boxOf(const engine::FoundCharacter& place) const;
    void paintCharacters(HDC dc);
    void paintTag(HDC dc, const RECT& box, const std::wstring& text, bool warning);
    void tell() const {
        if (scaleChanged) scaleChanged();
    }

    const engine::GreyImage* image_ = nullptr;
    std::string message_;
    std::vector<trainer::LabelledCharacter> characters_;
    int mismatch_ = 0;
    double scale_ = 1;
    bool fits_ = true;
    bool showingBars_ = false;
    bool dragging_ = false;
    POINT scroll_{};
    POINT dragFrom_{};
};

}  // namespace dravik::app
