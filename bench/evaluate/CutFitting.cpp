#include "evaluate/CutFitting.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

#include "engine/CharacterCutWeights.h"
#include "engine/CharacterCuts.h"
#include "engine/DotPrint.h"
#include "engine/LineCharacters.h"
#include "engine/PngFile.h"

namespace dravik {
namespace {

struct Truth {
    bool dark = true;
    float capHeight = 0;
    std::vector<Box> characters;  // in image pixels
};

std::vector<std::string> columnsOf(const std::string& row) {
    std::vector<std::string> result;
    std::stringstream in(row);
    for (std::string one; std::getline(in, one, '\t');) result.push_back(one);
    return result;
}

std::map<std::string, Truth> truths(const std::string& folder) {
    std::map<std::string, Truth> result;
    std::ifstream meta(folder + "/meta.tsv"), boxes(folder + "/boxes.tsv");
    for (std::string row; std::getline(meta, row);) {
        const auto columns = columnsOf(row);
        if (columns.size() > 3 && columns[0] != "file") result[columns[0]].dark = columns[3] == "dark";
    }
    for (std::string row; std::getline(boxes, row);) {
        const auto columns = columnsOf(row);
        if (columns.size() < 10 || columns[0] == "file") continue;
        Truth& truth = result[columns[0]];
        truth.capHeight = std::stof(columns[9]);
        truth.characters.push_back({std::stof(columns[4]), std::stof(columns[5]), std::stof(columns[6]),
                                    std::stof(columns[7])});
    }
    return result;
}

// One piece: its narrow places and which of them is between two characters.
struct Case {
    std::vector<CutTraits> places;
    std::vector<bool> between;
};

void addCases(std::vector<Case>& cases, const GreyImage& image, const Truth& truth, bool dots) {
    float scale = std::max(1.0f, std::round(truth.capHeight / 32));
    if (truth.capHeight < 19) scale = 0.5f;
    const Binarizer binarizer(image, {0, 0, image.width(), image.height()}, scale);
    const float cap = truth.capHeight / scale;
    const int side = std::clamp(static_cast<int>(std::lround(0.75f * cap)), 8, 400);
    for (const float blur : {0.0f, 0.045f, 0.07f}) {
        const InkImage ink = binarizer.separate(truth.dark, side, blur * cap);
        if (ink.empty()) continue;
        std::vector<Piece> pieces = components(ink, 3);
        if (pieces.size() > 5000) continue;
        pieces = dots ? joinedByCloseness(joinedDots(std::move(pieces)), ink.width, ink.height)
                      : joinedFragments(std::move(pieces));
        float height = usualHeight(pieces);
        if (height < 0.5f * cap || height > 1.6f * cap) continue;
        Frame frame;
        frame.slope = printSlope(pieces, height);
        for (Piece& piece : pieces) piece.measure(frame);
        frame.slant = printSlant(pieces, frame.slope, height);
        for (Piece& piece : pieces) piece.measure(frame);
        std::vector<Box> characters;
        for (const Box& box : truth.characters) {
            const float x = box.middleX() / scale, y = box.middleY() / scale;
            const float along = frame.along(x, y), across = frame.across(x, y);
            const float half = 0.5f * box.width() / scale, tall = 0.5f * box.height() / scale;
            characters.push_back({along - half, across - tall, along + half, across + tall});
        }
        for (LinePieces& line : textLines(std::move(pieces), height)) {
            const LineMetrics metrics = line.metrics;
            const std::vector<Piece> parts = joinedParts(std::move(line));
            const LineScale known = lineScale(parts, metrics, characterPitch(parts, metrics.capHeight));
            for (const Piece& piece : parts) {
                std::vector<Box> inside;
                for (const Box& one : characters)
                    if (std::min(one.right, piece.box.right) - std::max(one.left, piece.box.left) >
                            0.6f * one.width() &&
                        one.middleY() > piece.box.top - 0.1f * cap && one.middleY() < piece.box.bottom + 0.1f * cap)
                        inside.push_back(one);
                if (inside.empty()) continue;
                std::sort(inside.begin(), inside.end(),
                          [](const Box& a, const Box& b) { return a.middleX() < b.middleX(); });
                Case one;
                for (const PossibleCut& place : possibleCuts(piece, frame, known)) {
                    bool right = false;
                    for (std::size_t i = 0; i + 1 < inside.size(); ++i)
                        right = right || (place.along > inside[i].right - 0.12f * cap &&
                                          place.along < inside[i + 1].left + 0.12f * cap);
                    one.places.push_back(place.traits);
                    one.between.push_back(right);
                }
                if (!one.places.empty()) cases.push_back(std::move(one));
            }
        }
    }
}

// Pieces whose likeliest place is rightly cut or left, and the wrong ones of both kinds.
template <typename Odds>
void judge(const char* name, const std::vector<Case>& cases, Odds of) {
    int right = 0, whole = 0, missed = 0, misplaced = 0;
    for (const Case& one : cases) {
        double most = 0;
        std::ptrdiff_t best = -1;
        for (std::size_t i = 0; i < one.places.size(); ++i)
            if (const double value = of(one.places[i]); value > most) {
                most = value;
                best = static_cast<std::ptrdiff_t>(i);
            }
        const bool several = std::find(one.between.begin(), one.between.end(), true) != one.between.end();
        if (best < 0)
            ++(several ? missed : right);
        else if (one.between[static_cast<std::size_t>(best)])
            ++right;
        else
            ++(several ? misplaced : whole);
    }
    std::printf("%s: %d of %zu pieces right; %d wrongly cut, %d not cut, %d cut in the wrong place\n", name,
                right, cases.size(), whole, missed, misplaced);
}

// Adam on the logistic loss, steps falling to nothing along a cosine. Traits are brought to one spread while
// it goes on, and that is put into the weights at the end.
CutNetwork fitted(const std::vector<Case>& cases, std::uint32_t seed) {
    struct Place {
        CutTraits traits;
        double wanted;
    };
    std::vector<Place> places;
    CutTraits mean{}, spread{};
    for (const Case& one : cases)
        for (std::size_t k = 0; k < one.places.size(); ++k)
            places.push_back({one.places[k], one.between[k] ? 1.0 : 0.0});
    const double count = static_cast<double>(places.size());
    for (std::size_t i = 0; i < kCutTraits; ++i) {
        for (const Place& one : places) mean[i] += one.traits[i] / count;
        for (const Place& one : places) spread[i] += std::pow(one.traits[i] - mean[i], 2) / count;
        spread[i] = std::sqrt(spread[i]) + 1e-3;
        for (Place& one : places) one.traits[i] = (one.traits[i] - mean[i]) / spread[i];
    }
    constexpr std::size_t kEach = kCutTraits + 2, kAll = kCutUnits * kEach + 1;
    std::vector<double> weights(kAll), slope(kAll), first(kAll), second(kAll);
    std::mt19937 random(seed);
    const auto uniform = [&random] { return static_cast<double>(random()) / 4294967296.0 - 0.5; };
    for (double& weight : weights) weight = 0.5 * uniform();
    constexpr int kRounds = 120;
    constexpr std::size_t kBatch = 32;
    double step = 0;
    const double steps = kRounds * count / kBatch;
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = places.size() - 1; i > 0; --i) std::swap(places[i], places[random() % (i + 1)]);
        for (std::size_t from = 0; from + kBatch <= places.size(); from += kBatch) {
            std::fill(slope.begin(), slope.end(), 0.0);
            for (std::size_t k = from; k < from + kBatch; ++k) {
                const Place& place = places[k];
                std::array<double, kCutUnits> active;
                double odds = weights[kAll - 1];
                for (std::size_t u = 0; u < kCutUnits; ++u) {
                    const double* w = &weights[u * kEach];
                    double sum = w[kCutTraits];
                    for (std::size_t i = 0; i < kCutTraits; ++i) sum += w[i] * place.traits[i];
                    active[u] = std::max(0.0, sum);
                    odds += w[kCutTraits + 1] * active[u];
                }
                const double error = (1 / (1 + std::exp(-odds)) - place.wanted) / kBatch;
                slope[kAll - 1] += error;
                for (std::size_t u = 0; u < kCutUnits; ++u) {
                    if (active[u] <= 0) continue;
                    double* s = &slope[u * kEach];
                    s[kCutTraits + 1] += error * active[u];
                    const double back = error * weights[u * kEach + kCutTraits + 1];
                    for (std::size_t i = 0; i < kCutTraits; ++i) s[i] += back * place.traits[i];
                    s[kCutTraits] += back;
                }
            }
            ++step;
            const double rate = 0.01 * 0.5 * (1 + std::cos(3.14159265 * step / steps));
            for (std::size_t i = 0; i < kAll; ++i) {
                const double g = slope[i] + 1e-4 * weights[i];
                first[i] = 0.9 * first[i] + 0.1 * g;
                second[i] = 0.999 * second[i] + 0.001 * g * g;
                weights[i] -= rate * (first[i] / (1 - std::pow(0.9, step))) /
                              (std::sqrt(second[i] / (1 - std::pow(0.999, step))) + 1e-8);
            }
        }
    }
    CutNetwork network;
    network.bias = weights[kAll - 1];
    for (std::size_t u = 0; u < kCutUnits; ++u) {
        const double* w = &weights[u * kEach];
        CutUnit& unit = network.units[u];
        unit.bias = w[kCutTraits];
        unit.share = w[kCutTraits + 1];
        for (std::size_t i = 0; i < kCutTraits; ++i) {
            unit.weights[i] = w[i] / spread[i];
            unit.bias -= unit.weights[i] * mean[i];
        }
    }
    return network;
}

}  // namespace

void fitCuts(const std::vector<std::string>& folders) {
    std::vector<Case> learnt, other;
    int number = 0;
    for (const std::string& folder : folders)
        for (const auto& [name, truth] : truths(folder))
            if (truth.capHeight > 0)
                addCases(number++ % 8 == 7 ? other : learnt, readPng(folder + "/" + name), truth,
                         name.starts_with("dot"));
    const CutNetwork network = fitted(learnt, 1);
    for (const auto& [name, cases] : {std::pair{"learnt from", &learnt}, std::pair{"kept apart ", &other}}) {
        judge((std::string(name) + ", fitted ").c_str(), *cases,
              [&](const CutTraits& traits) { return cutLikeness(traits, network); });
        judge((std::string(name) + ", present").c_str(), *cases,
              [](const CutTraits& traits) { return cutLikeness(traits); });
    }
    std::printf("%.4g,\n", network.bias);
    for (const CutUnit& unit : network.units) {
        std::printf("CutUnit{{");
        for (std::size_t i = 0; i < kCutTraits; ++i) std::printf("%s%.4g", i ? ", " : "", unit.weights[i]);
        std::printf("}, %.4g, %.4g},\n", unit.bias, unit.share);
    }
}

}  // namespace dravik
