#include "engine/recogniser/TextAlignment.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

#include "engine/recogniser/LeftOutPieces.h"
#include "engine/recogniser/LineLattice.h"
#include "engine/recogniser/TextPath.h"
#include "engine/segmentation/OtherSize.h"

namespace dravik::engine {
namespace {

float env(const char* n, float d) { const char* v = std::getenv(n); return v ? std::strtof(v, nullptr) : d; }

// A found character is at least so likely any, as a logarithm, and so is a piece of another cut; those that
// the recogniser does not know are so likely.
const float kLeastFound = env("LF", -4.5f), kLeastOther = env("LO", -8), kUnknownFound = -2, kUnknownOther = -4;
// By how much surer, as a logarithm, a piece must be that was left out.
const float kLeftOutDoubt = env("LD", 1);
// What an error of the text counts where only the places are to be found that are in doubt.
constexpr float kErrorCost = 3;
// What is likelier than this is the character that the text says.
constexpr float kClear = 0.5f, kPerhaps = 0.02f;
constexpr std::size_t kMostJoined = 3;
constexpr float kMostRoom = 0.3f, kMostJoinedWidth = 1.6f;
// So many characters beside one in doubt are in doubt too.
constexpr std::size_t kBeside = 1;

struct Line {
    std::size_t view = 0;
    int number = 0;
    std::size_t from = 0, to = 0;  // characters of the view
    LineMetrics metrics;
    std::vector<PatchLikelihoods> first;
    std::vector<bool> isLeftOut, isDoubtful;
    std::vector<Span> spans;
    std::vector<std::size_t> characterOf;  // each span its first character, from `from` on
    std::vector<std::size_t> lastOf;
};

class Alignment {
  public:
    Alignment(std::span<const Segmentation* const> views, std::span<const std::string> text) {
        std::map<std::string, std::size_t> kinds;
        for (const std::string& one : text) {
            const auto [known, isNew] = kinds.try_emplace(one, kinds.size());
            text_.push_back(known->second);
            if (!isNew) continue;
            std::vector<std::size_t>& places = places_.emplace_back();
            std::vector<std::size_t>& others = otherCase_.emplace_back();
            for (std::size_t place = 0; place < kNoCharacter; ++place)
                if (const std::string_view other = kRecognisedCharacters.substr(place, 1);
                    one == other || areDrawnAlike(one, other))
                    places.push_back(place);
            // Some faces have no small letters.
            if (const char letter = one.front(); one.size() == 1 && std::isalpha(static_cast<unsigned char>(letter)))
                if (const auto place = recognisedPlace(std::string_view(std::string(1, static_cast<char>(letter ^ 32)))))
                    if (std::find(places.begin(), places.end(), *place) == places.end()) others.push_back(*place);
        }
        std::size_t found = 0;
        for (const Segmentation* view : views) {
            addView(*view);
            found += view->glyphs.size();
        }
        mayCut_ = found < text.size();
    }

    std::optional<TextDivision> division() {
        findDoubts();
        for (Line& line : lines_) findSpans(line);
        const std::vector<TextPiece> pieces = piecesOf();
        const auto exact = likeliestPath(pieces, last_, text_, TextErrors::None);
        if (!exact) return std::nullopt;
        TextDivision result;
        result.characters.resize(views_.size());
        result.likelihood = exact->value;
        const auto other = likeliestPath(pieces, last_, text_, TextErrors::One);
        result.withError = other ? static_cast<double>(other->value) : -1e9;
        std::size_t agreeing = 0;
        if (std::getenv("DBG2")) for (const TextStep& step : exact->steps) if (step.is == TextStep::Is::Dirt) std::fprintf(stderr, "  dirt x %.0f leftout %d\n", spans_[step.piece].second->piece.box.left, pieces[step.piece].asDirt == 0);
        for (const TextStep& step : exact->steps) {
            if (step.is != TextStep::Is::Character) continue;
            const auto& [line, span] = spans_[step.piece];
            if (std::getenv("DBG2")) std::fprintf(stderr, "  [%zu]'%c' P=%.2f none=%.2f best=%c doubt=%.1f%s x %.0f-%.0f\n", step.character, kRecognisedCharacters[places_[text_[step.character]].empty() ? 0 : places_[text_[step.character]][0]], likelihood(span->likelihoods, text_[step.character]), span->likelihoods[kNoCharacter], kRecognisedCharacters[std::max_element(span->likelihoods.begin(), span->likelihoods.end()-1) - span->likelihoods.begin()], span->doubt, span->asFound ? "" : " NEW", span->piece.box.left, span->piece.box.right);
            agreeing += likelihood(span->likelihoods, text_[step.character]) > std::log(kPerhaps) ? 1 : 0;
            result.characters[line->view].push_back({span->piece, line->number});
        }
        result.agreement = static_cast<double>(agreeing) / static_cast<double>(text_.size());
        return result;
    }

