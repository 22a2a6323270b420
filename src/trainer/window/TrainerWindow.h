// The program's window without a window system: the training screen on the left, the part on the right,
// menus above. Holds the models of all that is seen beside the screen, says what may be done when, and does
// it. A window of Qt or of Windows shows it.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "trainer/Trainer.h"
#include "trainer/window/AccuracyPageFile.h"
#include "trainer/window/CameraSource.h"
#include "trainer/window/GalleryForm.h"
#include "trainer/window/ImageSources.h"
#include "trainer/window/ImageTools.h"
#include "trainer/window/LabelLists.h"
#include "trainer/window/PartStrip.h"
#include "trainer/window/PartViewModel.h"
#include "trainer/window/ReadAllForm.h"
#include "trainer/window/ReadingModel.h"
#include "trainer/window/WindowActions.h"
#include "trainer/window/WindowSystem.h"
#include "ui/Platform.h"
#include "ui/Signal.h"

namespace dravik::trainer {

constexpr char kDismissTip[] = "Dismiss the message";

class TrainerWindow {
  public:
    // The window at its first start, in 1/96 inch.
    static constexpr int kFirstWidth = 1280;
    static constexpr int kFirstHeight = 800;
    static constexpr int kFirstScreenWidth = 640;
    // Of the gallery, where the window leaves the screen its least height.
    static constexpr int kGalleryHeight = 200;

    static constexpr std::size_t kMostProblemLines = 5;

    // All outlive the window.
    TrainerWindow(Trainer& trainer, ui::Platform& platform, WindowSystem& system);

    Trainer& trainer() noexcept { return trainer_; }
    WindowActions actions;
    PartViewModel view;
    PartStrip strip;
    ReadingModel reading;
    // Below the screen, while it is shown.
    GalleryForm gallery;
    ReadAllForm readAll;
    ImageTools tools;

    std::string title() const { return trainer_.title(); }

    // The line above the image: "1 of 48   hack_000.png" with the path as its tip, and the scale in per cent.
    // All "" without an image.
    std::string partName() const;
    std::string partTip() const;
    std::string scaleText() const;
    // How many characters are found and typed, and whether that is a warning.
    std::string previewText() const;
    bool previewWarns() const { return trainer_.mismatch() != 0; }
    // What a screen reader is told of the image.
    std::string viewDescription() const;
    // The held-out check's line and what to do next; "" when there is nothing to say.
    const std::string& checkText() const { return checkText_; }
    // What the last act deleted, what was taken back or saved; else how the present mode of the image is
    // worked; "" when there is nothing to say.
    std::string noticeText() const;
    // What could not be opened, and what was recovered of an earlier run, few lines; none when the operator
    // has dismissed them.
    const std::vector<std::string>& problems() const noexcept { return problems_; }
    void dismissProblems();

    // Image files and folders; font files are opened as FontOpening.h says.
    void open(const std::vector<std::string>& paths);

    // The window is so high, in 1/96 inch: the gallery is shown where the screen has room beside it, unless
    // the operator has chosen.
    void arrangeFor(int height);
    // Puts the focus where the next key belongs: the text that is to be included, or, as long as there is no
    // font, the choice of one.
    void giveFocus();
    // The colours of this run alone; the operator's own choice stays kept.
    void showTheme(Theme theme);
    // By its name on the command line; "" leaves them.
    void showTheme(std::string_view name);

    // The operator wants to end the program: asks what is to become of unsaved changes, and ends the screen
    // unless the operator cancels. Whether it has ended.
    bool close();
    // Ends the screen at once, without a question: unsaved changes are there again at the next start. Once;
    // later calls do nothing.
    void end();
    bool hasEnded() const noexcept { return ended_; }

    // Timers that the front end drives, as it does those of a form.
    std::vector<ui::Timer*> timers();

    // Any of the texts above but the title, for which there is Trainer::titleChanged.
    ui::Signal<> textsChanged;

  private:
    void showPart();
    void showImage(const std::string& image);
    void showMark();
    void showPlace(const std::string& image, const engine::Region& box);
    void showReadAllPossible();
    void showCheck();
    void startReadAll();
    void showPreview();
    void partChanged();
    void showLongOpening();
    void showPossible();
    Theme keptTheme() const;
    void chooseTheme(Theme theme);
    void showGuide();
    void showActs();
    void save();
    void saveCopy();
    void newFont();
    void selectFont();
    void restoreFont();
    std::string askForCopy(const std::string& font);
    void tell(const std::vector<std::string>& lines);
    void tellRecovered(const std::vector<std::string>& lines);
    void forgetProblems();
    void showKeys();
    void showAbout();

    Trainer& trainer_;
    ui::Platform& platform_;
    WindowSystem& system_;
    ImageSources sources_;
    CameraSource camera_;
    std::shared_ptr<const engine::GreyImage> shownImage_ = std::make_shared<engine::GreyImage>();
    std::optional<std::chrono::steady_clock::time_point> opening_;  // while it is that of the part before
    std::string shownPath_;                                         // of the current image
    bool typed_ = false;                                            // for it
    std::vector<std::string> problems_;
    std::size_t recovered_ = 0;  // so many of them, the first ones, are of changes of an earlier run
    LabelLists labelLists_;
    AccuracyPageFile page_;
    std::string checkText_;
    // What was asked for of an image, which is marked as long as that is the current one.
    std::optional<std::pair<std::string, engine::Region>> place_;
    bool ended_ = false;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
