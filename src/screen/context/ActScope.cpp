#include "screen/context/ActScope.h"

#include <utility>

#include "screen/context/ScreenContext.h"

namespace dravik::screen {

ActScope::ActScope(ScreenContext& context, OperatorAct::Kind kind, std::string subject)
    : context_(context), outer_(context.act), act_(outer_ ? outer_->act_ : *this) {
    context_.act = this;
    if (outer_) return;
    told_.kind = kind;
    told_.subject = std::move(subject);
    told_.before = context_.state();
    context_.actBegun();
}

ActScope::~ActScope() {
    context_.act = outer_;
    if (outer_ || !changed_) return;
    context_.procedures.run("", "ActEnded", [&] {
        told_.after = context_.state();
        context_.actEnded(told_);
    });
}

void ActScope::changed() {
    act_.changed_ = true;
}

void ActScope::takenBack() {
    act_.changed_ = false;
    act_.told_.characters.clear();
}

void ActScope::characterSet(const std::vector<std::string>& set) {
    act_.changed_ = true;
    if (act_.told_.kind == OperatorAct::Kind::CharacterSet) act_.told_.characters = set;
}

void ActScope::begunIn(ScreenState before) {
    act_.told_.before = std::move(before);
}

void ActScope::sample(const std::string& character) {
    act_.changed_ = true;
    act_.told_.characters.push_back(character);
}

}  // namespace dravik::screen
