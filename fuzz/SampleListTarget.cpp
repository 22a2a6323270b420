#include <cstdlib>
#include <string_view>

#include "FuzzTargets.h"
#include "base/Text.h"
#include "trainer/commands/SampleList.h"

namespace dravik {

using namespace trainer;

void trySampleList(std::span<const std::uint8_t> bytes) {
    const std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    try {
        const auto samples = parseSampleList(content, "folder/list.tsv");
        if (samples.empty()) std::abort();
        for (const ListedSample& sample : samples)
            if (sample.image.empty() || sample.path.empty() || sample.text.empty() ||
                !isPrintable(sample.image) || !isPrintable(sample.text) ||
                sample.text.find(' ') != std::string::npos)
                std::abort();
    } catch (const SampleListError& error) {
        if (error.problems.empty()) std::abort();
        for (const std::string& problem : error.problems)
            if (problem.find("list.tsv") == std::string::npos) std::abort();
    }
}

}  // namespace dravik
