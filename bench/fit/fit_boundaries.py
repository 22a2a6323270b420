"""Fits the network of boundaries between characters on strips and writes its weights; tools/fit.sh calls it.

    fit_boundaries.py STRIPS WEIGHTS --steps N --check FOLDER [--sources FILE] [--examples FILE]

STRIPS are folders of dravik_boundaries, comma between them. With a fixed number of threads the same strips give the same
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

HEIGHT = 24
BATCH, WIDTH = 32, 128
IN_DOUBT = 255
CHARACTERS = 74
EXAMPLES = 12
# Outputs, kernel across and along the line, step across the line, distance of a kernel's places along it.
LAYERS = [(12, 5, 5, 2, 1), (24, 3, 5, 2, 1), (32, 3, 5, 2, 1), (48, 3, 5, 3, 1), (48, 1, 7, 1, 2), (48, 1, 7, 1, 4)]


def padding(layer):
    _, across, along, step, apart = layer
    return (0 if step == 3 else across // 2, along // 2 * apart)


class Boundaries(nn.Module):
    def __init__(self):
        super().__init__()
        inputs, self.convolutions, self.norms = 1, nn.ModuleList(), nn.ModuleList()
        for layer in LAYERS:
            outputs, across, along, step, apart = layer
            self.convolutions.append(
                nn.Conv2d(inputs, outputs, (across, along), (1 if step == 3 else step, 1), padding(layer), (1, apart), bias=False)
            )
            self.norms.append(nn.BatchNorm2d(outputs))
            inputs = outputs
        self.outputs = nn.Conv2d(inputs, 1, 1)
        # Which character a column is of is asked while fitting only, since who knows that sees boundaries better.
        self.characters = nn.Conv2d(inputs, CHARACTERS, 1)

    def forward(self, x):
        for convolution, norm in zip(self.convolutions, self.norms):
            x = torch.relu(norm(convolution(x)))
        return self.outputs(x)[:, 0, 0], self.characters(x)[:, :, 0]

    def layers(self):
        """Weights (outputs x the rest) and biases of each layer, norms folded in."""
        for convolution, norm in zip(self.convolutions, self.norms):
            yield folded(convolution, norm)
        yield self.outputs.weight, self.outputs.bias


def load(folders):
    """Strips of ink, what each column is, which character, the kind of the face."""
    strips = []
    for folder in folders:
        data = numpy.fromfile(os.path.join(folder, "strips.bin"), numpy.uint8)
        at = 0
        while at < len(data):
            width = int(data[at]) | int(data[at + 1]) << 8
            kind, at = int(data[at + 2]), at + 3
            ink = data[at : at + HEIGHT * width].reshape(HEIGHT, width)
            at += HEIGHT * width
            labels = data[at : at + 2 * width].reshape(width, 2)
            at += 2 * width
            strips.append((ink, labels, kind))
    return strips


def run(layers, x):
    """What the program computes: the folded network."""
    for layer, (weights, bias) in zip(LAYERS, layers):
        _, _, _, step, apart = layer
        x = torch.relu(nn.functional.conv2d(x, weights, bias, (1 if step == 3 else step, 1), padding(layer), (1, apart)))
    weights, bias = layers[-1]
    return nn.functional.conv2d(x, weights, bias)[:, 0, 0]


def score(layers, strips):
    """Shares of the boundaries seen, of those where characters touch, and of the characters without one inside."""
    seen = touching_seen = boundaries = touching = whole = characters = 0
    loss, columns = 0.0, 0
    for ink, labels, _ in strips:
        with torch.no_grad():
            out = run(layers, torch.from_numpy(ink[None, None].astype(numpy.float32) / 255))[0]
        what = torch.from_numpy(labels[:, 0].astype(numpy.int64))
        known = what != IN_DOUBT
        loss += nn.functional.binary_cross_entropy_with_logits(out[known], what[known].float(), reduction="sum").item()
        columns += int(known.sum())
        is_boundary, what = out.numpy() > 0, labels[:, 0]
        # Stretches of columns that are alike, those in doubt left aside.
        at, spans = 0, []
        while at < len(what):
            end = at
            while end < len(what) and what[end] == what[at]:
                end += 1
            if what[at] != IN_DOUBT:
                spans.append((what[at], at, end))
            at = end
        for index, (kind, begin, end) in enumerate(spans):
            if kind == 0:
                characters += 1
                whole += not is_boundary[begin:end].any()
            elif 0 < index < len(spans) - 1:
                found = is_boundary[max(0, begin - 1) : end + 1].any()
                boundaries += 1
                seen += found
                if end - begin <= 2 and ink[4:20, begin:end].max() > 127:
                    touching += 1
                    touching_seen += found
    share = lambda part, of: round(100 * part / max(1, of), 2)
    return {
        "boundaries seen": share(seen, boundaries),
        "touching": share(touching_seen, touching),
        "whole": share(whole, characters),
        "loss": round(loss / columns, 4),
    }


class Batches:
    """Parts of strips, one after the other in an order drawn anew each time."""

    def __init__(self, strips, generator):
        self.strips, self.generator, self.order = strips, generator, []

    def take(self):
        ink = numpy.zeros((BATCH, 1, HEIGHT, WIDTH), numpy.float32)
        what = numpy.full((BATCH, WIDTH), 1, numpy.uint8)
        which = numpy.full((BATCH, WIDTH), IN_DOUBT, numpy.uint8)
        for row in range(BATCH):
            if not self.order:
                self.order = self.generator.permutation(len(self.strips)).tolist()
            own, labels, _ = self.strips[self.order.pop()]
            width = own.shape[1]
            first = int(self.generator.integers(0, max(1, width - WIDTH + 1)))
            end = min(width, first + WIDTH)
            ink[row, 0, :, : end - first] = own[:, first:end]
            what[row, : end - first] = labels[first:end, 0]
            which[row, : end - first] = labels[first:end, 1]
        factor = 0.75 + 0.5 * self.generator.random((BATCH, 1, 1, 1), numpy.float32)
        ink = numpy.minimum(ink * factor / 255, 1)
        return torch.from_numpy(ink), torch.from_numpy(what), torch.from_numpy(which.astype(numpy.int64))


def fit(strips, steps, check, report):
    torch.manual_seed(20011)
    batches = Batches(strips, numpy.random.default_rng(20011))
    network = Boundaries()
    optimiser, rates = descent(network, steps, 5e-3)
    losses = []
    for step in range(steps):
        ink, what, which = batches.take()
        boundary, character = network(ink)
        known, named = what != IN_DOUBT, which < CHARACTERS
        loss = nn.functional.binary_cross_entropy_with_logits(boundary[known], what[known].float())
        loss = loss + 0.05 * nn.functional.cross_entropy(character.permute(0, 2, 1)[named], which[named])
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


def main():
    arguments = given_arguments("strips")
    strips, check = load(arguments.strips.split(",")), load([arguments.check])
    print(len(strips), "strips,", len(check), "to check with", flush=True)
    layers = fit(strips, arguments.steps, check, arguments.report)
    bytes_layers, packed = as_bytes(layers)
    digest = hashlib.sha256(b"".join(ink.tobytes() + labels.tobytes() for ink, labels, _ in strips)).hexdigest()[:16]
    head = [
        "Weights of the network of boundaries, written by tools/fit.sh. Nobody edits them.",
        f"inputs: strips of ink {HEIGHT} rows high; output: of each column, whether it is between two characters",
        f"layers: {', '.join(str(tuple(w.shape)) for w, _ in layers)}",
        f"strips: {len(strips)}, columns {sum(ink.shape[1] for ink, _, _ in strips)}",
        f"digest of the strips: {digest}",
        f"steps: {arguments.steps} of {BATCH} parts of {WIDTH} columns, {THREADS} threads, seed 20011, torch {torch.__version__}",
        f"faces not fitted on, {len(check)} strips, as floats: {json.dumps(score(layers, check))}",
        f"the same as bytes: {json.dumps(score(bytes_layers, check))}",
    ]
    write_weights(arguments, head, packed)
    if arguments.examples:
        with open(arguments.examples, "wb") as out:
            for ink, _, _ in check[:: len(check) // EXAMPLES][:EXAMPLES]:
                with torch.no_grad():
                    said = run(layers, torch.from_numpy(ink[None, None].astype(numpy.float32) / 255))[0]
                out.write(numpy.uint16(ink.shape[1]).astype("<u2").tobytes() + ink.tobytes() + said.numpy().astype("<f4").tobytes())
    print("\n".join(head[3:8]))


if __name__ == "__main__":
    sys.exit(main())
