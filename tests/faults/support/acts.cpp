// What the font manager does, without its window: works one act of the embedded tool on a jobs folder and
// says what went wrong as the program's commands do.
//   fault-acts JOBS new|delete|restore-deleted NAME, rename|duplicate NEW OLD, save-characters NAME
//   CHARACTERS, session STEP..., show
#include <iostream>
#include <span>
#include <string>

#include "OperatorSession.h"
#include "base/Failure.h"
#include "base/Text.h"
#include "engine/embedded/EmbeddedTool.h"

namespace {

void act(dravik::engine::EmbeddedTool& tool, const std::string& what, const std::string& first,
         const std::string& second) {
    if (what == "new") {
        tool.CreateFont(first);
        tool.SetCharacterSet({"A", "B"});
        tool.SaveFont(first);
    } else if (what == "delete") {
        tool.DeleteFont(first);
    } else if (what == "rename") {
        tool.RenameFont(first, second);
    } else if (what == "duplicate") {
        tool.DuplicateFont(first, second);
    } else if (what == "save-characters") {
        tool.LoadFont(first);
        tool.SetCharacterSet(dravik::characters(second));
        tool.SaveFont(first);
    } else {
        throw dravik::Failure(dravik::RuntimeError::InvalidProcedureCall, "There is no act " + what);
    }
}

}  // namespace

int main(int count, char** words) {
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (arguments.size() < 3) return 2;
    const std::string what = arguments[2];
    try {
        if (what == "session" || what == "show") {
            dravik::test::OperatorSession session(arguments[1]);
            if (what == "session") return session.work({arguments.begin() + 3, arguments.end()}) ? 0 : 1;
            session.show();
            return 0;
        }
        if (arguments.size() < 4) return 2;
        dravik::engine::EmbeddedTool tool{dravik::JobFolder(arguments[1])};
        act(tool, what, arguments[3], arguments.size() > 4 ? arguments[4] : "");
    } catch (...) {
        std::cerr << "fault-acts: " << dravik::currentFailure().description() << '\n';
        return 1;
    }
    return 0;
}
