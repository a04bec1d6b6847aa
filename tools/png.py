"""The bytes of PNG files, for the tools that make pictures."""
import struct
import zlib

GREY = 0
RGBA = 6


def chunk(name, data):
    body = name + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


def png(width, height, colour, rows):
    """An 8-bit PNG of colour type GREY or RGBA; rows are the bytes of a line each."""
    raw = b"".join(b"\0" + row for row in rows)
    return (b"\x89PNG\r\n\x1a\n"
            + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, colour, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(raw, 9))
            + chunk(b"IEND", b""))
