#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <exception>
#include <filesystem>
#include <memory>
#include <ostream>
#include <system_error>
#include <thread>
#include <unordered_set>

#include "base/Conversions.h"
#include "base/Failure.h"
#include "base/NumberFormat.h"
#include "base/Paths.h"
#include "engine/embedded/DivisionByText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/scene/Scene.h"
#include "tool/FontUseCases.h"
#include "tool/IncludeRules.h"
#include "trainer/commands/Commands.h"
#include "trainer/commands/InOrder.h"
#include "trainer/commands/Interrupt.h"
#include "trainer/commands/ProgressLine.h"
#include "trainer/commands/SampleList.h"

namespace dravik::trainer {
namespace {

constexpr int kInterrupted = 130;
// Images that are searched at once; each may be of 64 megapixels.
constexpr int kMostSearches = 4;
// Samples that are there twice would be checked with a font that was taught with them.
constexpr char kListedTwice[] = "included already, from a row above";
constexpr char kNothingToCheck[] = "Held-out check: not made, it takes two characters with two samples each";

// The error as the screen writes it, from the single-precision number's own decimal form.
std::string rmsText(float rms) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rms).ptr;
    return formatNumber(leadingNumber({digits.data(), static_cast<std::size_t>(end - digits.data())}),
                        "0.00#######");
}

// Chooses the font or makes it. Raises Failure with the reason.
tool::ChosenFont choose(tool::FontUseCases& fonts, const std::string& name) {
    const auto outcome = fonts.choose(name);
    if (const auto* chosen = std::get_if<tool::ChosenFont>(&outcome)) return *chosen;
    switch (std::get<tool::NameProblem>(outcome)) {
        case tool::NameProblem::Reserved:
            throw Failure(RuntimeError::BadFileName,
                          "Font name 'new' is reserved, please select a different name");
        case tool::NameProblem::OtherCase:
            break;
    }
    throw Failure(RuntimeError::FileAlreadyExists,
                  "there is a font whose name differs only in the case of its letters");
}

// Why nothing was included, in words.
struct Refusal {
    std::string operator()(const tool::Included&) const { return {}; }
    std::string operator()(const tool::CountMismatch& mismatch) const {
        return std::to_string(mismatch.typed) + (mismatch.typed == 1 ? " character" : " characters") +
               " typed, " + std::to_string(mismatch.found) + " found";
    }
    std::string operator()(const tool::InvalidValues& invalid) const {
        return "the features of character " + invalid.character + " are invalid";
    }
    std::string operator()(const tool::MissingCharacters& missing) const {
        return "the font does not have the characters " + missing.characters;
    }
    std::string operator()(const tool::NothingFound&) const { return "no characters found"; }
};

void refuse(const ListedSample& sample, const std::string& reason, const CommandStreams& streams) {
    streams.out << "refused\t" << sample.image << '\t' << onOneLine(reason) << std::endl;
}

// The same for the same file, however it is named.
std::string fileOf(const ListedSample& sample) {
    std::error_code error;
    const auto file = std::filesystem::weakly_canonical(toPath(sample.path), error);
    return error ? sample.path : fromPath(file);
}

// An image with its characters, or why there is none.
struct SearchedImage {
    std::shared_ptr<const engine::GreyImage> image;
    std::shared_ptr<const engine::Scene> scene;
    std::exception_ptr problem;
};

SearchedImage searched(const std::string& path, const engine::ImageDecoder& decoder,
                       const engine::SegmentationSettings& settings, const std::stop_token& stop) {
    SearchedImage result;
    try {
        result.image = std::make_shared<const engine::GreyImage>(decoder(path));
        result.scene = std::make_shared<const engine::Scene>(engine::findScene(result.image, settings, stop));
    } catch (...) {
        result.problem = std::current_exception();
    }
    return result;
}

// Includes an image and says so; false when it was refused.
bool include(engine::EmbeddedTool& tool, tool::FontUseCases& fonts, const ListedSample& sample,
             SearchedImage seen, const CommandStreams& streams) {
    std::string reason;
    try {
        if (seen.problem) std::rethrow_exception(seen.problem);
        tool.shareImage(std::move(seen.image), std::move(seen.scene));
        tool.setImageName(fileOf(sample));
        engine::divideByText(tool, tool::textToInclude(sample.text));
        const auto outcome = fonts.include({.text = sample.text, .addMissing = true});
        if (const auto* included = std::get_if<tool::Included>(&outcome)) {
            streams.out << "included " << included->samples << '\t' << sample.image << std::endl;
            return true;
        }
        reason = std::visit(Refusal{}, outcome);
    } catch (...) {
        reason = currentFailure().description();
    }
    refuse(sample, reason, streams);
    return false;
}

