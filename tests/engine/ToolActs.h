// What tests do with the embedded tool again and again.
#pragma once

#include <string>
#include <thread>
#include <vector>

#include "base/Text.h"
#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"

namespace dravik {

// Samples of a drawn line, committed.
inline void teach(EmbeddedTool& tool, const std::string& text, const Drawing& how = {}) {
    tool.setImage(drawn({text}, how));
    tool.IncludeSamples(text);
    tool.CommitNewSamples();
}

inline void train(EmbeddedTool& tool) {
    tool.StartTraining();
    while (!tool.IsTrainingDone()) std::this_thread::yield();
}

// The characters of the committed samples.
inline std::string labels(EmbeddedTool& tool) {
    std::string all;
    for (const Sample* one : tool.samples(tool::SampleKind::Committed)->samples)
        all += characterOf(one->code);
    return all;
}

inline std::string textOf(const std::vector<ReadCharacter>& read) {
    std::string text;
    for (const ReadCharacter& one : read) text += one.character;
    return text;
}

}  // namespace dravik
