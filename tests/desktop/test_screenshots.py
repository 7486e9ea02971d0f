"""scripts/screenshots.py run into a folder of the test's own:

    python3 test_screenshots.py PATH/TO/valkenhorn

Each scene of the script's list (at least the window after start-up, two
copies connected, and a game seen from the green and from the brown side)
must leave a PNG file that decodes (signature, IHDR, CRCs, the zlib stream and
every row's filter), has the size of the program's window as the X server
reports it, is no smaller than the window's least size, and is not blank:
more than a handful of distinct colours. The pictures of the two sides of the
game differ in most of their rows. Standard library only."""

import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib
from itertools import accumulate

sys.dont_write_bytecode = True
TOP = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
SCRIPT = os.path.join(TOP, "scripts", "screenshots.py")
sys.path.insert(0, os.path.join(TOP, "scripts"))

import screenshots  # noqa: E402
from valkenhorn_session import run_tests  # noqa: E402

PROGRAM = None
# The least size of the main window: 25545 x 13800 twips.
LEAST_SIZE = (25545 // 15, 13800 // 15)
BASE_SCENES = ("startup.png", "connected.png", "game-green.png", "game-brown.png")
# A blank or nearly blank window has a colour or two; the board alone has many.
MORE_THAN_A_HANDFUL = 16
REPORT = re.compile(r"^(?P<name>\S+\.png): (?P<w>\d+) x (?P<h>\d+) pixels, window (?P<ww>\d+) x (?P<wh>\d+), "
                    r"(?P<bytes>\d+) bytes - .+$")


def paeth(a, b, c):
    p = a + b - c
    pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
    if pa <= pb and pa <= pc:
        return a
    return b if pb <= pc else c


def decode_png(path):
    """(width, height, rows of pixels as bytes, bytes per pixel) of an 8-bit
    truecolour or greyscale PNG without interlace; raises ValueError on
    anything broken."""
    with open(path, "rb") as f:
        data = f.read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("no PNG signature")
    at, chunks = 8, []
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        crc = data[at + 8 + length:at + 12 + length]
        if len(body) != length or len(crc) != 4 or zlib.crc32(kind + body) != int.from_bytes(crc, "big"):
            raise ValueError("chunk %r cut short or with a wrong CRC" % kind)
        chunks.append((kind, body))
        at += 12 + length
    if not chunks or chunks[0][0] != b"IHDR" or chunks[-1][0] != b"IEND":
        raise ValueError("IHDR not first or IEND not last")
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", chunks[0][1])
    channels = {0: 1, 2: 3, 4: 2, 6: 4}.get(colour)
    if depth != 8 or channels is None or interlace != 0:
        raise ValueError("depth %d, colour type %d, interlace %d: not what the program writes"
                         % (depth, colour, interlace))
    raw = zlib.decompress(b"".join(body for kind, body in chunks if kind == b"IDAT"))
    stride = width * channels
    if len(raw) != height * (stride + 1):
        raise ValueError("%d bytes of image data, not %d" % (len(raw), height * (stride + 1)))
    rows, previous = [], bytes(stride)
    for y in range(height):
        kind = raw[y * (stride + 1)]
        line = raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)]
        if kind == 0:
            row = bytes(line)
        elif kind == 1:
            out = bytearray(stride)
            for c in range(channels):
                out[c::channels] = bytes(v & 255 for v in accumulate(line[c::channels]))
            row = bytes(out)
        elif kind == 2:
            row = bytes((a + b) & 255 for a, b in zip(line, previous))
        elif kind in (3, 4):
            out = bytearray(stride)
            for i in range(stride):
                left = out[i - channels] if i >= channels else 0
                if kind == 3:
                    out[i] = (line[i] + ((left + previous[i]) >> 1)) & 255
                else:
                    upper_left = previous[i - channels] if i >= channels else 0
                    out[i] = (line[i] + paeth(left, previous[i], upper_left)) & 255
            row = bytes(out)
        else:
            raise ValueError("row %d has filter %d" % (y, kind))
        rows.append(row)
        previous = row
    return width, height, rows, channels


def distinct_colours(rows, channels):
    colours = set()
    for row in rows:
        colours.update(row[i:i + channels] for i in range(0, len(row), channels))
    return len(colours)


class Screenshots(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="vk-screenshots-test-")
        done = subprocess.run([sys.executable, SCRIPT, "--program", PROGRAM, cls.folder], capture_output=True,
                              timeout=900)
        cls.output = done.stdout.decode("utf-8", "replace")
        if done.returncode != 0:
            raise AssertionError("screenshots.py ended with %d:\n%s%s"
                                 % (done.returncode, cls.output, done.stderr.decode("utf-8", "replace")))
        cls.reports = {}
        for line in cls.output.splitlines():
            m = REPORT.match(line)
            if m:
                cls.reports[m.group("name")] = m

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder, ignore_errors=True)

    def test_the_scenes_of_the_list(self):
        names = [scene.file_name for scene in screenshots.SCENES]
        for name in BASE_SCENES:
            self.assertIn(name, names)
        self.assertEqual(sorted(names), sorted(self.reports), self.output)
        self.assertEqual(sorted(names), sorted(os.listdir(self.folder)), "the pictures and nothing else")

    def test_each_picture_is_the_whole_window_and_not_blank(self):
        for scene in screenshots.SCENES:
            with self.subTest(scene.file_name):
                path = os.path.join(self.folder, scene.file_name)
                width, height, rows, channels = decode_png(path)
                report = self.reports[scene.file_name]
                window = (int(report.group("ww")), int(report.group("wh")))
                self.assertEqual(window, (width, height), "the picture has the size of the window")
                self.assertGreaterEqual(width, LEAST_SIZE[0])
                self.assertGreaterEqual(height, LEAST_SIZE[1])
                self.assertEqual(os.path.getsize(path), int(report.group("bytes")))
                self.assertGreater(distinct_colours(rows, channels), MORE_THAN_A_HANDFUL)

    def test_the_two_sides_differ(self):
        """The brown side sees the board turned: most of the window differs
        from the green side's, not a detail."""
        green = decode_png(os.path.join(self.folder, "game-green.png"))
        brown = decode_png(os.path.join(self.folder, "game-brown.png"))
        self.assertEqual(green[:2], brown[:2])
        differing = sum(1 for a, b in zip(green[2], brown[2]) if a != b)
        self.assertGreater(differing, green[1] // 2, "rows that differ between the two sides")


def main():
    global PROGRAM
    if len(sys.argv) < 2:
        sys.stderr.write(__doc__)
        return 2
    PROGRAM = os.path.abspath(sys.argv[1])
    names = sys.argv[2:]
    return run_tests(sys.modules[__name__], names)


if __name__ == "__main__":
    sys.exit(main())
