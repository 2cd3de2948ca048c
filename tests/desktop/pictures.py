"""Pictures of the virtual display, read from the file that it keeps its pixels in: unlike a request to the display,
this also works while a menu has grabbed it."""

import struct
import zlib
from pathlib import Path


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


class Picture:
    """The pixels of a file in XWD format with 32 bits per pixel. Source: XWDFile.h of the X Window System."""

    def __init__(self, path):
        data = Path(path).read_bytes()
        (header, _, _, _, self.width, self.height, _, _, _, _, _, _, self._stride) = struct.unpack(">13I", data[:52])
        colours = struct.unpack(">I", data[76:80])[0]
        self._pixels = data[header + 12 * colours:]

    def __eq__(self, other):
        return self._pixels == other._pixels

    def rgb(self, x, y):
        at = y * self._stride + 4 * x
        blue, green, red = self._pixels[at:at + 3]
        return red, green, blue

    def save(self, path):
        lines = []
        for y in range(self.height):
            line = self._pixels[y * self._stride:y * self._stride + 4 * self.width]
            rgb = bytearray(3 * self.width)
            rgb[0::3], rgb[1::3], rgb[2::3] = line[2::4], line[1::4], line[0::4]
            lines.append(b"\0" + rgb)
        head = struct.pack(">2I5B", self.width, self.height, 8, 2, 0, 0, 0)
        packed = zlib.compress(b"".join(lines), 6)
        Path(path).write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", packed) + chunk(b"IEND", b""))
