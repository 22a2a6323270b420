#include "tool/CaseRule.h"

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::tool {

CharacterCase fontCase(FontTool& tool) {
    const auto table = tool.GetSampleData(kAllTrained, kCharacterFields);
    bool upper = false;
    bool lower = false;
    for (int row = 1; table && row <= table->upperRow(); ++row) {
        const std::int32_t code = toInt32(table->number(row, 1));
        upper |= code >= 'A' && code <= 'Z';
        lower |= code >= 'a' && code <= 'z';
    }
    if (upper && lower) return CharacterCase::Mixed;
    if (upper) return CharacterCase::Upper;
    return lower ? CharacterCase::Lower : CharacterCase::None;
}

std::string inCase(std::string_view text, CharacterCase letters) {
    switch (letters) {
        case CharacterCase::Upper:
            return upperCase(text);
        case CharacterCase::Lower:
            return lowerCase(text);
        case CharacterCase::Mixed:
        case CharacterCase::None:
            break;
    }
    return std::string(text);
}

}  // namespace dravik::tool
