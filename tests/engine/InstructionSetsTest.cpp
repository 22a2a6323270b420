// Whatever instruction set a machine has, it finds the same boxes and reads the same texts, as sure to the
// last bit.
#include "engine/LabelledImages.h"
#include "engine/LearntSheets.h"
#include "engine/Seen.h"
#include "engine/kernels/MatrixKernels.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

const std::string kFolders = DRAVIK_SOURCE_DIR "/tests/engine/regression/";

class InstructionSets : public testing::TestWithParam<const char*> {
  protected:
    ~InstructionSets() override { useKernels(*availableKernels().front()); }
};

TEST_P(InstructionSets, FindAndReadTheSameWithAFontAndWithout) {
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
    tool.CreateFont("all");
    for (const LabelledImage& sheet : labelledImages(kFolders + "sheets")) includeSheet(tool, sheet);
    train(tool);
    std::size_t characters = 0;
    for (const LabelledImage& image : labelledImages(kFolders + GetParam())) {
        const GreyImage pixels = readPng(image.file);
        useKernels(*availableKernels().front());
        const Seen best = seenBy(tool, pixels);
        characters += best.boxes.size();
        for (const MatrixKernels* kernels : availableKernels().subspan(1)) {
            useKernels(*kernels);
            const Seen seen = seenBy(tool, pixels);
            EXPECT_EQ(seen.text, best.text) << image.name << ", " << kernels->name;
            EXPECT_TRUE(seen == best) << image.name << ", " << kernels->name;
        }
    }
    EXPECT_GT(characters, 100u);
}

INSTANTIATE_TEST_SUITE_P(Folders, InstructionSets, testing::Values("usual", "extreme", "scenes"),
                         [](const auto& folder) { return folder.param; });

}  // namespace
}  // namespace dravik::test
