#include "engine/embedded/EmbeddedTool.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/Text.h"
#include "engine/classifier/Reading.h"
#include "engine/embedded/TrainingWorker.h"
#include "engine/font/FontFile.h"
#include "engine/font/FontLibrary.h"
#include "engine/font/SampleStore.h"
#include "engine/font/SampleTable.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {
namespace {

constexpr std::int32_t kUsualTimeout = 60;
constexpr std::uint32_t kSeed = 20011;
constexpr char kUnknownCharacter[] = "?";
// Everything that a run works on, its own copy.
struct FontRun {
    TrainingSet set;
    SampleColumnsPtr samples;
    ClassStatistics statistics;
    std::vector<std::uint64_t> serials;
    std::vector<TrainedCharacter> characters;
};

std::shared_ptr<FontRun> newRun(const SampleStore& store) {
    auto run = std::make_shared<FontRun>();
    run->samples = store.columns(tool::SampleKind::Committed);
    run->statistics = store.statistics();
    std::map<std::int32_t, std::uint32_t> places;
    for (const std::int32_t code : run->samples->codes) places.emplace(code, 0u);
    for (auto& [code, place] : places) {
        place = static_cast<std::uint32_t>(run->set.codes.size());
        run->set.codes.push_back(code);
        const ClassStatistics::Class& one = *run->statistics.find(code);
        TrainedCharacter& character = run->characters.emplace_back();
        character.code = code;
        character.count = one.count;
        for (std::size_t i = 0; i < kInputCount; ++i)
            character.mean[i] = static_cast<float>(one.sums[i] / one.count);
    }
    run->set.inputs.reserve(run->samples->size() * kInputCount);
    for (const Sample* sample : run->samples->samples) {
        run->set.inputs.insert(run->set.inputs.end(), sample->inputs.begin(), sample->inputs.end());
        run->set.classes.push_back(places[sample->code]);
        run->serials.push_back(sample->serial);
    }
    return run;
}

TrainingResult perform(const FontRun& run, TrainingWorker::Progress& progress) {
    TrainingResult result;
    TrainingFigures figures;
    result.network = trained(
        run.set, kSeed, [&progress](const TrainingFigures& f) { return progress.report(f); }, figures);
    const DistanceMeasure measure(run.statistics, run.samples->samples);
    for (std::size_t i = 0; i < run.samples->size() && !progress.stopped(); ++i)
        result.distances.push_back(measure.distance(*run.samples->samples[i]));
    progress.report(figures);
    return result;
}

FoundCharacter placed(const Region& place, int line) {
    return {place.left, place.top, place.right, place.bottom, line};
}

}  // namespace

std::string shownCharacter(const ReadCharacter& read, double limit) {
    return read.confidence < limit ? kUnknownCharacter : read.character;
}

struct EmbeddedTool::State {
    State(JobFolder folder, bool remembersFont) : library(std::move(folder), remembersFont) {}

    FontLibrary library;
    std::optional<std::string> current;
    tool::CharacterSet characterSet;
    SampleStore samples;
    Training training;

    std::shared_ptr<const GreyImage> image = std::make_shared<GreyImage>();  // never null
    std::optional<Segmentation> segmentation;
    std::vector<FoundCharacter> found;

    std::int32_t timeout = kUsualTimeout;
    std::shared_ptr<FontRun> run;  // going on, or ended and not yet taken over
    bool aborted = false;
    TrainingWorker worker;
    HeldOutWorker check;

    // Fonts that were left for another with changes that are not in their files; they are as they were when
    // they are loaded again.
    std::map<std::string, FontRecord> unsaved;
    bool changed = false;  // the current font's samples, set or training are not as in its file

    const std::string& font() const {
        if (!current) throw Failure(RuntimeError::ObjectNotSet, "No font is loaded");
        return *current;
    }

    // Takes over what an ended run has left.
    void settle() {
        if (!run || worker.running()) return;
        const std::shared_ptr<FontRun> ended = std::exchange(run, nullptr);
        aborted = true;
        std::optional<TrainingResult> result;
        try {
            result = worker.take();
        } catch (...) {
            const Failure cause = currentFailure();
            throw Failure(cause.number(), "Training failed: " + cause.description());
        }
        if (!result) return;
        training.network = std::move(result->network);
        training.characters = std::move(ended->characters);
        samples.setDistances(ended->serials, result->distances);
        changed = true;
        aborted = false;
        check.start(ended->samples, kSeed);
    }

