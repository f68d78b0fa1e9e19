"""Sprites of a live atlas are as sharp at every scale: test_live_atlas.py PROGRAM SAMPLES."""
import os
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tool"))
from picture import Picture

SKIPPED = 77
STEEP = 96  # a step of green between neighbours that only an edge within one pixel makes


def sharpness(program, drawings, scale, *options):
    """How much of all change along the rows is in steep steps."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "shot.png")
        subprocess.run(["xvfb-run", "-a", program, "--scale", str(scale), "--frames", "3",
                        "--screenshot", path, *options, *drawings], check=True, timeout=120)
        with open(path, "rb") as file:
            picture = Picture(file.read())
    steep = total = 0
    for y in range(0, picture.height, 3):
        row = [picture.at(x, y)[1] for x in range(picture.width)]
        steps = [abs(a - b) for a, b in zip(row, row[1:])]
        total += sum(steps)
        steep += sum(step for step in steps if step >= STEEP)
    return steep / total


def main():
    program, samples = sys.argv[1:]
    if shutil.which("xvfb-run") is None:
        print("xvfb-run is missing; install it with: apt-get install xvfb xauth")
        return SKIPPED
    drawings = [os.path.join(samples, name) for name in ("gear.svg", "compass.svg")]
    for scale in (1, 2.5, 4):
        sharp = sharpness(program, drawings, scale)
        assert sharp > 0.35, f"at scale {scale} only {sharp:.2f} of the change is in sharp edges"
    blurred = sharpness(program, drawings, 4, "--stretched")
    assert blurred < 0.1, f"a stretched atlas gives {blurred:.2f}"
    return 0


sys.exit(main())
