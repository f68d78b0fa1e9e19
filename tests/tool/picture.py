"""A small reader of the PNG files that the tool writes: 8 bits, RGBA or palette, not interlaced."""
import struct
import zlib


class Picture:
    """Pixels as (red, green, blue, alpha), alpha straight."""

    def __init__(self, data):
        assert data[:8] == b"\x89PNG\r\n\x1a\n", "not a PNG file"
        chunks = list(_chunks(data[8:]))
        parts = dict(chunks)
        header = struct.unpack(">IIBBBBB", parts[b"IHDR"])
        assert header[2:] in ((8, 6, 0, 0, 0), (8, 3, 0, 0, 0)), "neither 8-bit RGBA nor palette"
        self.width, self.height = header[:2]
        packed = b"".join(body for kind, body in chunks if kind == b"IDAT")
        size = 4 if header[3] == 6 else 1  # bytes of a pixel
        self._rows = _unfilter(zlib.decompress(packed), self.width * size, self.height)
        if size == 1:
            colors = _palette(parts[b"PLTE"], parts.get(b"tRNS", b""))
            self._rows = [b"".join(colors[i] for i in row) for row in self._rows]

    def at(self, x, y):
        return tuple(self._rows[y][4 * x : 4 * x + 4])

    def part(self, x, y, width, height):
        """The bytes of its rows."""
        return [bytes(row[4 * x : 4 * (x + width)]) for row in self._rows[y : y + height]]

    def colors(self):
        return {self.at(x, y) for y in range(self.height) for x in range(self.width)}


def _palette(colors, alphas):
    alphas += b"\xff" * (len(colors) // 3 - len(alphas))
    return [colors[3 * i : 3 * i + 3] + alphas[i : i + 1] for i in range(len(alphas))]


def _chunks(data):
    while data:
        (size,) = struct.unpack(">I", data[:4])
        kind, body = data[4:8], data[8 : 8 + size]
        assert struct.unpack(">I", data[8 + size : 12 + size])[0] == zlib.crc32(kind + body)
        yield kind, body
        data = data[12 + size :]


def _unfilter(data, stride, height):
    rows = []
    above = bytes(stride)
    for y in range(height):
        start = y * (stride + 1)
        row = bytearray(data[start + 1 : start + 1 + stride])
        _undo_filter(data[start], row, above)
        rows.append(row)
        above = row
    return rows


def _undo_filter(kind, row, above):
    for i in range(len(row) if kind else 0):
        left = row[i - 4] if i >= 4 else 0
        above_left = above[i - 4] if i >= 4 else 0
        guess = (0, left, above[i], (left + above[i]) // 2, _paeth(left, above[i], above_left))[kind]
        row[i] = (row[i] + guess) & 0xFF


def _paeth(left, above, above_left):
    estimate = left + above - above_left
    return min((left, above, above_left), key=lambda value: abs(estimate - value))
