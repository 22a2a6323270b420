#include "tool/FontUseCases.h"

#include <chrono>
#include <thread>

#include "base/Text.h"
#include "tool/CaseRule.h"
#include "tool/FontName.h"
#include "tool/IncludeRules.h"
#include "tool/Samples.h"

namespace dravik::tool {
namespace {

// How often a run is looked at.
constexpr std::chrono::milliseconds kPollInterval{50};

// Takes back what a failure left half done. Should that fail too, the first failure is the one to tell.
template <class Step>
void attempt(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

}  // namespace

ChooseOutcome FontUseCases::choose(const std::string& name) {
    const auto fonts = tool_.GetFontList();
    if (const auto existing = fontNamed(name, fonts)) {
        tool_.LoadFont(*existing);
        font_ = *existing;
        return ChosenFont{font_, false};
    }
    if (isReservedFontName(name)) return NameProblem::Reserved;
    const std::string clean = CleanFontName(name);
    if (fontExists(clean, fonts)) return NameProblem::OtherCase;
    tool_.CreateFont(clean);
    tool_.SaveFont(clean);
    font_ = clean;
    return ChosenFont{font_, true};
}

void FontUseCases::setCharacters(std::string_view characters) {
    tool_.SetCharacterSet(dravik::characters(characters));
}

IncludeOutcome FontUseCases::include(const IncludeRequest& request) {
    std::string text = textToInclude(request.text);
    if (request.maintainCase) text = inCase(text, fontCase(tool_));
    try {
        tool_.IncludeSamples(text);
        IncludeOutcome outcome = checkAndCommit(text, request.addMissing);
        if (!std::holds_alternative<Included>(outcome)) discardUncommitted();
        return outcome;
    } catch (...) {
        attempt([&] { discardUncommitted(); });
        throw;
    }
}

IncludeOutcome FontUseCases::checkAndCommit(std::string_view text, bool addMissing) {
    const FoundSamples found = foundSamples(tool_.GetSampleData(kAllUncommitted, kSampleFields));
    if (found.invalid) return InvalidValues{*found.invalid};
    if (!countsMatch(text, found.characters))
        return CountMismatch{characterCount(text), characterCount(found.characters)};
    const auto samples = tool_.GetUncommittedSamples();
    if (samples.empty()) return NothingFound{};

    const CharacterSet before = tool_.GetCharacterSet();
    std::string known;
    for (const auto& character : before) known += character;
    const std::string missing = missingCharacters(samples, known);
    if (!missing.empty()) {
        if (!addMissing) return MissingCharacters{missing};
        setCharacters(known + missing);
    }
    try {
        tool_.CommitNewSamples();
    } catch (...) {
        if (!missing.empty()) attempt([&] { tool_.SetCharacterSet(before); });
        throw;
    }
    return Included{samples.size()};
}

// From the last one on, so that none moves.
void FontUseCases::discardUncommitted() {
    const auto count = static_cast<std::int32_t>(tool_.GetUncommittedSamples().size());
    for (std::int32_t index = count - 1; index >= 0; --index)
        tool_.DeleteSample(sampleIdentifier(SampleKind::Uncommitted, index));
}

int FontUseCases::committedSamples() {
    const auto table = tool_.GetSampleData(kAllCommitted, kSampleFields);
    return table ? table->upperRow() : 0;
}

LearnOutcome FontUseCases::learn(std::optional<std::int32_t> limit,
                                 const std::function<void(const LearnProgress&)>& progress,
                                 const std::function<bool()>& stop) {
    using Clock = std::chrono::steady_clock;
    if (limit) tool_.SetTrainTimeout(*limit);
    const auto start = Clock::now();
    tool_.StartTraining();
    try {
        LearnOutcome outcome;
        for (bool done = false; !done;) {
            std::this_thread::sleep_for(kPollInterval);
            done = tool_.IsTrainingDone();
            outcome.last = {std::chrono::duration<double>(Clock::now() - start).count(),
                            tool_.GetTrainCycles(), tool_.GetRmsError()};
            progress(outcome.last);
            if (stop()) {
                tool_.StopTraining();
                outcome.end = LearnOutcome::End::Stopped;
                return outcome;
            }
        }
        if (tool_.IsTrainingAborted()) outcome.end = LearnOutcome::End::NoResult;
        return outcome;
    } catch (...) {
        attempt([&] { tool_.StopTraining(); });
        throw;
    }
}

void FontUseCases::save() {
    tool_.SaveFont(font_);
}

}  // namespace dravik::tool
