// The stand-alone program without its windows: the training screen bound to the embedded tool, the opened
// parts beside it, the labels that an include would give, and what the current font reads.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "engine/embedded/EmbeddedTool.h"
#include "screen/shell/DravikDlg.h"
#include "trainer/FontActs.h"
#include "trainer/ImageAdjustments.h"
#include "trainer/Labelling.h"
#include "trainer/OpenedParts.h"
#include "ui/Platform.h"
#include "ui/Signal.h"
#include "ui/Timer.h"

namespace dravik::trainer {

// A found character with the label that the typed text gives it; "" where the text is too short.
struct LabelledCharacter {
    engine::FoundCharacter place;
    std::string label;
    engine::RotatedBox box{};  // as the character stands, turned
    std::string doubt{};       // why the label is to be looked at, in words; "" when it is not
};

// What the current font reads in the current image, line by line.
struct Reading {
    std::vector<std::vector<engine::ReadCharacter>> lines;
    bool available = false;  // a trained font is loaded and an image is open
    std::string note;        // why there is nothing to read, in words; "" when there is
};

// Characters read with less confidence than this are marked as weak.
constexpr double kWeakConfidence = 0.6;

// For which a window may wait for the work on an image: part of a frame, in which small images come up as
// one change.
constexpr std::chrono::milliseconds kPatience{6};

class Trainer {
  public:
    // The platform outlives the trainer. With `remembersFont` the font of the last session is loaded at once.
    Trainer(ui::Platform& platform, const JobFolder& folder, ImageDecoder decoder, bool remembersFont);
    // Ends the screen unasked; what is unsaved then is there again at the next start.
    ~Trainer();

    screen::DravikDlg& control() noexcept;
    // A training run is going on.
    bool isTraining() const noexcept;
    engine::EmbeddedTool& tool() noexcept;
    // Undo, what is unsaved, older versions.
    FontActs& acts() noexcept;
    tool::FontHistory& history() noexcept;
    OpenedParts& parts() noexcept;
    ImageAdjustments& adjustments() noexcept;
    const JobFolder& folder() const noexcept;

    // Decoding an image, finding its characters and reading them go on beside the window when they take
    // longer than this; until then whoever changes the image or the font waits. Without a call, all waits.
    void setPatience(std::chrono::milliseconds patience);
    // Ticks while such work goes on; the front end drives it as it does the screen's own timers.
    ui::Timer& workTimer() noexcept;
    // The current image is being decoded or its characters are looked for: Include is disabled meanwhile.
    bool isLooking() const noexcept;
    // That, or the characters are being read.
    bool isWorking() const noexcept;
    // Ends such work. An image whose characters were not found then has none, and Include stays disabled.
    void stopWorking();
    // Decodes the current image and looks for its characters once more.
    void lookAgain();

    // Found characters of the current image with the labels of the text typed for Include.
    const std::vector<LabelledCharacter>& preview() const noexcept;
    // How many typed characters have no character in the image (negative: how many found ones have no label);
    // 0 when they match or nothing is typed.
    int mismatch() const noexcept;
    // The typed character of a found one becomes this text, "" takes it away; or text comes before it. As if
    // the operator had typed it.
    void replaceTyped(std::size_t index, const std::string& text);
    void insertTyped(std::size_t index, const std::string& text);
    // What each found character probably is, without any font.
    std::vector<std::string> suggestions();
    // The same in words for the operator, e.g. "12 characters found, 11 typed".
    std::string previewText() const;

    // Proposed texts, the operator's way through them, and what has become of each image.
    Labelling& labelling() noexcept;
    const Labelling& labelling() const noexcept;

    const Reading& reading() const noexcept;

    // What the check of the last run has found, in a line for the operator; that it is going on; or "".
    const std::string& checkText() const noexcept;
    // Ticks while the check is going on; the front end drives it as it does the screen's own timers.
    ui::Timer& checkTimer() noexcept;

    // Begins the held-out check of the font as it is now, unless one goes on or has a result.
    void checkFont();

    // "ocrb* - Dravik Trainer": the font, a star while it has unsaved changes, the program; just the
    // program's name while no font is loaded.
    std::string title() const;

    // Includes the current image with the text in the box, unasked: characters that the font lacks are added
    // to it. Why it was not included, in words; "" when it was.
    std::string includeAsLabelled();

    // Asks for the name and the characters of a new font, and takes it to the screen.
    void newFont();

    // Ends the screen without its own question whether to save.
    void end();

    ui::Signal<> previewChanged;
    ui::Signal<> readingChanged;
    ui::Signal<> checkChanged;
    ui::Signal<> titleChanged;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace dravik::trainer
