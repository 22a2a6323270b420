// The list of images to learn from: a text file with a row for each image, its file and the text printed on
// the part, separated by a tab.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::trainer {

struct ListedSample {
    std::string image;  // as written in the list
    std::string path;   // the image's file, found from the list's folder
    std::string text;   // the characters in reading order, without line breaks and blanks
};

// What keeps a text from being that of characters on a part, "" when nothing does: it is no printable UTF-8,
// or has characters that nobody sees or that are the accent of the one before.
std::string labelProblem(std::string_view text);

// Everything that is wrong with a list, one line each, with the list's name and the line's number.
class SampleListError : public std::runtime_error {
  public:
    explicit SampleListError(std::vector<std::string> problems);

    const std::vector<std::string> problems;
};

// Reads the content of a list. UTF-8, with or without byte order mark; lines end in LF or CR LF; blank lines
// are skipped; nothing is quoted. In the text "\n" (backslash, n) stands between lines, and blanks are not
// characters on the part. `name` is what problems call the list. Raises SampleListError.
std::vector<ListedSample> parseSampleList(std::string_view content, const std::string& name);

// Reads a list file; also raises SampleListError when it cannot be read, is no file or
// larger than 16 MB.
std::vector<ListedSample> readSampleList(const std::string& file);

// The content of a list in that folder: a row for each sample, its image named from the folder where it lies
// in it. Samples that a list cannot hold are left out; `written` gets the number of the others.
std::string sampleListText(const std::vector<ListedSample>& samples, const std::string& folder,
                           std::size_t& written);

}  // namespace dravik::trainer
