#include "engine/Reading.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace dravik {
namespace {

// Height of small letters as a part of that of capitals, in most print.
constexpr float kSmallLetters = 0.73f;
// How much more a line must look like small letters alone than like capitals and figures, in logarithms of
// likelihood: most print on parts has no small letters, and 2 and z, 0 and o differ by their height only.
constexpr double kSmallLettersDoubt = 1;
constexpr std::string_view kSmallOnes = "acegmnopqrsuvwxyz";
constexpr std::string_view kMarks = "-=.,:;\"'_*+";

// The line as it is when its characters, all of one height, are small letters.
LineMetrics asSmallLetters(LineMetrics line) {
    line.capHeight /= kSmallLetters;
    return line;
}

Answer best(const Network& network, const SampleInputs& inputs, std::vector<float>& outputs) {
    network.run(inputs, outputs);
    const auto most = std::max_element(outputs.begin(), outputs.end());
    return {network.codes[static_cast<std::size_t>(most - outputs.begin())], static_cast<double>(*most),
            inputs};
}

}  // namespace

std::vector<SampleInputs> allInputs(const Segmentation& found, std::span<const std::string> text) {
    std::vector<LineMetrics> lines = found.lines;
    if (text.size() == found.glyphs.size()) {
        std::vector<bool> small(lines.size(), false), other(lines.size(), false);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const std::size_t line = static_cast<std::size_t>(found.glyphs[i].line);
            if (text[i].size() == 1 && kSmallOnes.find(text[i].front()) != std::string_view::npos)
                small[line] = true;
            else if (text[i].size() != 1 || kMarks.find(text[i].front()) == std::string_view::npos)
                other[line] = true;
        }
        for (std::size_t line = 0; line < lines.size(); ++line)
            if (lines[line].oneHeight && small[line] && !other[line])
                lines[line] = asSmallLetters(lines[line]);
    }
    std::vector<SampleInputs> inputs;
    inputs.reserve(found.glyphs.size());
    for (const Glyph& glyph : found.glyphs)
        inputs.push_back(glyphInputs(found, glyph, lines[static_cast<std::size_t>(glyph.line)]));
    return inputs;
}

std::vector<Answer> answers(const Segmentation& found, const Training& training) {
    std::vector<Answer> result;
    if (training.empty()) return result;
    std::vector<float> outputs(training.network.codes.size());
    const auto readLine = [&](std::size_t from, std::size_t to, const LineMetrics& line, double& trust) {
        std::vector<Answer> answers;
        trust = 0;
        for (std::size_t i = from; i < to; ++i) {
            answers.push_back(best(training.network, glyphInputs(found, found.glyphs[i], line), outputs));
            trust += std::log(std::max(1e-3, answers.back().likelihood));
        }
        return answers;
    };
    for (std::size_t from = 0; from < found.glyphs.size();) {
        std::size_t to = from;
        while (to < found.glyphs.size() && found.glyphs[to].line == found.glyphs[from].line) ++to;
        const LineMetrics& line = found.lines[static_cast<std::size_t>(found.glyphs[from].line)];
        double trust = 0, otherTrust = 0;
        std::vector<Answer> answers = readLine(from, to, line, trust);
        if (line.oneHeight) {
            std::vector<Answer> others = readLine(from, to, asSmallLetters(line), otherTrust);
            if (otherTrust > trust + kSmallLettersDoubt) answers = std::move(others);
        }
        result.insert(result.end(), answers.begin(), answers.end());
        from = to;
    }
    return result;
}

}  // namespace dravik
