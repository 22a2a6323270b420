// What text an image gets: proposes it in the screen's box, leads the operator to what is doubtful, holds
// what he typed against what is seen before the screen includes it, remembers it, and goes on to the next
// image.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/embedded/EmbeddedTool.h"
#include "screen/shell/DravikDlg.h"
#include "trainer/FontActs.h"
#include "trainer/NewestWork.h"
#include "trainer/OpenedParts.h"
#include "trainer/labels/IncludedImages.h"
#include "trainer/labels/LabelBook.h"
#include "trainer/labels/ProposedText.h"
#include "trainer/window/IncludeQuestion.h"
#include "ui/Platform.h"
#include "ui/Signal.h"
#include "ui/Timer.h"

namespace dravik::trainer {

// What has become of an image, for the font that is shown.
enum class PartState {
    New,
    Doubtful,  // seen, and something of its text is in doubt
    Included,
    Refused,  // by the last include
    Failed,   // it cannot be decoded
};

class Labelling {
  public:
    // All outlive this object.
    struct Around {
        ui::Platform& platform;
        screen::DravikDlg& control;
        engine::EmbeddedTool& tool;
        OpenedParts& parts;
        FontActs& acts;
    };
    // `labelsFile` is where the labels are kept.
    Labelling(const Around& around, std::string labelsFile);
    // Writes the labels that are not written yet; a failure is passed over.
    ~Labelling();
    Labelling(const Labelling&) = delete;
    Labelling& operator=(const Labelling&) = delete;

    // Another image is current, decoded or not yet. Its text of another time stands in the box, else none
    // does until it is proposed; text of the image before stays only if it is to be kept.
    void imageComesUp();
    // The characters of the current image are found, whose pixels have that digest.
    void imageFound(std::uint64_t digest) { digest_ = digest; }
    // What the characters of the current image may be, now or anew.
    void propose(std::vector<engine::CharacterCandidates> candidates);

    // The text of an image stays for the next one, for parts of one print.
    bool keepsText() const noexcept { return keepsText_; }
    void setKeepsText(bool keeps) { keepsText_ = keeps; }

    // Includes the current image, unless something speaks against it: in words, "" when it is included.
    std::string includeUnasked();

    // Asked before an include looks at the characters: what is still to be decided of them is decided then.
    std::function<void()> beforeInclude;

    // Why the label of a found character is in doubt, in words; "" when it is not.
    std::string doubt(std::size_t place) const;
    // How many characters of the text are in doubt, and whether it stands there as it was proposed.
    std::size_t doubts() const;
    bool isProposed() const noexcept { return !isOwn_ && !text_.text().empty(); }
    // The found character that the operator is led to, -1 when there is none.
    int pointedAt() const noexcept { return pointedAt_; }

    PartState state(const std::string& path) const;
    const LabelBook& labels() const noexcept { return book_; }
    // Takes the texts of a list, and shows that of the current image. Raises SampleListError.
    std::size_t openLabels(const std::string& list);
    // Ticks while labels are being written.
    ui::Timer& keepTimer() noexcept { return keepTimer_; }

    // doubt(), pointedAt().
    ui::Signal<> changed;
    // state() of any image.
    ui::Signal<> statesChanged;
    // An image has come up, and the text box is to have the focus.
    ui::Signal<> textWanted;

  private:
    ui::TextBox& box() const;
    std::string typed() const;
    std::size_t leadingBlanks() const;
    void showText(const std::string& text);
    void showOwnText();
    void showKnownText();
    void textEdited();
    const IncludedImages& included() const;
    void fontMayHaveChanged();
    void samplesFollowed();
    void setLabel(const std::string& path, const std::string& text);
    std::pair<std::string, std::string> forFont(const std::string& path) const;
    void setState(const std::string& path, PartState state);
    void pointAt(std::size_t place, const std::string& why);

    bool mayInclude();
    bool leadsToDoubt();
    bool isIncludedUnwanted();
    bool isContradicted();
    std::vector<Contradiction> contradictions() const;
    void includeEnded();
    enum class Left { None, One, Several };  // images that are not included, the one that comes up among them
    Left advance();

    void keepLabels();
    void labelsKept();

    const Around around_;
    LabelBook book_;
    engine::TextFormats format_;
    mutable IncludedImages included_;
    mutable bool isIncludedStale_ = true;
    // The font that is being changed, and its samples as they were.
    std::optional<std::pair<std::string, engine::SampleColumnsPtr>> before_;
    // But for included images and those that cannot be decoded, by font and path.
    std::map<std::pair<std::string, std::string>, PartState> states_;
    std::set<std::string> failed_;               // by path
    std::map<std::string, std::string> drafts_;  // typed and not included, by path

    std::string path_;  // of the image that is up
    std::uint64_t digest_ = 0;
    ProposedText text_;
    std::vector<engine::CharacterCandidates> candidates_;
    int pointedAt_ = -1;
    bool keepsText_ = false;
    bool isOwn_ = false;    // the text is the operator's, of now or of another time
    bool isTyped_ = false;  // since the image came up
    bool showing_ = false;
    bool isUnasked_ = false;
    bool hasIncluded_ = false;  // the include that goes on has

    NewestWork keeping_;
    ui::Timer keepTimer_{"tmrLabels", 50};
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
