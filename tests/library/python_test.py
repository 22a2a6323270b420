"""The Python module beside the C library: arrays of every layout in, plain values out, failures as exceptions, threads."""

import concurrent.futures
import os
import sys
import tempfile
import time
import unittest
from pathlib import Path

import numpy as np
from PIL import Image

import dravik

PARTS = Path(os.environ["DRAVIK_PARTS"])


def image(name):
    return np.asarray(Image.open(PARTS / name).convert("L"))


class PythonModule(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        learner = dravik.Learner("hack", cls.folder.name)
        rows = (line.split("\t") for line in (PARTS / "rendered_charset/lines.tsv").read_text().splitlines())
        included = [
            learner.include(image("rendered_charset/" + row[0]), row[1].replace("\\n", "\n"))
            for row in rows
            if row[0].startswith("hack_")
        ]
        assert included == [74, 74, 74]
        cls.seen = []
        cls.training = learner.train(30, lambda so_far: cls.seen.append(so_far))
        cls.check = learner.check()
        learner.save()
        cls.font = dravik.Font.named("hack", cls.folder.name)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_teaches_and_reads(self):
        self.assertEqual((self.training.samples, self.check.checked), (222, 222))
        self.assertTrue(self.seen and self.seen[-1].samples == 222)
        self.assertEqual(len(self.font.characters), 74)
        picture = image("rendered_lines/hack_000.png")
        reading = dravik.Font(Path(self.folder.name) / "Fonts/hack.nnd").read(picture)
        self.assertEqual(reading.text, "EXP2026/07/26")
        self.assertEqual("".join(one.text for one in reading.characters), reading.text)
        first = reading.characters[0]
        self.assertTrue(0 <= first.box.left < first.box.right <= picture.shape[1])
        self.assertTrue(0.9 < first.confidence <= 1 and first.line == 0)
        # The region is where the first three characters are.
        boxes = [one.box for one in reading.characters[:3]]
        region = (min(b.left for b in boxes) - 4, 0, boxes[-1].right + 3, picture.shape[0])
        part = self.font.read(picture, region=region, reject=0)
        self.assertEqual((part.text, part.characters[0].box), ("EXP", first.box))
        # By the font's own settings, and by others in their place.
        learner = dravik.Learner("hack", self.folder.name)
        learner.keep_settings(dravik.Settings(region=region, polarity=dravik.Polarity.LIGHT_ON_DARK))
        learner.save()
        kept = dravik.Font.named("hack", self.folder.name)
        turned = dravik.TurnedRegion(0, 0, picture.shape[1], picture.shape[0], 180)
        self.assertEqual(kept.read(picture).text, "EXP")
        self.assertEqual(kept.read(picture, settings=dravik.Settings(whole_image=True)).text, reading.text)
        self.assertEqual(kept.read(picture[::-1, ::-1], settings=dravik.Settings(region=turned)).text, reading.text)

    def test_takes_every_layout_and_refuses_other_arrays(self):
        picture = image("rendered_lines/hack_000.png")
        height, width = picture.shape
        colours = np.repeat(picture[:, :, np.newaxis], 3, axis=2)
        wide = np.zeros((height, width + 7), np.uint8)
        wide[:, :width] = picture
        for same in (colours[:, :, 1], wide[:, :width], np.asfortranarray(picture), picture[::-1].copy()[::-1]):
            self.assertEqual(self.font.read(same).text, "EXP2026/07/26")
        for wrong in (colours, picture.astype(float), picture[0], picture.tolist()):
            with self.assertRaises(TypeError):
                self.font.read(wrong)

    def test_verifies(self):
        reading = self.font.read(image("rendered_lines/hack_000.png"))
        self.assertTrue(reading.verify("EXP 2026/07/26").passed)
        wrong = reading.verify("EXP2026/01/2")
        self.assertFalse(wrong.passed)
        bad = [one for one in wrong.characters if one.verdict != dravik.Verdict.RIGHT]
        self.assertEqual(
            [(one.verdict, one.expected, one.read, one.index) for one in bad],
            [(dravik.Verdict.WRONG, "1", "7", 9), (dravik.Verdict.UNEXPECTED, "", "6", 12)],
        )
        self.assertIsNone(reading.verify("EXP2026/07/26x").characters[-1].index)

    def test_failures_are_exceptions_with_a_reason(self):
        picture = image("rendered_lines/hack_000.png")
        for status, call in {
            dravik.Status.NOT_FOUND: lambda: dravik.Font("gone.nnd"),
            dravik.Status.BAD_ARGUMENT: lambda: self.font.read(picture, reject=2),
            dravik.Status.COUNT_MISMATCH: lambda: dravik.Learner("other", self.folder.name).include(picture, "E"),
            dravik.Status.NO_CHARACTERS: lambda: dravik.Learner("other", self.folder.name).train(),
        }.items():
            with self.assertRaises(dravik.Error) as raised:
                call()
            self.assertEqual(raised.exception.status, status)
            self.assertGreater(len(str(raised.exception)), 10)

        learner = dravik.Learner("other", self.folder.name)
        learner.include(picture, "EXP2026/07/26")
        with self.assertRaises(ZeroDivisionError):
            learner.train(progress=lambda so_far: 1 / 0)

    def test_threads_read_with_one_font_without_the_interpreters_lock(self):
        names = [f"rendered_lines/hack_00{i}.png" for i in range(6)] * 4
        pictures = [image(name) for name in names]
        alone = [self.font.read(picture).text for picture in pictures]
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            self.assertEqual(list(pool.map(lambda picture: self.font.read(picture).text, pictures)), alone)
        # While one thread is in a long call, another one runs.
        large = np.tile(pictures[0], (4, 4))
        with concurrent.futures.ThreadPoolExecutor(1) as pool:
            call = pool.submit(self.font.read, large)
            turns = 0
            while not call.done():
                time.sleep(0.001)
                turns += 1
        self.assertGreater(turns, 2)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
