#include "tool/FontHistory.h"

#include "base/TimeText.h"

namespace dravik::tool {

std::string recoveredText(const RecoveredChanges& found) {
    if (found.areInJournal)
        return found.font + ": changes that are not saved cannot be shown: " + found.problem;
    if (!found.problem.empty())
        return found.font + ": changes that had not been saved are not in the font, as " + found.problem +
               "; they are among its versions";
    const std::string first = localTimeText(found.first), last = localTimeText(found.last);
    const bool one = found.acts == 1;
    return found.font + ": " + (one ? std::string("1 change") : std::to_string(found.acts) + " changes") +
           " of " + first + (first == last ? "" : " to " + last) + " had not been saved; " +
           (one ? "it is" : "they are") + " in the font again";
}

}  // namespace dravik::tool
