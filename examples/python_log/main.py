"""Logs by the C functions of QmLog.dll, with a Python for 64-bit Windows and nothing but its ctypes.

    python main.py DIR\\bin
"""
import ctypes
import os
import sys
from contextlib import contextmanager

NOTICE = 1  # QMLOG_C_NOTICE


def load(folder):
    """Loads the DLL with those beside it, and tells ctypes the types that are no int."""
    if hasattr(os, "add_dll_directory"):
        os.add_dll_directory(os.path.abspath(folder))
    library = ctypes.CDLL(os.path.join(os.path.abspath(folder), "QmLog.dll"))
    text = [ctypes.c_char_p, ctypes.c_size_t]
    library.QmLogCLastErrorText.restype = ctypes.c_char_p
    library.QmLogCWriterDefine.restype = ctypes.c_void_p
    library.QmLogCWriterDefine.argtypes = text
    library.QmLogCWriteLine.argtypes = [ctypes.c_void_p] + text
    library.QmLogCBlockBegin.argtypes = [ctypes.c_void_p, ctypes.c_uint] + text
    library.QmLogCBlockEnd.argtypes = [ctypes.c_void_p]
    return library


class Writer:
    """The writer of a name. Texts are written in UTF-8."""

    def __init__(self, library, name):
        self._library = library
        self._handle = library.QmLogCWriterDefine(*self._text(name))
        self._check(self._handle)

    def line(self, text):
        self._check(self._library.QmLogCWriteLine(self._handle, *self._text(text)))

    @contextmanager
    def block(self, header, kind=NOTICE):
        self._check(self._library.QmLogCBlockBegin(self._handle, kind, *self._text(header)))
        try:
            yield
        finally:
            self._library.QmLogCBlockEnd(self._handle)

    @staticmethod
    def _text(text):
        data = text.encode("utf-8")
        return data, len(data)

    def _check(self, answer):
        if not answer:
            raise OSError(self._library.QmLogCLastErrorText().decode("utf-8", "replace"))


if __name__ == "__main__":
    qmlog = load(sys.argv[1])
    log = Writer(qmlog, "Main")
    log.line("Started")
    with log.block("Größe der Liste"):
        log.line("12 jobs")
    log.line("Done")
    qmlog.QmLogCWriterCloseAll()
