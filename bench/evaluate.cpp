// How good the engine is: learns each font from its charset images and reads its lines. Prints, per font,
// images included and refused, characters right and wrong, images with the exact count, the training's
// figures and Distances.
//
//     dravik_evaluate [CHARSET_FOLDER LINES_FOLDER]      (data/parts when not given)
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "engine/EmbeddedTool.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "tool/Samples.h"

namespace dravik {
namespace {

using Fonts = std::map<std::string, std::vector<LabelledImage>>;

Fonts byFont(const std::string& folder) {
    Fonts fonts;
    for (const LabelledImage& image : labelledImages(folder)) fonts[image.font].push_back(image);
    return fonts;
}

double secondsOfTraining(EmbeddedTool& tool) {
    const auto start = std::chrono::steady_clock::now();
    tool.StartTraining();
    while (!tool.IsTrainingDone()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void evaluate(const std::string& charsets, const std::string& lines, const std::string& jobs) {
    const Fonts toRead = byFont(lines);
    int allRight = 0, allWrong = 0, allExact = 0, allImages = 0;
    std::printf("%-12s %8s %7s %6s %6s %6s %7s %7s %7s %9s\n", "font", "included", "refused", "exact",
                "right", "wrong", "seconds", "cycles", "RMS", "Distance");
    for (const auto& [font, images] : byFont(charsets)) {
        EmbeddedTool tool{JobFolder(jobs)};
        tool.CreateFont(font);
        int included = 0, refused = 0;
        for (const LabelledImage& image : images) {
            tool.setImage(readPng(image.file));
            if (tool.found().size() != characterCount(image.text)) {
                ++refused;
                continue;
            }
            tool.IncludeSamples(image.text);
            tool.CommitNewSamples();
            ++included;
        }
        if (included == 0) {
            std::printf("%-12s none of %zu images could be included\n", font.c_str(), images.size());
            continue;
        }
        const double seconds = secondsOfTraining(tool);
        int right = 0, wrong = 0, exact = 0, count = 0;
        std::string misread;
        if (const auto own = toRead.find(font); own != toRead.end())
            for (const LabelledImage& image : own->second) {
                ++count;
                tool.setImage(readPng(image.file));
                const std::vector<ReadCharacter> read = tool.read();
                const std::vector<std::string> text = characters(image.text);
                if (read.size() != text.size()) {
                    wrong += static_cast<int>(text.size());
                    misread += " " + image.name + ":" + std::to_string(read.size()) + "/" +
                               std::to_string(text.size());
                    continue;
                }
                ++exact;
                for (std::size_t i = 0; i < text.size(); ++i) {
                    ++(read[i].character == text[i] ? right : wrong);
                    if (read[i].character != text[i]) misread += " " + text[i] + ">" + read[i].character;
                }
            }
        double distances = 0;
        const RecordTablePtr samples = tool.GetSampleData(kAllCommitted, kSampleFields);
        for (const double distance : samples->values()) distances += distance;
        std::printf("%-12s %8d %7d %3d/%-3d %5d %6d %7.2f %7d %7.4f %9.2f %s\n", font.c_str(), included,
                    refused, exact, count, right, wrong, seconds, tool.GetTrainCycles(),
                    static_cast<double>(tool.GetRmsError()), distances / samples->upperRow(),
                    misread.c_str());
        allRight += right;
        allWrong += wrong;
        allExact += exact;
        allImages += count;
    }
    std::printf("all: %d of %d images exact, %d characters right, %d wrong\n", allExact, allImages, allRight,
                allWrong);
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    const std::string parts = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/";
    const auto jobs =
        std::filesystem::temp_directory_path() /
        ("dravik-evaluate-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    int result = 0;
    try {
        dravik::evaluate(argc > 2 ? argv[1] : parts + "rendered_charset",
                         argc > 2 ? argv[2] : parts + "rendered_lines", jobs.string());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        result = 1;
    }
    std::error_code ignored;
    std::filesystem::remove_all(jobs, ignored);
    return result;
}
