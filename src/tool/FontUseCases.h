// What can be done with the fonts of a tool: choosing or making one, including samples, learning, saving.
// Without widgets: whoever calls gets the outcome as a value and says it in words of its own.
//
// Failures of the tool are raised as they come; what an operation had begun is taken back first where it can
// be.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "tool/FontTool.h"

namespace dravik::tool {

// The font that is now current.
struct ChosenFont {
    std::string name;
    bool made = false;  // it was missing
};

// Why there can be no font of a name.
enum class NameProblem {
    Reserved,   // "new"
    OtherCase,  // there is a font whose name differs only in the case of its letters
};

using ChooseOutcome = std::variant<ChosenFont, NameProblem>;

struct IncludeRequest {
    std::string_view text;      // as typed
    bool maintainCase = false;  // the text follows the case of the font's letters
    bool addMissing = false;    // characters that the font's set lacks are added to it
};

struct Included {
    std::size_t samples = 0;
};
// As many characters were typed, as many were found.
struct CountMismatch {
    std::size_t typed = 0;
    std::size_t found = 0;
};
// The features of this character's sample are no numbers, or negative.
struct InvalidValues {
    std::string character;
};
// The font's set lacks these characters, and none was to be added.
struct MissingCharacters {
    std::string characters;
};
// There was nothing to include: no text, no characters in the image.
struct NothingFound {};

using IncludeOutcome = std::variant<Included, CountMismatch, InvalidValues, MissingCharacters, NothingFound>;

struct LearnProgress {
    double seconds = 0;  // since the start
    std::int32_t cycles = 0;
    float rmsError = 0;
};

struct LearnOutcome {
    enum class End {
        Learnt,    // the font is trained, and not yet saved
        NoResult,  // the tool ended the run without one
        Stopped,
    };
    End end = End::Learnt;
    LearnProgress last;  // the figures at the end
};

class FontUseCases {
  public:
    // The tool outlives them.
    explicit FontUseCases(FontTool& tool) : tool_(tool) {}

    // Makes the font of that name current, and makes it when it is missing: empty, under the name without
    // what cannot stand in a file name. A name that cannot be changes nothing.
    ChooseOutcome choose(const std::string& name);

    // Gives the current font these characters in this order.
    void setCharacters(std::string_view characters);

    // Includes the characters that the tool finds in its current image as samples of the current font. Only
    // Included changes the font; in all other cases, and when the tool fails, no uncommitted sample stays
    // behind, not even one that was there before.
    IncludeOutcome include(const IncludeRequest& request);

    // Committed samples of the current font.
    int committedSamples();

    // Trains the current font to the end, within a limit in seconds, else within the tool's own. `progress`
    // is told at least once, `stop` is asked after each time; a run that is stopped, or during which one of
    // them or the tool fails, leaves the font as it was.
    LearnOutcome learn(std::optional<std::int32_t> limit,
                       const std::function<void(const LearnProgress&)>& progress,
                       const std::function<bool()>& stop);

    // Writes the font chosen to its file.
    void save();

  private:
    IncludeOutcome checkAndCommit(std::string_view text, bool addMissing);
    void discardUncommitted();

    FontTool& tool_;
    std::string font_;  // chosen
};

}  // namespace dravik::tool
