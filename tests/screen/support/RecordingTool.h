// A font tool that is also a step: it keeps one font's content in plain vectors that a test fills, answers
// queries from them with the tables that a real tool answers with, and writes down every call as a text such
// as "DeleteSample(300002)". Any operation can be told to fail.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Failure.h"
#include "tool/Samples.h"
#include "tool/Step.h"

namespace dravik::test {

using namespace tool;

using Features = std::array<double, kFeatureCount>;

// All of that value.
inline Features filled(double value) {
    Features features;
    features.fill(value);
    return features;
}

struct SampleRecord {
    std::string character;
    double distance = 0;
    Features features{};

    // Of its row, between the character and the features.
    std::vector<double> fields() const { return {distance, 0, 0}; }
};

struct CharacterRecord {
    std::string character;
    int trained = 0;
    Features features{};

    std::vector<double> fields() const { return {static_cast<double>(trained), 0}; }
};

// A table made of rows of cells, row 0 being the headings; the rows need not be of the same length.
class CellTable : public RecordTable {
  public:
    explicit CellTable(std::vector<std::vector<Cell>> rows) : rows_(std::move(rows)) {}

    int upperRow() const noexcept override { return static_cast<int>(rows_.size()) - 1; }
    int upperColumn() const noexcept override {
        return rows_.empty() ? -1 : static_cast<int>(rows_.front().size()) - 1;
    }
    Cell cell(int row, int column) const override;

  private:
    std::vector<std::vector<Cell>> rows_;
};

class RecordingTool : public FontTool, public Step {
  public:
    // What the tool holds. A test sets it up and looks at it freely.
    std::string program = kDravikStep;
    std::map<std::string, double> data = {{kSelectedFontDatum, 1.0}};
    std::vector<std::string> fonts;
    std::string currentFont;
    CharacterSet characterSet;
    std::vector<CharacterRecord> trained;
    std::vector<SampleRecord> uncommitted;
    std::vector<SampleRecord> committed;

    // What the next IncludeSamples finds; without it one sample for each character of the text.
    std::optional<std::vector<SampleRecord>> image;
    // Replaces the answer of a selector by a table of these rows, the headings first: an empty or a broken
    // one.
    void setAnswer(std::int32_t selector, std::vector<std::vector<Cell>> rows) {
        answers[selector] = std::make_shared<CellTable>(std::move(rows));
    }
    std::map<std::int32_t, RecordTablePtr> answers;

    std::int32_t timeout = 60;
    bool trainingDone = true;
    bool trainingAborted = false;
    float rmsError = 0;
    std::int32_t cycles = 0;

    // The calls so far; changes() leaves out those that only ask.
    std::vector<std::string> calls;
    std::vector<std::string> changes() const;
    int count(const std::string& call) const;

    // From now on the operation ("SaveFont") fails, until succeedAt.
    void failAt(const std::string& operation, std::int32_t number, const std::string& text);
    void succeedAt(const std::string& operation) { failures_.erase(operation); }
    // Run inside the operation, before it does anything.
    std::function<void(const std::string& call)> onCall;

    // For setting up a font.
    void addCommitted(const std::string& character, const std::vector<double>& distances);
    // The trained records become those of the committed samples, one for each character of the set.
    void train();

    std::string programIdentifier() override { return program; }
    double datum(const std::string& name) override { return data.at(name); }
    FontTool& fontTool() override { return *this; }

    using FontTool::GetSampleData;
    void LoadFont(const std::string& name) override;
    void CreateFont(const std::string& name) override;
    void DeleteFont(const std::string& name) override;
    void RenameFont(const std::string& newName, const std::string& existingName) override;
    void DuplicateFont(const std::string& newName, const std::string& existingName) override;
    void SetCharacterSet(const CharacterSet& set) override;
    void IncludeSamples(const std::string& expectedText) override;
    void CommitNewSamples() override;
    void SetTrainTimeout(std::int32_t seconds) override;
    void StartTraining() override { record("StartTraining"); }
    void SaveFont(const std::string& name) override { record("SaveFont", name); }
    void RevertFont(const std::string& name) override { record("RevertFont", name); }
    std::vector<std::string> GetFontList() override { return answer("GetFontList", fonts); }
    CharacterSet GetCharacterSet() override { return answer("GetCharacterSet", characterSet); }
    std::int32_t GetTrainTimeout() override { return answer("GetTrainTimeout", timeout); }
    bool IsTrainingDone() override { return answer("IsTrainingDone", trainingDone); }
    float GetRmsError() override { return answer("GetRmsError", rmsError); }
    bool IsTrainingAborted() override { return answer("IsTrainingAborted", trainingAborted); }
    std::int32_t GetTrainCycles() override { return answer("GetTrainCycles", cycles); }
    void StopTraining() override { record("StopTraining"); }
    std::vector<std::string> GetUncommittedSamples() override;
    void DeleteSample(std::int32_t identifier) override;
    // Recorded as "GetSampleData(399999;1,2,3,5,6)".
    RecordTablePtr GetSampleData(std::span<const std::int32_t> selectors,
                                 std::span<const std::int16_t> fields) override;

  private:
    void record(const std::string& operation, const std::string& arguments = {});
    // A call may change what it asks for before it is answered.
    template <class Value>
    Value answer(const char* operation, const Value& value) {
        record(operation);
        return value;
    }

    std::map<std::string, Failure> failures_;
};

}  // namespace dravik::test
