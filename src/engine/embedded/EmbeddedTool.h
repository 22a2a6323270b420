// The embedded font tool: a FontTool, and the step that carries it, working on grey images that the program
// hands it and keeping fonts as files in the jobs folder.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "base/JobFolder.h"
#include "engine/embedded/FontTraining.h"
#include "engine/embedded/HeldOutCheck.h"
#include "engine/embedded/LabelCandidates.h"
#include "engine/embedded/SeenImage.h"
#include "engine/font/FontReader.h"
#include "engine/image/GreyImage.h"
#include "engine/recogniser/BaseReader.h"
#include "tool/FontHistory.h"
#include "tool/FontTool.h"
#include "tool/Step.h"

namespace dravik::engine {

class FontWorkspace;

// What summary() tells of a font file without making it current.
struct FontSummary {
    std::string name;
    tool::CharacterSet characterSet;
    int samples = 0;  // committed
    bool trained = false;
};

class EmbeddedTool : public tool::FontTool, public tool::FontHistory, public tool::Step {
  public:
    // Works in the given jobs folder, which is made when a font is first written. With `remembersFont` the
    // step's selected font is kept in the jobs folder and is there again at the next start.
    explicit EmbeddedTool(const JobFolder& folder, bool remembersFont = false);
    ~EmbeddedTool() override;

    // Step
    std::string programIdentifier() override;
    double datum(const std::string& name) override;
    tool::FontTool& fontTool() override { return *this; }

    // The current image; an empty one is none. Characters are found when they are first asked for.
    void setImage(GreyImage image);
    // The same without a copy; not null. With a scene, which is findScene() of the image, its characters need
    // not be looked for here.
    void shareImage(std::shared_ptr<const GreyImage> image, std::shared_ptr<const Scene> scene = nullptr);
    // The path of the current image, "" when it has none, and a digest of its pixels, 0 when unknown, which
    // its samples keep. Until the next image.
    void setImageName(const std::string& name, std::uint64_t digest = 0);
    const GreyImage& image() const;
    // How images are looked at: by the settings of the current font, which are a part of it as its samples
    // are, else by what overrides them here. A scene that came with the image stays whatever they are.
    // setSettings() raises as a change does, and Invalid procedure call (5) for settings that are none.
    const SegmentationSettings& settings() const;
    void setSettings(const SegmentationSettings& settings);
    void overrideSettings(const std::optional<SegmentationSettings>& settings);
    // The characters of the current image as they are told, in place of those that are found: they are
    // included and read as they are. With nothing, the found ones again.
    void setCharacters(const std::optional<std::vector<CharacterBox>>& boxes);
    const std::vector<CharacterBox>& characterBoxes();
    // What is found in the current image whatever was told, and what it is divided into by a text (see
    // DivisionByText.h), which stands in the place of the found characters; null for nothing else.
    std::shared_ptr<const Scene> foundScene();
    void setDivision(std::shared_ptr<const Scene> scene);
    std::shared_ptr<const Scene> division() const;
    // The characters found in the current image.
    const std::vector<FoundCharacter>& found();
    // The current image read with the current font; empty when the font is not trained or nothing is found.
    std::vector<ReadCharacter> read();
    // The current font as it is now, made ready to read on any number of threads.
    FontReader reader(Context context = Context::Used);
    // The current image read without any font, as a suggestion of what to type.
    std::vector<SuggestedCharacter> suggest();
    // How well the found characters go with a text, one by one; empty when they differ in number.
    std::vector<CharacterLikelihood> compare(const std::string& expectedText);
    // What read() does, as work for any thread: on the image and the font as they are now, whatever becomes
    // of this tool. Ends early, with what it likes, once a stop is requested.
    using ReadingWork = std::function<std::vector<ReadCharacter>(const std::stop_token&)>;
    ReadingWork readingWork();
    // What each found character may be, as work of the same kind; of an image and a font of any state, also
    // of none.
    using CandidatesWork = std::function<std::vector<CharacterCandidates>(const std::stop_token&)>;
    CandidatesWork candidatesWork();
    // Name of the current font, nothing when none is loaded.
    std::optional<std::string> currentFont() const;
    bool isTrained() const;
    // Takes the lock of the current font before there is a change; raises as a change does, and Object
    // variable not set (91). It is given up again with the next act that changes nothing.
    void claimFont();
    // After each run that gives a result, the samples that it was given are checked in the background (see
    // HeldOutCheck.h). True while that goes on.
    bool isChecking();
    // Begins such a check of the current font's samples as they are now.
    void startCheck();
    // What the check of the current font's last run has found; nothing before its end, and when another font
    // was loaded, another run started or the font reverted since.
    const HeldOutResult* heldOutCheck() const;
    // The samples of a kind in their order, as they are now, each with where it comes from as far as that is
    // known: number i is that of identifier kind x 100000 + i.
    SampleColumnsPtr samples(tool::SampleKind kind);
    // Many at once, by identifiers in any order, of committed samples that exist; all or none. Raise Invalid
    // procedure call (5), and what a change raises.
    void deleteSamples(std::span<const std::int32_t> identifiers);
    // Gives them another character, one that the font can have, which is added to its set when it lacks it.
    void relabelSamples(std::span<const std::int32_t> identifiers, const std::string& character);
    // Reads a font file's summary; raises Failure that names the file and the problem.
    FontSummary summary(const std::string& name);

