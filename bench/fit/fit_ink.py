"""Fits the network of ink on pictures and writes its weights; tools/fit.sh calls it.

    fit_ink.py PICTURES WEIGHTS --steps N --check FOLDER [--sources FILE] [--examples FILE]

PICTURES are folders of dravik_ink, comma between them. With a fixed number of threads the same pictures give the same
weights to the digit on one machine. WEIGHTS is written as fit.py does.
"""
import hashlib
import json
import os
import sys

# Before the others: it says how they use threads.
from fit import THREADS, as_bytes, descent, folded, given_arguments, write_weights

import numpy
import torch
from torch import nn

BATCH, HEIGHT, WIDTH = 16, 96, 160
# Half the sides of the windows in which brightness and contrast are evened out.
WINDOWS = (8, 24)
EXAMPLES = 6
# Name, inputs, outputs, side of the kernel, step, distance of a kernel's places.
LAYERS = [
    ("fine", len(WINDOWS), 16, 5, 2, 1),
    ("middle", 16, 32, 3, 2, 1),
    ("coarse", 32, 48, 3, 2, 1),
    ("around", 48, 48, 3, 1, 1),
    ("farther", 48, 48, 3, 1, 2),
    ("middle again", 48 + 32, 32, 3, 1, 1),
    ("fine again", 32 + 16, 16, 3, 1, 1),
]
OUTPUTS = 4  # of each two by two pixels


def even(picture):
    """Its pixels against the brightness and contrast around them, as bytes about 128, for each window."""
    values = numpy.pad(picture.astype(numpy.int64), ((1, 0), (1, 0)))
    sums = values.cumsum(0).cumsum(1)
    squares = (values * values).cumsum(0).cumsum(1)
    height, width = picture.shape
    result = []
    for window in WINDOWS:
        top = numpy.clip(numpy.arange(height) - window, 0, height)[:, None]
        bottom = numpy.clip(numpy.arange(height) + window + 1, 0, height)[:, None]
        left = numpy.clip(numpy.arange(width) - window, 0, width)[None]
        right = numpy.clip(numpy.arange(width) + window + 1, 0, width)[None]
        count = (bottom - top) * (right - left)
        within = lambda of: of[bottom, right] - of[top, right] - of[bottom, left] + of[top, left]
        total = within(sums)
        spread = numpy.sqrt((within(squares) * count - total * total) / (count * count)) + 2
        different = (picture.astype(numpy.int64) * count - total) / count
        result.append(numpy.clip(numpy.floor(128.5 + 40 * different / spread), 1, 255).astype(numpy.uint8))
    return numpy.stack(result)


def doubled(x):
    return nn.functional.interpolate(x, scale_factor=2, mode="nearest")


def network_of(convolve, x):
    fine = convolve("fine", x)
    middle = convolve("middle", fine)
    x = convolve("farther", convolve("around", convolve("coarse", middle)))
    x = convolve("middle again", torch.cat([doubled(x), middle], 1))
    return convolve("fine again", torch.cat([doubled(x), fine], 1))


