"""The C library, found and declared. Its header, dravik.h, says what everything means."""

from __future__ import annotations

import ctypes
import os
import sys
from ctypes import POINTER, c_char_p, c_double, c_int, c_int32, c_size_t, c_ssize_t, c_uint8, c_void_p
from pathlib import Path


class ErrorText(ctypes.Structure):
    _fields_ = [("status", c_int), ("text", ctypes.c_char * 508)]


class Image(ctypes.Structure):
    _fields_ = [("pixels", POINTER(c_uint8)), ("width", c_int32), ("height", c_int32), ("stride", c_ssize_t)]


class Box(ctypes.Structure):
    _fields_ = [("left", c_int32), ("top", c_int32), ("right", c_int32), ("bottom", c_int32)]


class Alternative(ctypes.Structure):
    _fields_ = [("text", c_char_p), ("confidence", c_double)]


class Character(ctypes.Structure):
    _fields_ = [
        ("text", c_char_p),
        ("confidence", c_double),
        ("box", Box),
        ("line", c_int32),
        ("alternative_count", c_int32),
        ("alternatives", POINTER(Alternative)),
    ]


class Verified(ctypes.Structure):
    _fields_ = [
        ("verdict", c_int),
        ("index", c_int32),
        ("expected", c_char_p),
        ("read", c_char_p),
        ("confidence", c_double),
    ]


class Training(ctypes.Structure):
    _fields_ = [("samples", c_int32), ("cycles", c_int32), ("rms_error", c_double), ("seconds", c_double)]


class Check(ctypes.Structure):
    _fields_ = [("checked", c_int32), ("wrong", c_int32), ("unchecked", c_int32)]


Progress = ctypes.CFUNCTYPE(c_int, POINTER(Training), c_void_p)


def _load() -> ctypes.CDLL:
    """The library that $DRAVIK_LIBRARY names, that of the wheel, or the system's."""
    name = "dravik-0.dll" if sys.platform == "win32" else "libdravik.so.0"
    named = os.environ.get("DRAVIK_LIBRARY")
    beside = Path(__file__).parent / name
    return ctypes.CDLL(named or (str(beside) if beside.exists() else name))


library = _load()


def _declare(name: str, result: object, *arguments: object) -> None:
    function = getattr(library, name)
    function.restype = result
    function.argtypes = arguments


_handle, _result, _error = c_void_p, POINTER(c_void_p), POINTER(ErrorText)
_declare("dravik_version", c_char_p)
_declare("dravik_settings_new", _handle)
_declare("dravik_settings_free", None, _handle)
_declare("dravik_settings_set_region", c_int, _handle, POINTER(Box), _error)
_declare("dravik_settings_set_turned_region", c_int, _handle, *[c_double] * 5, _error)
_declare("dravik_settings_set_polarity", c_int, _handle, c_int, _error)
_declare("dravik_settings_set_print", c_int, _handle, c_int, _error)
_declare("dravik_settings_set_smallest_height", c_int, _handle, c_int32, _error)
_declare("dravik_settings_set_reject_limit", c_int, _handle, c_double, _error)
_declare("dravik_font_open", c_int, c_char_p, _result, _error)
_declare("dravik_font_open_named", c_int, c_char_p, c_char_p, _result, _error)
_declare("dravik_font_free", None, _handle)
_declare("dravik_font_characters", c_char_p, _handle)
_declare("dravik_font_read", c_int, _handle, POINTER(Image), _handle, _result, _error)
_declare("dravik_reading_free", None, _handle)
_declare("dravik_reading_text", c_char_p, _handle)
_declare("dravik_reading_characters", POINTER(Character), _handle, POINTER(c_size_t))
_declare("dravik_reading_verify", c_int, _handle, c_char_p, _result, _error)
_declare("dravik_verification_free", None, _handle)
_declare("dravik_verification_passed", c_int, _handle)
_declare("dravik_verification_characters", POINTER(Verified), _handle, POINTER(c_size_t))
_declare("dravik_learner_open", c_int, c_char_p, c_char_p, _result, _error)
_declare("dravik_learner_free", None, _handle)
_declare("dravik_learner_include", c_int, _handle, POINTER(Image), _handle, c_char_p, POINTER(c_int32), _error)
_declare("dravik_learner_keep_settings", c_int, _handle, _handle, _error)
_declare("dravik_learner_train", c_int, _handle, c_int32, Progress, c_void_p, POINTER(Training), _error)
_declare("dravik_learner_check", c_int, _handle, POINTER(Check), _error)
_declare("dravik_learner_save", c_int, _handle, _error)
