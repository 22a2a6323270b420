// What only the system can do for the program's window: file dialogs, the clipboard, the browser, cameras,
// what is remembered from one run to the next, and the colours of all windows.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "camera/Camera.h"
#include "engine/image/GreyImage.h"

namespace dravik::trainer {

struct FileFilter {
    std::string name;
    std::vector<std::string> patterns;  // "*.png"
};

// Which files or folder the operator is to choose.
struct FileQuestion {
    std::string title;
    std::string folder;  // where the dialog starts; "" leaves it to the system
    bool asksForFolder = false;
    std::vector<FileFilter> filters;
    std::string fileName{};  // proposed for a new file
};

enum class Theme { System, Light, Dark };

// Under which the folder is kept that files were last chosen in.
constexpr char kFolderKey[] = "folder";

class WindowSystem {
  public:
    WindowSystem() = default;
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;
    virtual ~WindowSystem() = default;

    // The paths chosen, of a folder just its own; none when the operator cancels.
    virtual std::vector<std::string> choosePaths(const FileQuestion& question) = 0;
    // The path of a file to write; the dialog has asked before an existing one is given. "" when the operator
    // cancels.
    virtual std::string chooseNewFile(const FileQuestion& question) = 0;
    // The files on the clipboard; of a picture there `newFile`, to which it is written as PNG. None when
    // there is neither. Raises a failure when the file cannot be written.
    virtual std::vector<std::string> clipboardImages(const std::string& newFile) = 0;
    // A text that was kept under that key, also in an earlier run; "" when there is none.
    virtual std::string kept(const std::string& key) const = 0;
    virtual void keep(const std::string& key, const std::string& text) = 0;
    // The colours of all windows from now on.
    virtual void showTheme(Theme theme) = 0;
    // Whether makeCamera() gives one and writeImage() writes.
    virtual bool hasCameras() const { return false; }
    virtual std::unique_ptr<camera::Camera> makeCamera() { return nullptr; }
    // As PNG; raises a failure when the file cannot be written.
    virtual void writeImage(const engine::GreyImage&, const std::string&) {}
    // Shows the operator guide in the system's browser; false when it is not installed or nothing can show
    // it.
    virtual bool showGuide() = 0;
    // The operator wants to end the program.
    virtual void closeWindow() = 0;
};

}  // namespace dravik::trainer
