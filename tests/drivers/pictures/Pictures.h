// What the programs that make pictures of the trainer have in common: what they are asked for, and the
// session in the window that leaves the pictures.
#pragma once

#include <string>
#include <vector>

#include "drivers/ScriptedSession.h"
#include "drivers/WindowDriver.h"
#include "trainer/Trainer.h"

namespace dravik::test {

struct PictureOrder {
    ScriptedSession::Kind kind = ScriptedSession::Kind::Story;
    std::string folder;              // for the pictures; it is made
    std::vector<std::string> paths;  // as ScriptedSession::run takes them
    bool wrong = false;              // nothing that can be done; the usage was printed
};

// Of "story PICTURES IMAGE|FOLDER..." or "guide PICTURES PARTS", where PARTS is the folder of the sample
// parts.
PictureOrder pictureOrder(const std::vector<std::string>& arguments);

// Runs the session, which says on standard output what happens. The program's exit status.
int makePictures(const PictureOrder& order, WindowDriver& driver, trainer::Trainer& trainer);

}  // namespace dravik::test
