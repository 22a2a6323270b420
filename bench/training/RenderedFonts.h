// Samples of rendered fonts, for training and for testing what was learnt.
#pragma once

#include <string>
#include <vector>

#include "RenderedText.h"
#include "engine/classifier/Network.h"

namespace dravik {

using namespace engine;

struct LabelledInputs {
    std::vector<SampleInputs> inputs;
    std::vector<std::int32_t> codes;

    std::size_t size() const noexcept { return codes.size(); }
    void add(const SampleInputs& sample, std::int32_t code) {
        inputs.push_back(sample);
        codes.push_back(code);
    }
    void add(const LabelledInputs& other) {
        inputs.insert(inputs.end(), other.inputs.begin(), other.inputs.end());
        codes.insert(codes.end(), other.codes.begin(), other.codes.end());
    }
};

TrainingSet trainingSet(const LabelledInputs& data);

// Adds every overview character as it appears in so many images of two lines each.
void addRendered(LabelledInputs& to, const std::string& fontFile, Tier tier, int images, unsigned seed);

}  // namespace dravik