    void checkIdle(const char* what) {
        settle();
        if (run)
            throw Failure(RuntimeError::InvalidProcedureCall,
                          std::string("A training run is going on; stop it before ") + what);
    }

    // Sets the current font aside if another is about to take its place.
    void leave(const std::string& forFont) {
        if (current && changed && *current != forFont) unsaved[*current] = record();
    }

    bool hasUnsavedWork() const {
        return changed || samples.columns(tool::SampleKind::Uncommitted)->size() > 0;
    }

    void install(std::optional<std::string> name, FontRecord font) {
        check.stop();
        changed = false;
        samples.restore(std::move(font.samples), std::move(font.distances), font.nextSerial);
        characterSet = std::move(font.characterSet);
        training = std::move(font.training);
        current = std::move(name);
        library.select(current);
    }

    FontRecord record() const {
        FontRecord font;
        font.characterSet = characterSet;
        font.nextSerial = samples.nextSerial();
        const SampleColumnsPtr committed = samples.columns(tool::SampleKind::Committed);
        font.samples.reserve(committed->size());
        for (const Sample* sample : committed->samples) font.samples.push_back(*sample);
        font.distances = committed->distances;
        font.training = training;
        return font;
    }

    const Segmentation& segments() {
        if (!segmentation) {
            segmentation = segment(*image);
            for (const Glyph& glyph : segmentation->glyphs)
                found.push_back(placed(segmentation->place(glyph), glyph.line));
        }
        return *segmentation;
    }

    // One record for each character of the set, then for those that were trained without being in it.
    std::vector<CharacterRecord> characterRecords() const {
        std::vector<CharacterRecord> records;
        std::vector<std::int32_t> inSet;
        for (const std::string& character : characterSet) {
            CharacterRecord& record = records.emplace_back();
            record.code = codeOf(character);
            inSet.push_back(record.code);
            if (const TrainedCharacter* one = training.find(record.code)) {
                record.trained = one->count;
                record.inputs = one->mean;
            } else if (const ClassStatistics::Class* committed = samples.statistics().find(record.code)) {
                for (std::size_t i = 0; i < kInputCount; ++i)
                    record.inputs[i] = static_cast<float>(committed->sums[i] / committed->count);
            }
        }
        std::sort(inSet.begin(), inSet.end());
        for (const TrainedCharacter& one : training.characters)
            if (!std::binary_search(inSet.begin(), inSet.end(), one.code))
                records.push_back({one.code, one.count, one.mean});
        return records;
    }
};

EmbeddedTool::EmbeddedTool(JobFolder folder, bool remembersFont)
    : state_(std::make_unique<State>(std::move(folder), remembersFont)) {}

EmbeddedTool::~EmbeddedTool() = default;

std::string EmbeddedTool::programIdentifier() {
    return tool::kDravikStep;
}

double EmbeddedTool::datum(const std::string& name) {
    if (name != tool::kSelectedFontDatum)
        throw Failure(RuntimeError::InvalidProcedureCall, "The step has no datum \"" + name + "\"");
    return state_->library.selectionMask();
}

void EmbeddedTool::setImage(GreyImage image) {
    shareImage(std::make_shared<GreyImage>(std::move(image)));
}

void EmbeddedTool::shareImage(std::shared_ptr<const GreyImage> image) {
    state_->image = std::move(image);
    state_->segmentation.reset();
    state_->found.clear();
}

const GreyImage& EmbeddedTool::image() const {
    return *state_->image;
}

const std::vector<FoundCharacter>& EmbeddedTool::found() {
    state_->segments();
    return state_->found;
}

std::vector<ReadCharacter> EmbeddedTool::read() {
    state_->settle();
    if (state_->training.empty()) return {};
    const SampleColumnsPtr samples = state_->samples.columns(tool::SampleKind::Committed);
    const DistanceMeasure measure(state_->samples.statistics(), samples->samples);
    std::vector<ReadCharacter> result;
    for (const PlacedRecognition& one :
         readImage(image(), state_->segments(), state_->training.network, measure))
        result.push_back(
            {placed(one.place, one.line), characterOf(one.read.code), confidence(one.read.evidence)});
    return result;
}

