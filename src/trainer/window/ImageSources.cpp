#include "trainer/window/ImageSources.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/Paths.h"
#include "base/TimeText.h"
#include "engine/image/ImageFiles.h"

namespace dravik::trainer {
namespace {

constexpr char kWatchedKey[] = "watched";
constexpr std::size_t kLongestPath = 60;  // in a menu, characters

std::vector<FileFilter> imageFilters() {
    FileFilter images{"Images", {}};
    for (const auto extension : engine::imageExtensions())
        images.patterns.push_back("*" + std::string(extension));
    return {std::move(images), {"All files", {"*"}}};
}

std::string images(int count, const char* what) {
    return std::to_string(count) + (count == 1 ? " image " : " images ") + what;
}

}  // namespace

ImageSources::ImageSources(OpenedParts& parts, PartStrip& strip, WindowActions& actions, WindowSystem& system,
                           const JobFolder& jobs, Words words)
    : parts_(parts),
      strip_(strip),
      actions_(actions),
      system_(system),
      jobs_(jobs),
      words_(std::move(words)),
      recent_(system),
      watched_(parts.decoder()) {
    watched_.arrived = [this](const std::vector<std::string>& paths) { takeArrived(paths); };
    watched_.thereChanged = [this] {
        if (watched_.isThere()) {
            words_.solved(goneText());
            words_.notice("The watched folder is there again");
        } else {
            words_.problems({goneText()});
        }
    };
    actions.watchFolder.triggered.subscribe([this] { watchOrStop(); });
    actions.openImages.triggered.subscribe([this] {
        choose({"Open Part Images", {}, false, imageFilters()});
    });
    actions.openFolder.triggered.subscribe([this] { choose({"Open Folder of Part Images", {}, true, {}}); });
    actions.paste.triggered.subscribe([this] { paste(); });
    for (std::size_t i = 0; i < actions.recent.size(); ++i)
        actions.recent[i].triggered.subscribe([this, i] { openRecent(i); });
    showRecent();
}

OpenResult ImageSources::open(const std::vector<std::string>& paths) {
    const bool hadImages = parts_.count() > 0;
    OpenResult opened = parts_.open(paths);
    words_.problems(opened.problems);
    if (opened.first < 0) return opened;
    recent_.add(paths);
    showRecent();
    words_.notice(openedText(opened, hadImages));
    if (opened.added == 0 && opened.alreadyOpen == 1) parts_.setCurrent(opened.first);
    strip_.bringIntoView(opened.first);
    return opened;
}

void ImageSources::choose(FileQuestion question) {
    question.folder = system_.kept(kFolderKey);
    const std::vector<std::string> paths = system_.choosePaths(question);
    if (paths.empty()) return;
    system_.keep(kFolderKey,
                 question.asksForFolder ? paths.front() : fromPath(toPath(paths.front()).parent_path()));
    open(paths);
}

void ImageSources::openRecent(std::size_t index) {
    if (index >= recent_.paths().size()) return;
    const std::string path = recent_.paths()[index];
    if (entryKind(path) == EntryKind::None) recent_.remove(path);
    open({path});
    showRecent();
}

void ImageSources::paste() {
    std::vector<std::string> paths;
    try {
        paths = system_.clipboardImages(newImageFile(jobs_, "pasted"));
    } catch (...) {
        return words_.problems({currentFailure().description()});
    }
    if (paths.empty()) return words_.notice("There is no image on the clipboard");
    if (const OpenResult opened = open(paths); opened.first >= 0) strip_.choose(opened.first);
}

void ImageSources::openNew(const std::string& file) {
    const OpenResult opened = parts_.open({file});
    words_.problems(opened.problems);
    if (opened.first >= 0) strip_.choose(opened.first);
}

void ImageSources::watchOrStop() {
    if (!watched_.folder().empty()) {
        words_.solved(goneText());
        watched_.stop();
        words_.notice("No folder is watched any more");
        return showWatched();
    }
    FileQuestion question{"Watch Folder", {}, true, {}};
    const std::string before = system_.kept(kWatchedKey);
    question.folder = before.empty() ? system_.kept(kFolderKey) : before;
    const std::vector<std::string> chosen = system_.choosePaths(question);
    if (chosen.empty()) return;
    try {
        watched_.watch(chosen.front());
    } catch (...) {
        return words_.problems({currentFailure().description()});
    }
    system_.keep(kWatchedKey, chosen.front());
    words_.notice("Images that arrive in " + chosen.front() + " come up by themselves from now on");
    showWatched();
}

std::string ImageSources::goneText() const {
    return "The watched folder " + watched_.folder() + " is not there. Its images come up when it is back.";
}

// The newest one comes up, unless the operator is at an earlier one or in the middle of typing.
void ImageSources::takeArrived(const std::vector<std::string>& paths) {
    const bool follows = parts_.current() == parts_.count() - 1 && !words_.isTyping();
    const OpenResult opened = parts_.open(paths);
    if (!opened.problems.empty()) words_.problems(opened.problems);
    if (opened.added == 0) return;
    words_.notice(images(opened.added, "arrived"));
    if (follows)
        parts_.setCurrent(parts_.count() - 1);
    else
        strip_.bringIntoView(opened.first);
}

void ImageSources::showWatched() {
    const std::string& folder = watched_.folder();
    actions_.watchFolder.setText(
        folder.empty() ? kWatchText : "Stop &Watching " + withoutAccessKeys(shortPath(folder, kLongestPath)));
}

void ImageSources::showRecent() {
    const std::vector<std::string>& paths = recent_.paths();
    for (std::size_t i = 0; i < actions_.recent.size(); ++i) {
        Action& action = actions_.recent[i];
        action.setVisible(i < paths.size());
        if (i < paths.size())
            action.setText("&" + std::to_string(i + 1) + "  " +
                           withoutAccessKeys(shortPath(paths[i], kLongestPath)));
    }
    actions_.openRecent.setEnabled(!paths.empty());
}

std::string openedText(const OpenResult& opened, bool hadImages) {
    if (opened.added == 0 && opened.alreadyOpen == 0) return {};
    if (opened.added == 0)
        return opened.alreadyOpen == 1 ? "This image was open already"
                                       : images(opened.alreadyOpen, "were open already");
    if (opened.alreadyOpen > 0)
        return images(opened.added, "added, ") + std::to_string(opened.alreadyOpen) +
               (opened.alreadyOpen == 1 ? " was" : " were") + " open already";
    return hadImages ? images(opened.added, "added") : std::string();
}

std::string newImageFile(const JobFolder& jobs, const std::string& source) {
    std::string when = localTimeText();
    std::replace(when.begin(), when.end(), ':', '.');
    const std::string start = jobs.imagesFolder() + source + " " + when;
    std::string file = start + ".png";
    for (int number = 2; fileExists(file); ++number) file = start + " " + std::to_string(number) + ".png";
    makeFolderOf(file);
    return file;
}

}  // namespace dravik::trainer
