// What makes an include good: the samples that the tool has made of the image hold valid features, are as
// many as the typed characters, and belong to the font's character set.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/RecordTable.h"

namespace dravik::tool {

// The text without what does not count: blanks at its ends.
std::string textToInclude(std::string_view typed);

struct FoundSamples {
    std::string characters;  // of the samples in their order; those whose features are all 0 do not count
    std::optional<std::string>
        invalid;  // the first character with an invalid feature; the later ones are not read
};

// The samples of a query with the fields kSampleFields; nothing stands for no samples. A feature is invalid
// when it is negative or no finite number. Raises Type mismatch (13) and Overflow (6) for a record without a
// character's code.
FoundSamples foundSamples(const RecordTablePtr& samples);

// True when every character of the text has its sample and every sample its character. Which character it is
// is not looked at: the tool has labelled them in order.
bool countsMatch(std::string_view text, std::string_view found);

// The samples' characters that are not in the font's set, each once, in the order in which they first appear.
std::string missingCharacters(const std::vector<std::string>& samples, std::string_view characterSet);

}  // namespace dravik::tool
