// How well the confidence of a reading tells whether it is right: a reliability table and what "?" does,
// on images that the fonts were not taught with. With "fit" the weights are fitted anew and printed.
//
//     dravik_confidence [fit]
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "base/Text.h"
#include "distance/SampleSets.h"
#include "engine/classifier/Confidence.h"
#include "engine/classifier/Reading.h"
#include "engine/font/SampleStore.h"
#include "engine/recogniser/BaseReader.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

constexpr int kTaught = 12;
constexpr int kRead = 12;

struct Judged {
    Evidence evidence;
    bool right = false;
    bool known = true;  // the font has the character
};

struct TaughtFont {
    Network network;
    SampleStore samples;
};

TaughtFont taught(const SampleSet& set) {
    TaughtFont font;
    font.samples.include(set.samples);
    font.samples.commit();
    TrainingSet training;
    for (const Sample& sample : set.samples) {
        auto place = std::find(training.codes.begin(), training.codes.end(), sample.code);
        if (place == training.codes.end()) place = training.codes.insert(place, sample.code);
        training.classes.push_back(static_cast<std::uint32_t>(place - training.codes.begin()));
        training.inputs.insert(training.inputs.end(), sample.inputs.begin(), sample.inputs.end());
    }
    TrainingFigures figures;
    font.network = trained(
        training, 1, [](const TrainingFigures&) { return true; }, figures);
    return font;
}

// Every character of `parts` parts in which the right number is found.
void read(const TaughtFont& font, const OutlineFont& face, const std::string& set, std::uint32_t seed,
          double faults, std::vector<Judged>& judged) {
    const auto committed = font.samples.columns(SampleKind::Committed);
    const DistanceMeasure measure(font.samples.statistics(), committed->samples);
    int parts = kRead;
    for (int tries = 0; parts > 0 && tries < 10 * kRead; ++tries) {
        const LabelledPart part = charsetPart(face, seed++, faults, set);
        const Segmentation found = segment(part.image, takeWholeCharacters);
        if (found.glyphs.size() != part.text.size()) continue;
        const std::vector<Recognition> read = recognize(found, {font.network, measure});
        for (std::size_t i = 0; i < read.size(); ++i) {
            const auto& codes = font.network.codes;
            const std::int32_t code = codeOf(part.text[i]);
            judged.push_back({read[i].best.evidence, read[i].best.code == code,
                              std::find(codes.begin(), codes.end(), code) != codes.end()});
        }
        --parts;
    }
}

