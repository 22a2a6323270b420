// A page to hand over with a font: how many samples it has of each character, what its held-out check has
// found, and pictures of what is doubtful. One HTML file that needs nothing beside it.
#pragma once

#include <string>

#include "engine/embedded/HeldOutCheck.h"
#include "engine/font/SampleStore.h"

namespace dravik::trainer {

struct AccuracyReport {
    std::string font;
    std::string written;  // when the font's file was written, "" for one that is not saved
    bool isTrained = false;
    engine::SampleColumnsPtr samples;              // committed, not null
    const engine::HeldOutResult* check = nullptr;  // null when there was nothing to check
};

std::string accuracyPage(const AccuracyReport& report);

}  // namespace dravik::trainer
