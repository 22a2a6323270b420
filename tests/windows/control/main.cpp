// The program of the control's tests: a single-threaded apartment with the control registered while the tests
// run.
#include "windows/control/support/Hosts.h"

#include <cstdio>
#include <exception>

#include "windows/control/support/Bench.h"
#include "windows/control/support/DistantTool.h"

int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == "--serve-tool")
        return dravik::test::serveTool(std::filesystem::path(argv[2]).wstring());
    ::testing::InitGoogleTest(&argc, argv);
    OleInitialize(nullptr);
    int result = 1;
    try {
        const auto& module = dravik::test::controlModule();
        if (FAILED(module.registerServer())) throw std::runtime_error("the control cannot be registered");
        result = RUN_ALL_TESTS();
        module.unregisterServer();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    }
    OleUninitialize();
    return result;
}
