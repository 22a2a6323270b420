"""Reads grey images with fonts of the Dravik OCR tool, and teaches them.

    font = dravik.Font.named("hack")
    reading = font.read(image)          # a numpy array, uint8, height x width
    print(reading.text, min(c.confidence for c in reading.characters))

A font may be read with by any number of threads at once; the interpreter's lock is free meanwhile. Every other object is for one
thread at a time.
"""

from __future__ import annotations

import ctypes
import os
from dataclasses import dataclass
from enum import Enum, IntEnum
from typing import Any, Callable, NamedTuple, Optional, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _native
from ._native import library as _library

__all__ = [
    "Alternative", "Box", "Character", "Check", "Error", "Font", "Learner", "Polarity", "Print", "Reading", "Region", "Settings",
    "Status", "Training", "TurnedRegion", "Verdict", "Verification", "VerifiedCharacter", "version",
]  # fmt: skip

GreyImage = npt.NDArray[np.uint8]
Path = Union[str, "os.PathLike[str]"]


class Status(IntEnum):
    """Why a call failed."""

    BAD_ARGUMENT = 1
    NOT_FOUND = 2
    NO_ACCESS = 3
    DAMAGED = 4
    NOT_TRAINED = 5
    COUNT_MISMATCH = 6
    NO_CHARACTERS = 7
    NO_RESULT = 8
    NO_MEMORY = 9
    INTERNAL = 10


class Error(RuntimeError):
    """What a call of the library has reported; its text says what was wrong."""

    def __init__(self, text: str, status: Status) -> None:
        super().__init__(text)
        self.status = status


class Box(NamedTuple):
    """A part of an image in pixels; right and bottom are just outside."""

    left: int
    top: int
    right: int
    bottom: int


class TurnedRegion(NamedTuple):
    """A region at an angle: its upper left corner and sides in pixels before it is turned around its middle, then the angle in
    degrees clockwise."""

    left: float
    top: float
    width: float
    height: float
    angle: float


Region = Union[Box, Tuple[int, int, int, int], TurnedRegion]


class Polarity(IntEnum):
    """Print and its background; ANY is found out for each image."""

    ANY = 0
    DARK_ON_LIGHT = 1
    LIGHT_ON_DARK = 2


class Print(IntEnum):
    """What characters are made of; ANY is found out for each image."""

    ANY = 0
    SOLID = 1
    DOTS = 2


@dataclass(frozen=True)
class Settings:
    """How images are looked at. What is None is as the font's own settings say; `whole_image` goes without a region that the font
    has. No capital or figure is lower than `smallest_height` pixels, 0 for any."""

    region: Optional[Region] = None
    whole_image: bool = False
    polarity: Optional[Polarity] = None
    print: Optional[Print] = None
    smallest_height: Optional[int] = None


class Alternative(NamedTuple):
    """Another character that one may be, and the confidence that it is right."""

    text: str
    confidence: float


@dataclass(frozen=True)
class Character:
    """A character that was read.

    The text is the font's best answer, also below the limit. The confidence is the probability that it is right, 0 to 1. Lines
    count from 0. Alternatives come the likeliest first, without the answer.
    """

    text: str
    confidence: float
    box: Box
    line: int
    alternatives: Tuple[Alternative, ...]


class Verdict(Enum):
    """How a character of a reading stands to what was expected."""

    RIGHT = 0
    DOUBTFUL = 1
    """Read as expected, with less confidence than the limit."""
    WRONG = 2
    MISSING = 3
    """Expected, and nothing was found."""
    UNEXPECTED = 4
    """Found, and nothing was expected."""


@dataclass(frozen=True)
class VerifiedCharacter:
    """A character that was expected, read or both.

    `index` is that of the character in the reading, None where nothing was found; `confidence` is that the expected one is there.
    """

    verdict: Verdict
    expected: str
    read: str
    index: Optional[int]
    confidence: float


@dataclass(frozen=True)
class Verification:
    """A reading beside the text that was expected; it has passed when every character is right."""

    passed: bool
    characters: Tuple[VerifiedCharacter, ...]


@dataclass(frozen=True)
class Training:
    """The figures of a training: samples that the font holds, cycles, error, seconds."""

    samples: int
    cycles: int
    rms_error: float
    seconds: float


