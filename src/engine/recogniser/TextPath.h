// The best way through the pieces of some print that makes them the characters of a text, in their order.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace dravik::engine {

constexpr float kNever = -std::numeric_limits<float>::max();

// A piece that leads from one place between pieces to a later one. What it may be, as logarithms; kNever for
// what it cannot be.
struct TextPiece {
    std::size_t from = 0, to = 0;
    std::vector<float> as;   // each kind of character that the text has
    float asDirt = kNever;   // nothing of the text
    float asOther = kNever;  // a character that the text lacks
};

// How often the text may lack a character that is printed, or have one that is not.
enum class TextErrors { None, One, Any };

struct TextStep {
    enum class Is { Character, Dirt, Other, NotPrinted } is = Is::Character;
    std::size_t piece = 0;      // of all but NotPrinted
    std::size_t character = 0;  // of the text: which it is, or which one would come next
};

struct TextPath {
    float value = kNever;
    std::vector<TextStep> steps;
};

// From place 0 to `last`; `text` says of which kind each of its characters is. `pieces` are in the order of
// where they lead from, and leave each place before the last at least once. An error counts `errorCost`; with
// One, exactly one is made. Nothing when there is no such way, or the print is too large.
std::optional<TextPath> likeliestPath(std::span<const TextPiece> pieces, std::size_t last,
                                      std::span<const std::size_t> text, TextErrors errors,
                                      float errorCost = 0);

}  // namespace dravik::engine