std::vector<SuggestedCharacter> EmbeddedTool::suggest() {
    return readWithoutFont(image(), state_->segments());
}

std::vector<CharacterLikelihood> EmbeddedTool::compare(const std::string& expectedText) {
    return compareWithText(state_->segments(), characters(expectedText));
}

std::optional<std::string> EmbeddedTool::currentFont() const {
    return state_->current;
}

bool EmbeddedTool::isTrained() const {
    return !state_->training.empty();
}

bool EmbeddedTool::isChecking() {
    state_->settle();
    return state_->check.running();
}

const HeldOutResult* EmbeddedTool::heldOutCheck() const {
    return state_->check.result();
}

FontSummary EmbeddedTool::summary(const std::string& name) {
    FontRecord font = readFont(state_->library.existingFile(name));
    return {name, std::move(font.characterSet), static_cast<int>(font.samples.size()),
            !font.training.empty()};
}

void EmbeddedTool::LoadFont(const std::string& name) {
    const std::string file = state_->library.existingFile(name);
    state_->checkIdle("loading a font");
    // The operator who chooses the font that is shown once more does not mean to lose what was done to it.
    if (state_->current == name && state_->hasUnsavedWork()) return;
    const auto kept = state_->unsaved.find(name);
    if (kept == state_->unsaved.end()) {
        FontRecord font = readFont(file);
        state_->leave(name);
        state_->install(name, std::move(font));
        return;
    }
    FontRecord font = std::move(kept->second);
    state_->unsaved.erase(kept);
    state_->leave(name);
    state_->install(name, std::move(font));
    state_->changed = true;
}

void EmbeddedTool::CreateFont(const std::string& name) {
    const std::string file = state_->library.file(name);
    state_->checkIdle("creating a font");
    const FontRecord empty;
    writeFont(empty, file);
    state_->leave(name);
    state_->unsaved.erase(name);
    state_->install(name, empty);
}

void EmbeddedTool::DeleteFont(const std::string& name) {
    const std::string file = state_->library.existingFile(name);
    if (state_->current == name) state_->checkIdle("deleting its font");
    retireFont(file);
    state_->unsaved.erase(name);
    if (state_->current == name) state_->install(std::nullopt, {});
    if (state_->library.selected() == name) state_->library.select(std::nullopt);
}

void EmbeddedTool::RenameFont(const std::string& newName, const std::string& existingName) {
    const std::string to = state_->library.file(newName);
    renameFile(state_->library.existingFile(existingName), to);
    if (auto kept = state_->unsaved.extract(existingName)) {
        kept.key() = newName;
        state_->unsaved.insert(std::move(kept));
    }
    if (state_->current == existingName) state_->current = newName;
    if (state_->library.selected() == existingName) state_->library.select(newName);
}

void EmbeddedTool::DuplicateFont(const std::string& newName, const std::string& existingName) {
    const std::string to = state_->library.file(newName);
    const FontRecord font = readFont(state_->library.existingFile(existingName));
    if (fileExists(to)) throw Failure(RuntimeError::FileAlreadyExists, "File already exists: \"" + to + "\"");
    writeFont(font, to);
}

void EmbeddedTool::SetCharacterSet(const tool::CharacterSet& set) {
    state_->font();
    tool::CharacterSet cleaned;
    std::unordered_set<std::string> known;
    for (const std::string& character : set)
        if (!character.empty() && known.insert(character).second) cleaned.push_back(character);
    if (cleaned.size() > static_cast<std::size_t>(tool::kMostSamples))
        throw Failure(RuntimeError::OutOfMemory,
                      "A font has at most " + std::to_string(tool::kMostSamples) + " characters");
    state_->changed |= state_->characterSet != cleaned;
    state_->characterSet = std::move(cleaned);
}

