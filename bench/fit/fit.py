"""Fits the network of the base recogniser on patches and writes its weights; tools/fit.sh calls it.

    fit.py PATCHES WEIGHTS --steps N --check FOLDER [--sources FILE]

PATCHES are folders of dravik_patches, comma between them. With a fixed number of threads the same patches give the
same weights to the digit on one machine. WEIGHTS begins with lines of text that say where it comes from, ended by a
zero byte; then follow for each layer, outputs first, the scale of each output (float), its bias (float) and its
weights (signed bytes, to be multiplied by the scale).
"""
import argparse
import hashlib
import json
import os
import sys

# Threads that wait are not to keep the processor busy; products are too small to be shared.
os.environ["OMP_WAIT_POLICY"] = "passive"
os.environ["OPENBLAS_NUM_THREADS"] = "1"

import numpy
import torch
from torch import nn

CHARACTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrstuvwxyz-=.,:;\"'_*+/"
NONE = len(CHARACTERS)
SIDE = 24
THREADS = 2
BATCH = 256
EXAMPLES = 40
# Sets of characters that many faces draw alike; what is left when they are taken for one is real confusion.
ALIKE = ["0Oo", "Il1", "Cc", "Ss", "Vv", "Ww", "Xx", "Zz", "Uu", "Kk", "Pp", "'", ",", "-_"]


class Recogniser(nn.Module):
    def __init__(self):
        super().__init__()
        self.first = nn.Conv2d(2, 16, 5, stride=2, padding=2, bias=False)
        self.second = nn.Conv2d(16, 32, 3, stride=2, padding=1, bias=False)
        self.third = nn.Conv2d(32, 64, 3, stride=2, padding=1, bias=False)
        self.norms = nn.ModuleList([nn.BatchNorm2d(n) for n in (16, 32, 64)])
        self.gather = nn.Linear(64 * 9, 112)
        self.outputs = nn.Linear(112, NONE + 1)
        self.drop = nn.Dropout(0.1)

    def forward(self, x):
        for convolution, norm in zip((self.first, self.second, self.third), self.norms):
            x = torch.relu(norm(convolution(x)))
        x = torch.relu(self.gather(self.drop(x.flatten(1))))
        return self.outputs(x)

    def layers(self):
        """Name, weights (outputs x the rest) and biases of each layer, norms folded in."""
        for name, convolution, norm in zip(("first", "second", "third"), (self.first, self.second, self.third), self.norms):
            yield name, *folded(convolution, norm)
        yield "gather", self.gather.weight, self.gather.bias
        yield "outputs", self.outputs.weight, self.outputs.bias


def load(folders):
    labels = [numpy.fromfile(os.path.join(f, "labels.bin"), numpy.uint8).reshape(-1, 2) for f in folders]
    patches = [numpy.fromfile(os.path.join(f, "patches.bin"), numpy.uint8).reshape(-1, 2, SIDE, SIDE) for f in folders]
    return torch.from_numpy(numpy.concatenate(patches)), numpy.concatenate(labels)


