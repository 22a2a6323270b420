#include "trainer/window/RecentPaths.h"

#include <algorithm>
#include <system_error>

#include "base/Paths.h"
#include "base/Text.h"

namespace dravik::trainer {
namespace {

namespace fs = std::filesystem;

constexpr char kKey[] = "recent";

// Absolute, without a separator at the end; "" for what is neither file nor folder.
std::string known(const std::string& name) {
    std::error_code error;
    fs::path path = fs::absolute(toPath(name), error).lexically_normal();
    if (error || !fs::exists(path, error)) return {};
    if (!path.has_filename()) path = path.parent_path();
    return fromPath(path);
}

}  // namespace

RecentPaths::RecentPaths(WindowSystem& system) : system_(system) {
    const std::string text = system.kept(kKey);
    for (std::size_t start = 0; start < text.size() && paths_.size() < kMost;) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        if (end > start) paths_.push_back(text.substr(start, end - start));
        start = end + 1;
    }
}

void RecentPaths::add(const std::vector<std::string>& opened) {
    std::vector<std::string> added;
    for (const std::string& name : opened) {
        std::string path = known(name);
        if (opened.size() > 1 && !path.empty() && !fs::is_directory(toPath(path)))
            path = fromPath(toPath(path).parent_path());
        if (!path.empty() && path.find('\n') == std::string::npos &&
            std::find(added.begin(), added.end(), path) == added.end())
            added.push_back(path);
    }
    for (const std::string& path : added) std::erase(paths_, path);
    paths_.insert(paths_.begin(), added.begin(), added.end());
    if (paths_.size() > kMost) paths_.resize(kMost);
    keep();
}

void RecentPaths::remove(const std::string& path) {
    std::erase(paths_, std::string(path));
    keep();
}

void RecentPaths::keep() {
    std::string text;
    for (const std::string& path : paths_) text += path + '\n';
    system_.keep(kKey, text);
}

std::string shortPath(const std::string& path, std::size_t most) {
    const std::vector<std::string> letters = characters(path);
    if (letters.size() <= most) return path;
    const std::size_t start = most / 3;
    std::string text;
    for (std::size_t i = 0; i < start; ++i) text += letters[i];
    text += "\u2026";
    for (std::size_t i = letters.size() - (most - start - 1); i < letters.size(); ++i) text += letters[i];
    return text;
}

}  // namespace dravik::trainer
