"""The calls of tqpumpd2k from Python.

    with Converter() as converter:
        content = converter.convert(b"0 0 moveto 10 20 lineto stroke\\n")
        objects = converter.objects()

What the calls return is copied, so that it stays when the converter goes. A converter is used by one
thread at a time.
"""

import ctypes
import os
from dataclasses import dataclass

PATTERN, IMAGE = 1, 3
IDENTITY = (1, 0, 0, 1, 0, 0)


class ConversionError(Exception):
    """The library's words for what went wrong in a piece of PostScript."""


@dataclass(frozen=True)
class PdfObject:
    """An image or a pattern that content refers to by name."""

    name: str  # with its solidus, such as "/PSI1"
    kind: int  # PATTERN or IMAGE
    dictionary: bytes  # the entries of the stream's dictionary, without << and >>
    data: bytes
    compress: bool  # False: the dictionary names filters that the data are encoded with


class _Record(ctypes.Structure):
    _fields_ = [
        ("dictionary", ctypes.c_char_p),
        ("extra", ctypes.c_void_p),
        ("reserved", ctypes.c_uint32),
        ("compress", ctypes.c_int32),
        ("data", ctypes.POINTER(ctypes.c_char)),
        ("dataLength", ctypes.c_uint64),
        ("name", ctypes.c_char_p),
        ("kind", ctypes.c_uint32),
        ("source", ctypes.c_void_p),
    ]


def _load():
    default = "tqpumpd2k.dll" if os.name == "nt" else "libtqpumpd2k.so.1"
    library = ctypes.CDLL(os.environ.get("TQPUMPD2K", default))
    matrix, count, length = ctypes.POINTER(ctypes.c_float), ctypes.c_uint64, ctypes.c_int32
    library.PSOpen.argtypes, library.PSOpen.restype = [matrix], ctypes.c_void_p
    library.PSStartPage.argtypes, library.PSStartPage.restype = [ctypes.c_void_p, matrix], None
    library.PSConvertToPdf.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(length)]
    library.PSConvertToPdf.restype = ctypes.POINTER(ctypes.c_char)
    library.PSGetPdfObjects.argtypes = [ctypes.c_void_p, ctypes.POINTER(count)]
    library.PSGetPdfObjects.restype = ctypes.POINTER(ctypes.POINTER(_Record))
    library.PSGetErrorStr.argtypes = [ctypes.c_void_p]
    library.PSGetErrorStr.restype = ctypes.c_char_p
    library.PSClose.argtypes, library.PSClose.restype = [ctypes.c_void_p], None
    return library


_library = _load()


class Converter:
    def __init__(self, matrix=IDENTITY):
        self._handle = _library.PSOpen((ctypes.c_float * 6)(*matrix))
        if not self._handle:
            raise MemoryError("there is no memory for a converter")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        _library.PSClose(self._handle)
        self._handle = None

    def start_page(self, matrix=IDENTITY):
        _library.PSStartPage(self._open(), (ctypes.c_float * 6)(*matrix))

    def convert(self, postscript):
        """Returns the content text that a piece of PostScript writes. End a page with a line feed."""
        length = ctypes.c_int32(len(postscript))
        text = _library.PSConvertToPdf(self._open(), postscript, ctypes.byref(length))
        if not text:
            words = _library.PSGetErrorStr(self._handle).decode("latin-1")
            raise ConversionError(words.strip() or "the conversion failed without a reason")
        return text[: length.value]

    def objects(self):
        """Returns the objects that were made in this process so far, oldest first."""
        count = ctypes.c_uint64()
        records = _library.PSGetPdfObjects(self._open(), ctypes.byref(count))
        return [self._copy(records[i].contents) for i in range(count.value)]

    @staticmethod
    def _copy(record):
        data = record.data[: record.dataLength]
        name = record.name.decode("ascii")
        return PdfObject(name, record.kind, record.dictionary, data, record.compress != 0)

    def _open(self):
        # The library does not test its handles.
        if self._handle is None:
            raise ValueError("the converter is closed")
        return self._handle