// Trains the font, with a bar that tells how much of the time limit is over.
tool::LearnOutcome train(engine::EmbeddedTool& tool, tool::FontUseCases& fonts,
                         const std::optional<std::int32_t>& seconds, const InterruptWatch& watch,
                         const CommandStreams& streams) {
    const double limit = seconds ? *seconds : tool.GetTrainTimeout();
    ProgressLine bar(streams.err, streams.errIsTerminal);
    return fonts.learn(
        seconds,
        [&](const tool::LearnProgress& progress) {
            bar.show(limit > 0 ? progress.seconds / limit : 0,
                     std::to_string(progress.cycles) + " cycles, RMS " + rmsText(progress.rmsError));
        },
        [&] { return watch.interrupted(); });
}

// Waits for the check of the saved font and prints what it found.
int tellCheck(engine::EmbeddedTool& tool, const InterruptWatch& watch, const CommandStreams& streams) {
    while (tool.isChecking()) {
        if (watch.interrupted()) {
            streams.problem("interrupted; the font is saved, its check was not finished");
            return kInterrupted;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    if (const engine::HeldOutResult* result = tool.heldOutCheck())
        streams.out << engine::heldOutText(*result) << std::endl;
    else
        streams.out << kNothingToCheck << std::endl;
    return 0;
}

int learn(const std::vector<ListedSample>& samples, const LearnOptions& options,
          const engine::ImageDecoder& decoder, const CommandStreams& streams) {
    const InterruptWatch watch;
    engine::EmbeddedTool tool(options.folder);
    tool::FontUseCases fonts(tool);
    // However this ends: what was included is there when the font is loaded the next time.
    tool.keepUnsaved();
    const auto file = options.folder.fontFile(choose(fonts, options.font).name);
    streams.tellRecovered(tool);
    const auto interrupted = [&] {
        streams.problem("interrupted; the training was not saved to " + file +
                        (tool.unsavedFonts().empty()
                             ? std::string()
                             : ", what was included is kept until the font is used again"));
        return kInterrupted;
    };
    tool.claimFont();
    if (options.characters) fonts.setCharacters(*options.characters);
    tool.setSettings(options.settings.over(tool.settings()));
    tool.endAct({}, {});

    // Nearly all of an include's time goes into the search of its image, which is done ahead.
    InOrder<SearchedImage> images(
        samples.size(), std::min(processorCount(), kMostSearches),
        [&, settings = tool.settings()](std::size_t i, const std::stop_token& stop) {
            return searched(samples[i].path, decoder, settings, stop);
        });
    std::unordered_set<std::string> included;
    for (const auto& sample : samples) {
        if (watch.interrupted()) return interrupted();
        SearchedImage seen = images.take();
        const auto image = fileOf(sample);
        if (included.contains(image))
            refuse(sample, kListedTwice, streams);
        else if (include(tool, fonts, sample, std::move(seen), streams))
            included.insert(image);
        tool.endAct({}, {});
    }
    if (included.empty()) {
        streams.problem("nothing to learn: every image was refused");
        return 1;
    }
    if (watch.interrupted()) return interrupted();

    const auto outcome = train(tool, fonts, options.seconds, watch, streams);
    if (outcome.end == tool::LearnOutcome::End::Stopped) return interrupted();
    if (outcome.end == tool::LearnOutcome::End::NoResult)
        throw Failure(RuntimeError::InvalidProcedureCall, "the training gave no result");
    streams.out << "samples " << fonts.committedSamples() << '\n'
                << "cycles " << outcome.last.cycles << '\n'
                << "rms " << rmsText(outcome.last.rmsError) << '\n'
                << "seconds " << formatNumber(outcome.last.seconds, "0.0") << std::endl;
    fonts.save();
    streams.out << "saved " << file << std::endl;
    return tellCheck(tool, watch, streams);
}

}  // namespace

int learnFont(const LearnOptions& options, const engine::ImageDecoder& decoder,
              const CommandStreams& streams) {
    try {
        return learn(readSampleList(options.samples), options, decoder, streams);
    } catch (const SampleListError& error) {
        for (const auto& problem : error.problems) streams.problem(problem);
    } catch (...) {
        streams.problem("font " + options.font + ": " + currentFailure().description());
    }
    return 1;
}

}  // namespace dravik::trainer
