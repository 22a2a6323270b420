#include "engine/embedded/EmbeddedTool.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/Failure.h"
#include "base/Text.h"
#include "engine/classifier/SceneReading.h"
#include "engine/font/FontFile.h"
#include "engine/font/FontWorkspace.h"
#include "engine/font/SampleTable.h"

namespace dravik::engine {
namespace {

using tool::SampleKind;

// The screen counts an include's samples in 16 bits.
constexpr std::size_t kMostInOneInclude = 32767;

// One record for each character of the set, then for those that were trained without being in it.
std::vector<CharacterRecord> characterRecords(const FontState& font) {
    std::vector<CharacterRecord> records;
    std::vector<std::int32_t> inSet;
    for (const std::string& character : font.characterSet) {
        CharacterRecord& record = records.emplace_back();
        record.code = codeOf(character);
        inSet.push_back(record.code);
        if (const TrainedCharacter* one = font.training->find(record.code)) {
            record.trained = one->count;
            record.inputs = one->mean;
        } else if (const ClassStatistics::Class* committed = font.samples.statistics().find(record.code)) {
            for (std::size_t i = 0; i < kInputCount; ++i)
                record.inputs[i] = static_cast<float>(committed->sums[i] / committed->count);
        }
    }
    std::sort(inSet.begin(), inSet.end());
    for (const TrainedCharacter& one : font.training->characters)
        if (!std::binary_search(inSet.begin(), inSet.end(), one.code))
            records.push_back({one.code, one.count, one.mean});
    return records;
}

// Without empty and repeated characters; raises Failure for a set that no font can have.
tool::CharacterSet checkedSet(const tool::CharacterSet& set) {
    tool::CharacterSet cleaned;
    std::unordered_set<std::string> known;
    for (const std::string& character : set)
        if (!character.empty() && known.insert(character).second) cleaned.push_back(character);
    if (cleaned.size() > static_cast<std::size_t>(tool::kMostSamples))
        throw Failure(RuntimeError::OutOfMemory,
                      "A font has at most " + std::to_string(tool::kMostSamples) + " characters");
    checkCharacterSet(cleaned);
    return cleaned;
}

}  // namespace

EmbeddedTool::EmbeddedTool(const JobFolder& folder, bool remembersFont)
    : fonts_(std::make_unique<FontWorkspace>(folder, remembersFont)) {}

EmbeddedTool::~EmbeddedTool() = default;

// Takes over what an ended run has left.
void EmbeddedTool::settle() {
    if (auto outcome = training_.takeOutcome(fonts_->state())) fonts_->makeAnyway(std::move(*outcome));
}

void EmbeddedTool::checkIdle(const char* what) {
    settle();
    if (training_.isUnderWay())
        throw Failure(RuntimeError::InvalidProcedureCall,
                      std::string("A training run is going on; stop it before ") + what);
}

template <class Action>
auto EmbeddedTool::change(Action action) {
    struct DropCheck {
        EmbeddedTool& tool;
        TrainingPtr before;
        ~DropCheck() {
            if (tool.fonts_->state().training != before) tool.training_.dropCheck();
        }
    } dropCheck{*this, fonts_->state().training};
    return action();
}

std::string EmbeddedTool::programIdentifier() {
    return tool::kDravikStep;
}

double EmbeddedTool::datum(const std::string& name) {
    if (name != tool::kSelectedFontDatum)
        throw Failure(RuntimeError::InvalidProcedureCall, "The step has no datum \"" + name + "\"");
    return fonts_->library().selectionMask();
}

void EmbeddedTool::setImage(GreyImage image) {
    shareImage(std::make_shared<GreyImage>(std::move(image)));
}

void EmbeddedTool::shareImage(std::shared_ptr<const GreyImage> image, std::shared_ptr<const Scene> scene) {
    seen_.show(std::move(image), std::move(scene));
}

void EmbeddedTool::setImageName(const std::string& name, std::uint64_t digest) {
    seen_.setName(name, digest);
}

const GreyImage& EmbeddedTool::image() const {
    return *seen_.image();
}

const SegmentationSettings& EmbeddedTool::settings() const {
    return overriding_ ? *overriding_ : fonts_->state().settings;
}

void EmbeddedTool::setSettings(const SegmentationSettings& settings) {
    fonts_->font();
    if ((settings.region && !isRegion(*settings.region)) || settings.print.smallestHeight < 0 ||
        settings.print.smallestHeight > kMostSmallestHeight)
        throw Failure(RuntimeError::InvalidProcedureCall,
                      "The region or the smallest height is out of range");
    if (settings != fonts_->state().settings) fonts_->make(SetSettings{fonts_->state().settings, settings});
}

void EmbeddedTool::overrideSettings(const std::optional<SegmentationSettings>& settings) {
    overriding_ = settings;
}

SeenImage& EmbeddedTool::seen() {
    seen_.setSettings(settings());
    return seen_;
}

void EmbeddedTool::setCharacters(const std::optional<std::vector<CharacterBox>>& boxes) {
    seen().setCharacters(boxes);
}

std::shared_ptr<const Scene> EmbeddedTool::foundScene() {
    return seen().foundScene();
}

void EmbeddedTool::setDivision(std::shared_ptr<const Scene> scene) {
    seen().setDivision(std::move(scene));
}

std::shared_ptr<const Scene> EmbeddedTool::division() const {
    return seen_.division();
}

const std::vector<CharacterBox>& EmbeddedTool::characterBoxes() {
    return seen().boxes();
}

const std::vector<FoundCharacter>& EmbeddedTool::found() {
    return seen().found();
}

std::vector<ReadCharacter> EmbeddedTool::read() {
    return readingWork()({});
}

FontReader EmbeddedTool::reader(Context context) {
    settle();
    const FontState& font = fonts_->state();
    return FontReader(font.training->network, font.samples.statistics(),
                      font.samples.columns(SampleKind::Committed)->samples, settings(), context);
}

EmbeddedTool::ReadingWork EmbeddedTool::readingWork() {
    settle();
    const FontState& font = fonts_->state();
    if (font.training->empty()) return [](const std::stop_token&) { return std::vector<ReadCharacter>(); };
    return [seen = seen().scene(), training = font.training, statistics = font.samples.statistics(),
            samples = font.samples.columns(SampleKind::Committed)](const std::stop_token& stop) {
        return FontReader(training->network, statistics, samples->samples).read(*seen, stop);
    };
}

EmbeddedTool::CandidatesWork EmbeddedTool::candidatesWork() {
    settle();
    const FontState& font = fonts_->state();
    return [seen = seen().scene(), training = font.training, statistics = font.samples.statistics(),
            samples = font.samples.columns(SampleKind::Committed)](const std::stop_token& stop) {
        return labelCandidates(*seen, training->network, statistics,
                               DistanceMeasure(statistics, samples->samples), stop);
    };
}

std::vector<SuggestedCharacter> EmbeddedTool::suggest() {
    return readWithoutFont(*seen().scene());
}

std::vector<CharacterLikelihood> EmbeddedTool::compare(const std::string& expectedText) {
    return compareWithText(*seen().scene(), characters(expectedText));
}

std::optional<std::string> EmbeddedTool::currentFont() const {
    const WorkingCopy* font = fonts_->current();
    return font ? std::optional(font->name()) : std::nullopt;
}

bool EmbeddedTool::isTrained() const {
    return !fonts_->state().training->empty();
}

void EmbeddedTool::claimFont() {
    fonts_->claim();
}

bool EmbeddedTool::isChecking() {
    settle();
    return training_.isChecking();
}

void EmbeddedTool::startCheck() {
    settle();
    training_.startCheck(fonts_->state());
}

const HeldOutResult* EmbeddedTool::heldOutCheck() const {
    return training_.checked();
}

SampleColumnsPtr EmbeddedTool::samples(SampleKind kind) {
    settle();
    return fonts_->state().samples.columns(kind);
}

// Ascending, without repeats.
std::vector<std::size_t> EmbeddedTool::committedPlaces(std::span<const std::int32_t> identifiers) {
    fonts_->font();
    const std::size_t count = fonts_->state().samples.count(SampleKind::Committed);
    std::vector<std::size_t> places;
    for (const std::int32_t identifier : identifiers) {
        const std::int32_t place = identifier - tool::sampleIdentifier(SampleKind::Committed, 0);
        if (place < 0 || static_cast<std::size_t>(place) >= count)
            throw Failure(RuntimeError::InvalidProcedureCall,
                          std::to_string(identifier) + " is not the identifier of a committed sample");
        places.push_back(static_cast<std::size_t>(place));
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

void EmbeddedTool::deleteSamples(std::span<const std::int32_t> identifiers) {
    const std::vector<std::size_t> places = committedPlaces(identifiers);
    std::vector<FontChange> changes;
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        changes.push_back(RemoveSample{SampleKind::Committed, static_cast<std::uint32_t>(*place),
                                       fonts_->state().samples.at(SampleKind::Committed, *place)});
    fonts_->make(std::move(changes));
}

void EmbeddedTool::relabelSamples(std::span<const std::int32_t> identifiers, const std::string& character) {
    checkCharacterSet({character});
    if (characters(character).size() != 1)
        throw Failure(RuntimeError::InvalidProcedureCall, "A sample is labelled with one character");
    const std::int32_t code = codeOf(character);
    const SampleColumnsPtr committed = samples(SampleKind::Committed);
    RelabelSamples change;
    change.codeAfter = code;
    for (const std::size_t place : committedPlaces(identifiers)) {
        if (committed->codes[place] == code) continue;
        change.serials.push_back(committed->samples[place]->serial);
        change.codesBefore.push_back(committed->codes[place]);
        change.distancesBefore.push_back(committed->distances[place]);
    }
    if (change.serials.empty()) return;
    std::vector<FontChange> changes;
    const tool::CharacterSet& set = fonts_->state().characterSet;
    if (std::find(set.begin(), set.end(), character) == set.end()) {
        tool::CharacterSet larger = set;
        larger.push_back(character);
        changes.push_back(SetCharacters{set, checkedSet(larger)});
    }
    changes.push_back(std::move(change));
    fonts_->make(std::move(changes));
}

FontSummary EmbeddedTool::summary(const std::string& asked) {
    const std::string name = fonts_->library().spelling(asked);
    FontRecord font = readFont(fonts_->library().existingFile(name));
    return {name, std::move(font.characterSet), static_cast<int>(font.samples.size()),
            !font.training.empty()};
}

void EmbeddedTool::LoadFont(const std::string& name) {
    fonts_->library().existingFile(fonts_->library().spelling(name));
    checkIdle("loading a font");
    if (fonts_->load(name)) training_.dropCheck();
}

void EmbeddedTool::CreateFont(const std::string& name) {
    fonts_->library().file(name);
    checkIdle("creating a font");
    fonts_->create(name);
    training_.dropCheck();
}

void EmbeddedTool::DeleteFont(const std::string& name) {
    const std::string font = fonts_->library().spelling(name);
    fonts_->library().existingFile(font);
    if (currentFont() == font) checkIdle("deleting its font");
    change([&] { fonts_->remove(font); });
}

void EmbeddedTool::RenameFont(const std::string& newName, const std::string& existingName) {
    fonts_->rename(newName, existingName);
}

void EmbeddedTool::DuplicateFont(const std::string& newName, const std::string& existingName) {
    settle();
    fonts_->duplicate(newName, existingName);
}

void EmbeddedTool::SetCharacterSet(const tool::CharacterSet& asked) {
    fonts_->font();
    tool::CharacterSet set = checkedSet(asked);
    if (set != fonts_->state().characterSet)
        fonts_->make(SetCharacters{fonts_->state().characterSet, std::move(set)});
}

void EmbeddedTool::IncludeSamples(const std::string& expectedText) {
    fonts_->font();
    const std::vector<std::string> text = characters(expectedText);
    const std::vector<SampleInputs> inputs = allInputs(*seen().scene(), text);
    const std::vector<std::shared_ptr<const SampleOrigin>> origins = seen().origins();
    if (inputs.empty()) return;
    if (inputs.size() > kMostInOneInclude)
        throw Failure(RuntimeError::InvalidProcedureCall,
                      std::to_string(inputs.size()) + " characters were found, and an include takes " +
                          std::to_string(kMostInOneInclude) + " at most");
    std::uint64_t serial = fonts_->state().samples.nextSerial();
    AddUncommitted change;
    change.samples.reserve(inputs.size());
    for (std::size_t i = 0; i < inputs.size(); ++i)
        change.samples.push_back({serial++,
                                  codeOf(i < text.size() ? std::string_view(text[i]) : kUnknownCharacter),
                                  inputs[i], origins[i]});
    fonts_->make(std::move(change));
}

void EmbeddedTool::CommitNewSamples() {
    fonts_->font();
    const std::size_t count = fonts_->state().samples.count(SampleKind::Uncommitted);
    if (count > 0) fonts_->make(CommitUncommitted{static_cast<std::uint32_t>(count)});
}

void EmbeddedTool::SetTrainTimeout(std::int32_t seconds) {
    if (seconds < 0) throw Failure(RuntimeError::InvalidProcedureCall, "A time limit cannot be negative");
    training_.setLimit(seconds);
}

void EmbeddedTool::StartTraining() {
    fonts_->font();
    checkIdle("starting another");
    if (fonts_->state().samples.count(SampleKind::Committed) == 0)
        throw Failure(RuntimeError::InvalidProcedureCall, "The font has no committed samples to train from");
    training_.start(fonts_->state());
}

void EmbeddedTool::SaveFont(const std::string& name) {
    fonts_->font();
    settle();
    fonts_->save(name);
}

void EmbeddedTool::RevertFont(const std::string& name) {
    fonts_->font();
    checkIdle("reverting its font");
    change([&] { fonts_->revert(name); });
}

std::vector<std::string> EmbeddedTool::GetFontList() {
    return fonts_->library().names();
}

tool::CharacterSet EmbeddedTool::GetCharacterSet() {
    return fonts_->state().characterSet;
}

std::int32_t EmbeddedTool::GetTrainTimeout() {
    return training_.limit();
}

bool EmbeddedTool::IsTrainingDone() {
    settle();
    return !training_.isUnderWay();
}

float EmbeddedTool::GetRmsError() {
    return training_.figures().rmsError;
}

bool EmbeddedTool::IsTrainingAborted() {
    settle();
    return training_.isAborted();
}

std::int32_t EmbeddedTool::GetTrainCycles() {
    return training_.figures().cycles;
}

void EmbeddedTool::StopTraining() {
    training_.stop();
}

std::vector<std::string> EmbeddedTool::GetUncommittedSamples() {
    std::vector<std::string> result;
    for (const std::int32_t code : fonts_->state().samples.columns(SampleKind::Uncommitted)->codes)
        result.push_back(characterOf(code));
    return result;
}

void EmbeddedTool::DeleteSample(std::int32_t identifier) {
    const auto kind = static_cast<SampleKind>(identifier / tool::kKindFactor);
    if (identifier < 0 || (kind != SampleKind::Uncommitted && kind != SampleKind::Committed))
        throw Failure(RuntimeError::InvalidProcedureCall,
                      std::to_string(identifier) + " is not the identifier of a sample");
    const auto place = static_cast<std::size_t>(identifier % tool::kKindFactor);
    const SampleStore& samples = fonts_->state().samples;
    if (place < samples.count(kind))
        fonts_->make(RemoveSample{kind, static_cast<std::uint32_t>(place), samples.at(kind, place)});
}

tool::RecordTablePtr EmbeddedTool::GetSampleData(std::span<const std::int32_t> selectors,
                                                 std::span<const std::int16_t> fields) {
    settle();
    const FontState& font = fonts_->state();
    return sampleTable(selectors, fields, characterRecords(font),
                       font.samples.columns(SampleKind::Uncommitted),
                       font.samples.columns(SampleKind::Committed));
}

void EmbeddedTool::endAct(std::string_view words, std::string_view screenState) {
    settle();
    fonts_->endAct(words, screenState);
}

std::optional<std::string> EmbeddedTool::undoWords() const {
    return fonts_->undoWords();
}

std::optional<std::string> EmbeddedTool::redoWords() const {
    return fonts_->redoWords();
}

std::string EmbeddedTool::undo() {
    checkIdle("undoing");
    return change([&] { return fonts_->undo(); });
}

std::string EmbeddedTool::redo() {
    checkIdle("redoing");
    return change([&] { return fonts_->redo(); });
}

std::vector<std::string> EmbeddedTool::unsavedFonts() const {
    return fonts_->unsavedFonts();
}

void EmbeddedTool::saveUnsaved(const std::string& font) {
    settle();
    fonts_->saveUnsaved(font);
}

void EmbeddedTool::discardUnsaved(const std::string& font) {
    checkIdle("discarding changes");
    change([&] { fonts_->discardUnsaved(font); });
}

void EmbeddedTool::exportFont(const std::string& font, const std::string& file) {
    settle();
    fonts_->exportFont(font, file);
}

void EmbeddedTool::keepUnsaved() {
    fonts_->keepUnsaved();
}

std::vector<tool::RecoveredChanges> EmbeddedTool::takeRecovered() {
    return fonts_->takeRecovered();
}

std::vector<tool::FontVersion> EmbeddedTool::versions(const std::string& font) const {
    return fonts_->versions(font);
}

void EmbeddedTool::importFont(const std::string& file, const std::string& name) {
    checkIdle("copying a font");
    change([&] { fonts_->importFont(file, name); });
}

void EmbeddedTool::restoreVersion(const tool::FontVersion& version, const std::string& name) {
    checkIdle("restoring a version");
    change([&] { fonts_->restoreVersion(version, name); });
}

}  // namespace dravik::engine