    // FontTool. While a run goes on, operations that would change which font is current, start another run or
    // revert raise Invalid procedure call (5); samples may come and go, the run works on those that it
    // started with.
    //
    // Every change is in the font's journal when the operation returns, and on the disk within a tenth of a
    // second; one that cannot be written there is not made, and raises what kept it from being written. So
    // any number of fonts may have unsaved changes: what a program that died has left is in the font again
    // when it is loaded (see takeRecovered()), and what is not saved when the tool goes is among the
    // versions. The first change takes the lock of the font, which it keeps until nothing is unsaved;
    // meanwhile others may load the font, and changing it raises Permission denied (70) there, with the
    // words who is at work. A font that was changed by another program since it was loaded is never written:
    // changing it raises Path/File access error (75), and SaveFont writes a font beside it, which the failure
    // names.
    //
    // LoadFont of the current font keeps what is unsaved. CreateFont of a font that exists is an act that can
    // be undone. DuplicateFont copies a font as it is shown, with what is unsaved. DeleteFont keeps the font
    // among the versions. SaveFont under another name leaves the current font's name. RevertFont brings back
    // the saved network and trained counts, which can be undone, and keeps the samples as they are now. One
    // include takes 32,767 samples at most. Distances come from the samples alone, not from the training:
    // those of committed samples follow every change (see SampleStore), and a training run measures all anew.
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

    // FontHistory. A host that never calls endAct() has acts all the same: changes within a tenth of a second
    // of each other are one. The first change after undo() makes redo() impossible.
    void endAct(std::string_view words, std::string_view screenState) override;
    std::optional<std::string> undoWords() const override;
    std::optional<std::string> redoWords() const override;
    std::string undo() override;
    std::string redo() override;
    std::vector<std::string> unsavedFonts() const override;
    void saveUnsaved(const std::string& font) override;
    void discardUnsaved(const std::string& font) override;
    void exportFont(const std::string& font, const std::string& file) override;
    void importFont(const std::string& file, const std::string& name) override;
    void keepUnsaved() override;
    std::vector<tool::RecoveredChanges> takeRecovered() override;
    std::vector<tool::FontVersion> versions(const std::string& font) const override;
    void restoreVersion(const tool::FontVersion& version, const std::string& name) override;

  private:
    std::vector<std::size_t> committedPlaces(std::span<const std::int32_t> identifiers);
    void settle();
    void checkIdle(const char* what);
    // Does to the fonts what may change which training is current; its check is dropped then.
    template <class Action>
    auto change(Action action);

    std::unique_ptr<FontWorkspace> fonts_;
    FontTraining training_;
    // By the settings that count now.
    SeenImage& seen();

    SeenImage seen_;
    std::optional<SegmentationSettings> overriding_;
};

}  // namespace dravik::engine