  private:
    // How likely it is to be a character of this kind or one that is drawn alike; 0 for any that the
    // recogniser does not know.
    float likelihood(const PatchLikelihoods& of, std::size_t kind) const {
        float most = places_[kind].empty() ? 0 : kNever;
        for (const std::size_t place : places_[kind]) most = std::max(most, of[place]);
        for (const std::size_t place : otherCase_[kind]) most = std::max(most, of[place] - 1);
        return most;
    }

    float cutLikelihood(const PatchLikelihoods& of, std::size_t kind) const { return cutValue(of, likelihood(of, kind)); }
    static float cutValue(const PatchLikelihoods& of, float as) {
        static const float none = env("NB", -2), floor = env("LC", -6);
        const float isAny = std::log(std::max(1e-6f, 1 - std::exp(of[kNoCharacter])));
        return std::max(floor, as - isAny) + std::max(none, isAny);
    }

    void addView(const Segmentation& found) {
        Segmentation view = found;
        view.glyphs.clear();
        std::vector<std::vector<Piece>> leftOut = leftOutPieces(found);
        for (std::size_t from = 0; from < found.glyphs.size();) {
            Line line;
            line.view = views_.size();
            line.number = found.glyphs[from].line;
            line.from = view.glyphs.size();
            std::size_t to = from;
            std::vector<Piece>& others = leftOut[static_cast<std::size_t>(line.number)];
            auto other = others.begin();
            const auto addOthers = [&](float before) {
                for (; other != others.end() && other->box.left < before; ++other) {
                    view.glyphs.push_back({std::move(*other), line.number});
                    line.isLeftOut.push_back(true);
                }
            };
            for (; to < found.glyphs.size() && found.glyphs[to].line == line.number; ++to) {
                addOthers(found.glyphs[to].piece.box.left);
                view.glyphs.push_back(found.glyphs[to]);
                line.isLeftOut.push_back(false);
            }
            addOthers(1e9f);
            line.to = view.glyphs.size();
            lines_.push_back(std::move(line));
            from = to;
        }
        views_.push_back(std::move(view));
        for (Line& line : lines_)
            if (line.view + 1 == views_.size()) measure(line);
    }

    // In the size in which its characters are likelier to be any of the text.
    void measure(Line& line) const {
        const Segmentation& view = views_[line.view];
        line.metrics = view.lines[static_cast<std::size_t>(line.number)];
        line.first = lineLikelihoods(view, line.from, line.to, line.metrics);
        const std::optional<OtherSize> other = otherSize(view.lines, line.metrics);
        if (!other) return;
        const auto value = [&](const std::vector<PatchLikelihoods>& likelihoods) {
            double sum = 0;
            for (std::size_t i = 0; i < likelihoods.size(); ++i) {
                if (line.isLeftOut[i]) continue;
                float most = kLeastFound;
                for (const std::size_t kind : text_) most = std::max(most, likelihood(likelihoods[i], kind));
                sum += static_cast<double>(most);
            }
            return sum;
        };
        LineMetrics smaller = line.metrics;
        smaller.capHeight = other->capHeight;
        std::vector<PatchLikelihoods> asSmaller = lineLikelihoods(view, line.from, line.to, smaller);
        if (value(asSmaller) - other->doubt <= value(line.first)) return;
        line.metrics = smaller;
        line.first = std::move(asSmaller);
    }

