#include "trainer/FontOpening.h"

#include <filesystem>
#include <system_error>

#include "base/Failure.h"
#include "base/Paths.h"
#include "base/Text.h"
#include "tool/FontName.h"

namespace dravik::trainer {
namespace {

namespace fs = std::filesystem;

constexpr char kTitle[] = "Open Font";

bool isInFontsFolder(const fs::path& file, const JobFolder& folder) {
    std::error_code error;
    return fs::equivalent(file, toPath(folder.fontsFolder()) / file.filename(), error);
}

// "hack 2", which no font of the list has.
std::string freeName(const std::string& name, const std::vector<std::string>& fonts) {
    for (int number = 2;; ++number)
        if (std::string free = name + " " + std::to_string(number); !tool::fontExists(free, fonts))
            return free;
}

// The name under which the file is to become a font; "" when the operator wants none of it.
std::string askForName(ui::Platform& platform, const std::string& path,
                       const std::vector<std::string>& fonts) {
    const std::string name = tool::CleanFontName(fromPath(toPath(path).stem()));
    if (!tool::fontExists(name, fonts) && !tool::isReservedFontName(name)) {
        const auto answer = platform.messageBox(
            {path + "\ris not among the fonts of this program. Copy it there as the font \"" + name + "\"?",
             kTitle, ui::MessageBox::Buttons::YesNo});
        return answer == ui::Answer::Yes ? name : std::string();
    }
    const std::string free = freeName(name, fonts);
    const auto answer = platform.messageBox(
        {"There is a font \"" + name + "\" already. Is it to be replaced by\r" + path +
             "?\r\rYes replaces it; " + "Font > Restore brings it back. No copies the file as the font \"" +
             free + "\".",
         kTitle, ui::MessageBox::Buttons::YesNoCancel});
    if (answer == ui::Answer::Cancel) return {};
    return answer == ui::Answer::Yes ? name : free;
}

}  // namespace

bool isFontFile(const std::string& path) {
    std::error_code error;
    return lowerCase(fromPath(toPath(path).extension())) == kFontExtension &&
           !fs::is_directory(toPath(path), error);
}

std::vector<std::string> openFontFile(Trainer& trainer, ui::Platform& platform, const std::string& path) {
    try {
        if (!fs::exists(toPath(path))) return {path + ": no such file or folder"};
        if (trainer.isTraining()) return {path + ": not opened, since the font shown is learning"};
        if (isInFontsFolder(toPath(path), trainer.folder())) {
            trainer.acts().show(fromPath(toPath(path).stem()));
            return {};
        }
        const std::string name = askForName(platform, path, trainer.tool().GetFontList());
        if (!name.empty()) trainer.acts().importFont(path, name);
        return {};
    } catch (...) {
        return {path + ": not opened: " + currentFailure().description()};
    }
}

}  // namespace dravik::trainer
