// The one boundary between the models and Qt: no exception of a procedure may reach Qt's event loop.
#pragma once

#include <QDebug>
#include <utility>

#include "base/Failure.h"

namespace dravik::qt {

// Runs `body`; what it throws is written to Qt's log. False when it threw.
template <class Body>
bool guarded(Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        const Failure failure = currentFailure();
        qWarning("Unhandled failure %d: %s", static_cast<int>(failure.number()), failure.what());
        return false;
    }
}

}  // namespace dravik::qt
