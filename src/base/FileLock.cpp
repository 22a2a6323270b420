#include "base/FileLock.h"

#include "base/AtomicFile.h"

namespace dravik {
namespace {

constexpr std::uint64_t kLongestText = 1024;

}  // namespace

std::string FileLock::holder(const std::string& file) {
    try {
        const std::vector<std::uint8_t> text = readWholeFile(file, kLongestText);
        if (!text.empty()) return {text.begin(), text.end()};
    } catch (const Failure&) {
        return "another program";
    }
    return "another program";
}

}  // namespace dravik
