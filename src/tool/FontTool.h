// The contract with the OCR font tool: everything that the training screen asks of it, in the order in which
// the tool's interface declares it.
//
// Every operation raises Failure with the tool's own number and text; the state that it had reached stays.
// All calls come from the user-interface thread. Only a training run goes on by itself, and is observed by
// polling.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tool/RecordTable.h"

namespace dravik::tool {

// One-character texts in the tool's order. Elements that are empty texts are to be ignored by a tool.
using CharacterSet = std::vector<std::string>;

class FontTool {
  public:
    FontTool() = default;
    FontTool(const FontTool&) = delete;
    FontTool& operator=(const FontTool&) = delete;
    virtual ~FontTool() = default;

    // Makes the named font the current one. One that is current already keeps what is not saved of it.
    virtual void LoadFont(const std::string& name) = 0;
    // A new, empty font of that name; replaces an existing one.
    virtual void CreateFont(const std::string& name) = 0;
    virtual void DeleteFont(const std::string& name) = 0;
    virtual void RenameFont(const std::string& newName, const std::string& existingName) = 0;
    virtual void DuplicateFont(const std::string& newName, const std::string& existingName) = 0;
    // Replaces the current font's character set.
    virtual void SetCharacterSet(const CharacterSet& set) = 0;
    // Adds the characters found in the current image as uncommitted samples, labelled in order with the
    // characters of the text.
    virtual void IncludeSamples(const std::string& expectedText) = 0;
    // Every uncommitted sample becomes a committed one, behind those that are.
    virtual void CommitNewSamples() = 0;
    // The time limit of a training run in seconds.
    virtual void SetTrainTimeout(std::int32_t seconds) = 0;
    // Starts a run of the current font and returns at once.
    virtual void StartTraining() = 0;
    virtual void SaveFont(const std::string& name) = 0;
    // Restores the font to its last saved training.
    virtual void RevertFont(const std::string& name) = 0;

    // Empty when the tool knows no font.
    virtual std::vector<std::string> GetFontList() = 0;
    // Empty when the current font has no characters.
    virtual CharacterSet GetCharacterSet() = 0;
    virtual std::int32_t GetTrainTimeout() = 0;
    // True once the current run has ended.
    virtual bool IsTrainingDone() = 0;
    // RMS error of the current or last run.
    virtual float GetRmsError() = 0;
    // Asked once a run has ended; true means that it has no figures to show.
    virtual bool IsTrainingAborted() = 0;
    virtual std::int32_t GetTrainCycles() = 0;
    virtual void StopTraining() = 0;
    // The characters of the uncommitted samples in their order; empty when there are none.
    virtual std::vector<std::string> GetUncommittedSamples() = 0;
    // Deletes the sample of that identifier; the later ones of its kind move one place down.
    virtual void DeleteSample(std::int32_t identifier) = 0;
    // The records that the selectors name, with the fields asked for; nothing when no record matches.
    virtual RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                         std::span<const std::int16_t> fields) = 0;

    // One selector.
    RecordTablePtr GetSampleData(std::int32_t selector, std::span<const std::int16_t> fields) {
        return GetSampleData(std::span<const std::int32_t>(&selector, 1), fields);
    }
};

}  // namespace dravik::tool
