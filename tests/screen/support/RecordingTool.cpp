#include "screen/support/RecordingTool.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "base/Text.h"

namespace dravik::test {
namespace {

std::string joined(const auto& values) {
    std::ostringstream text;
    for (const char* between = ""; const auto& value : values) text << std::exchange(between, ",") << value;
    return text.str();
}

// A row for each record below the headings, which the first one brings.
void addRows(std::vector<std::vector<Cell>>& rows, const auto& records, SampleKind kind) {
    std::int32_t index = 0;
    for (const auto& record : records) {
        std::vector<Cell> row = {static_cast<double>(sampleIdentifier(kind, index++)),
                                 static_cast<double>(codeOf(record.character))};
        for (const double field : record.fields()) row.emplace_back(field);
        row.insert(row.end(), record.features.begin(), record.features.end());
        if (rows.empty()) {
            rows.emplace_back();
            for (std::size_t i = 0; i < row.size(); ++i) rows[0].emplace_back("H" + std::to_string(i));
        }
        rows.push_back(std::move(row));
    }
}

}  // namespace

Cell CellTable::cell(int row, int column) const {
    if (row < 0 || row > upperRow() || column < 0) throw Failure(RuntimeError::SubscriptOutOfRange);
    const auto& cells = rows_[static_cast<std::size_t>(row)];
    if (static_cast<std::size_t>(column) >= cells.size()) throw Failure(RuntimeError::SubscriptOutOfRange);
    return cells[static_cast<std::size_t>(column)];
}

std::vector<std::string> RecordingTool::changes() const {
    std::vector<std::string> result;
    for (const auto& call : calls)
        if (!call.starts_with("Get") && !call.starts_with("Is")) result.push_back(call);
    return result;
}

int RecordingTool::count(const std::string& call) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

void RecordingTool::failAt(const std::string& operation, std::int32_t number, const std::string& text) {
    failures_.insert_or_assign(operation, Failure(number, text));
}

void RecordingTool::addCommitted(const std::string& character, const std::vector<double>& distances) {
    for (const double distance : distances) committed.push_back({character, distance, {}});
}

void RecordingTool::train() {
    trained.clear();
    for (const auto& character : characterSet) {
        CharacterRecord record{character, 0, {}};
        for (const auto& sample : committed) {
            if (sample.character != character) continue;
            ++record.trained;
            record.features = sample.features;
        }
        trained.push_back(record);
    }
}

void RecordingTool::record(const std::string& operation, const std::string& arguments) {
    calls.push_back(operation + "(" + arguments + ")");
    if (onCall) onCall(calls.back());
    if (const auto failure = failures_.find(operation); failure != failures_.end()) throw failure->second;
}

void RecordingTool::LoadFont(const std::string& name) {
    record("LoadFont", name);
    currentFont = name;
}

void RecordingTool::CreateFont(const std::string& name) {
    record("CreateFont", name);
    if (std::find(fonts.begin(), fonts.end(), name) == fonts.end()) fonts.push_back(name);
    currentFont = name;
}

void RecordingTool::DeleteFont(const std::string& name) {
    record("DeleteFont", name);
    std::erase(fonts, name);
}

void RecordingTool::RenameFont(const std::string& newName, const std::string& existingName) {
    record("RenameFont", newName + "," + existingName);
    std::replace(fonts.begin(), fonts.end(), existingName, newName);
}

void RecordingTool::DuplicateFont(const std::string& newName, const std::string& existingName) {
    record("DuplicateFont", newName + "," + existingName);
    fonts.push_back(newName);
}

void RecordingTool::SetCharacterSet(const CharacterSet& set) {
    record("SetCharacterSet", joined(set));
    characterSet = set;
    std::erase(characterSet, "");
}

void RecordingTool::IncludeSamples(const std::string& expectedText) {
    record("IncludeSamples", expectedText);
    if (image) {
        uncommitted.insert(uncommitted.end(), image->begin(), image->end());
        return;
    }
    for (const auto& character : characters(expectedText)) uncommitted.push_back({character, 0, filled(0.5)});
}

void RecordingTool::CommitNewSamples() {
    record("CommitNewSamples");
    committed.insert(committed.end(), uncommitted.begin(), uncommitted.end());
    uncommitted.clear();
}

void RecordingTool::SetTrainTimeout(std::int32_t seconds) {
    record("SetTrainTimeout", std::to_string(seconds));
    timeout = seconds;
}

std::vector<std::string> RecordingTool::GetUncommittedSamples() {
    record("GetUncommittedSamples");
    std::vector<std::string> result;
    for (const auto& sample : uncommitted) result.push_back(sample.character);
    return result;
}

void RecordingTool::DeleteSample(std::int32_t identifier) {
    record("DeleteSample", std::to_string(identifier));
    const auto kind = static_cast<SampleKind>(identifier / kKindFactor);
    const auto index = identifier % kKindFactor;
    auto& samples = kind == SampleKind::Committed ? committed : uncommitted;
    if (static_cast<std::size_t>(index) < samples.size()) samples.erase(samples.begin() + index);
}

RecordTablePtr RecordingTool::GetSampleData(std::span<const std::int32_t> selectors,
                                            std::span<const std::int16_t> fields) {
    record("GetSampleData", joined(selectors) + ";" + joined(fields));
    if (selectors.size() == 1)
        if (const auto answer = answers.find(selectors.front()); answer != answers.end())
            return answer->second;
    std::vector<std::vector<Cell>> rows;
    for (const auto selector : selectors) {
        if (selector == kAllTrained) addRows(rows, trained, SampleKind::Trained);
        if (selector == kAllUncommitted) addRows(rows, uncommitted, SampleKind::Uncommitted);
        if (selector == kAllCommitted) addRows(rows, committed, SampleKind::Committed);
    }
    return rows.empty() ? nullptr : std::make_shared<CellTable>(std::move(rows));
}

}  // namespace dravik::test
