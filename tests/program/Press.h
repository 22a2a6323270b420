// Keys that the cases of this folder press. What they say to the class OpenedProgram, which every window
// system has one of: the program's window on a jobs folder of its own, worked by its driver and by keys, and
// looked at.
#pragma once

namespace dravik::test {

enum class Press { Enter, PageUp, PageDown, Undo };

}  // namespace dravik::test
