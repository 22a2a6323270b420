// Ends the program when the system or the session asks for it by a signal. Nobody is asked then: what is not
// saved is written already and is there again at the next start.
#pragma once

#include <QObject>
#include <functional>

namespace dravik::qt {

class EndSignals : public QObject {
  public:
    // On SIGTERM, SIGHUP and SIGINT `before` is called on the thread that this object was made on, and then
    // the process ends by that signal, with nothing unwound. A second signal ends it at once. One such object
    // at a time.
    explicit EndSignals(std::function<void()> before);
    ~EndSignals() override;

  private:
    void answer();

    const std::function<void()> before_;
};

}  // namespace dravik::qt
