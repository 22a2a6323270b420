#include "qt/EndSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <utility>

#include "qt/Guard.h"

namespace dravik::qt {
namespace {

constexpr std::array<int, 3> kSignals = {SIGTERM, SIGHUP, SIGINT};

// Through it a signal comes to the event loop: the number of the signal, as one byte.
std::array<int, 2> thePipe = {-1, -1};

void pass(int number) {
    const auto byte = static_cast<char>(number);
    static_cast<void>(!write(thePipe[1], &byte, 1));
}

}  // namespace

EndSignals::EndSignals(std::function<void()> before) : before_(std::move(before)) {
    if (pipe2(thePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    auto* notifier = new QSocketNotifier(thePipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { answer(); });
    struct sigaction action {};
    action.sa_handler = pass;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : kSignals) {
        struct sigaction present {};
        // What whoever started the program has it ignore, such as nohup, stays ignored.
        if (sigaction(number, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    for (const int number : kSignals) std::signal(number, SIG_DFL);
    for (int& side : thePipe) {
        if (side >= 0) close(side);
        side = -1;
    }
}

void EndSignals::answer() {
    char number = 0;
    if (read(thePipe[0], &number, 1) != 1) return;
    guarded(before_);
    std::signal(number, SIG_DFL);
    raise(number);
}

}  // namespace dravik::qt