class Ink(nn.Module):
    def __init__(self):
        super().__init__()
        self.convolutions, self.norms = nn.ModuleDict(), nn.ModuleDict()
        for name, inputs, outputs, side, step, apart in LAYERS:
            self.convolutions[name] = nn.Conv2d(inputs, outputs, side, step, side // 2 * apart, apart, bias=False)
            self.norms[name] = nn.BatchNorm2d(outputs)
        self.outputs = nn.Conv2d(LAYERS[-1][2], OUTPUTS, 3, padding=1)

    def forward(self, x):
        x = network_of(lambda name, x: torch.relu(self.norms[name](self.convolutions[name](x))), x)
        return nn.functional.pixel_shuffle(self.outputs(x), 2)[:, 0]

    def layers(self):
        """Weights (outputs x the rest) and biases of each layer, norms folded in."""
        for name, *_ in LAYERS:
            yield folded(self.convolutions[name], self.norms[name])
        yield self.outputs.weight, self.outputs.bias


def run(layers, x):
    """What the program computes: the folded network."""
    named = {name: (weights, bias, step, apart) for (name, _, _, _, step, apart), (weights, bias) in zip(LAYERS, layers)}

    def convolve(name, x):
        weights, bias, step, apart = named[name]
        return torch.relu(nn.functional.conv2d(x, weights, bias, step, weights.shape[-1] // 2 * apart, apart))

    weights, bias = layers[-1]
    return nn.functional.pixel_shuffle(nn.functional.conv2d(network_of(convolve, x), weights, bias, padding=1), 2)[:, 0]


def load(folders):
    """What the network sees of each picture, what of it is print, the kind of the face, and the picture."""
    pictures = []
    for folder in folders:
        data = numpy.fromfile(os.path.join(folder, "pictures.bin"), numpy.uint8)
        at = 0
        while at < len(data):
            width, height, kind = int(data[at]) | int(data[at + 1]) << 8, int(data[at + 2]) | int(data[at + 3]) << 8, int(data[at + 4])
            seen, whole = data[at + 5 : at + 5 + 2 * width * height].reshape(2, height, width)
            at += 5 + 2 * width * height
            pictures.append((even(seen), whole, kind, seen))
    return pictures


class Batches:
    def __init__(self, pictures, generator):
        self.pictures, self.generator = pictures, generator
        self.order, self.at = generator.permutation(len(pictures)), 0

    def take(self):
        if self.at + BATCH > len(self.order):
            self.order, self.at = self.generator.permutation(len(self.pictures)), 0
        seen = numpy.full((BATCH, len(WINDOWS), HEIGHT, WIDTH), 128, numpy.float32)
        whole = numpy.full((BATCH, HEIGHT, WIDTH), -1, numpy.float32)
        for i, number in enumerate(self.order[self.at : self.at + BATCH]):
            picture, ink, _, _ = self.pictures[number]
            height, width = min(HEIGHT, ink.shape[0]), min(WIDTH, ink.shape[1])
            top = self.generator.integers(0, ink.shape[0] - height + 1)
            left = self.generator.integers(0, ink.shape[1] - width + 1)
            own = picture[:, top : top + height, left : left + width].astype(numpy.float32)
            what = ink[top : top + height, left : left + width]
            if self.generator.random() < 0.5:
                own = 256 - own
            seen[i, :, :height, :width] = own
            whole[i, :height, :width] = what / 255
        self.at += BATCH
        return torch.from_numpy((seen - 128) / 64), torch.from_numpy(whole)


def said_of(layers, seen):
    """Log odds that each pixel is print, of a picture of any size."""
    height, width = seen.shape[1:]
    x = numpy.full((1, len(WINDOWS), -height % 8 + height, -width % 8 + width), 128, numpy.float32)
    x[0, :, :height, :width] = seen
    with torch.no_grad():
        return run(layers, torch.from_numpy((x - 128) / 64))[0, :height, :width]


def score(layers, pictures):
    """How well print is told from the rest, in all and of dots; as 2 x common / (seen + true), and the loss."""
    sums = {}
    for seen, whole, kind, _ in pictures:
        odds = said_of(layers, seen)
        truth = torch.from_numpy(whole.astype(numpy.float32) / 255)
        is_print, is_true = odds > 0, truth > 0.5
        found = [
            float((is_print & is_true).sum()),
            float(is_print.sum()) + float(is_true.sum()),
            nn.functional.binary_cross_entropy_with_logits(odds, truth, reduction="sum").item(),
            truth.numel(),
        ]
        for group in ("all", "dots" if kind >= 2 else "others"):
            sums[group] = [a + b for a, b in zip(sums.get(group, [0] * 4), found)]
    return {
        **{f"print found, {group}": round(200 * common / both, 2) for group, (common, both, _, _) in sums.items()},
        "loss": round(sums["all"][2] / sums["all"][3], 4),
    }


def fit(pictures, steps, check, report):
    torch.manual_seed(20011)
    batches = Batches(pictures, numpy.random.default_rng(20011))
    network = Ink()
    optimiser, rates = descent(network, steps, 5e-3)
    losses = []
    for step in range(steps):
        seen, whole = batches.take()
        odds = network(seen)
        known = whole >= 0
        share = torch.sigmoid(odds)[known]
        loss = nn.functional.binary_cross_entropy_with_logits(odds[known], whole[known])
        loss = loss + 0.2 * (1 - 2 * (share * whole[known]).sum() / (share.sum() + whole[known].sum() + 1))
        optimiser.zero_grad()
        loss.backward()
        optimiser.step()
        rates.step()
        losses.append(loss.item())
        if (step + 1) % report == 0 or step + 1 == steps:
            network.eval()
            with torch.no_grad():
                layers = [(w.detach(), b.detach()) for w, b in network.layers()]
            print(step + 1, round(sum(losses) / len(losses), 4), json.dumps(score(layers, check)), flush=True)
            losses = []
            network.train()
    network.eval()
    return [(w.detach(), b.detach()) for w, b in network.layers()]


def smallest(pictures):
    return sorted(pictures, key=lambda picture: picture[3].size)[len(pictures) // 8 :][:EXAMPLES]


def main():
    arguments = given_arguments("pictures")
    pictures, check = load(arguments.pictures.split(",")), load([arguments.check])
    print(len(pictures), "pictures,", len(check), "to check with", flush=True)
    layers = fit(pictures, arguments.steps, check, arguments.report)
    bytes_layers, packed = as_bytes(layers)
    digest = hashlib.sha256(b"".join(seen.tobytes() + whole.tobytes() for seen, whole, *_ in pictures)).hexdigest()[:16]
    head = [
        "Weights of the network of ink, written by tools/fit.sh. Nobody edits them.",
        f"inputs: pictures evened out in windows of {', '.join(str(2 * w + 1) for w in WINDOWS)} pixels; output: of each pixel, whether it is print",
        f"layers: {', '.join(str(tuple(w.shape)) for w, _ in layers)}",
        f"pictures: {len(pictures)}, pixels {sum(whole.size for _, whole, *_ in pictures)}",
        f"digest of the pictures: {digest}",
        f"steps: {arguments.steps} of {BATCH} parts of {WIDTH} x {HEIGHT} pixels, {THREADS} threads, seed 20011, torch {torch.__version__}",
        f"faces not fitted on, {len(check)} pictures, as floats: {json.dumps(score(layers, check))}",
        f"the same as bytes: {json.dumps(score(bytes_layers, check))}",
    ]
    write_weights(arguments, head, packed)
    if arguments.examples:
        with open(arguments.examples, "wb") as out:
            for even_seen, _, _, seen in smallest(check):
                said = said_of(layers, even_seen).numpy()
                out.write(numpy.array(seen.shape, "<u2").tobytes() + seen.tobytes() + said.astype("<f4").tobytes())
    print("\n".join(head[3:8]))


if __name__ == "__main__":
    sys.exit(main())
