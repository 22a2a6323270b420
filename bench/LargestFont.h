// The largest font that there may be, and a folder for it: 74 characters and up to 99,999 samples, for what
// is to be measured with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <string>

#include "base/Text.h"
#include "engine/font/FontFile.h"
#include "tool/Samples.h"

namespace dravik {

using namespace engine;
using namespace tool;

class JobsFolder {
  public:
    JobsFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "dravik-bench-XXXXXX").string();
        path = mkdtemp(pattern.data());
    }
    ~JobsFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path path;
};

inline const CharacterSet& characterSet() {
    static const CharacterSet set =
        characters("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrstuvwxyz*+-=/.,:;\"'_");
    return set;
}

// Samples in no order of their characters, as includes of part texts leave them.
inline FontRecord largestFont(std::size_t count) {
    FontRecord font;
    font.characterSet = characterSet();
    std::mt19937 random(7);
    std::map<std::int32_t, TrainedCharacter> trained;
    for (std::size_t i = 0; i < count; ++i) {
        Sample& sample = font.samples.emplace_back();
        sample.serial = font.nextSerial++;
        const std::size_t character = random() % characterSet().size();
        sample.code = codeOf(characterSet()[character]);
        for (std::size_t k = 0; k < kInputCount; ++k)
            sample.inputs[k] = static_cast<float>((k * 7 + character * 13) % 50 + random() % 20) / 70;
        font.distances.push_back(static_cast<double>(random() % 1000) / 1000);
        TrainedCharacter& one = trained[sample.code];
        one.code = sample.code;
        ++one.count;
        one.mean = sample.inputs;
    }
    for (const auto& [code, one] : trained) font.training.characters.push_back(one);
    Network& network = font.training.network;
    for (const auto& [code, one] : trained) network.codes.push_back(code);
    network.hidden = 1;
    network.means.assign(kInputCount, 0);
    network.scales.assign(kInputCount, 1);
    network.first.assign(kInputCount, 0);
    network.firstBias.assign(1, 0);
    network.second.assign(network.codes.size(), 0);
    network.secondBias.assign(network.codes.size(), 0);
    return font;
}

}  // namespace dravik
