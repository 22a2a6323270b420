#include "trainer/labels/LabelBook.h"

#include <cstdint>
#include <span>
#include <utility>

#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/Paths.h"
#include "trainer/commands/SampleList.h"

namespace dravik::trainer {
namespace {

std::string normalName(const std::string& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(toPath(path), error);
    return fromPath((error ? toPath(path) : absolute).lexically_normal());
}

std::span<const std::uint8_t> bytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

LabelBook::LabelBook(std::string file) : file_(std::move(file)) {
    if (entryKind(file_) == EntryKind::None) return;
    try {
        open(file_);
        kept_ = version_;
    } catch (const SampleListError& error) {
        problem_ = error.what();
    }
}

std::optional<std::string> LabelBook::text(const std::string& image) const {
    const auto found = texts_.find(image);
    return found == texts_.end() ? std::nullopt : std::optional(found->second);
}

void LabelBook::set(const std::string& image, const std::string& text) {
    std::string& known = texts_[image];
    if (known == text) return;
    known = text;
    ++version_;
}

std::vector<std::string> LabelBook::images() const {
    std::vector<std::string> all;
    for (const auto& [image, text] : texts_) all.push_back(image);
    return all;
}

std::size_t LabelBook::open(const std::string& list) {
    const auto samples = readSampleList(list);
    for (const ListedSample& sample : samples) set(normalName(sample.path), sample.text);
    return samples.size();
}

std::string LabelBook::content(const std::string& list, const std::vector<std::string>& images,
                               std::size_t& written) const {
    std::vector<ListedSample> samples;
    for (const std::string& image : images)
        if (const auto found = texts_.find(image); found != texts_.end())
            samples.push_back({{}, image, found->second});
    return sampleListText(samples, fromPath(toPath(list).parent_path()), written);
}

std::size_t LabelBook::save(const std::string& list, const std::vector<std::string>& images) const {
    std::size_t written = 0;
    const std::string text = content(list, images, written);
    writeWholeFile(list, bytes(text), true);
    return written;
}

std::function<void()> LabelBook::keepingWork() const {
    std::size_t written = 0;
    return [file = file_, keepsBackup = !problem_.empty(), text = content(file_, images(), written)] {
        writeWholeFile(file, bytes(text), keepsBackup);
    };
}

}  // namespace dravik::trainer
