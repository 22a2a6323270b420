#include "base/JobFolder.h"

#include <utility>

#include "base/FileSystem.h"

namespace dravik {

JobFolder::JobFolder(std::string folder) : folder_(std::move(folder)) {
    if (folder_.empty()) folder_ = ".";
    if (folder_.back() != kSeparator && folder_.back() != '/') folder_ += kSeparator;
}

std::string JobFolder::fontsFolder() const {
    return folder_ + "Fonts" + kSeparator;
}

std::string JobFolder::imagesFolder() const {
    return folder_ + "Images" + kSeparator;
}

std::string JobFolder::fontFile(const std::string& fontName) const {
    return (fontsFolder() + fontName).append(kFontExtension);
}

std::string JobFolder::labelsFile() const {
    return folder_ + "Labels.tsv";
}

std::string JobFolder::traceLog() const {
    return folder_ + "dravik_log.txt";
}

std::string JobFolder::uncommittedDump() const {
    return folder_ + "checknew.csv";
}

}  // namespace dravik
