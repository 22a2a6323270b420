// What the programs that make pictures of the trainer have in common: what they are asked for, and the
// session in the window that leaves the pictures.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drivers/ScriptedSession.h"
#include "drivers/WindowDriver.h"
#include "trainer/Trainer.h"

namespace dravik::test {

struct PictureOrder {
    ScriptedSession::Kind kind = ScriptedSession::Kind::Story;
    std::string folder;               // for the pictures; it is made
    std::vector<std::string> images;  // as ScriptedSession::run takes them
};

// Of "story PICTURES IMAGE..." or "guide PICTURES PARTS", where PARTS is the folder of the sample parts;
// nothing of anything else, of which the usage is printed.
std::optional<PictureOrder> pictureOrder(const std::vector<std::string>& arguments);

// Runs the session, which says on standard output what happens. The program's exit status.
int makePictures(const PictureOrder& order, WindowDriver& driver, trainer::Trainer& trainer);

}  // namespace dravik::test
