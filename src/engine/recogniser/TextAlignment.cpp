#include "engine/recogniser/TextAlignment.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "base/StableSort.h"
#include "engine/recogniser/LeftOutPieces.h"
#include "engine/recogniser/LineLattice.h"
#include "engine/recogniser/TextPath.h"
#include "engine/segmentation/OtherSize.h"

namespace dravik::engine {
namespace {

// The following numbers were judged by `dravik_evaluate include` on develop and develop2.
// A found character is at least so likely any, as a logarithm, and so is a piece of other cuts; characters
// that the recogniser does not know are so likely.
constexpr float kLeastFound = -4.5f, kLeastOther = -8, kUnknownFound = -2, kUnknownOther = -4;
// A part of a touching character looks like a half wherever it is cut: that counts so much at most, what it
// looks like else so much, and the cut itself by this part.
constexpr float kMostHalf = -1.2f, kLeastCut = -6, kCutDoubtShare = 0.5f;
// Some faces have no small letters: by so much less likely one is the other.
constexpr float kOtherCaseDoubt = 1;
// By how much surer, as a logarithm, a piece must be that was left out.
constexpr float kLeftOutDoubt = 1;
// What an error of the text counts where only the places are to be found that are in doubt; what is likelier
// than this is the character that the text says; so many beside one in doubt are in doubt too.
constexpr float kErrorCost = 3, kClear = 0.5f;
constexpr std::size_t kBeside = 1;
// What is likelier than this may be what the text says.
constexpr float kPerhaps = 0.02f;
// What is lower, in heights of capitals, is not cut: half a dash is one, too.
constexpr float kFlat = 0.35f;
// So many found characters are joined at most, so far apart and so wide together, in heights of capitals.
constexpr std::size_t kMostJoined = 3;
constexpr float kMostRoom = 0.3f, kMostJoinedWidth = 1.6f;

// A piece that may be a character of the text, and the found characters that it is made of, of its line.
struct LinePiece {
    Span span;
    std::size_t from = 0, to = 0;  // the last one
};

struct Line {
    std::size_t view = 0;
    int number = 0;
    std::size_t from = 0, to = 0;  // characters of the view
    LineMetrics metrics;
    std::vector<PatchLikelihoods> likelihoods;  // of the characters
    std::vector<bool> isLeftOut, isDoubtful;
    std::vector<LinePiece> pieces;
    LineBoundaries boundaries;

    std::size_t size() const noexcept { return to - from; }
};

enum class Origin { Found, LeftOut, Joined, Cut };

Origin originOf(const Line& line, const LinePiece& piece) {
    if (piece.from != piece.to) return Origin::Joined;
    if (!piece.span.asFound) return Origin::Cut;
    return line.isLeftOut[piece.from] ? Origin::LeftOut : Origin::Found;
}

class Alignment {
  public:
    Alignment(std::span<const Segmentation* const> views, std::span<const std::string> text) {
        std::map<std::string, std::size_t> kinds;
        for (const std::string& one : text) {
            const auto [known, isNew] = kinds.try_emplace(one, kinds.size());
            text_.push_back(known->second);
            if (isNew) kinds_.push_back(kindOf(one));
        }
        std::size_t found = 0;
        views_.reserve(views.size());
        for (const Segmentation* view : views) {
            found += view->glyphs.size();
            addView(*view);
        }
        lacksCharacters_ = found < text.size();
    }

    std::optional<TextDivision> division() {
        const std::vector<std::pair<Line*, std::size_t>> found = takeFound();
        findDoubts(found);
        for (Line& line : lines_) findPieces(line);
        const std::vector<TextPiece> pieces = textPieces();
        const auto exact = likeliestPath(pieces, last_, text_, TextErrors::None);
        if (!exact) return std::nullopt;
        TextDivision result;
        result.characters.resize(views_.size());
        result.likelihood = static_cast<double>(exact->value);
        if (const auto other = likeliestPath(pieces, last_, text_, TextErrors::One))
            result.withError = static_cast<double>(other->value);
        std::size_t agreeing = 0;
        for (const TextStep& step : exact->steps) {
            if (step.is != TextStep::Is::Character) continue;
            const auto& [line, span] = spans_[step.piece];
            agreeing += likelihood(span->likelihoods, step.character) > std::log(kPerhaps) ? 1 : 0;
            result.characters[line->view].push_back({span->piece, line->number});
        }
        result.agreement = static_cast<double>(agreeing) / static_cast<double>(text_.size());
        return result;
    }