@dataclass(frozen=True)
class Check:
    """A check on samples that the checked network was not trained on; `unchecked` are characters of a single sample."""

    checked: int
    wrong: int
    unchecked: int


def version() -> str:
    """The library's version."""
    return str(_library.dravik_version().decode())


def _call(function: Any, *arguments: Any) -> None:
    error = _native.ErrorText()
    if function(*arguments, ctypes.byref(error)) != 0:
        raise Error(error.text.decode(errors="replace"), Status(error.status))


class _Handle:
    """An object of the library, freed with this one."""

    def __init__(self, free: Any, make: Any, *arguments: Any) -> None:
        self._free = free
        self.value: Optional[int] = None
        handle = ctypes.c_void_p()
        _call(make, *arguments, ctypes.byref(handle))
        self.value = handle.value

    def __del__(self) -> None:
        if self.value is not None:
            self._free(self.value)


class _Settings:
    """The library's settings for one call."""

    def __init__(
        self, settings: Optional[Settings], region: Optional[Region] = None, reject: Optional[float] = None
    ) -> None:
        self.value = _library.dravik_settings_new()
        if not self.value:
            raise MemoryError
        of = settings or Settings()
        region = of.region if region is None else region
        if isinstance(region, TurnedRegion):
            self._set("turned_region", *region)
        elif region is not None:
            self._set("region", ctypes.byref(_native.Box(*(int(side) for side in region))))
        elif of.whole_image:
            self._set("region", None)
        self._set("polarity", of.polarity)
        self._set("print", of.print)
        self._set("smallest_height", of.smallest_height)
        self._set("reject_limit", reject)

    def _set(self, name: str, *values: Any) -> None:
        """Sets what is given; None, but for a region, leaves it to the font."""
        if name == "region" or values[0] is not None:
            _call(getattr(_library, "dravik_settings_set_" + name), self.value, *values)

    def __del__(self) -> None:
        _library.dravik_settings_free(self.value)


def _image(image: GreyImage) -> Tuple[_native.Image, npt.NDArray[np.uint8]]:
    """The image for the library, and the array that must live as long."""
    array = np.asarray(image)
    if array.ndim != 2 or array.dtype != np.uint8:
        raise TypeError(f"a grey image is an array of uint8 with two dimensions, not {array.dtype} with {array.ndim}")
    if array.shape[1] > 1 and array.strides[1] != 1:
        array = np.ascontiguousarray(array)
    pixels = ctypes.cast(array.ctypes.data, ctypes.POINTER(ctypes.c_uint8))
    return _native.Image(pixels, array.shape[1], array.shape[0], array.strides[0]), array


def _jobs(jobs: Optional[Path]) -> Optional[bytes]:
    return None if jobs is None else os.fsencode(jobs)


class Reading:
    """What was read in an image."""

    def __init__(self, handle: _Handle) -> None:
        self._handle = handle
        self.text: str = _library.dravik_reading_text(handle.value).decode()
        """The text, with line feeds between lines and "?" for characters below the limit."""
        count = ctypes.c_size_t()
        first = _library.dravik_reading_characters(handle.value, ctypes.byref(count))
        self.characters: Tuple[Character, ...] = tuple(self._character(first[i]) for i in range(count.value))
        """The characters in reading order."""

    @staticmethod
    def _character(one: _native.Character) -> Character:
        box = Box(one.box.left, one.box.top, one.box.right, one.box.bottom)
        others = tuple(
            Alternative(one.alternatives[k].text.decode(), one.alternatives[k].confidence)
            for k in range(one.alternative_count)
        )
        return Character(one.text.decode(), one.confidence, box, one.line, others)

    def verify(self, expected: str) -> Verification:
        """Holds the reading against the text that should be there. Blanks and line breaks do not count."""
        handle = _Handle(
            _library.dravik_verification_free, _library.dravik_reading_verify, self._handle.value, expected.encode()
        )
        count = ctypes.c_size_t()
        first = _library.dravik_verification_characters(handle.value, ctypes.byref(count))
        characters = tuple(
            VerifiedCharacter(
                Verdict(one.verdict),
                one.expected.decode(),
                one.read.decode(),
                None if one.index < 0 else one.index,
                one.confidence,
            )
            for one in (first[i] for i in range(count.value))
        )
        return Verification(bool(_library.dravik_verification_passed(handle.value)), characters)

    def __repr__(self) -> str:
        return f"<dravik.Reading {self.text!r}>"


