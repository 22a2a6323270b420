// The part beside the screen: the image with its found characters, what the font reads in it, and the strip
// of opened images.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>
#include "windows/app/DrawnWindow.h"

#include "trainer/Trainer.h"
#include "ui/Label.h"
#include "ui/Toolbar.h"
#include "windows/app/PartView.h"
#include "windows/app/ReadingView.h"
#include "windows/app/ThumbnailStrip.h"
#include "windows/win32/FormPage.h"

namespace dravik::win32 {
class Win32Platform;
}

namespace dravik::app {

class PartPane : public DrawnWindow {
  public:
    PartPane(HWND parent, SharedLook& look, trainer::Trainer& trainer, win32::Win32Platform& platform);
    ~PartPane() override;

    // Opens files and folders; what cannot be opened is named above the image.
    void open(const std::vector<std::string>& paths);
    PartView& view() noexcept { return *view_; }
    int leastWidth() const;
    void setDpi(int dpi);
    void systemChanged();

    // Tab and the like inside of the pane; true when it is answered. At its ends it sets `left`.
    bool translate(const MSG& message, bool& left);
    void focus(bool last);
    bool hasFocusInside() const;

    // What the operator can do now is another: another part, another scale.
    std::function<void()> stateChanged;

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    // Controls of the pane as forms of their own, above, between and below the drawn surfaces.
    struct Bar : ui::Form {
        explicit Bar(std::size_t problemLines);
        ui::Toolbar tools{"partTools"};
        ui::Label name{"partName"};
        ui::Label scale{"partScale"};
        std::vector<std::unique_ptr<ui::Label>> problems;
        ui::Button dismiss{"dismissProblems", "Dismiss"};
    };
    struct Captions : ui::Form {
        Captions();
        ui::Label preview{"previewText"};
        ui::Label title{"readingTitle", "The font &reads:"};
    };

    void arrange();
    void showPart();
    void showPreview();
    void showReading();
    void showCheck();
    int checkHeight(int width) const;
    void followCheck();
    void showScale();
    void showProblems(const std::vector<std::string>& lines);
    void pressed(const std::string& key);
    std::vector<HWND> stops() const;

    trainer::Trainer& trainer_;
    Bar bar_;
    Captions captions_;
    std::unique_ptr<win32::FormPage> barPage_;
    std::unique_ptr<PartView> view_;
    std::unique_ptr<win32::FormPage> captionsPage_;
    std::unique_ptr<ReadingView> reading_;
    HWND check_ = nullptr;
    std::unique_ptr<ThumbnailStrip> strip_;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::app