  private:
    // What a character of the text may be taken for, and how much less likely, as a logarithm; nothing for
    // one that the recogniser does not know.
    using Kind = std::vector<std::pair<std::size_t, float>>;

    static Kind kindOf(const std::string& character) {
        Kind kind;
        for (std::size_t place = 0; place < kNoCharacter; ++place) {
            const std::string_view other = kRecognisedCharacters.substr(place, 1);
            if (character == other || areDrawnAlike(character, other)) kind.emplace_back(place, 0.0f);
        }
        const char letter = character.size() == 1 ? character.front() : '\0';
        const bool isCapital = letter >= 'A' && letter <= 'Z', isSmall = letter >= 'a' && letter <= 'z';
        if (isCapital || isSmall) {
            const char other = static_cast<char>(isCapital ? letter - 'A' + 'a' : letter - 'a' + 'A');
            if (const auto place = recognisedPlace(std::string_view(&other, 1)))
                kind.emplace_back(*place, kOtherCaseDoubt);
        }
        return kind;
    }

    static float asKind(const PatchLikelihoods& of, const Kind& kind) {
        float most = kNever;
        for (const auto& [place, doubt] : kind) most = std::max(most, of[place] - doubt);
        return most;
    }

    // To be what the text says at a place; 0 for a character that the recogniser does not know.
    float likelihood(const PatchLikelihoods& of, std::size_t character) const {
        const Kind& kind = kinds_[text_[character]];
        return kind.empty() ? 0 : asKind(of, kind);
    }

    // Takes a view with what was left out in it among its characters.
    void addView(const Segmentation& found) {
        std::vector<std::vector<Piece>> leftOut = leftOutPieces(found);
        const std::size_t firstLine = lines_.size();
        Segmentation view = found;
        view.glyphs.clear();
        for (std::size_t from = 0; from < found.glyphs.size();) {
            Line& line = lines_.emplace_back();
            line.view = views_.size();
            line.number = found.glyphs[from].line;
            line.from = view.glyphs.size();
            const auto add = [&](Glyph glyph, bool isLeftOut) {
                view.glyphs.push_back(std::move(glyph));
                line.isLeftOut.push_back(isLeftOut);
            };
            std::vector<Piece>& others = leftOut[static_cast<std::size_t>(line.number)];
            auto other = others.begin();
            for (; from < found.glyphs.size() && found.glyphs[from].line == line.number; ++from) {
                for (; other != others.end() && other->box.left < found.glyphs[from].piece.box.left; ++other)
                    add({std::move(*other), line.number}, true);
                add(found.glyphs[from], false);
            }
            for (; other != others.end(); ++other) add({std::move(*other), line.number}, true);
            line.to = view.glyphs.size();
        }
        views_.push_back(std::move(view));
        for (std::size_t i = firstLine; i < lines_.size(); ++i) measure(lines_[i]);
    }

    // In the size in which its characters are likelier to be any of the text.
    void measure(Line& line) const {
        const Segmentation& view = views_[line.view];
        line.metrics = view.lines[static_cast<std::size_t>(line.number)];
        line.likelihoods = lineLikelihoods(view, line.from, line.to, line.metrics);
        const std::optional<OtherSize> other = otherSize(view.lines, line.metrics);
        if (!other) return;
        const auto value = [&](const std::vector<PatchLikelihoods>& likelihoods) {
            double sum = 0;
            for (std::size_t i = 0; i < likelihoods.size(); ++i) {
                if (line.isLeftOut[i]) continue;
                float most = kLeastFound;
                for (const Kind& kind : kinds_) most = std::max(most, asKind(likelihoods[i], kind));
                sum += static_cast<double>(most);
            }
            return sum;
        };
        LineMetrics smaller = line.metrics;
        smaller.capHeight = other->capHeight;
        std::vector<PatchLikelihoods> asSmaller = lineLikelihoods(view, line.from, line.to, smaller);
        if (value(asSmaller) - other->doubt <= value(line.likelihoods)) return;
        line.metrics = smaller;
        line.likelihoods = std::move(asSmaller);
    }

