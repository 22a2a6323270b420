// DravikPictures: pictures of the trainer's window on Windows.
#include <ole2.h>

#include <string>
#include <vector>

#include "drivers/pictures/Pictures.h"
#include "drivers/win32/DialogScript.h"
#include "drivers/win32/Win32WindowDriver.h"
#include "support/TemporaryFolder.h"
#include "windows/app/Program.h"
#include "windows/win32/WinText.h"

int wmain(int count, wchar_t** words) {
    using namespace dravik;
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(win32::utf8(words[i]));
    if (FAILED(OleInitialize(nullptr))) return 1;
    int status = 0;
    {
        const TemporaryFolder own;
        test::DialogScript
            ending;  // outlives the screen, which asks about a changed font when a session broke off
        app::Program program(app::Settings(), JobFolder(own.path("Jobs")), false);
        test::Win32WindowDriver driver(program.window());
        status = test::makePictures(arguments, driver, program.trainer());
        ending.answerOthers(IDNO);
        program.window().close();
    }
    OleUninitialize();
    return status;
}