def run(layers, x):
    """What the program computes: the folded network."""
    for index, (_, weights, bias) in enumerate(layers):
        if weights.dim() == 4:
            x = torch.relu(nn.functional.conv2d(x, weights, bias, stride=2, padding=weights.shape[-1] // 2))
            continue
        x = nn.functional.linear(x.flatten(1), weights, bias)
        if index + 1 < len(layers):
            x = torch.relu(x)
    return x


def quantised(weights):
    """Scale of each output and whole numbers of -127 to 127."""
    flat = weights.flatten(1)
    scale = flat.abs().amax(1).clamp_min(1e-8) / 127
    return scale, torch.round(flat / scale[:, None])


def score(layers, patches, labels):
    """Shares of characters read right, right but for those that look alike, right in the best two, and kept from none."""
    merged = numpy.arange(NONE + 1)
    for group in ALIKE:
        for c in group[1:]:
            merged[CHARACTERS.index(c)] = CHARACTERS.index(group[0])
    guesses, seconds, loss = [], [], 0.0
    truth = torch.from_numpy(labels[:, 0].astype(numpy.int64))
    with torch.no_grad():
        for at in range(0, len(patches), 1024):
            out = run(layers, patches[at : at + 1024].float() / 255)
            loss += nn.functional.cross_entropy(out, truth[at : at + 1024], reduction="sum").item()
            best = out.topk(2, 1).indices.numpy()
            guesses.append(best[:, 0])
            seconds.append(best[:, 1])
    guess, second, truth = numpy.concatenate(guesses), numpy.concatenate(seconds), truth.numpy()
    is_character = truth != NONE
    dots = labels[:, 1] >= 2
    share = lambda right, among: round(100 * float(right[among].mean()), 2) if among.any() else None
    return {
        "right": share(guess == truth, is_character),
        "right but for look-alikes": share(merged[guess] == merged[truth], is_character),
        "right in two": share((guess == truth) | (second == truth), is_character),
        "outlines": share(guess == truth, is_character & ~dots),
        "dots": share(guess == truth, is_character & dots),
        "none known": share(guess == truth, ~is_character),
        "loss": round(loss / len(truth), 4),
    }


def disturbed(batch, generator):
    """Some patches lose their neighbours, some are fainter or stronger than others."""
    count = len(batch)
    batch[:, 1] *= (torch.rand(count, 1, 1, generator=generator) > 0.15).float()
    batch *= 0.75 + 0.5 * torch.rand(count, 1, 1, 1, generator=generator)
    return batch.clamp_(max=1).contiguous(memory_format=torch.channels_last)


def fit(patches, labels, steps, check, report):
    generator = torch.Generator().manual_seed(20011)
    torch.manual_seed(20011)
    network = Recogniser().to(memory_format=torch.channels_last)
    truth = torch.from_numpy(labels[:, 0].astype(numpy.int64))
    optimiser, rates = descent(network, steps, 4e-3)
    order, at, losses = torch.randperm(len(patches), generator=generator), 0, []
    for step in range(steps):
        if at + BATCH > len(order):
            order, at = torch.randperm(len(patches), generator=generator), 0
        chosen = order[at : at + BATCH]
        at += BATCH
        batch = disturbed(patches[chosen].float() / 255, generator)
        loss = nn.functional.cross_entropy(network(batch), truth[chosen], label_smoothing=0.01)
        optimiser.zero_grad()
        loss.backward()
        optimiser.step()
        rates.step()
        losses.append(loss.item())
        if (step + 1) % report == 0 or step + 1 == steps:
            network.eval()
            with torch.no_grad():
                layers = [(n, w.detach(), b.detach()) for n, w, b in network.layers()]
            print(step + 1, round(sum(losses) / len(losses), 4), json.dumps(score(layers, *check)) if check else "", flush=True)
            losses = []
            network.train()
    network.eval()
    return [(n, w.detach(), b.detach()) for n, w, b in network.layers()]


def temperature(layers, patches, labels):
    """By what the outputs are to be divided so that likelihoods on faces not fitted on are as sure as they are right."""
    truth = torch.from_numpy(labels[:, 0].astype(numpy.int64))
    with torch.no_grad():
        outputs = torch.cat([run(layers, patches[at : at + 1024].float() / 255) for at in range(0, len(patches), 1024)])
    candidates = [0.8 + 0.05 * i for i in range(45)]
    return min(candidates, key=lambda t: nn.functional.cross_entropy(outputs / t, truth).item())


def given_arguments(what):
    """What the program is called with; fitting then gives the same on every run."""
    parser = argparse.ArgumentParser()
    parser.add_argument(what)
    parser.add_argument("weights")
    parser.add_argument("--steps", type=int, required=True)
    parser.add_argument("--check", required=True)
    parser.add_argument("--sources", help="a file of text to put into the head: faces, packages, seeds")
    parser.add_argument("--examples", help=f"a file for some {what} and what the network says of them, to test with")
    parser.add_argument("--report", type=int, default=1000)
    arguments = parser.parse_args()
    torch.set_num_threads(THREADS)
    torch.use_deterministic_algorithms(True)
    return arguments


def descent(network, steps, most):
    decayed = [p for p in network.parameters() if p.dim() > 1]
    others = [p for p in network.parameters() if p.dim() <= 1]
    optimiser = torch.optim.AdamW([{"params": decayed, "weight_decay": 0.01}, {"params": others, "weight_decay": 0}], lr=1e-3)
    return optimiser, torch.optim.lr_scheduler.OneCycleLR(optimiser, max_lr=most, total_steps=steps, pct_start=0.1)


def packed_layer(scale, bias, whole):
    return [scale.numpy().astype("<f4").tobytes(), bias.numpy().astype("<f4").tobytes(), whole.numpy().astype(numpy.int8).tobytes()]


def folded(convolution, norm):
    """Weights and biases that do what a convolution and the norm behind it do."""
    factor = norm.weight / torch.sqrt(norm.running_var + norm.eps)
    return convolution.weight * factor[:, None, None, None], norm.bias - norm.running_mean * factor


def as_bytes(layers):
    """The layers of convolutions with the weights that a byte can say, and what is written of them."""
    rounded, packed = [], []
    for weights, bias in layers:
        scale, whole = quantised(weights)
        rounded.append(((whole * scale[:, None]).reshape(weights.shape), bias))
        # Weights stand in the order row, column, input.
        whole = whole.reshape(weights.shape).permute(0, 2, 3, 1).reshape(len(whole), -1)
        packed += packed_layer(scale, bias, whole)
    return rounded, packed


def write_weights(arguments, head, packed):
    if arguments.sources:
        head += open(arguments.sources, encoding="utf-8").read().splitlines()
    with open(arguments.weights, "wb") as out:
        out.write(("\n".join(head) + "\n").encode() + b"\0")
        for part in packed:
            out.write(part)


def main():
    arguments = given_arguments("patches")
    patches, labels = load(arguments.patches.split(","))
    check = load([arguments.check])
    print(len(patches), "patches,", len(check[0]), "to check with", flush=True)
    layers = fit(patches, labels, arguments.steps, check, arguments.report)
    heat = temperature(layers, *check)
    name, weights, bias = layers[-1]
    layers[-1] = (name, weights / heat, bias / heat)
    bytes_layers, packed = [], []
    for name, weights, bias in layers:
        scale, whole = quantised(weights)
        bytes_layers.append((name, (whole * scale[:, None]).reshape(weights.shape), bias))
        # A convolution's weights stand in the order row, column, input.
        if weights.dim() == 4:
            whole = whole.reshape(weights.shape).permute(0, 2, 3, 1).reshape(len(whole), -1)
        elif name == "gather":
            whole = whole.reshape(len(whole), 64, 3, 3).permute(0, 2, 3, 1).reshape(len(whole), -1)
        packed += packed_layer(scale, bias, whole)
    floats, wholes = score(layers, *check), score(bytes_layers, *check)
    head = [
        "Weights of the base recogniser, written by tools/fit.sh. Nobody edits them.",
        f"inputs: own ink, others' ink, {SIDE} x {SIDE} each; outputs: {CHARACTERS} and none",
        f"layers: {', '.join(f'{n} {tuple(w.shape)}' for n, w, _ in layers)}",
        f"patches: {len(patches)}, of none {int((labels[:, 0] == NONE).sum())}, of dots {int((labels[:, 1] >= 2).sum())}",
        f"digest of the patches: {hashlib.sha256(patches.numpy().tobytes() + labels.tobytes()).hexdigest()[:16]}",
        f"steps: {arguments.steps} of {BATCH} patches, {THREADS} threads, seed 20011, torch {torch.__version__}",
        f"outputs divided by {heat:.2f}",
        f"faces not fitted on, {len(check[0])} patches, as floats: {json.dumps(floats)}",
        f"the same as bytes: {json.dumps(wholes)}",
    ]
    write_weights(arguments, head, packed)
    if arguments.examples:
        chosen = torch.arange(0, len(check[0]), len(check[0]) // EXAMPLES)[:EXAMPLES]
        with torch.no_grad():
            said = torch.log_softmax(run(layers, check[0][chosen].float() / 255), 1)
        with open(arguments.examples, "wb") as out:
            for patch, row in zip(check[0][chosen].numpy(), said.numpy()):
                out.write(patch.tobytes() + row.astype("<f4").tobytes())
    print("\n".join(head[3:9]))


if __name__ == "__main__":
    sys.exit(main())
