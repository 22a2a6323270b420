// A font file that the operator opens from the desktop, drops on the window or names on the command line: one
// of the jobs folder's fonts is shown; another one is offered to be copied there.
#pragma once

#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "ui/Platform.h"

namespace dravik::trainer {

// By its name; a folder is none.
bool isFontFile(const std::string& path);

// Shows the font in this file. One that lies elsewhere becomes a font of the jobs folder when the operator
// wants it, and replaces one of its name only when he says so. Gives what went wrong, a line each.
std::vector<std::string> openFontFile(Trainer& trainer, ui::Platform& platform, const std::string& path);

}  // namespace dravik::trainer
