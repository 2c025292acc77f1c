"""Pictures of the virtual screen, read from the memory of its server."""
import collections
import mmap
import os
import struct
import zlib

PIXEL = 4  # bytes: blue, green, red, unused


class Picture:
    """A rectangle of pixels, as it was when the picture was taken."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, pixels

    def __eq__(self, other):
        return (self.width, self.height, self.pixels) == (other.width, other.height, other.pixels)

    def _words(self):
        return memoryview(self.pixels).cast("I")

    def colors(self):
        """Returns how many pixels have each color; a color is a number 0xrrggbb."""
        return collections.Counter(self._words())

    def count(self, color):
        return self.colors()[color]

    def main_color(self):
        return self.colors().most_common(1)[0][0]

    def at(self, x, y):
        return self._words()[y * self.width + x]

    def crop(self, x, y, width, height):
        row = self.width * PIXEL
        lines = range(y, y + height)
        return Picture(
            width, height, b"".join(self.pixels[line * row + x * PIXEL : line * row + (x + width) * PIXEL] for line in lines)
        )

    def differences(self, other):
        """Returns how many pixels differ from those of a picture of the same size."""
        if (self.width, self.height) != (other.width, other.height):
            return max(self.width * self.height, other.width * other.height)
        return sum(map(int.__ne__, self._words(), other._words())) if self.pixels != other.pixels else 0

    def box_of_differences(self, other):
        """Returns x, y, width and height of the smallest rectangle around all pixels that differ; None where none do."""
        left, right, top, bottom = self.width, -1, None, -1
        mine, others = self._words(), other._words()
        for y in range(self.height):
            line = slice(y * self.width, (y + 1) * self.width)
            if mine[line] == others[line]:
                continue
            columns = [x for x, (a, b) in enumerate(zip(mine[line], others[line])) if a != b]
            left, right = min(left, columns[0]), max(right, columns[-1])
            top, bottom = (y if top is None else top), y
        return None if top is None else (left, top, right - left + 1, bottom - top + 1)

    def save(self, path):
        """Writes a PNG file."""
        rgb = bytearray(self.width * self.height * 3)
        for channel in range(3):
            rgb[channel::3] = self.pixels[2 - channel :: PIXEL]
        row = self.width * 3
        lines = b"".join(b"\0" + rgb[y * row : (y + 1) * row] for y in range(self.height))

        def chunk(kind, contents):
            return struct.pack(">I", len(contents)) + kind + contents + struct.pack(">I", zlib.crc32(kind + contents))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.write_bytes(
            b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines, 1)) + chunk(b"IEND", b"")
        )


class Screen:
    """The screen that tools/with_display.sh has started; the server keeps its pixels in a file of the format XWD."""

    def __init__(self):
        path = os.path.join(os.environ["XDG_RUNTIME_DIR"], "Xvfb_screen0")
        with open(path, "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self.memory[:100])
        self.width, self.height, self.row = header[4], header[5], header[12]
        number_of_colors, color_size = header[19], 12
        self.start = header[0] + number_of_colors * color_size

    def look(self, place=None):
        """Returns what x, y, width, height of the screen show now; all of it without a place."""
        x, y, width, height = place or (0, 0, self.width, self.height)
        x, y = max(x, 0), max(y, 0)
        width, height = min(width, self.width - x), min(height, self.height - y)
        first = self.start + y * self.row
        lines = self.memory[first : first + height * self.row]
        offset, size = x * PIXEL, width * PIXEL
        pixels = b"".join(lines[line * self.row + offset : line * self.row + offset + size] for line in range(height))
        return Picture(width, height, pixels)

    def holds(self, x, y):
        return 0 <= x < self.width and 0 <= y < self.height
