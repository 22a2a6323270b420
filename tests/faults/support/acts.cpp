// Works the embedded tool on a jobs folder as an operator does, step by step; see OperatorSession.h.
//   fault-acts JOBS session STEP..., show
#include <span>

#include "OperatorSession.h"

int main(int count, char** words) {
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (arguments.size() < 3) return 2;
    try {
        dravik::test::OperatorSession session(arguments[1]);
        if (arguments[2] == std::string_view("session"))
            return session.work({arguments.begin() + 3, arguments.end()}) ? 0 : 1;
        session.show();
    } catch (...) {
        std::cerr << "fault-acts: " << dravik::currentFailure().description() << '\n';
        return 1;
    }
    return 0;
}
