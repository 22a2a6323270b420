#include <array>
#include <charconv>
#include <chrono>
#include <ostream>
#include <thread>

#include "base/Conversions.h"
#include "base/Failure.h"
#include "base/NumberFormat.h"
#include "base/Text.h"
#include "tool/Samples.h"
#include "trainer/SampleList.h"
#include "trainer/commands/Commands.h"
#include "trainer/commands/HeadlessSession.h"
#include "trainer/commands/Interrupt.h"
#include "trainer/commands/ProgressLine.h"
#include "trainer/commands/RunLoop.h"

namespace dravik::trainer {
namespace {

constexpr int kInterrupted = 130;
constexpr char kNothingToCheck[] = "Held-out check: not made, it takes two characters with two samples each";

// The error as the screen writes it, from the single-precision number's own decimal form.
std::string rmsText(float rms) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rms).ptr;
    return formatNumber(leadingNumber({digits.data(), static_cast<std::size_t>(end - digits.data())}),
                        "0.00#######");
}

struct Outcome {
    int included = 0;    // samples
    std::string reason;  // why none were, "" when some were
};

// Why the screen refused the last include, in words.
std::string refusal(HeadlessSession& session, const std::string& text) {
    if (const auto words = session.failure()) return onOneLine(*words);
    const auto typed = characterCount(text);
    const auto found = session.tool().found().size();
    for (const auto& question : session.platform().asked()) {
        if (question.box.title == "Difference in character counts" && typed != found)
            return std::to_string(typed) + (typed == 1 ? " character" : " characters") + " typed, " +
                   std::to_string(found) + " found";
        return onOneLine(question.box.text);
    }
    const auto message = session.message();
    return message.empty() ? "the screen gave no reason" : message;
}

Outcome include(HeadlessSession& session, const ListedSample& sample, const ImageDecoder& decoder) {
    try {
        session.tool().setImage(decoder(sample.path));
        auto& controls = session.screen().sample;
        controls.txtSampleInput.setText(sample.text);
        session.press(controls.cmdInclude);
        const auto message = session.message();
        if (message.ends_with(" samples included."))
            if (const auto count = toInt32(leadingNumber(message)); count > 0) return {count, {}};
        return {0, refusal(session, sample.text)};
    } catch (...) {
        return {0, onOneLine(currentFailure().description())};
    }
}

std::int32_t secondsOf(const std::string& timeoutItem) {
    const double number = leadingNumber(timeoutItem);
    return toInt32(number < 10 ? number * 60 : number);
}

// Limits that the screen's list offers are chosen there; others are the tool's alone.
void limitRun(HeadlessSession& session, std::int32_t seconds) {
    auto& list = session.screen().train.cboTimeout;
    for (int i = 0; i < list.count(); ++i) {
        if (secondsOf(list.items()[static_cast<std::size_t>(i)]) == seconds) {
            list.setListIndex(i);
            return;
        }
    }
    session.tool().SetTrainTimeout(seconds);
}

// Runs a training to its end and returns how long it took, in seconds. Raises Failure when it gives no
// result.
double train(HeadlessSession& session, const InterruptWatch& watch, const CommandStreams& streams) {
    auto& controls = session.screen().train;
    auto& tool = session.tool();
    const double limit = tool.GetTrainTimeout();
    const auto start = std::chrono::steady_clock::now();
    const auto elapsed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };

    session.press(controls.cmdTrain);
    double seconds = 0;
    ProgressLine progress(streams.err, streams.errIsTerminal);
    runTimer(controls.tmrTrain, [&] {
        seconds = elapsed();
        if (watch.interrupted() || session.failure()) {
            controls.cmdStop.press();
            controls.tmrTrain.setEnabled(false);
        } else {
            progress.show(limit > 0 ? seconds / limit : 0, std::to_string(tool.GetTrainCycles()) +
                                                               " cycles, RMS " + rmsText(tool.GetRmsError()));
        }
    });
    if (const auto words = session.failure()) throw Failure(RuntimeError::InvalidProcedureCall, *words);
    if (!watch.interrupted() && !session.said("Save Font or Revert"))
        throw Failure(RuntimeError::InvalidProcedureCall, "the training did not start");
    if (!watch.interrupted() && tool.IsTrainingAborted())
        throw Failure(RuntimeError::InvalidProcedureCall, "the training gave no result");
    return seconds;
}

int committedSamples(engine::EmbeddedTool& tool) {
    const auto table = tool.GetSampleData(tool::kAllCommitted, tool::kSampleFields);
    return table ? table->upperRow() : 0;
}

int interrupted(HeadlessSession& session, const CommandStreams& streams) {
    streams.problem("interrupted; the training was not saved to " +
                    session.folder().fontFile(session.control().selectedFont()));
    return kInterrupted;
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

int learn(HeadlessSession& session, const std::vector<ListedSample>& samples, const LearnOptions& options,
          const ImageDecoder& decoder, const CommandStreams& streams) {
    const InterruptWatch watch;
    session.selectFont(options.font);
    if (options.characters) {
        session.forget();
        session.screen().font.txtCharSet.setText(*options.characters);
        if (const auto words = session.failure()) throw Failure(RuntimeError::InvalidProcedureCall, *words);
    }

    int imagesIncluded = 0;
    for (const auto& sample : samples) {
        if (watch.interrupted()) return interrupted(session, streams);
        const auto outcome = include(session, sample, decoder);
        if (outcome.included > 0) {
            ++imagesIncluded;
            streams.out << "included " << outcome.included << '\t' << sample.image << std::endl;
        } else {
            streams.out << "refused\t" << sample.image << '\t' << outcome.reason << std::endl;
        }
    }
    if (imagesIncluded == 0) {
        streams.problem("nothing to learn: every image was refused");
        return 1;
    }
    if (watch.interrupted()) return interrupted(session, streams);

    if (options.seconds) limitRun(session, *options.seconds);
    const double seconds = train(session, watch, streams);
    if (watch.interrupted()) return interrupted(session, streams);
    auto& tool = session.tool();
    streams.out << "samples " << committedSamples(tool) << '\n'
                << "cycles " << tool.GetTrainCycles() << '\n'
                << "rms " << rmsText(tool.GetRmsError()) << '\n'
                << "seconds " << formatNumber(seconds, "0.0") << std::endl;

    session.press(session.screen().train.cmdSaveFont);
    const auto file = session.folder().fontFile(session.control().selectedFont());
    if (session.control().m_FontChanged() || !session.said("Saved font")) {
        streams.problem("font " + options.font + ": " + session.failure().value_or(session.message()));
        return 1;
    }
    streams.out << "saved " << file << std::endl;
    return tellCheck(tool, watch, streams);
}

}  // namespace

int learnFont(const LearnOptions& options, const JobFolder& folder, const ImageDecoder& decoder,
              const CommandStreams& streams) {
    try {
        const auto samples = readSampleList(options.samples);
        HeadlessSession session(folder);
        return learn(session, samples, options, decoder, streams);
    } catch (const SampleListError& error) {
        for (const auto& problem : error.problems) streams.problem(problem);
    } catch (...) {
        streams.problem("font " + options.font + ": " + currentFailure().description());
    }
    return 1;
}

}  // namespace dravik::trainer
