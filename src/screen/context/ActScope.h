// The time that an act of the operator takes. Procedures call one another, so the outermost scope is the act
// and tells of it at its end; those inside add what they did to it.
#pragma once

#include <string>
#include <vector>

#include "screen/context/OperatorAct.h"

namespace dravik::screen {

struct ScreenContext;

class ActScope {
  public:
    // The context outlives the scope.
    ActScope(ScreenContext& context, OperatorAct::Kind kind, std::string subject = {});
    ActScope(const ActScope&) = delete;
    ActScope& operator=(const ActScope&) = delete;
    // Fires ScreenContext::actEnded when the tool was changed; a subscriber's failure is reported.
    ~ActScope();

    // The tool was changed. An act that changed nothing is not told.
    void changed();
    // What was changed has been taken back.
    void takenBack();
    // A sample of the character was included or deleted.
    void sample(const std::string& character);
    // Another set of characters was given to the font.
    void characterSet(const std::vector<std::string>& set);
    // The act began earlier than this scope, with the screen in that state.
    void begunIn(ScreenState before);

  private:
    ScreenContext& context_;
    ActScope* const outer_;
    ActScope& act_;  // the outermost scope
    OperatorAct told_;
    bool changed_ = false;
};

}  // namespace dravik::screen
