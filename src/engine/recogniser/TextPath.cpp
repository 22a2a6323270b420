#include "engine/recogniser/TextPath.h"

#include <algorithm>
#include <cstdint>

namespace dravik::engine {
namespace {

// Places between pieces times characters of the text.
constexpr std::size_t kMostCells = 4'000'000;

using Is = TextStep::Is;

// How the best way to a cell ends: with which piece, and what that is.
struct Last {
    float value = kNever;
    std::uint32_t piece = 0;
    Is is = Is::Character;
};

class Search {
  public:
    Search(std::span<const TextPiece> pieces, std::size_t last, std::span<const std::size_t> text,
           TextErrors errors, float errorCost)
        : pieces_(pieces),
          last_(last),
          text_(text),
          errors_(errors),
          errorCost_(errorCost),
          cells_((errors == TextErrors::One ? 2 : 1) * (last + 1) * (text.size() + 1)) {}

    std::optional<TextPath> best() {
        cell(0, 0, 0).value = 0;
        auto piece = pieces_.begin();
        for (std::size_t place = 0; place <= last_; ++place) {
            if (errors_ != TextErrors::None) passUnprinted(place);
            for (; piece != pieces_.end() && piece->from == place; ++piece)
                for (std::size_t layer = 0; layer < layers(); ++layer) go(*piece, layer);
        }
        std::size_t layer = layers() - 1, place = last_, character = text_.size();
        TextPath path{cell(layer, place, character).value, {}};
        if (path.value <= kNever) return std::nullopt;
        while (place > 0 || character > 0) {
            const Last& last = cell(layer, place, character);
            if (last.is == Is::Character || last.is == Is::NotPrinted) --character;
            if (last.is != Is::NotPrinted) place = pieces_[last.piece].from;
            if (layer > 0 && isError(last.is)) --layer;
            path.steps.push_back({last.is, last.piece, character});
        }
        std::reverse(path.steps.begin(), path.steps.end());
        return path;
    }

  private:
    std::size_t layers() const noexcept { return errors_ == TextErrors::One ? 2 : 1; }
    static bool isError(Is is) noexcept { return is == Is::Other || is == Is::NotPrinted; }
    Last& cell(std::size_t layer, std::size_t place, std::size_t character) {
        return cells_[(layer * (last_ + 1) + place) * (text_.size() + 1) + character];
    }
    static void improve(Last& cell, float value, std::size_t piece, Is is) {
        if (value > cell.value) cell = {value, static_cast<std::uint32_t>(piece), is};
    }

    // Where there may be one error, the second layer is of the ways that have made it.
    void passUnprinted(std::size_t place) {
        const std::size_t to = layers() - 1;
        for (std::size_t i = 0; i < text_.size(); ++i)
            if (const float value = cell(0, place, i).value; value > kNever)
                improve(cell(to, place, i + 1), value - errorCost_, 0, Is::NotPrinted);
    }

    void go(const TextPiece& piece, std::size_t layer) {
        const std::size_t number = static_cast<std::size_t>(&piece - pieces_.data());
        const bool mayErr = piece.asOther > kNever &&
                            (errors_ == TextErrors::Any || (errors_ == TextErrors::One && layer == 0));
        for (std::size_t i = 0; i <= text_.size(); ++i) {
            const float before = cell(layer, piece.from, i).value;
            if (before <= kNever) continue;
            if (i < text_.size())
                if (const float as = piece.as[text_[i]]; as > kNever)
                    improve(cell(layer, piece.to, i + 1), before + as, number, Is::Character);
            if (piece.asDirt > kNever)
                improve(cell(layer, piece.to, i), before + piece.asDirt, number, Is::Dirt);
            if (mayErr)
                improve(cell(layers() - 1, piece.to, i), before + piece.asOther - errorCost_, number,
                        Is::Other);
        }
    }

    const std::span<const TextPiece> pieces_;
    const std::size_t last_;
    const std::span<const std::size_t> text_;
    const TextErrors errors_;
    const float errorCost_;
    std::vector<Last> cells_;
};

}  // namespace

std::optional<TextPath> likeliestPath(std::span<const TextPiece> pieces, std::size_t last,
                                      std::span<const std::size_t> text, TextErrors errors, float errorCost) {
    if ((last + 1) * (text.size() + 1) > kMostCells) return std::nullopt;
    return Search(pieces, last, text, errors, errorCost).best();
}

}  // namespace dravik::engine