void EmbeddedTool::IncludeSamples(const std::string& expectedText) {
    state_->font();
    const Segmentation& found = state_->segments();
    const std::vector<std::string> text = characters(expectedText);
    const std::vector<SampleInputs> inputs = allInputs(found, text);
    std::vector<Sample> samples;
    samples.reserve(inputs.size());
    for (std::size_t i = 0; i < inputs.size(); ++i)
        samples.push_back(
            {0, codeOf(i < text.size() ? std::string_view(text[i]) : kUnknownCharacter), inputs[i]});
    state_->samples.include(std::move(samples));
}

void EmbeddedTool::CommitNewSamples() {
    state_->font();
    state_->changed |= state_->samples.columns(tool::SampleKind::Uncommitted)->size() > 0;
    state_->samples.commit();
}

void EmbeddedTool::SetTrainTimeout(std::int32_t seconds) {
    if (seconds < 0) throw Failure(RuntimeError::InvalidProcedureCall, "A time limit cannot be negative");
    state_->timeout = seconds;
}

void EmbeddedTool::StartTraining() {
    state_->font();
    state_->checkIdle("starting another");
    if (state_->samples.columns(tool::SampleKind::Committed)->size() == 0)
        throw Failure(RuntimeError::InvalidProcedureCall, "The font has no committed samples to train from");
    state_->check.stop();
    std::shared_ptr<FontRun> run = newRun(state_->samples);
    state_->worker.start([run](TrainingWorker::Progress& progress) { return perform(*run, progress); },
                         state_->timeout);
    state_->run = std::move(run);
    state_->aborted = false;
}

void EmbeddedTool::SaveFont(const std::string& name) {
    state_->font();
    state_->settle();
    writeFont(state_->record(), state_->library.file(name));
    if (state_->current == name) state_->changed = false;
}

void EmbeddedTool::RevertFont(const std::string& name) {
    if (state_->font() != name)
        throw Failure(RuntimeError::InvalidProcedureCall,
                      "Font \"" + name + "\" is not the one that is loaded");
    state_->checkIdle("reverting its font");
    FontRecord saved = readFont(state_->library.existingFile(name));
    state_->check.stop();
    state_->training = std::move(saved.training);
}

std::vector<std::string> EmbeddedTool::GetFontList() {
    return state_->library.names();
}

tool::CharacterSet EmbeddedTool::GetCharacterSet() {
    return state_->characterSet;
}

std::int32_t EmbeddedTool::GetTrainTimeout() {
    return state_->timeout;
}

bool EmbeddedTool::IsTrainingDone() {
    state_->settle();
    return !state_->run;
}

float EmbeddedTool::GetRmsError() {
    return state_->worker.figures().rmsError;
}

bool EmbeddedTool::IsTrainingAborted() {
    state_->settle();
    return state_->aborted;
}

std::int32_t EmbeddedTool::GetTrainCycles() {
    return state_->worker.figures().cycles;
}

void EmbeddedTool::StopTraining() {
    if (!state_->run) return;
    if (!state_->worker.running()) return;
    state_->worker.stop();
    state_->run.reset();
    state_->aborted = true;
}

std::vector<std::string> EmbeddedTool::GetUncommittedSamples() {
    std::vector<std::string> result;
    for (const std::int32_t code : state_->samples.columns(tool::SampleKind::Uncommitted)->codes)
        result.push_back(characterOf(code));
    return result;
}

void EmbeddedTool::DeleteSample(std::int32_t identifier) {
    const std::int32_t kind = identifier / tool::kKindFactor;
    if (identifier < 0 || (kind != static_cast<std::int32_t>(tool::SampleKind::Uncommitted) &&
                           kind != static_cast<std::int32_t>(tool::SampleKind::Committed)))
        throw Failure(RuntimeError::InvalidProcedureCall,
                      std::to_string(identifier) + " is not the identifier of a sample");
    state_->changed = true;
    state_->samples.remove(static_cast<tool::SampleKind>(kind),
                           static_cast<std::size_t>(identifier % tool::kKindFactor));
}

tool::RecordTablePtr EmbeddedTool::GetSampleData(std::span<const std::int32_t> selectors,
                                                 std::span<const std::int16_t> fields) {
    state_->settle();
    return sampleTable(selectors, fields, state_->characterRecords(),
                       state_->samples.columns(tool::SampleKind::Uncommitted),
                       state_->samples.columns(tool::SampleKind::Committed));
}

}  // namespace dravik::engine
