// What a screen reader calls the surfaces that are drawn by hand.
#pragma once

namespace dravik::qt {

// From the first call on; more calls do nothing.
void installAccessibleRoles();

}  // namespace dravik::qt