    // What the found characters are, where the text has any errors: those at errors, and those that are not
    // what the text says, are in doubt.
    void findDoubts() {
        for (Line& line : lines_) {
            line.isDoubtful = line.isLeftOut;
            for (std::size_t i = 0; i < line.first.size(); ++i) {
                Span& span = line.spans.emplace_back();
                span.first = i;
                span.end = i + 1;
                span.piece.box = views_[line.view].glyphs[line.from + i].piece.box;
                span.asFound = true;
                span.likelihoods = line.first[i];
            }
        }
        const std::vector<TextPiece> pieces = piecesOf();
        const auto path = likeliestPath(pieces, last_, text_, TextErrors::Any, kErrorCost);
        std::vector<std::pair<Line*, std::size_t>> all;
        for (Line& line : lines_)
            for (std::size_t i = 0; i < line.first.size(); ++i) all.emplace_back(&line, i);
        std::vector<bool> isDoubtful(all.size(), !path);
        if (path) {
            std::size_t place = 0;
            const auto doubt = [&](std::size_t at) {
                const auto isFound = [&](std::size_t i) { return !all[i].first->isLeftOut[all[i].second]; };
                std::size_t begin = at, end = at;
                for (std::size_t found = 0; begin > 0 && found < kBeside; found += isFound(begin) ? 1 : 0)
                    --begin;
                for (std::size_t found = 0; end + 1 < all.size() && found < kBeside;
                     found += isFound(end) ? 1 : 0)
                    ++end;
                for (std::size_t i = begin; i <= end; ++i) isDoubtful[i] = true;
            };
            for (const TextStep& step : path->steps) {
                using Is = TextStep::Is;
                if (step.is == Is::NotPrinted) {
                    doubt(std::min(place, all.size() - 1));
                    if (place > 0) doubt(place - 1);
                    continue;
                }
                const bool isLeftOut = all[place].first->isLeftOut[all[place].second];
                const bool isClear =
                    step.is == Is::Character
                        ? likelihood(all[place].first->first[all[place].second], text_[step.character]) >
                              std::log(kClear)
                        : step.is == Is::Dirt && isLeftOut;
                if (!isClear) doubt(place);
                ++place;
            }
        }
        for (std::size_t i = 0; i < all.size(); ++i)
            if (isDoubtful[i]) all[i].first->isDoubtful[all[i].second] = true;
    }

    void findSpans(Line& line) {
        const Segmentation& view = views_[line.view];
        std::vector<Atom> atoms = atomsOf(view, line.from, line.to, line.isDoubtful, line.metrics, mayCut_);
        line.spans = spansOf(atoms, line.isDoubtful, view.frame, line.metrics.capHeight);
        addJoined(line, atoms);
        std::vector<CharacterPatch> patches;
        for (const Span& span : line.spans)
            if (!span.asFound)
                patches.push_back(characterPatch(view.ink, view.frame, span.piece, line.metrics));
        const std::vector<PatchLikelihoods> others = patchLikelihoods(patches);
        auto other = others.begin();
        for (Span& span : line.spans)
            span.likelihoods = span.asFound ? line.first[atoms[span.first].character] : *other++;
        // A span of one found character is told by `asFound` and its number from here on.
        line.characterOf.clear();
        line.lastOf.clear();
        for (const Span& span : line.spans) {
            line.characterOf.push_back(atoms[span.first].character);
            line.lastOf.push_back(atoms[span.end - 1].character);
        }
    }

