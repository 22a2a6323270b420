// The embedded font tool: a FontTool, and the step that carries it, working on grey images that the program
// hands it and keeping fonts as files in the jobs folder.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "engine/classifier/Confidence.h"
#include "engine/embedded/HeldOutCheck.h"
#include "engine/image/GreyImage.h"
#include "engine/recogniser/BaseReader.h"
#include "tool/FontTool.h"
#include "tool/Step.h"

namespace dravik::engine {

// A found character: its box in image pixels, right and bottom exclusive, and the line that it stands in,
// from 0. Found characters are in reading order, line by line.
struct FoundCharacter {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int line = 0;
};

// A character as the trained font reads it.
struct ReadCharacter {
    FoundCharacter place;
    std::string character;  // the font's best answer
    double confidence = 0;  // that the answer is right, 0 to 1 (see Confidence.h)
};

// The text to show for a character: the answer, or "?" when its confidence is below `limit`.
std::string shownCharacter(const ReadCharacter& read, double limit = kRejectLimit);

// What summary() tells of a font file without making it current.
struct FontSummary {
    std::string name;
    tool::CharacterSet characterSet;
    int samples = 0;  // committed
    bool trained = false;
};

class EmbeddedTool : public tool::FontTool, public tool::Step {
  public:
    // Works in the given jobs folder, which is made when a font is first written. With `remembersFont` the
    // step's selected font is kept in the jobs folder and is there again at the next start.
    explicit EmbeddedTool(JobFolder folder, bool remembersFont = false);
    ~EmbeddedTool() override;

    // Step
    std::string programIdentifier() override;
    double datum(const std::string& name) override;
    tool::FontTool& fontTool() override { return *this; }

    // The current image; an empty one is none. Characters are found when they are first asked for.
    void setImage(GreyImage image);
    // The same without a copy; not null.
    void shareImage(std::shared_ptr<const GreyImage> image);
    const GreyImage& image() const;
    // The characters found in the current image.
    const std::vector<FoundCharacter>& found();
    // The current image read with the current font; empty when the font is not trained or nothing is found.
    std::vector<ReadCharacter> read();
    // The current image read without any font, as a suggestion of what to type.
    std::vector<SuggestedCharacter> suggest();
    // How well the found characters go with a text, one by one; empty when they differ in number.
    std::vector<CharacterLikelihood> compare(const std::string& expectedText);
    // Name of the current font, nothing when none is loaded.
    std::optional<std::string> currentFont() const;
    bool isTrained() const;
    // After each run that gives a result, the samples that it was given are checked in the background (see
    // HeldOutCheck.h). True while that goes on.
    bool isChecking();
    // What the check of the current font's last run has found; nothing before its end, and when another font
    // was loaded, another run started or the font reverted since.
    const HeldOutResult* heldOutCheck() const;
    // Reads a font file's summary; raises Failure that names the file and the problem.
    FontSummary summary(const std::string& name);

    // FontTool. While a run goes on, operations that would change which font is current, start another run or
    // revert raise Invalid procedure call (5); samples may come and go, the run works on those that it
    // started with. Duplicating copies the saved form of a font. SaveFont under another name leaves the
    // current font's name. RevertFont brings back the saved network and trained counts, and keeps the samples
    // as they are now. Distances come from the samples alone, not from the training: those of committed
    // samples follow every change (see SampleStore), and a training run measures all anew.
    void LoadFont(const std::string& name) override;
    void CreateFont(const std::string& name) override;
    void DeleteFont(const std::string& name) override;
    void RenameFont(const std::string& newName, const std::string& existingName) override;
    void DuplicateFont(const std::string& newName, const std::string& existingName) override;
    void SetCharacterSet(const tool::CharacterSet& set) override;
    void IncludeSamples(const std::string& expectedText) override;
    void CommitNewSamples() override;
    void SetTrainTimeout(std::int32_t seconds) override;
    void StartTraining() override;
    void SaveFont(const std::string& name) override;
    void RevertFont(const std::string& name) override;
    std::vector<std::string> GetFontList() override;
    tool::CharacterSet GetCharacterSet() override;
    std::int32_t GetTrainTimeout() override;
    bool IsTrainingDone() override;
    float GetRmsError() override;
    bool IsTrainingAborted() override;
    std::int32_t GetTrainCycles() override;
    void StopTraining() override;
    std::vector<std::string> GetUncommittedSamples() override;
    void DeleteSample(std::int32_t identifier) override;
    using tool::FontTool::GetSampleData;
    tool::RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                       std::span<const std::int16_t> fields) override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace dravik::engine