class Font:
    """A trained font, ready to read."""

    def __init__(self, file: Path) -> None:
        """Opens a font file (`NAME.nnd`)."""
        self._handle = _Handle(_library.dravik_font_free, _library.dravik_font_open, os.fsencode(file))

    @classmethod
    def named(cls, name: str, jobs: Optional[Path] = None) -> Font:
        """Opens a font by its name in a jobs folder, where the trainer keeps them; the user's when none is given."""
        font = cls.__new__(cls)
        font._handle = _Handle(_library.dravik_font_free, _library.dravik_font_open_named, _jobs(jobs), name.encode())
        return font

    @property
    def characters(self) -> str:
        """The characters that the font can read."""
        return str(_library.dravik_font_characters(self._handle.value).decode())

    def read(
        self,
        image: GreyImage,
        *,
        region: Optional[Region] = None,
        reject: Optional[float] = None,
        settings: Optional[Settings] = None,
    ) -> Reading:
        """Reads an image, or the region of it alone. Characters with less confidence than `reject`, usually 0.2, stand as "?" in
        the text. What neither says is as the font's own settings say."""
        used = _Settings(settings, region, reject)
        picture, _alive = _image(image)
        return Reading(
            _Handle(
                _library.dravik_reading_free,
                _library.dravik_font_read,
                self._handle.value,
                ctypes.byref(picture),
                used.value,
            )
        )


class Learner:
    """A font that is being taught. Nothing that it is taught reaches its file before save()."""

    def __init__(self, name: str, jobs: Optional[Path] = None) -> None:
        """Takes the font of that name in a jobs folder, the user's when none is given; makes it when it is missing."""
        self._handle = _Handle(_library.dravik_learner_free, _library.dravik_learner_open, _jobs(jobs), name.encode())

    def include(
        self, image: GreyImage, text: str, *, region: Optional[Region] = None, settings: Optional[Settings] = None
    ) -> int:
        """Includes the characters of an image as samples, labelled with the text, and returns how many. When another number of
        characters is found, nothing is included and Error has the status COUNT_MISMATCH."""
        used = _Settings(settings, region)
        picture, _alive = _image(image)
        samples = ctypes.c_int32()
        _call(
            _library.dravik_learner_include,
            self._handle.value,
            ctypes.byref(picture),
            used.value,
            text.encode(),
            ctypes.byref(samples),
        )
        return samples.value

    def keep_settings(self, settings: Settings) -> None:
        """The font keeps what is given and goes by it wherever no others are: here, in Font.read() and in the trainer."""
        kept = _Settings(settings)
        _call(_library.dravik_learner_keep_settings, self._handle.value, kept.value)

    def train(self, seconds: int = 0, progress: Optional[Callable[[Training], bool]] = None) -> Training:
        """Trains the font on all its samples, within a limit in seconds, 0 for a minute. `progress` returns True to stop; what it
        raises stops the training too."""
        raised: list[BaseException] = []

        def ask(so_far: Any, _user: Any) -> int:
            try:
                return int(bool(progress and progress(_training(so_far[0]))))
            except BaseException as failure:  # told to the caller below
                raised.append(failure)
                return 1

        told = _native.Training()
        watch = _native.Progress(ask)
        try:
            _call(_library.dravik_learner_train, self._handle.value, seconds, watch, None, ctypes.byref(told))
        except Error:
            if raised:
                raise raised[0] from None
            raise
        return _training(told)

    def check(self) -> Check:
        """Waits for the check that follows each training."""
        told = _native.Check()
        _call(_library.dravik_learner_check, self._handle.value, ctypes.byref(told))
        return Check(told.checked, told.wrong, told.unchecked)

    def save(self) -> None:
        """Writes the font to its file, which is the old one or the new one at any instant."""
        _call(_library.dravik_learner_save, self._handle.value)


def _training(told: _native.Training) -> Training:
    return Training(told.samples, told.cycles, told.rms_error, told.seconds)
