// The inputs that the fuzzers start from and those that once made them fail.

#include "FuzzTargets.h"
#include "support/Testing.h"

namespace dravik {

namespace {

using Target = void (*)(std::span<const std::uint8_t>);

void tryInputs(const std::string& folder, Target target) {
    int inputs = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(DRAVIK_SOURCE_DIR) + "/fuzz/inputs/" + folder)) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(stream), {}};
        target(bytes);
        // Cut off at every place of a font or list, and at some of what takes longer.
        const std::size_t step = folder == "image"     ? bytes.size() / 3 + 1
                                 : folder == "journal" ? bytes.size() / 20 + 1
                                                       : 1;
        for (std::size_t size = 0; size < bytes.size(); size += step) target(std::span(bytes).first(size));
        ++inputs;
    }
    EXPECT_GT(inputs, 0);
}

TEST(FuzzInputs, DoNoHarm) {
    tryInputs("font", tryFontFile);
    tryInputs("journal", tryJournal);
    tryInputs("list", trySampleList);
    tryInputs("image", tryImage);
}

}  // namespace
}  // namespace dravik
