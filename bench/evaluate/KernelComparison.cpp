#include "evaluate/KernelComparison.h"

#include <cstdio>
#include <map>
#include <memory>
#include <span>
#include <thread>

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/Seen.h"
#include "engine/kernels/MatrixKernels.h"
#include "evaluate/JobsForNow.h"

namespace dravik {

using namespace engine;
namespace {

// A tool with a font of one sheet, or with none where the sheet's characters are not found.
std::unique_ptr<EmbeddedTool> taught(const JobFolder& folder, const LabelledImage& sheet) {
    auto tool = std::make_unique<EmbeddedTool>(folder);
    tool->CreateFont(sheet.font);
    tool->setImage(readPng(sheet.file));
    if (tool->found().size() != characterCount(sheet.text)) return tool;
    tool->IncludeSamples(sheet.text);
    tool->CommitNewSamples();
    tool->StartTraining();
    while (!tool->IsTrainingDone() || tool->isChecking()) std::this_thread::yield();
    return tool;
}

struct Differing {
    int boxes = 0, texts = 0, likelihoods = 0;
};

}  // namespace

void compareKernels(const std::string& charsets, const std::string& lines) {
    const JobsForNow jobs;
    const std::span<const MatrixKernels* const> versions = availableKernels();
    std::map<std::string, std::unique_ptr<EmbeddedTool>> tools;
    for (const LabelledImage& sheet : labelledImages(charsets))
        if (std::unique_ptr<EmbeddedTool>& tool = tools[sheet.font]; !tool || !tool->isTrained())
            tool = taught(JobFolder(jobs.path.string()), sheet);
    std::map<std::string, Differing> differing;
    int images = 0;
    for (const LabelledImage& image : labelledImages(lines)) {
        const auto tool = tools.find(image.font);
        if (tool == tools.end()) continue;
        ++images;
        const GreyImage pixels = readPng(image.file);
        useKernels(*versions.front());
        const Seen best = seenBy(*tool->second, pixels);
        for (const MatrixKernels* version : versions.subspan(1)) {
            useKernels(*version);
            const Seen seen = seenBy(*tool->second, pixels);
            Differing& count = differing[version->name];
            count.boxes += seen.boxes != best.boxes;
            count.texts += seen.text != best.text;
            count.likelihoods += seen.likelihoods != best.likelihoods;
            if (seen.boxes != best.boxes || seen.text != best.text)
                std::printf("    %s, %s: %s instead of %s\n", image.name.c_str(), version->name,
                            seen.text.c_str(), best.text.c_str());
        }
    }
    useKernels(*versions.front());
    for (const auto& [name, count] : differing)
        std::printf("%s beside %s: of %d images %d differ in boxes, %d in texts, %d in likelihoods\n",
                    name.c_str(), versions.front()->name, images, count.boxes, count.texts,
                    count.likelihoods);
}

}  // namespace dravik
