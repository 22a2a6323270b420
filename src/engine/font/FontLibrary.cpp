#include "engine/font/FontLibrary.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/Text.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kMaskedFonts = 15;
constexpr std::size_t kLongestName = 200;

bool isFileName(const std::string& name) {
    if (name.empty() || name.size() > kLongestName || name == "." || name == "..") return false;
    if (name.back() == ' ' || name.back() == '.') return false;
    return std::none_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7f ||
               std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos;
    });
}

}  // namespace

FontLibrary::FontLibrary(JobFolder folder, bool remembers)
    : folder_(std::move(folder)), remembers_(remembers) {
    if (!remembers_) return;
    try {
        const std::vector<std::uint8_t> bytes = readWholeFile(memory(), 4096);
        const std::string name(bytes.begin(), bytes.end());
        if (isFileName(name) && fileExists(folder_.fontFile(name))) selected_ = name;
    } catch (const Failure&) {
        selected_.reset();
    }
}

std::string FontLibrary::memory() const {
    return folder_.folder() + "selected_font.txt";
}

std::vector<std::string> FontLibrary::names() const {
    std::vector<std::string> names;
    if (isStillToCome(folder_.fontsFolder())) return names;
    std::error_code error;
    for (const std::string& name : namesIn(folder_.fontsFolder(), error)) {
        if (!name.ends_with(kFontExtension) || entryKind(folder_.fontsFolder() + name) != EntryKind::File)
            continue;
        if (std::string font = name.substr(0, name.size() - kFontExtension.size()); isFileName(font))
            names.push_back(std::move(font));
    }
    if (error)
        throw Failure(RuntimeError::PathFileAccessError,
                      "Cannot list the fonts in \"" + folder_.fontsFolder() + "\": " + error.message());
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string lowerA = lowerCase(a), lowerB = lowerCase(b);
        return lowerA != lowerB ? lowerA < lowerB : a < b;
    });
    if (selected_) {
        const auto place = std::find(names.begin(), names.end(), *selected_);
        if (place != names.end() && place - names.begin() >= static_cast<std::ptrdiff_t>(kMaskedFonts))
            std::rotate(names.begin(), place, place + 1);
    }
    return names;
}

std::string FontLibrary::file(const std::string& name) const {
    if (!isFileName(name)) throw Failure(RuntimeError::BadFileName, "Bad file name \"" + name + "\"");
    return folder_.fontFile(name);
}

std::string FontLibrary::spelling(const std::string& name) const {
    file(name);
    std::optional<std::string> other;
    for (const std::string& font : names()) {
        if (font == name) return name;
        if (!other && lowerCase(font) == lowerCase(name)) other = font;
    }
    return other.value_or(name);
}

std::string FontLibrary::freeFile(const std::string& name, const std::string& renamed) const {
    std::string path = file(name);
    for (const std::string& font : names())
        if (font != renamed && lowerCase(font) == lowerCase(name))
            throw Failure(RuntimeError::FileAlreadyExists,
                          "File already exists: there is a font \"" + font + "\" (" + file(font) + ")");
    return path;
}

std::string FontLibrary::existingFile(const std::string& name) const {
    std::string path = file(name);
    if (!fileExists(path))
        throw Failure(RuntimeError::FileNotFound,
                      "File not found: there is no font \"" + name + "\" (" + path + ")");
    return path;
}

void FontLibrary::select(std::optional<std::string> name) {
    if (name == selected_) return;
    selected_ = std::move(name);
    if (!remembers_) return;
    try {
        const std::string text = selected_.value_or("");
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        writeWholeFile(memory(), bytes, false);
    } catch (const std::exception&) {
        return;
    }
}

double FontLibrary::selectionMask() const {
    if (!selected_) return 0;
    const std::vector<std::string> list = names();
    const auto place = std::find(list.begin(), list.end(), *selected_);
    return place == list.end() ? 0.0 : static_cast<double>(1 << (place - list.begin()));
}

}  // namespace dravik::engine
