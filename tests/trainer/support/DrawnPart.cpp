#include "trainer/support/DrawnPart.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "base/Failure.h"

namespace dravik::test {
namespace {

// Segments of each character: top, upper right, lower right, bottom, lower left, upper left, middle.
const std::map<char, std::string> kSegments = {
    {'0', "1111110"}, {'1', "0110000"}, {'2', "1101101"}, {'3', "1111001"}, {'4', "0110011"},
    {'5', "1011011"}, {'6', "1011111"}, {'7', "1110000"}, {'8', "1111111"}, {'9', "1111011"},
    {'A', "1110111"}, {'C', "1001110"}, {'E', "1001111"}, {'F', "1000111"}, {'H', "0110111"},
    {'J', "0111100"}, {'L', "0001110"}, {'P', "1100111"}, {'U', "0111110"}};

constexpr std::uint8_t kPart = 215;
constexpr std::uint8_t kInk = 35;

void fill(GreyImage& image, int left, int top, int width, int height) {
    for (int y = top; y < top + height; ++y) std::fill_n(image.row(y).begin() + left, width, kInk);
}

void drawCharacter(GreyImage& image, char character, int left, int top, int height) {
    const auto& segments = kSegments.at(character);
    const int width = height * 3 / 5;
    const int stroke = std::max(3, height / 7);
    const int half = height / 2;
    const auto has = [&](std::size_t segment) { return segments[segment] == '1'; };
    if (has(0)) fill(image, left, top, width, stroke);
    if (has(1)) fill(image, left + width - stroke, top, stroke, half + stroke / 2);
    if (has(2))
        fill(image, left + width - stroke, top + half - stroke / 2, stroke, height - half + stroke / 2);
    if (has(3)) fill(image, left, top + height - stroke, width, stroke);
    if (has(4)) fill(image, left, top + half - stroke / 2, stroke, height - half + stroke / 2);
    if (has(5)) fill(image, left, top, stroke, half + stroke / 2);
    if (has(6)) fill(image, left, top + half - stroke / 2, width, stroke);
}

}  // namespace

GreyImage drawPart(const std::string& text, int height) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    std::size_t longest = 1;
    for (const auto& line : lines) longest = std::max(longest, line.size());

    const int step = height;
    const int lineStep = height * 8 / 5;
    GreyImage image(step * static_cast<int>(longest) + height,
                    lineStep * static_cast<int>(lines.size()) + height, kPart);
    for (std::size_t l = 0; l < lines.size(); ++l)
        for (std::size_t c = 0; c < lines[l].size(); ++c)
            drawCharacter(image, lines[l][c], height / 2 + step * static_cast<int>(c),
                          height / 2 + lineStep * static_cast<int>(l), height);
    return image;
}

void writePgm(const std::string& file, const GreyImage& image) {
    std::ofstream stream(file, std::ios::binary);
    stream << "P5\n" << image.width() << ' ' << image.height() << "\n255\n";
    for (int y = 0; y < image.height(); ++y)
        for (const auto pixel : image.row(y)) stream.put(static_cast<char>(pixel));
    if (!stream.flush()) throw std::runtime_error("cannot write " + file);
}

GreyImage readPgm(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Failure(RuntimeError::FileNotFound, file + ": no such file");
    std::string magic;
    int width = 0;
    int height = 0;
    int most = 0;
    stream >> magic >> width >> height >> most;
    stream.get();
    if (!stream || magic != "P5" || most != 255)
        throw Failure(RuntimeError::InvalidPropertyValue, file + ": is not a grey image");
    GreyImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (auto& pixel : image.row(y)) pixel = static_cast<std::uint8_t>(stream.get());
    return image;
}

}  // namespace dravik::test