    // Makes the found characters, and what was left out, the pieces of their lines; all of them in order.
    std::vector<std::pair<Line*, std::size_t>> takeFound() {
        std::vector<std::pair<Line*, std::size_t>> all;
        for (Line& line : lines_) {
            line.isDoubtful = line.isLeftOut;
            for (std::size_t i = 0; i < line.size(); ++i) {
                LinePiece& one = line.pieces.emplace_back();
                one.from = one.to = one.span.first = i;
                one.span.end = i + 1;
                one.span.piece = views_[line.view].glyphs[line.from + i].piece;
                one.span.asFound = true;
                one.span.likelihoods = line.likelihoods[i];
                all.emplace_back(&line, i);
            }
        }
        return all;
    }

    // In doubt are those that are not what the text says, and those beside an error of the text, wherever
    // errors are the likeliest, be they ever so many.
    void findDoubts(std::span<const std::pair<Line*, std::size_t>> found) {
        const auto isFound = [&](std::size_t i) { return !found[i].first->isLeftOut[found[i].second]; };
        const auto doubt = [&](std::size_t at) {
            std::size_t begin = at, end = at;
            for (std::size_t count = 0; begin > 0 && count < kBeside; count += isFound(begin) ? 1 : 0)
                --begin;
            for (std::size_t count = 0; end + 1 < found.size() && count < kBeside;
                 count += isFound(end) ? 1 : 0)
                ++end;
            for (std::size_t i = begin; i <= end; ++i) found[i].first->isDoubtful[found[i].second] = true;
        };
        const std::vector<TextPiece> pieces = textPieces();
        const auto path = likeliestPath(pieces, last_, text_, TextErrors::Any, kErrorCost);
        if (!path) return;
        std::size_t at = 0;
        for (const TextStep& step : path->steps) {
            if (step.is == TextStep::Is::NotPrinted) {
                doubt(std::min(at, found.size() - 1));
                if (at > 0) doubt(at - 1);
                continue;
            }
            const auto& [line, i] = found[at];
            const bool isClear = step.is == TextStep::Is::Character
                                     ? likelihood(line->likelihoods[i], step.character) > std::log(kClear)
                                     : step.is == TextStep::Is::Dirt && line->isLeftOut[i];
            if (!isClear) doubt(at);
            ++at;
        }
    }

    // What may be one character of the text: those in doubt cut and joined.
    void findPieces(Line& line) const {
        const Segmentation& view = views_[line.view];
        const float cap = line.metrics.capHeight;
        std::vector<Cuts> cuts(line.size(), Cuts::None);
        for (std::size_t i = 0; i < line.size(); ++i)
            if (line.isDoubtful[i] && view.glyphs[line.from + i].piece.box.height() >= kFlat * cap)
                cuts[i] = lacksCharacters_ ? Cuts::Everywhere : Cuts::Likely;
        const std::span<const Glyph> glyphs = std::span(view.glyphs).subspan(line.from, line.size());
        line.boundaries = LineBoundaries(view.ink, view.frame, glyphs, line.metrics);
        const std::vector<Atom> atoms = atomsOf(view.frame, glyphs, cuts, line.boundaries, cap);
        line.pieces.clear();
        for (Span& span : spansOf(atoms, line.isDoubtful, view.frame, cap)) {
            const std::size_t from = atoms[span.first].character, to = atoms[span.end - 1].character;
            line.pieces.push_back({std::move(span), from, to});
        }
        addJoined(line, atoms);
        std::vector<CharacterPatch> patches;
        for (const LinePiece& one : line.pieces)
            if (!one.span.asFound)
                patches.push_back(characterPatch(view.ink, view.frame, one.span.piece, line.metrics));
        const std::vector<PatchLikelihoods> others = patchLikelihoods(patches);
        auto other = others.begin();
        for (LinePiece& one : line.pieces)
            one.span.likelihoods = one.span.asFound ? line.likelihoods[one.from] : *other++;
    }

