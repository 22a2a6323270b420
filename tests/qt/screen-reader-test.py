# Walks the accessibility tree of the running trainer as a screen reader does: from the desktop over the bus, through
# everything that is shown. Ends with 0 when all of it is told.
import sys
import time

import pyatspi

problems = []


def shown(node, depth=0):
    """What is shown in a node, itself included."""
    states = node.getState()
    if depth > 1 and not states.contains(pyatspi.STATE_SHOWING):
        return
    yield node, states
    for index in range(node.childCount):
        child = node.getChildAtIndex(index)
        if child:
            yield from shown(child, depth + 1)


def heard(window):
    """The names of all that takes the focus, and of what has it."""
    names, focused = [], []
    for node, states in shown(window, 1):
        if not states.contains(pyatspi.STATE_FOCUSABLE):
            continue
        names.append(node.name)
        if not node.name.strip():
            problems.append(f"a {node.getRoleName()} of {window.name} has no name")
        if states.contains(pyatspi.STATE_FOCUSED) and "item" not in node.getRoleName():
            focused.append(node.name)
    return names, focused


def until(found, what):
    for _ in range(300):
        if result := found():
            return result
        time.sleep(0.1)
    sys.exit(f"FAILED: {what}")


def window_of(start):
    for program in pyatspi.Registry.getDesktop(0):
        for window in program or []:
            if window and window.name.startswith(start):
                return window
    return None


main = until(lambda: window_of("Dravik Trainer"), "the window does not come up on the bus")
until(lambda: any("characters found" in node.description for node, _ in shown(main, 1)), "no characters are found")
names, focused = heard(main)
for name in ("Part image", "Text read in the image", "Opened images", "Character Set", "Text or Character to Include",
             "Maintain Case", "Include", "Learn", "Timeout", "A, not in font", "Samples that are shown"):
    if name not in names:
        problems.append(f"nothing is called {name}")
if "Empty" in names:
    problems.append("the legend takes the focus")
if len(focused) > 1:  # without a window manager it may be nowhere
    problems.append(f"the focus is at {focused}")

button = next(node for node, _ in shown(main, 1) if node.name == "Select Font")
try:
    button.queryAction().doAction(0)
except Exception:  # the answer comes when the dialog is closed
    pass
manager = until(lambda: window_of("Font Manager"), "the font manager does not come up on the bus")
names, focused = heard(manager)
if "Available Fonts" not in names or focused != ["New..."]:  # there is no font to choose
    problems.append(f"of the font manager is told {names}, the focus is at {focused}")

for problem in problems:
    print("FAILED:", problem)
sys.exit(1 if problems else 0)
