#!/usr/bin/env python3
"""make_references.py: makes tests/samples/references/ anew, with the renderers that `run` installs.

Each drawing of samples/ is drawn by the three peers, 128 pixels on its longer side. The reference
is the median, channel by channel, of those of which every two show the same: three, or two when one
fails on the drawing. index.txt names them, and the limits: what they need among themselves, and no
less than a usual picture needs. Drawings that without.txt there names, with the reason, get none:
those on which no two agree, or two agree on a fault.
"""
import itertools
import pathlib
import statistics
import struct
import subprocess
import sys
import tempfile
import zlib

import renderers

ROOT = pathlib.Path(__file__).resolve().parents[2]
REFERENCES = ROOT / "tests/samples/references"
COMPARE = ROOT / "build/dev/tests/compare_pictures"
SIDE = 128

# What differs in any picture of this size, of which edges take a large share.
USUAL_CHANGED, USUAL_MEAN, USUAL_TINT = 0.006, 2.0, 0.005
MOST_CHANGED, MOST_TINT = 0.06, 0.02  # beyond these the renderers do not agree


def write_png(path, width, height, pixels):
    """Premultiplied B G R A, stored as PNG has it: R G B A, not premultiplied."""
    rows = bytearray()
    for y in range(height):
        rows.append(0)  # no filter
        for x in range(width):
            blue, green, red, alpha = pixels[4 * (y * width + x):][:4]
            rows += bytes(min(255, (c * 255 + alpha // 2) // max(alpha, 1)) for c in (red, green, blue))
            rows.append(alpha)

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9))
                     + chunk(b"IEND", b""))


def difference(a, b):
    """changed, mean, solid, tint, count; see tests/samples/picture.h."""
    words = subprocess.run([COMPARE, a, b], capture_output=True, text=True, check=True).stdout.split()
    return [float(word) for word in words]


def agree(differences):
    changed, mean, solid, tint, count = differences
    return changed <= MOST_CHANGED and mean < 4 and tint <= MOST_TINT and solid <= max(4, count / 1000)


def agreeing(peers, files):
    """The largest set of peers, at least two, of which every two agree, and their largest differences."""
    pairs = {pair: difference(files[pair[0]], files[pair[1]]) for pair in itertools.combinations(range(len(peers)), 2)}
    for pair, found in pairs.items():
        names = " and ".join(peers[i].name for i in pair)
        print("  {}: changed {:.4f} mean {:.2f} solid {:.0f} tint {:.4f}".format(names, *found), file=sys.stderr)
    for size in range(len(peers), 1, -1):
        for chosen in itertools.combinations(range(len(peers)), size):
            inner = [pairs[pair] for pair in itertools.combinations(chosen, 2)]
            if all(agree(found) for found in inner):
                return chosen, [max(values) for values in zip(*inner)]
    return (), None


def main():
    peers = renderers.peers(ROOT / "build/peers")
    without = {line.split()[0] for line in (REFERENCES / "without.txt").read_text().splitlines()}
    index = []
    with tempfile.TemporaryDirectory() as name:
        files = [pathlib.Path(name, f"{peer.name}.png") for peer in peers]
        for svg in sorted((ROOT / "samples").glob("*.svg")):
            print(svg.stem, file=sys.stderr)
            width, height = peers[0].fitted_size(svg, SIDE)
            pictures = [peer.pixels(svg, width, height, name) for peer in peers]
            for file, picture in zip(files, pictures):
                write_png(file, width, height, picture)
            chosen, found = agreeing(peers, files)
            if svg.stem in without:
                continue
            if not chosen:
                sys.exit("no two of them agree: say why in without.txt")
            median = bytes(statistics.median_low(values) for values in zip(*(pictures[i] for i in chosen)))
            write_png(REFERENCES / f"{svg.stem}.png", width, height, median)
            limits = f"{max(found[0], USUAL_CHANGED):.4f} {max(found[1], USUAL_MEAN):.2f} {max(found[3], USUAL_TINT):.4f}"
            index.append(f"{svg.stem} {limits} {'+'.join(peers[i].name for i in chosen)}\n")
    (REFERENCES / "index.txt").write_text("".join(index))
    for peer in peers:
        peer.close()


main()
