#include "trainer/commands/SampleList.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "base/Paths.h"
#include "base/Text.h"

namespace dravik::trainer {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

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
    if (!isPrintable(line.substr(0, tab)) || !isPrintable(text)) return "not UTF-8 text";
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

std::vector<ListedSample> readSampleList(const std::string& file) {
    const auto path = toPath(file);
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw SampleListError({file + ": is a folder, not a list"});
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad())
        throw SampleListError(
            {file + ": cannot be read: " + std::generic_category().message(errno ? errno : EIO)});
    return parseSampleList(content, file);
}

}  // namespace dravik::trainer
