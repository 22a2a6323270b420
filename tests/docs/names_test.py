"""What CONTRIBUTING.md, README.md and the guides name is there: words of the code, files, build targets, presets. Guides that
are packed say so where they name files of the sources, which their readers do not have."""
import json
import os
import re
import subprocess
import sys
from pathlib import Path

root = Path(__file__).resolve().parents[2]
# Of other programs, places for names, and what the code puts together.
elsewhere = set(
    "NAME NUMBER PROCESS TIME VERSION benchmark_filter gtest_list_tests taskset istance uery kName vVERSION IFontTool2 "
    "X_posix X_win NAME_posix NAME_win ZCSUS DravikButton DravikEdit".split()
)
folders = "src tests tools bench packaging cmake fuzz docs data".split()

skipped = {"build", "packages", "releases", "screenshots", "_deps", "__pycache__"}
tree = []
for folder, inside, names in os.walk(root):
    inside[:] = [one for one in inside if not one.startswith((".", "build")) and one not in skipped]
    tree += [os.path.relpath(os.path.join(folder, name), root) for name in names]
code = [one for one in tree if not one.endswith((".md", ".png", ".bin")) and not one.startswith(("tests/docs/", "data/"))]
words = set()
for one in code:
    words |= set(re.findall(r"\w+", (root / one).read_text(errors="replace")))
for one in tree:
    words |= set(re.findall(r"\w+", one))

cmake = "\n".join((root / one).read_text() for one in tree if one.endswith("CMakeLists.txt"))
targets = set(re.findall(r"add_(?:executable|library|custom_target)\(([\w-]+)", cmake)) | {"all"}
targets |= {name + "_tests" for name in re.findall(r"dravik_test\((\w+)", cmake)}
targets |= {name + "_bench" for name in re.findall(r"(\w+)_bench\b", cmake)}
presets = {one["name"] for one in json.loads((root / "CMakePresets.json").read_text())["configurePresets"]}

problems = []


def complain(guide, text):
    problems.append(f"{guide}: {text}")


def without_blocks(text):
    return re.sub(r"^```.*?^```$", "", text, flags=re.S | re.M)


def of_sources(name):
    return name in ("./run", "./test") or (name.split("/")[0] in folders[:-2] and "/" in name)


guides = ["CONTRIBUTING.md", "README.md"] + sorted(str(one.relative_to(root)) for one in (root / "docs").glob("*.md"))
for guide in guides:
    text = (root / guide).read_text()
    for name in re.findall(r"`([^`\n]+)`", without_blocks(text)):
        for word in re.findall(r"[A-Za-z_]\w{3,}", name):
            if word not in words and word not in elsewhere:
                complain(guide, f"nothing is called {word} ({name})")
        path = re.fullmatch(r"((?:%s)/[\w./-]*[\w/])(\.\{h,cpp\})?" % "|".join(folders), name)
        for end in (".h", ".cpp") if path and path[2] else ("",):
            if path and not (root / path[1]).exists() and not list(root.glob(path[1] + (end or ".*"))) and "NAME" not in name:
                complain(guide, f"there is no {path[1] + end}")
    for made in re.findall(r"ninja -C build[\w-]* ([\w -]+)|--target ([\w-]+)", text):
        for target in " ".join(made).split():
            if target not in targets:
                complain(guide, f"there is no build target {target}")
    for preset in re.findall(r"--preset ([\w-]+)", text):
        if preset not in presets:
            complain(guide, f"there is no preset {preset}")

packed = set(re.findall(r"docs/([\w-]+\.md)", (root / "tools/package.sh").read_text()))
for made in re.findall(r"^guides\([\w-]+ ([^)]*)\)", (root / "packaging/linux/CMakeLists.txt").read_text(), flags=re.M):
    packed |= set(made.split())
for guide in sorted(packed):
    head, *sections = re.split(r"^## ", without_blocks((root / "docs" / guide).read_text()), flags=re.M)
    for section in [head] + sections:
        named = [name for name in re.findall(r"`([^` \n]+)[^`\n]*`", section) if of_sources(name)]
        if named and "source" not in head + section:
            complain("docs/" + guide, f"names {named[0]}, which is in no package, without saying that it is of the sources")

print("\n".join(problems) or f"Names in {len(guides)} documents are right, and in {len(packed)} packed guides")
sys.exit(1 if problems else 0)
