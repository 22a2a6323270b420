#include "windows/app/OpenDialogs.h"

#include <shlobj.h>
#include <shobjidl.h>

#include "base/Failure.h"
#include "windows/win32/Module.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

std::wstring pathOf(IShellItem& item) {
    wchar_t* path = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &path))) return {};
    std::wstring result = path;
    CoTaskMemFree(path);
    return result;
}

void setFilters(IFileDialog& dialog, const std::vector<trainer::FileFilter>& filters) {
    std::vector<std::pair<std::wstring, std::wstring>> texts;
    for (const trainer::FileFilter& filter : filters) {
        std::string patterns;
        for (const std::string& pattern : filter.patterns)
            patterns += (patterns.empty() ? "" : ";") + pattern;
        texts.emplace_back(win32::wide(filter.name), win32::wide(patterns));
    }
    std::vector<COMDLG_FILTERSPEC> types;
    for (const auto& [name, patterns] : texts) types.push_back({name.c_str(), patterns.c_str()});
    if (!types.empty()) dialog.SetFileTypes(static_cast<UINT>(types.size()), types.data());
}

// The system's dialog to open or to save, with what both are asked for.
template <class Dialog>
class FileDialog {
  public:
    FileDialog(const CLSID& kind, const IID& interfaceOf, const trainer::FileQuestion& question,
               DWORD options) {
        if (FAILED(CoCreateInstance(kind, nullptr, CLSCTX_INPROC_SERVER, interfaceOf,
                                    reinterpret_cast<void**>(&dialog_))))
            throw Failure(RuntimeError::InternalError, "The dialog to choose files cannot be made");
        FILEOPENDIALOGOPTIONS usual = 0;
        dialog_->GetOptions(&usual);
        dialog_->SetOptions(usual | FOS_FORCEFILESYSTEM | options);
        dialog_->SetTitle(win32::wide(question.title).c_str());
        setFilters(*dialog_, question.filters);
        if (!question.fileName.empty()) dialog_->SetFileName(win32::wide(question.fileName).c_str());
        IShellItem* start = nullptr;
        if (!question.folder.empty() &&
            SUCCEEDED(SHCreateItemFromParsingName(win32::wide(question.folder).c_str(), nullptr,
                                                  IID_IShellItem, reinterpret_cast<void**>(&start)))) {
            dialog_->SetFolder(start);
            start->Release();
        }
    }
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;
    ~FileDialog() { dialog_->Release(); }

    // False when the operator cancels.
    bool show(HWND owner) {
        const win32::Styles styles;
        return dialog_->Show(owner) == S_OK;
    }
    Dialog* operator->() const noexcept { return dialog_; }

  private:
    Dialog* dialog_ = nullptr;
};

}  // namespace

std::vector<std::string> choosePaths(HWND owner, const trainer::FileQuestion& question) {
    const DWORD options =
        question.asksForFolder
            ? static_cast<DWORD>(FOS_PICKFOLDERS) | static_cast<DWORD>(FOS_PATHMUSTEXIST)
            : static_cast<DWORD>(FOS_ALLOWMULTISELECT) | static_cast<DWORD>(FOS_FILEMUSTEXIST);
    FileDialog<IFileOpenDialog> dialog(CLSID_FileOpenDialog, IID_IFileOpenDialog, question, options);
    std::vector<std::string> paths;
    IShellItemArray* items = nullptr;
    if (!dialog.show(owner) || FAILED(dialog->GetResults(&items))) return paths;
    DWORD count = 0;
    items->GetCount(&count);
    for (DWORD i = 0; i < count; ++i) {
        IShellItem* item = nullptr;
        if (FAILED(items->GetItemAt(i, &item))) continue;
        paths.push_back(win32::utf8(pathOf(*item)));
        item->Release();
    }
    items->Release();
    return paths;
}

std::string chooseNewFile(HWND owner, const trainer::FileQuestion& question) {
    FileDialog<IFileSaveDialog> dialog(CLSID_FileSaveDialog, IID_IFileSaveDialog, question,
                                       static_cast<DWORD>(FOS_OVERWRITEPROMPT));
    IShellItem* item = nullptr;
    if (!dialog.show(owner) || FAILED(dialog->GetResult(&item))) return {};
    const std::wstring path = pathOf(*item);
    item->Release();
    return win32::utf8(path);
}

}  // namespace dravik::app
