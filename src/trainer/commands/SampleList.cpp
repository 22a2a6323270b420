#include "trainer/commands/SampleList.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/Paths.h"
#include "base/Text.h"

namespace dravik::trainer {
namespace {

constexpr std::uint64_t kLargestList = 16u << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr char kNoText[] = "not UTF-8 text";

std::string withoutBlanksAndBreaks(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "\\n")
            ++i;
        else if (text[i] != ' ')
            result += text[i];
    }
    return result;
}

// What is wrong with a line, "" when nothing is; fills `sample`.
std::string parseLine(std::string_view line, ListedSample& sample) {
    const auto tab = line.find('\t');
    const auto text = tab == std::string_view::npos ? std::string_view() : line.substr(tab + 1);
    if (text.find('\t') != std::string_view::npos) return "more than one tab";
    if (!isPrintable(line.substr(0, tab))) return kNoText;
    if (auto problem = labelProblem(text); !problem.empty()) return problem;
    if (tab == std::string_view::npos) return "no tab between image and text";
    sample.image = line.substr(0, tab);
    if (trimmed(sample.image).empty()) return "no image before the tab";
    sample.text = withoutBlanksAndBreaks(text);
    if (sample.text.empty()) return "no text after the tab";
    return {};
}

std::string firstProblem(const std::vector<std::string>& problems) {
    return problems.empty() ? std::string() : problems.front();
}

}  // namespace

std::string labelProblem(std::string_view text) {
    if (!isPrintable(text)) return kNoText;
    for (const auto& character : characters(text)) {
        const std::int32_t code = codeOf(character);
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "U+%04X", static_cast<unsigned>(code));
        if (0x300 <= code && code <= 0x36F)
            return std::string("an accent of its own (") + name.data() +
                   "); a letter and its accent are to be one character";
        if (isInvisible(code)) return std::string("a character that is not printed (") + name.data() + ")";
    }
    return {};
}

SampleListError::SampleListError(std::vector<std::string> found)
    : std::runtime_error(firstProblem(found)), problems(std::move(found)) {}

std::vector<ListedSample> parseSampleList(std::string_view content, const std::string& name) {
    if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
    const auto folder = toPath(name).parent_path();
    std::vector<ListedSample> samples;
    std::vector<std::string> problems;
    for (int number = 1; !content.empty(); ++number) {
        const auto end = content.find('\n');
        auto line = content.substr(0, end);
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.find_first_not_of(" \t") == std::string_view::npos) continue;

        ListedSample sample;
        if (const auto problem = parseLine(line, sample); !problem.empty()) {
            problems.push_back(name + " line " + std::to_string(number).append(": ").append(problem));
        } else {
            sample.path = fromPath(folder / toPath(sample.image));
            samples.push_back(std::move(sample));
        }
    }
    if (samples.empty() && problems.empty()) problems.push_back(name + ": the list is empty");
    if (!problems.empty()) throw SampleListError(std::move(problems));
    return samples;
}

std::string sampleListText(const std::vector<ListedSample>& samples, const std::string& folder,
                           std::size_t& written) {
    std::string content;
    written = 0;
    for (const ListedSample& sample : samples) {
        const auto within = toPath(sample.path).lexically_relative(toPath(folder));
        const bool isWithin = !within.empty() && *within.begin() != "..";
        const std::string line =
            (isWithin ? fromPath(within) : sample.path) + '\t' + withoutBlanksAndBreaks(sample.text);
        ListedSample read;
        if (!parseLine(line, read).empty()) continue;
        content += line + '\n';
        ++written;
    }
    return content;
}

std::vector<ListedSample> readSampleList(const std::string& file) {
    const auto refuse = [&](const std::string& problem) { throw SampleListError({file + ": " + problem}); };
    std::error_code error;
    if (entryKind(file) == EntryKind::Folder) refuse("is a folder, not a list");
    // Opening a pipe or a device would wait, for ever if need be.
    if (entryKind(file) == EntryKind::Other) refuse("is no file");
    if (entryKind(file) == EntryKind::File && fileSize(file, error) > kLargestList)
        refuse("is larger than 16 MB, too large for a list");
    try {
        const auto content = readWholeFile(file, kLargestList);
        return parseSampleList({reinterpret_cast<const char*>(content.data()), content.size()}, file);
    } catch (const Failure& failure) {
        refuse(failure.description());
    }
    return {};
}

}  // namespace dravik::trainer
