#include "evaluate/ReadingBack.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <thread>
#include <utility>
#include <vector>

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/embedded/EmbeddedTool.h"
#include "evaluate/JobsForNow.h"
#include "evaluate/Times.h"
#include "evaluate/WrongLabels.h"
#include "support/Differences.h"
#include "tool/Samples.h"

namespace dravik {

using namespace engine;
using namespace tool;
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

std::vector<std::string> textOf(const std::vector<ReadCharacter>& read) {
    std::vector<std::string> text;
    for (const ReadCharacter& one : read) text.push_back(one.character);
    return text;
}

}  // namespace

void readBack(const std::string& charsets, const std::string& lines, int most) {
    const JobsForNow jobs;
    const Fonts toRead = byFont(lines);
    WrongLabels wrongLabels;
    Times times;
    int allCharacters = 0, allWrong = 0, allExact = 0, allImages = 0, allMisread = 0, allRight = 0;
    std::printf("%-12s %8s %7s %7s %6s %6s %7s %7s %7s %9s\n", "font", "included", "refused", "exact",
                "chars", "wrong", "seconds", "cycles", "RMS", "Distance");
    for (const auto& [font, images] : byFont(charsets)) {
        EmbeddedTool tool{JobFolder(jobs.path.string())};
        tool.CreateFont(font);
        int included = 0, refused = 0;
        for (const LabelledImage& image : images) {
            if (included == most) break;
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
        // Its time would count as that of reading.
        while (tool.isChecking()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        int count = 0, wrong = 0, exact = 0, characterTotal = 0;
        std::string misread;
        if (const auto own = toRead.find(font); own != toRead.end())
            for (const LabelledImage& image : own->second) {
                ++count;
                GreyImage pixels = readPng(image.file);
                const double begun = processorTime();
                tool.setImage(std::move(pixels));
                const std::vector<ReadCharacter> read = tool.read();
                times.add(image.name, read.empty() ? 0 : static_cast<std::size_t>(read.back().place.line) + 1,
                          processorTime() - begun);
                const std::vector<std::string> text = characters(image.text);
                characterTotal += static_cast<int>(text.size());
                wrongLabels.tryOut(tool, text);
                const int errors = static_cast<int>(test::differences(text, textOf(read)));
                wrong += errors;
                allRight += errors == 0;
                if (read.size() != text.size()) {
                    misread += " " + image.name + ":" + std::to_string(read.size()) + "/" +
                               std::to_string(text.size());
                    continue;
                }
                ++exact;
                for (std::size_t i = 0; i < text.size(); ++i)
                    if (read[i].character != text[i]) {
                        ++allMisread;
                        misread += " " + text[i] + ">" + read[i].character;
                    }
            }
        double distances = 0;
        const RecordTablePtr samples = tool.GetSampleData(kAllCommitted, kSampleFields);
        for (const double distance : samples->values()) distances += distance;
        std::printf("%-12s %8d %7d %3d/%-3d %6d %6d %7.2f %7d %7.4f %9.2f %s\n", font.c_str(), included,
                    refused, exact, count, characterTotal, wrong, seconds, tool.GetTrainCycles(),
                    static_cast<double>(tool.GetRmsError()), distances / samples->upperRow(),
                    misread.c_str());
        allCharacters += characterTotal;
        allWrong += wrong;
        allExact += exact;
        allImages += count;
    }
    std::printf(
        "all: %d of %d images exact, %d without an error (%.1f %%), %d of %d characters wrong (%.2f %%), "
        "of which %d in images with the exact count\n",
        allExact, allImages, allRight, 100.0 * allRight / std::max(1, allImages), allWrong, allCharacters,
        100.0 * allWrong / std::max(1, allCharacters), allMisread);
    wrongLabels.print();
    times.print();
}

}  // namespace dravik
