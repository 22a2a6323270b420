#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <variant>

#include "base/JobFolder.h"
#include "engine/embedded/DivisionByText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "library/Boundary.h"
#include "library/Images.h"
#include "library/Verification.h"
#include "tool/FontUseCases.h"

using namespace dravik;
using namespace dravik::library;

struct dravik_learner {
    explicit dravik_learner(const JobFolder& folder) : tool(folder) {}
    engine::EmbeddedTool tool;
    tool::FontUseCases fonts{tool};
};

namespace {

constexpr std::int32_t kUsualSeconds = 60, kLongestRun = 86400;
constexpr std::chrono::milliseconds kPollInterval{10};

// Why nothing was included.
struct NotIncluded {
    void operator()(const tool::Included&) const {}
    void operator()(const tool::CountMismatch& counts) const {
        throw Refusal{DRAVIK_COUNT_MISMATCH, "The text has " + std::to_string(counts.typed) +
                                                 " characters, " + std::to_string(counts.found) +
                                                 " were found in the image"};
    }
    void operator()(const tool::InvalidValues& invalid) const {
        throw Refusal{DRAVIK_INTERNAL, "The features of character " + invalid.character + " are invalid"};
    }
    void operator()(const tool::MissingCharacters& missing) const {
        throw Refusal{DRAVIK_INTERNAL, "The font does not have the characters " + missing.characters};
    }
    void operator()(const tool::NothingFound&) const {
        throw Refusal{DRAVIK_NO_CHARACTERS, "No characters were found in the image, and the text has none"};
    }
};

dravik_training figures(const tool::LearnProgress& progress, int samples) {
    return {samples, progress.cycles, progress.rmsError, progress.seconds};
}

}  // namespace

dravik_status dravik_learner_open(const char* jobs, const char* name, dravik_learner** learner,
                                  dravik_error* error) {
    return guarded(error, [&] {
        checkText(name, "name");
        checkPointer(learner, "learner");
        auto result = std::make_unique<dravik_learner>(jobs ? JobFolder(jobs) : JobFolder());
        const tool::ChooseOutcome outcome = result->fonts.choose(name);
        if (const auto* problem = std::get_if<tool::NameProblem>(&outcome))
            throw Refusal{DRAVIK_BAD_ARGUMENT,
                          *problem == tool::NameProblem::Reserved
                              ? "The name \"new\" is reserved"
                              : "There is a font whose name differs only in the case of its letters"};
        *learner = result.release();
    });
}

void dravik_learner_free(dravik_learner* learner) {
    delete learner;
}

dravik_status dravik_learner_include(dravik_learner* learner, const dravik_image* image,
                                     const dravik_settings* settings, const char* text, int32_t* samples,
                                     dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(learner, "learner");
        checkText(text, "text");
        std::string printed;
        for (const std::string& character : printedCharacters(text)) printed += character;
        learner->tool.overrideSettings({});
        ImagePart part = partToRead(image, settings, learner->tool.settings());
        learner->tool.overrideSettings(part.settings);
        learner->tool.setImage(std::move(part.pixels));
        divideByText(learner->tool, printed);
        const tool::IncludeOutcome outcome = learner->fonts.include({.text = printed, .addMissing = true});
        std::visit(NotIncluded{}, outcome);
        if (samples) *samples = static_cast<std::int32_t>(std::get<tool::Included>(outcome).samples);
    });
}

dravik_status dravik_learner_keep_settings(dravik_learner* learner, const dravik_settings* settings,
                                           dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(learner, "learner");
        checkPointer(settings, "settings");
        learner->tool.overrideSettings({});
        learner->tool.setSettings(merged(settings, learner->tool.settings()));
    });
}

dravik_status dravik_learner_train(dravik_learner* learner, int32_t seconds, dravik_progress progress,
                                   void* user, dravik_training* training, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(learner, "learner");
        if (seconds < 0 || seconds > kLongestRun)
            throw Refusal{DRAVIK_BAD_ARGUMENT, "A training takes 1 to 86400 seconds"};
        const int samples = learner->fonts.committedSamples();
        if (samples == 0) throw Refusal{DRAVIK_NO_CHARACTERS, "The font has no samples to train from"};
        bool stops = false;
        const tool::LearnOutcome outcome = learner->fonts.learn(
            seconds == 0 ? kUsualSeconds : seconds,
            [&](const tool::LearnProgress& soFar) {
                const dravik_training told = figures(soFar, samples);
                stops = progress && progress(&told, user) != 0;
            },
            [&] { return stops; });
        if (outcome.end != tool::LearnOutcome::End::Learnt)
            throw Refusal{DRAVIK_NO_RESULT, outcome.end == tool::LearnOutcome::End::Stopped
                                                ? "The training was stopped"
                                                : "The training gave no result"};
        if (training) *training = figures(outcome.last, samples);
    });
}

dravik_status dravik_learner_check(dravik_learner* learner, dravik_check* check, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(learner, "learner");
        checkPointer(check, "check");
        while (learner->tool.isChecking()) std::this_thread::sleep_for(kPollInterval);
        const engine::HeldOutResult* result = learner->tool.heldOutCheck();
        if (!result)
            throw Refusal{DRAVIK_NO_CHARACTERS,
                          "There is nothing to check: it takes a training and two characters of two samples"};
        *check = {result->checked, result->wrong, static_cast<std::int32_t>(result->unchecked.size())};
    });
}

dravik_status dravik_learner_save(dravik_learner* learner, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(learner, "learner");
        learner->fonts.save();
    });
}
