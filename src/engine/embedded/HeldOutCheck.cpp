#include "engine/embedded/HeldOutCheck.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/NumberFormat.h"
#include "base/StableSort.h"
#include "base/Text.h"
#include "engine/classifier/Network.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kMostFolds = 5;
constexpr std::size_t kMostChecked = 5000;
constexpr std::size_t kShownConfusions = 3;

struct Dealt {
    const Sample* sample;
    std::uint32_t character;  // index into the codes
    std::size_t fold;
};

struct Deal {
    std::vector<std::int32_t> codes;
    std::vector<Dealt> samples;
    std::size_t folds = 0;
    std::vector<std::int32_t> unchecked;
};

Deal deal(const SampleColumns& columns) {
    std::map<std::int32_t, std::vector<const Sample*>> byCode;
    for (const Sample* sample : columns.samples) byCode[sample->code].push_back(sample);
    Deal result;
    for (const auto& [code, all] : byCode) {
        if (all.size() < 2) {
            result.unchecked.push_back(code);
            continue;
        }
        const std::size_t share = all.size() * kMostChecked / std::max(kMostChecked, columns.size());
        const std::size_t count = std::max<std::size_t>(share, 2), folds = std::min(count, kMostFolds);
        for (std::size_t i = 0; i < count; ++i)
            result.samples.push_back({all[i * all.size() / count],
                                      static_cast<std::uint32_t>(result.codes.size()), i * folds / count});
        result.codes.push_back(code);
        result.folds = std::max(result.folds, folds);
    }
    return result;
}

TrainingSet withoutFold(const Deal& dealt, std::size_t fold) {
    TrainingSet set;
    set.codes = dealt.codes;
    for (const Dealt& one : dealt.samples) {
        if (one.fold == fold) continue;
        set.inputs.insert(set.inputs.end(), one.sample->inputs.begin(), one.sample->inputs.end());
        set.classes.push_back(one.character);
    }
    return set;
}

std::string times(int count) {
    return count == 1 ? "once" : count == 2 ? "twice" : std::to_string(count) + " times";
}

constexpr std::size_t kNamedCharacters = 12;

}  // namespace

std::string listed(const std::vector<std::int32_t>& codes) {
    std::string text;
    for (std::size_t i = 0; i < std::min(codes.size(), kNamedCharacters); ++i)
        text += (i == 0 ? "" : ", ") + characterOf(codes[i]);
    if (codes.size() > kNamedCharacters)
        text += " and " + std::to_string(codes.size() - kNamedCharacters) + " more";
    return text;
}

std::optional<HeldOutResult> checkHeldOut(const SampleColumns& samples, std::uint32_t seed,
                                          const std::function<bool()>& more) {
    const Deal dealt = deal(samples);
    if (dealt.codes.size() < 2) return std::nullopt;
    HeldOutResult result;
    result.folds = static_cast<int>(dealt.folds);
    result.unchecked = dealt.unchecked;
    std::map<std::pair<std::int32_t, std::int32_t>, int> confused;
    std::vector<MisreadSample> misread;
    std::vector<float> outputs(dealt.codes.size());
    for (std::size_t fold = 0; fold < dealt.folds; ++fold) {
        TrainingFigures figures;
        const Network network = trained(
            withoutFold(dealt, fold), seed, [&more](const TrainingFigures&) { return more(); }, figures);
        for (const Dealt& one : dealt.samples) {
            if (one.fold != fold) continue;
            network.run(one.sample->inputs, outputs);
            const auto best = std::max_element(outputs.begin(), outputs.end()) - outputs.begin();
            const std::int32_t readAs = dealt.codes[static_cast<std::size_t>(best)];
            ++result.checked;
            if (readAs == one.sample->code) continue;
            ++result.wrong;
            ++confused[{one.sample->code, readAs}];
            misread.push_back({one.sample->serial, one.sample->code, readAs});
        }
        if (!more()) return std::nullopt;
    }
    for (const auto& [pair, count] : confused) result.confusions.push_back({pair.first, pair.second, count});
    stableSort(result.confusions.begin(), result.confusions.end(),
               [](const Confusion& a, const Confusion& b) { return a.count > b.count; });
    for (const Confusion& pair : result.confusions)
        for (const MisreadSample& one : misread)
            if (one.code == pair.code && one.readAs == pair.readAs) result.misread.push_back(one);
    return result;
}

std::string heldOutText(const HeldOutResult& result) {
    const double right = 100.0 * (result.checked - result.wrong) / result.checked;
    // Rounded down, so that 100 % means that none was wrong.
    const double tenths = static_cast<double>(static_cast<int>(right * 10));
    std::string text = "Held-out check (" + std::to_string(result.folds) +
                       "-fold): " + formatNumber(tenths / 10, "0.0") + " % right, " +
                       std::to_string(result.wrong) + " of " + std::to_string(result.checked) + " wrong";
    for (std::size_t i = 0; i < std::min(result.confusions.size(), kShownConfusions); ++i) {
        const Confusion& one = result.confusions[i];
        text += (i == 0 ? ": " : ", ") + characterOf(one.code) + " read as " + characterOf(one.readAs) + " " +
                times(one.count);
    }
    if (!result.unchecked.empty())
        text += (result.unchecked.size() == 1 ? "; a single sample of " : "; a single sample each of ") +
                listed(result.unchecked);
    return text;
}

void HeldOutWorker::start(SampleColumnsPtr samples, std::uint32_t seed) {
    BackgroundRun::start([seed, samples = std::move(samples)](const std::stop_token& stop) {
        return checkHeldOut(*samples, seed, [&stop] { return !stop.stop_requested(); });
    });
}

}  // namespace dravik::engine
