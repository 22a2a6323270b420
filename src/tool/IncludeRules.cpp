#include "tool/IncludeRules.h"

#include <cmath>

#include "base/Conversions.h"
#include "base/Text.h"

namespace dravik::tool {
namespace {

constexpr int kFirstFeatureColumn = 5;

// Negative, or a number that reads "1.#INF" or the like.
bool isInvalidFeature(const Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) return !std::isfinite(*number) || *number < 0;
    const std::string text = cellText(cell);
    return leadingNumber(text) < 0 || text.find('#') != std::string::npos;
}

}  // namespace

std::string textToInclude(std::string_view typed) {
    return trimmed(typed);
}

FoundSamples foundSamples(const RecordTablePtr& samples) {
    FoundSamples found;
    for (int row = 1; samples && row <= samples->upperRow(); ++row) {
        const std::string character = samples->character(row);
        double sum = 0;
        for (int column = kFirstFeatureColumn; column <= samples->upperColumn(); ++column) {
            const Cell cell = samples->cell(row, column);
            if (isInvalidFeature(cell)) {
                found.invalid = character;
                return found;
            }
            const auto* number = std::get_if<double>(&cell);
            sum += number ? *number : leadingNumber(cellText(cell));
        }
        if (sum > 0) found.characters += character;
    }
    return found;
}

bool countsMatch(std::string_view text, std::string_view found) {
    return characterCount(text) == characterCount(found);
}

std::string missingCharacters(const std::vector<std::string>& samples, std::string_view characterSet) {
    std::string missing;
    for (const std::string& character : samples)
        if (!contains(characterSet, character) && !contains(missing, character)) missing += character;
    return missing;
}

}  // namespace dravik::tool
