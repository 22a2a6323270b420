// DravikTrainer.exe: headless commands, the window, or a scripted session in the window.
#include "windows/win32/Windows.h"
// Behind the Windows headers
#include <ole2.h>
#include <shellapi.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Failure.h"
#include "base/Paths.h"
#include "base/TemporaryFolder.h"
#include "trainer/commands/Arguments.h"
#include "trainer/commands/CommandLine.h"
#include "windows/app/Console.h"
#include "windows/app/MainWindow.h"
#include "windows/app/Wildcards.h"
#include "windows/app/Win32DemoHands.h"
#include "windows/com/WicImage.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/Win32Platform.h"
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

// To whoever reads the program's messages, else in a box.
int complain(const std::string& problem, int code) {
    std::cerr << "dravik-trainer: " << problem << std::endl;
    const HANDLE handle = GetStdHandle(STD_ERROR_HANDLE);
    if ((!handle || handle == INVALID_HANDLE_VALUE) && !GetConsoleWindow())
        ::MessageBoxW(nullptr, win32::wide(problem).c_str(), L"Dravik Trainer", MB_ICONERROR);
    return code;
}

// The sample parts that the guide's pictures show, beside the program: all but the last teach.
std::vector<std::string> guideParts() {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    const auto parts = std::filesystem::path(program).parent_path() / "parts";
    std::vector<std::string> paths;
    for (const char* number : {"0", "1", "2"})
        paths.push_back(fromPath(parts / "rendered_charset" / (std::string("hack_00") + number + ".png")));
    for (const char* number : {"1", "2", "3", "4", "5", "6", "7", "0"})
        paths.push_back(fromPath(parts / "rendered_lines" / (std::string("hack_00") + number + ".png")));
    return paths;
}

// The window with the trainer that it shows.
class Program {
  public:
    Program(Settings settings, const JobFolder& jobs, bool remembersFont) : window(std::move(settings)) {
        platform_.owner = [this] { return window.window(); };
        trainer_.emplace(platform_, jobs, com::decodeImageFileByWic, remembersFont);
        window.fill(*trainer_, platform_);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() { window.clear(); }

    trainer::Trainer& trainer() noexcept { return *trainer_; }

    MainWindow window;

  private:
    win32::Win32Platform platform_;
    std::optional<trainer::Trainer> trainer_;
};

int runDemo(const std::string& folder, const trainer::WindowOptions& options,
            trainer::DemoSession::Kind kind) {
    std::filesystem::create_directories(toPath(folder));
    // A session that anyone can repeat touches neither the operator's fonts nor the window's remembered
    // place.
    const TemporaryFolder own;
    const JobFolder jobs(options.jobs.empty() ? own.path("Jobs") : options.jobs);
    DialogScript ending;  // outlives the screen, which asks about a changed font when a session broke off
    Program program(Settings(), jobs, false);
    int code = 0;
    try {
        const bool guide = kind == trainer::DemoSession::Kind::Guide && options.paths.empty();
        Win32DemoHands hands(program.window);
        trainer::DemoSession(hands, program.trainer(), folder, std::cout, kind)
            .run(guide ? guideParts() : options.paths);
    } catch (...) {
        code = complain("the session did not come out: " + currentFailure().description(), 1);
    }
    if (code == 0) std::cout << "Everything came out. Pictures are in " << folder << std::endl;
    ending.answerOthers(IDNO);
    program.window.close();
    return code;
}

int runWindow(const trainer::WindowOptions& options) {
    Program program(Settings(kSettingsKey), options.jobs.empty() ? JobFolder() : JobFolder(options.jobs),
                    true);
    program.window.show();
    if (!options.paths.empty()) program.window.open(options.paths);
    return program.window.run();
}

int run() {
    const Apartment apartment;
    std::vector<std::string> arguments = programArguments();
    useCallersConsole();
    if (trainer::isHeadlessCommand(arguments))
        return trainer::runHeadless(arguments, com::decodeImageFileByWic, std::cout, std::cerr,
                                    errIsConsole());
    const std::string demo = trainer::takeOption(arguments, "--demo");
    const std::string screenshots = trainer::takeOption(arguments, "--screenshots");
    const std::string dpi = trainer::takeOption(arguments, "--dpi");
    const trainer::WindowOptions options = trainer::windowOptions(arguments);
    if (!options.problem.empty()) return complain(options.problem, 2);
    std::unique_ptr<win32::DpiOverride> scale;
    if (!dpi.empty())
        scale = std::make_unique<win32::DpiOverride>(std::clamp(std::atoi(dpi.c_str()), 96, 480));
    if (!demo.empty()) return runDemo(demo, options, trainer::DemoSession::Kind::Story);
    if (!screenshots.empty()) return runDemo(screenshots, options, trainer::DemoSession::Kind::Guide);
    return runWindow(options);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    try {
        return run();
    } catch (...) {
        return complain(dravik::currentFailure().description(), 1);
    }
}
