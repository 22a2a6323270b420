#include "evaluate/CutFitting.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

#include "engine/CharacterCuts.h"
#include "engine/DotPrint.h"
#include "engine/LineCharacters.h"
#include "engine/PngFile.h"
#include "evaluate/NetworkFitting.h"

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

// One piece: its narrow rows and which of them is right two characters.
using Case = FitGroup<kCutTraits>;

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
                    bool between = false;
                    for (std::size_t i = 0; i + 1 < inside.size(); ++i)
                        between = between || (place.along > inside[i].right - 0.12f * cap &&
                                          place.along < inside[i + 1].left + 0.12f * cap);
                    one.rows.push_back(place.traits);
                    one.right.push_back(between);
                }
                if (!one.rows.empty()) cases.push_back(std::move(one));
            }
        }
    }
}

// Pieces whose likeliest place is rightly cut or left, and the wrong ones of both kinds.
void judge(const char* name, const std::vector<Case>& cases, const CutNetwork& of) {
    int right = 0, whole = 0, missed = 0, misplaced = 0;
    for (const Case& one : cases) {
        double most = 0;
        std::ptrdiff_t best = -1;
        for (std::size_t i = 0; i < one.rows.size(); ++i)
            if (const double value = of(one.rows[i]); value > most) {
                most = value;
                best = static_cast<std::ptrdiff_t>(i);
            }
        const bool several = std::find(one.right.begin(), one.right.end(), true) != one.right.end();
        if (best < 0)
            ++(several ? missed : right);
        else if (one.right[static_cast<std::size_t>(best)])
            ++right;
        else
            ++(several ? misplaced : whole);
    }
    std::printf("%s: %d of %zu pieces right; %d wrongly cut, %d not cut, %d cut in the wrong place\n", name,
                right, cases.size(), whole, missed, misplaced);
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
    const CutNetwork network = fitted<CutNetwork>(learnt, {.rounds = 120});
    for (const auto& [name, cases] : {std::pair{"learnt from", &learnt}, std::pair{"kept apart ", &other}}) {
        judge((std::string(name) + ", fitted ").c_str(), *cases, network);
        judge((std::string(name) + ", present").c_str(), *cases, kCutLikeness);
    }
    printNetwork(network);
}

}  // namespace dravik