// Full fonts and fonts of capitals and figures alone, read on usual and on bad images.
std::vector<Judged> judgedBy(const std::vector<OutlineFont>& faces, std::size_t first) {
    const std::string some = kAllCharacters.substr(0, 36);
    std::vector<Judged> judged;
    for (std::size_t f = first; f < faces.size(); f += 2) {
        const auto seed = static_cast<std::uint32_t>(10'000 * f);
        const TaughtFont full = taught(renderedSamples(faces[f], kTaught, seed, 1));
        read(full, faces[f], kAllCharacters, seed + 2000, 1, judged);
        read(full, faces[f], kAllCharacters, seed + 3000, 1.8, judged);
        const TaughtFont part = taught(renderedSamples(faces[f], kTaught, seed + 5000, 1, some));
        read(part, faces[f], some, seed + 6000, 1.8, judged);
        read(part, faces[f], kAllCharacters, seed + 7000, 1, judged);
    }
    return judged;
}

// Newton's method on the likelihood of a logistic regression; unknown characters count little, since they
// are rare where fonts are used.
void fit(const std::vector<Judged>& judged) {
    constexpr std::size_t kTerms = std::tuple_size_v<EvidenceTerms>;
    std::array<double, kTerms> weights{};
    for (int round = 0; round < 50; ++round) {
        std::array<double, kTerms> gradient{};
        std::array<std::array<double, kTerms>, kTerms> curve{};
        for (std::size_t i = 0; i < kTerms; ++i) {
            curve[i][i] = 0.1;
            gradient[i] = -0.1 * weights[i];
        }
        for (const Judged& one : judged) {
            const EvidenceTerms terms = evidenceTerms(one.evidence);
            double sum = 0;
            for (std::size_t i = 0; i < kTerms; ++i) sum += weights[i] * terms[i];
            const double p = 1 / (1 + std::exp(-sum)), share = one.known ? 1 : 0.15;
            for (std::size_t i = 0; i < kTerms; ++i) {
                gradient[i] += share * ((one.right ? 1 : 0) - p) * terms[i];
                for (std::size_t k = 0; k < kTerms; ++k)
                    curve[i][k] += share * p * (1 - p) * terms[i] * terms[k];
            }
        }
        // Gauss elimination.
        for (std::size_t i = 0; i < kTerms; ++i)
            for (std::size_t k = i + 1; k < kTerms; ++k) {
                const double factor = curve[k][i] / curve[i][i];
                for (std::size_t j = i; j < kTerms; ++j) curve[k][j] -= factor * curve[i][j];
                gradient[k] -= factor * gradient[i];
            }
        for (std::size_t i = kTerms; i-- > 0;) {
            for (std::size_t j = i + 1; j < kTerms; ++j) gradient[i] -= curve[i][j] * gradient[j];
            gradient[i] /= curve[i][i];
            weights[i] += gradient[i];
        }
    }
    std::printf("weights");
    for (const double weight : weights) std::printf(" %.3f", weight);
    std::printf("\n");
}

void report(const std::vector<Judged>& judged) {
    constexpr std::array kEdges = {0.0, 0.2, 0.5, 0.8, 0.9, 0.95, 0.98, 0.99, 1.0};
    double error = 0, known = 0, right = 0;
    for (const Judged& one : judged) {
        known += one.known;
        right += one.known && one.right;
    }
    std::printf("%.0f characters of the fonts, %.2f %% read right\n%12s %8s %10s %8s\n", known,
                100 * right / known, "confidence", "count", "mean", "right");
    for (std::size_t bin = 0; bin + 1 < kEdges.size(); ++bin) {
        double count = 0, sum = 0, good = 0;
        for (const Judged& one : judged) {
            const double sure = confidence(one.evidence);
            if (!one.known || sure < kEdges[bin] || (sure >= kEdges[bin + 1] && kEdges[bin + 1] < 1))
                continue;
            ++count;
            sum += sure;
            good += one.right;
        }
        if (count == 0) continue;
        error += std::abs(sum - good) / known;
        std::printf("%5.2f - %.2f %8.0f %9.1f %% %6.1f %%\n", kEdges[bin], kEdges[bin + 1], count,
                    100 * sum / count, 100 * good / count);
    }
    std::printf("expected calibration error %.4f\n", error);
    std::printf("%12s %22s %22s %22s\n", "limit", "right ones lost", "wrong ones found",
                "unknown ones found");
    for (const double limit : {kRejectLimit, 0.5, 0.8, 0.9}) {
        double lost = 0, found = 0, unknown = 0;
        for (const Judged& one : judged) {
            if (confidence(one.evidence) >= limit) continue;
            (!one.known ? unknown : one.right ? lost : found) += 1;
        }
        std::printf("%12.2f %20.2f %% %20.1f %% %20.1f %%\n", limit, 100 * lost / right,
                    100 * found / std::max(1.0, known - right),
                    100 * unknown / (static_cast<double>(judged.size()) - known));
    }
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    using namespace dravik;
    try {
        std::vector<OutlineFont> faces;
        for (const std::string& file : installedFonts()) faces.emplace_back(file);
        if (argc > 1 && std::string(argv[1]) == "fit") fit(judgedBy(faces, 0));
        std::printf("fonts that the weights were fitted to: ");
        report(judgedBy(faces, 0));
        std::printf("\nother fonts: ");
        report(judgedBy(faces, 1));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
