// The program has windows, and so no console of its own; its commands write to the one that it was started
// from, or to where its output is redirected. An interactive shell does not wait for such a program: `start
// /wait` and batch files do.
#pragma once

namespace dravik::app {

// Makes std::cout and std::cerr reach whoever reads them, in UTF-8. Does nothing when nobody does.
void useCallersConsole();

// True when messages go to a console, where a line can be written over.
bool errIsConsole();

}  // namespace dravik::app
