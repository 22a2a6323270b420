// The failure of an action that is to fail.
#pragma once

#include "base/Failure.h"

namespace dravik::test {

// Its Failure; one of the number 0 when there was none.
template <typename Action>
Failure failureOfAction(Action action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure;
    }
    return Failure(0, "no failure");
}

template <typename Action>
std::int32_t refusal(Action action) {
    return failureOfAction(action).number();
}

}  // namespace dravik::test