    // Found characters, joined whole, as far as they are not among the spans: one that was cut has many atoms.
    void addJoined(Line& line, const std::vector<Atom>& atoms) const {
        const Segmentation& view = views_[line.view];
        const float cap = line.metrics.capHeight;
        std::vector<std::size_t> begins;
        for (std::size_t i = 0; i < atoms.size(); ++i)
            if (i == 0 || atoms[i].character != atoms[i - 1].character) begins.push_back(i);
        begins.push_back(atoms.size());
        for (std::size_t from = 0; from + 1 < begins.size(); ++from) {
            Piece piece = view.glyphs[line.from + from].piece;
            for (std::size_t to = from + 1; to < from + kMostJoined && to + 1 < begins.size(); ++to) {
                const Piece& next = view.glyphs[line.from + to].piece;
                if (!line.isDoubtful[to - 1] && !line.isDoubtful[to]) break;
                if (next.box.left - piece.box.right > kMostRoom * cap ||
                    next.box.right - piece.box.left > kMostJoinedWidth * cap)
                    break;
                piece.join(Piece(next));
                piece.measure(view.frame);
                if (std::any_of(line.spans.begin(), line.spans.end(), [&](const Span& span) {
                        return span.first == begins[from] && span.end == begins[to + 1];
                    }))
                    continue;
                Span& span = line.spans.emplace_back();
                span.first = begins[from];
                span.end = begins[to + 1];
                span.piece = piece;
                span.doubt = static_cast<float>(to - from);
            }
        }
        std::stable_sort(line.spans.begin(), line.spans.end(),
                         [](const Span& a, const Span& b) { return a.first < b.first; });
    }

    // All lines, one behind the other.
    std::vector<TextPiece> piecesOf() {
        std::vector<TextPiece> result;
        spans_.clear();
        last_ = 0;
        for (Line& line : lines_) {
            std::size_t end = last_;
            for (std::size_t i = 0; i < line.spans.size(); ++i) {
                const Span& span = line.spans[i];
                const std::size_t character = line.characterOf.empty() ? span.first : line.characterOf[i];
                const bool isLeftOut = span.asFound && line.isLeftOut[character];
                const bool isSized = span.asFound && !isLeftOut && isCharacterSized(span.piece.box, line.metrics);
                TextPiece& piece = result.emplace_back();
                const bool isJoined = !line.characterOf.empty() && !span.asFound && line.lastOf[i] != character;
                piece.from = last_ + span.first;
                piece.to = last_ + span.end;
                end = std::max(end, piece.to);
                static const float cd = env("CD", 1);
                const float doubt = (span.asFound || isJoined ? 1 : cd) * span.doubt + (isLeftOut ? kLeftOutDoubt : 0);
                for (std::size_t kind = 0; kind < places_.size(); ++kind)
                    piece.as.push_back(
                        (places_[kind].empty()
                             ? (isSized ? kUnknownFound : kUnknownOther)
                             : span.asFound || isJoined || !mayCut_
                             ? std::max(likelihood(span.likelihoods, kind), span.asFound && !isLeftOut ? kLeastFound : kLeastOther)
                             : cutLikelihood(span.likelihoods, kind)) -
                        doubt);
                piece.asOther = std::max(isSized ? kUnknown : kNever, span.asFound || isJoined || !mayCut_ ? whole(span.likelihoods) : cutValue(span.likelihoods, whole(span.likelihoods))) - doubt;
                if (span.asFound)
                    piece.asDirt = isLeftOut ? 0 : span.likelihoods[kNoCharacter] - kDirtDoubt;
                spans_.emplace_back(&line, &span);
            }
            last_ = end;
        }
        return result;
    }

    std::vector<Segmentation> views_;  // what was left out stands among their characters
    std::vector<Line> lines_;
    std::vector<std::size_t> text_;                 // kinds
    std::vector<std::vector<std::size_t>> places_;  // of each kind, those that it may be taken for
    std::vector<std::vector<std::size_t>> otherCase_;
    bool mayCut_ = false;
    std::size_t last_ = 0;
    std::vector<std::pair<const Line*, const Span*>> spans_;  // of the pieces
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
