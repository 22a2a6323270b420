#include "evaluate/PieceFitting.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

#include "engine/PngFile.h"
#include "engine/segmentation/CharacterJoins.h"
#include "engine/segmentation/DotPrint.h"
#include "engine/segmentation/LineCharacters.h"
#include "engine/segmentation/PrintCleaning.h"
#include "engine/segmentation/PrintSlope.h"
#include "evaluate/NetworkFitting.h"
#include "evaluate/TrueBoxes.h"

namespace dravik {

using namespace engine;
namespace {

// Print found at the size and with the grain that suit it, and where its characters truly are.
struct FoundPrint {
    const Binarizer& seen;
    const InkImage& ink;
    const Look& look;
    const Frame& frame;
    float capHeight;
    std::vector<LinePieces> lines;
    std::vector<Box> characters;
};

template <typename Visit>
void findPrint(const GreyImage& image, const Truth& truth, bool dots, Visit visit) {
    float scale = std::max(1.0f, std::round(truth.capHeight / 32));
    if (truth.capHeight < 19) scale = 0.5f;
    const Binarizer binarizer(image, {0, 0, image.width(), image.height()}, scale);
    const float cap = truth.capHeight / scale;
    const int side = std::clamp(static_cast<int>(std::lround(0.75f * cap)), 8, 400);
    for (const float blur : {0.0f, 0.045f, 0.07f}) {
        const Look look{truth.dark, side, blur * cap, dots ? Look::Dots : Look::Fragments};
        const InkImage ink = binarizer.separate(truth.dark, side, look.blur);
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
        for (const Box& box : truth.characters) characters.push_back(inFrame(box, frame, 0, 0, scale));
        visit(FoundPrint{binarizer, ink, look, frame, cap, textLines(std::move(pieces), frame, height),
                         std::move(characters)});
    }
}

// One piece: its narrow places and which of them is between two characters.
using CutCase = FitGroup<kCutTraits>;

void addCutCases(std::vector<CutCase>& cases, FoundPrint found) {
    const float cap = found.capHeight;
    for (LinePieces& line : found.lines) {
        const LineScale known = joinAndMeasure(line, found.frame);
        for (const Piece& piece : line.pieces) {
            std::vector<Box> inside;
            for (const Box& one : found.characters)
                if (std::min(one.right, piece.box.right) - std::max(one.left, piece.box.left) >
                        0.6f * one.width() &&
                    one.middleY() > piece.box.top - 0.1f * cap &&
                    one.middleY() < piece.box.bottom + 0.1f * cap)
                    inside.push_back(one);
            if (inside.empty()) continue;
            std::sort(inside.begin(), inside.end(),
                      [](const Box& a, const Box& b) { return a.middleX() < b.middleX(); });
            CutCase one;
            for (const PossibleCut& place : possibleCuts(piece, found.frame, known)) {
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

// Two pieces that are one character or not.
using JoinCase = FitGroup<kJoinTraits>;

void addJoinCases(std::vector<JoinCase>& cases, FoundPrint found) {
    Decisions decisions;
    const float room = 0.06f * found.capHeight;
    for (LinePieces& line : found.lines) {
        const LineScale known = joinAndMeasure(line, found.frame);
        std::vector<Piece> pieces = cutTouching(std::move(line.pieces), found.frame, known, decisions);
        arrange(pieces);
        for (const PossibleJoin& pair : possibleJoins(pieces, known)) {
            const Box &a = pieces[pair.first].box, &b = pieces[pair.second].box;
            const bool one =
                std::any_of(found.characters.begin(), found.characters.end(), [&](const Box& character) {
                    return std::min(a.left, b.left) > character.left - 3 * room &&
                           std::max(a.right, b.right) < character.right + 3 * room &&
                           std::min(a.middleX(), b.middleX()) > character.left - room &&
                           std::max(a.middleX(), b.middleX()) < character.right + room &&
                           std::min(a.middleY(), b.middleY()) > character.top - room &&
                           std::max(a.middleY(), b.middleY()) < character.bottom + room;
                });
            cases.push_back({{pair.traits}, {one}});
        }
    }
}

// One piece that is print or is not.
using PrintCase = FitGroup<kPrintTraits>;

void addPrintCases(std::vector<PrintCase>& cases, FoundPrint found) {
    CharacterDecisions decisions;
    for (LinePieces& line : found.lines) tellCharactersApart(line, found.frame, decisions);
    const auto traits = printTraits(found.lines, found.ink, found.seen, found.look);
    const float room = 0.1f * found.capHeight;
    for (std::size_t l = 0; l < found.lines.size(); ++l)
        for (std::size_t i = 0; i < found.lines[l].pieces.size(); ++i) {
            const Box& box = found.lines[l].pieces[i].box;
            const bool print =
                std::any_of(found.characters.begin(), found.characters.end(), [&](const Box& one) {
                    const bool inside = box.middleX() > one.left - room && box.middleX() < one.right + room &&
                                        box.middleY() > one.top - room && box.middleY() < one.bottom + room;
                    const bool around = one.middleX() > box.left && one.middleX() < box.right &&
                                        one.middleY() > box.top && one.middleY() < box.bottom;
                    return inside || around;
                });
            cases.push_back({{traits[l][i]}, {print}});
        }
}

// Pieces whose likeliest place is rightly cut or left, and the wrong ones of both kinds.
void judge(const char* name, const std::vector<CutCase>& cases, const CutNetwork& of) {
    int right = 0, whole = 0, missed = 0, misplaced = 0;
    for (const CutCase& one : cases) {
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

// Yes and no by the odds; `yes` and `no` say what is wrong of each.
template <typename Case, typename Network>
void judgeEach(const char* name, const std::vector<Case>& cases, const Network& of, const char* yes,
               const char* no) {
    int right = 0, wrongYes = 0, wrongNo = 0;
    for (const Case& one : cases) {
        const bool said = of(one.rows.front()) > 0;
        ++(said == one.right.front() ? right : said ? wrongYes : wrongNo);
    }
    std::printf("%s: %d of %zu right; %d %s, %d %s\n", name, right, cases.size(), wrongYes, yes, wrongNo, no);
}

void judge(const char* name, const std::vector<PrintCase>& cases, const PrintNetwork& of) {
    judgeEach(name, cases, of, "of dirt kept", "of print dropped");
}

void judge(const char* name, const std::vector<JoinCase>& cases, const JoinNetwork& of) {
    judgeEach(name, cases, of, "wrongly joined", "left apart");
}

template <typename Network, typename Case, typename Add>
void fit(const std::vector<std::string>& folders, const Network& present, int rounds, Add add) {
    std::vector<Case> learnt, other;
    int number = 0;
    for (const std::string& folder : folders)
        for (const auto& [name, truth] : truths(folder))
            if (truth.capHeight > 0)
                findPrint(readPng(folder + "/" + name), truth, name.starts_with("dot"),
                          [&](FoundPrint found) { add(number % 8 == 7 ? other : learnt, std::move(found)); }),
                    ++number;
    const Network network = fitted<Network>(learnt, {.rounds = rounds});
    for (const auto& [name, cases] : {std::pair{"learnt from", &learnt}, std::pair{"kept apart ", &other}}) {
        judge((std::string(name) + ", fitted ").c_str(), *cases, network);
        judge((std::string(name) + ", present").c_str(), *cases, present);
    }
    printNetwork(network);
}

}  // namespace

void fitCuts(const std::vector<std::string>& folders) {
    fit<CutNetwork, CutCase>(folders, kCutLikeness, 120, addCutCases);
}

void fitJoins(const std::vector<std::string>& folders) {
    fit<JoinNetwork, JoinCase>(folders, kJoinLikeness, 40, addJoinCases);
}

void fitPrint(const std::vector<std::string>& folders) {
    fit<PrintNetwork, PrintCase>(folders, kPrintLikeness, 30, addPrintCases);
}

}  // namespace dravik
