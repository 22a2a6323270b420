#include "trainer/support/Workspace.h"

#include "contract/DrawnText.h"

namespace dravik::test {
namespace {

// Without their ends.
std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace

std::string Workspace::fontFile(const std::string& font) const {
    return JobFolder(jobs()).fontFile(font);
}

std::string Workspace::draw(const std::string& name, const std::string& text, int scale) const {
    writePgm(path(name), drawn(linesOf(text), {.scale = scale, .dot = scale}));
    return path(name);
}

std::string Workspace::write(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

std::string Workspace::content(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

CommandResult Workspace::run(std::vector<std::string> arguments, const ImageDecoder& decoder) const {
    arguments.insert(arguments.end(), {"--jobs", jobs()});
    return runWords(arguments, decoder);
}

CommandResult Workspace::learnDigits(const std::string& font) const {
    std::string list;
    for (const int scale : {5, 6, 7}) {
        const auto name = "digits" + std::to_string(scale) + ".pgm";
        draw(name, "0123456789", scale);
        list += name + "\t0123456789\n";
    }
    return run({"learn", "--font", font, "--samples", write("digits.tsv", list), "--timeout", "10"});
}

CommandResult runWords(const std::vector<std::string>& words, const ImageDecoder& decoder) {
    std::ostringstream out, err;
    const int status = runCommand(parseCommandLine(words), decoder, {out, err, false});
    return {status, linesOf(out.str()), linesOf(err.str())};
}

}  // namespace dravik::test
