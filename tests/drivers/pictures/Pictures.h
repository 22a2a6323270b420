// What the programs that make pictures of the trainer have in common.
#pragma once

#include <string>
#include <vector>

#include "drivers/WindowDriver.h"
#include "trainer/Trainer.h"

namespace dravik::test {

// Runs the session that the arguments ask for, "story PICTURES IMAGE..." or "guide PICTURES PARTS" where
// PARTS is the folder of the sample parts; says on standard output what happens. The program's exit status.
int makePictures(const std::vector<std::string>& arguments, WindowDriver& driver, trainer::Trainer& trainer);

}  // namespace dravik::test
