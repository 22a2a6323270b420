// The part beside the screen: the image with its found characters, what the font reads in it, and the strip
// of opened images.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "trainer/window/TrainerWindow.h"
#include "ui/Label.h"
#include "ui/Toolbar.h"
#include "windows/app/DrawnWindow.h"
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
    // The model and the platform outlive the pane.
    PartPane(HWND parent, SharedLook& look, trainer::TrainerWindow& model, win32::Win32Platform& platform);
    ~PartPane() override;

    int leastWidth() const;
    void setDpi(int dpi);
    void systemChanged(const win32::Ambient& ambient);

    // Tab and the like inside of the pane; true when it is answered. At its ends it sets `left`.
    bool translate(const MSG& message, bool& left);
    void focus(bool last);
    bool hasFocusInside() const;

  protected:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC dc, const RECT& client) override;

  private:
    // Controls of the pane as forms of their own, above, between and below the drawn surfaces.
    struct Bar : ui::Form {
        explicit Bar(const trainer::ActionList& actions);
        void show(const trainer::Action& action);
        ui::Toolbar tools{"partTools"};
        ui::Label name{"partName"};
        ui::Label scale{"partScale"};
        std::vector<std::unique_ptr<ui::Label>> problems;
        ui::Button dismiss{"dismissProblems", "Dismiss"};
    };
    struct Captions : ui::Form {
        Captions();
        ui::Label notice{"notice"};
        ui::Label preview{"previewText"};
        ui::Label title{"readingTitle", trainer::kReadingCaption};
    };

    void arrange();
    void connectTools();
    void showTexts();
    void showCheck();
    int checkHeight(int width) const;
    std::vector<HWND> stops() const;

    trainer::TrainerWindow& model_;
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
