// A camera to test with, and waiting for what it does.
#pragma once
#include "support/Testing.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace dravik::test {

using namespace std::chrono_literals;

// The library's own camera, a program that answers on the loopback interface as one in the network does.
class FakeCamera {
  public:
    explicit FakeCamera(std::string serial) : serial_(std::move(serial)) { start(); }
    FakeCamera(const FakeCamera&) = delete;
    FakeCamera& operator=(const FakeCamera&) = delete;
    ~FakeCamera() { stop(); }

    void start() {
        const char* arguments[] = {"arv-fake-gv-camera-0.8", "-i",   "127.0.0.1", "-s",
                                   serial_.c_str(),          nullptr};
        ASSERT_EQ(posix_spawnp(&process_, arguments[0], nullptr, nullptr, const_cast<char* const*>(arguments),
                               environ),
                  0)
            << "the package aravis-tools is missing";
    }
    // As when the cable is pulled.
    void stop() {
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = 0;
    }

  private:
    std::string serial_;
    pid_t process_ = 0;
};

template <class Condition>
bool within(std::chrono::seconds limit, Condition condition) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

}  // namespace dravik::test
