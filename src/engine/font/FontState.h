// A font as it is in memory: its characters, its samples, committed and not, and its training.
#pragma once

#include <memory>

#include "engine/font/FontFile.h"
#include "engine/font/SampleStore.h"
#include "tool/FontTool.h"

namespace dravik::engine {

using TrainingPtr = std::shared_ptr<const Training>;

struct FontState {
    tool::CharacterSet characterSet;
    SampleStore samples;
    TrainingPtr training = std::make_shared<Training>();  // never null
    SegmentationSettings settings;                        // by which images are looked at

    FontState() = default;
    // Raises nothing but what memory raises, as the record is one that decodeFont() accepts.
    explicit FontState(const FontRecord& font);
    // All or nothing. Serial numbers go on behind those that there were.
    void replace(const FontRecord& font);
    // What a font file keeps: all but the uncommitted samples.
    FontRecord record() const;
};

}  // namespace dravik::engine
