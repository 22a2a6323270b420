// What the screen remembers of includes.
#pragma once

#include <string>

namespace dravik::screen {

struct IncludeState {
    std::string m_PendingInclude;  // the trimmed text of the include in progress
    std::string m_LastInclude;     // the text of the last completed include, which Undo removes
    std::string m_IncludedChars;   // every text included since the font was loaded, joined
};

}  // namespace dravik::screen
