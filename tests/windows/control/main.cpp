// The program of the control's tests: a single-threaded apartment with the control registered while the tests
// run.
#include "windows/control/support/Bench.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    return dravik::test::withRegisteredControl([] { return RUN_ALL_TESTS(); });
}
