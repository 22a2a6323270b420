// The program of the control's tests: a single-threaded apartment with the control registered while the tests
// run.
#include "windows/control/support/Bench.h"
#include "windows/control/support/DistantTool.h"

int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == "--serve-tool")
        return dravik::test::serveTool(std::filesystem::path(argv[2]).wstring());
    ::testing::InitGoogleTest(&argc, argv);
    return dravik::test::withRegisteredControl([] { return RUN_ALL_TESTS(); });
}