    // Found characters joined whole, as far as they are not among the pieces: one that was cut has many
    // parts.
    void addJoined(Line& line, std::span<const Atom> atoms) const {
        const Segmentation& view = views_[line.view];
        const float cap = line.metrics.capHeight;
        std::vector<std::size_t> begins;
        for (std::size_t i = 0; i < atoms.size(); ++i)
            if (i == 0 || atoms[i].character != atoms[i - 1].character) begins.push_back(i);
        begins.push_back(atoms.size());
        for (std::size_t from = 0; from < line.size(); ++from) {
            Piece piece = view.glyphs[line.from + from].piece;
            for (std::size_t to = from + 1; to < std::min(from + kMostJoined, line.size()); ++to) {
                const Piece& next = view.glyphs[line.from + to].piece;
                if ((!line.isDoubtful[to - 1] && !line.isDoubtful[to]) ||
                    next.box.left - piece.box.right > kMostRoom * cap ||
                    next.box.right - piece.box.left > kMostJoinedWidth * cap)
                    break;
                piece.join(Piece(next));
                piece.measure(view.frame);
                const bool isThere =
                    std::any_of(line.pieces.begin(), line.pieces.end(), [&](const LinePiece& one) {
                        return one.span.first == begins[from] && one.span.end == begins[to + 1];
                    });
                if (isThere) continue;
                LinePiece& one = line.pieces.emplace_back();
                one.from = from;
                one.to = to;
                one.span.first = begins[from];
                one.span.end = begins[to + 1];
                one.span.piece = piece;
                one.span.doubt = atoms[begins[from]].boundary;
                for (std::size_t i = begins[from] + 1; i < begins[to + 1]; ++i)
                    one.span.doubt += atoms[i].noBoundary;
            }
        }
        stableSort(line.pieces.begin(), line.pieces.end(),
                   [](const LinePiece& a, const LinePiece& b) { return a.span.first < b.span.first; });
    }

    // The pieces of all lines, one behind the other.
    std::vector<TextPiece> textPieces() {
        std::vector<TextPiece> result;
        spans_.clear();
        last_ = 0;
        for (const Line& line : lines_) {
            const std::size_t begin = last_;
            for (const LinePiece& one : line.pieces) {
                result.push_back(textPiece(line, one));
                result.back().from += begin;
                result.back().to += begin;
                last_ = std::max(last_, result.back().to);
                spans_.emplace_back(&line, &one.span);
            }
        }
        return result;
    }

    TextPiece textPiece(const Line& line, const LinePiece& one) const {
        const Span& span = one.span;
        const Origin origin = originOf(line, one);
        const bool isSized = origin == Origin::Found && isCharacterSized(span.piece.box, line.metrics);
        const bool isPart = origin == Origin::Cut && lacksCharacters_;
        const float isAny = std::log(std::max(1e-6f, 1 - std::exp(span.likelihoods[kNoCharacter])));
        const auto value = [&](float likely) {
            return isPart ? std::max(kLeastCut, likely - isAny) + std::max(kMostHalf, isAny) : likely;
        };
        const float doubt = (origin == Origin::Cut ? kCutDoubtShare : 1) * span.doubt +
                            (origin == Origin::LeftOut ? kLeftOutDoubt : 0);
        TextPiece result;
        result.from = span.first;
        result.to = span.end;
        const float least = origin == Origin::Found ? kLeastFound : kLeastOther;
        for (const Kind& kind : kinds_)
            result.as.push_back((kind.empty() ? isSized ? kUnknownFound : kUnknownOther
                                              : std::max(least, value(asKind(span.likelihoods, kind)))) -
                                doubt);
        result.asOther = std::max(isSized ? kUnknown : kNever, value(whole(span.likelihoods))) - doubt;
        if (origin == Origin::Found)
            result.asDirt = span.likelihoods[kNoCharacter] - dirtDoubt(line.boundaries, span.piece.box);
        if (origin == Origin::LeftOut) result.asDirt = 0;
        return result;
    }

    std::vector<Segmentation> views_;
    std::vector<Line> lines_;
    std::vector<std::size_t> text_;  // the kind of each character
    std::vector<Kind> kinds_;
    bool lacksCharacters_ = false;  // the views have fewer than the text
    // Of what textPieces() gave last: the place behind all of them, and what each is.
    std::size_t last_ = 0;
    std::vector<std::pair<const Line*, const Span*>> spans_;
};

}  // namespace

std::optional<TextDivision> divideByText(std::span<const Segmentation* const> views,
                                         std::span<const std::string> text) {
    const bool isEmpty = std::all_of(views.begin(), views.end(),
                                     [](const Segmentation* view) { return view->glyphs.empty(); });
    if (isEmpty || text.empty()) return std::nullopt;
    return Alignment(views, text).division();
}

}  // namespace dravik::engine
