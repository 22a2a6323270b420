// The system's dialogs to choose image files and a folder of them. COM is initialized on the thread.
#pragma once

#include <string>
#include <vector>

namespace dravik::app {

// Empty when the operator cancels; paths are UTF-8. `folder` is where the dialog starts and becomes where it
// ended.
std::vector<std::string> chooseImages(HWND owner, std::wstring& folder);
std::string chooseFolder(HWND owner, std::wstring& folder);

}  // namespace dravik::app
