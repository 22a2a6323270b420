#!/usr/bin/python3
"""Reads images and draws how sure each character is: confidences.py FONT.nnd PLOT.png IMAGE..."""

# %% Read
import sys

import matplotlib
import numpy as np
from PIL import Image

import dravik

font = dravik.Font(sys.argv[1])
plot, files = sys.argv[2], sys.argv[3:]
readings = [font.read(np.asarray(Image.open(file).convert("L"))) for file in files]
for file, reading in zip(files, readings):
    print(file, reading.text.replace("\n", " / "), sep="\t")

# %% Which characters are the least sure, and what else they may be
characters = [character for reading in readings for character in reading.characters]
for one in sorted(characters, key=lambda character: character.confidence)[:5]:
    others = ", ".join(f"{other.text} {other.confidence:.3f}" for other in one.alternatives)
    print(f"{one.text} {one.confidence:.3f}" + (f"; or {others}" if others else ""))

# %% The confidences of all characters, by what they were read as
matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

names = sorted({character.text for character in characters})
figure, axes = plt.subplots(figsize=(max(4, len(names) / 4), 4))
axes.scatter(
    [names.index(character.text) for character in characters],
    [character.confidence for character in characters],
    s=12,
)
axes.axhline(0.2, linestyle=":", label="read as ? below")
axes.set_xticks(range(len(names)), names)
axes.set(xlabel="read as", ylabel="confidence", ylim=(0, 1.02))
axes.legend()
figure.savefig(plot, bbox_inches="tight")
