// DravikTrainer.exe: the commands, or the window.

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/Failure.h"
#include "trainer/commands/CommandLine.h"
#include "windows/app/Console.h"
#include "windows/app/Program.h"
#include "windows/app/Wildcards.h"
#include "windows/com/WicImage.h"
#include "windows/win32/WinText.h"

namespace {

using namespace dravik;
using namespace dravik::app;

constexpr wchar_t kSettingsKey[] = L"Software\\Dravik\\Dravik Trainer";

// The main thread's apartment, with what dropped files and the clipboard need.
class Apartment {
  public:
    Apartment() : ready_(SUCCEEDED(OleInitialize(nullptr))) {
        if (!ready_) throw Failure(RuntimeError::InternalError, "COM cannot be initialized");
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() { OleUninitialize(); }

  private:
    bool ready_;
};

std::vector<std::string> programArguments() {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(win32::utf8(words.get()[i]));
    return withoutWildcards(arguments);
}

trainer::CommandStreams streams() {
    return {std::cout, std::cerr, errIsConsole()};
}

// To whoever reads the program's messages, else in a box.
int complain(const std::string& problem, int code) {
    streams().problem(problem);
    const HANDLE handle = GetStdHandle(STD_ERROR_HANDLE);
    if ((!handle || handle == INVALID_HANDLE_VALUE) && !GetConsoleWindow())
        ::MessageBoxW(nullptr, win32::wide(problem).c_str(), L"Dravik Trainer", MB_ICONERROR);
    return code;
}

int runWindow(const trainer::WindowOptions& options) {
    Program program(Settings(kSettingsKey), options.folder, true);
    program.trainer().setPatience(trainer::kPatience);
    program.window().model().showTheme(options.theme);
    program.window().show();
    if (!options.paths.empty()) program.window().open(options.paths);
    return program.window().run();
}

int run() {
    // A library of somebody's in the folder of the file that was opened is none of the program's.
    SetDllDirectoryW(L"");
    const Apartment apartment;
    const auto line = trainer::parseCommandLine(programArguments());
    useCallersConsole();
    if (const auto* notice = std::get_if<trainer::Notice>(&line); notice && notice->status != 0)
        return complain(notice->text, notice->status);
    if (const auto* window = std::get_if<trainer::WindowOptions>(&line)) return runWindow(*window);
    return trainer::runCommand(line, com::decodeImageFileByWic, streams());
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    try {
        return run();
    } catch (...) {
        return complain(dravik::currentFailure().description(), 1);
    }
}
