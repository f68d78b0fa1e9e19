#!/usr/bin/env python3
"""Times load + draw of SVG files with Quor and its peers, all in one run. Started by `run`."""

import argparse
import json
import pathlib
import statistics
import subprocess
import sys
import tempfile

import renderers
import report

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Two pictures show the same when the mean difference of their bytes stays below this share of
# 255. Antialiasing differs by less; a missing gradient, shape or text by more.
LARGEST_DIFFERENCE = 0.02
COMPARED_SIDE = 64


def parse_arguments():
    parser = argparse.ArgumentParser(prog="run", description=__doc__)
    parser.add_argument("--folder", action="append", type=pathlib.Path,
                        help="SVG files, searched in depth; may be repeated; default: samples/")
    parser.add_argument("--sizes", default="64,256,1024", help="longer sides in pixels")
    parser.add_argument("--rounds", type=int, default=5, help="the median of so many counts")
    parser.add_argument("--budget", type=float, default=0.004,
                        help="seconds of the processor for one measurement, or two draws")
    parser.add_argument("--compare", action="append", default=[], metavar="NAME=BUILD",
                        help="another build folder of Quor to time as NAME")
    parser.add_argument("--out", type=pathlib.Path, default=ROOT / "build/peers/report")
    parser.add_argument("--build", default=ROOT / "build/release", help=argparse.SUPPRESS)
    parser.add_argument("--drivers", default=ROOT / "build/peers", help=argparse.SUPPRESS)
    arguments = parser.parse_args()
    arguments.sizes = [int(size) for size in arguments.sizes.split(",")]
    arguments.folder = arguments.folder or [ROOT / "samples"]
    return arguments


def svg_files(folders):
    found = sorted(file.resolve() for folder in folders for file in folder.rglob("*.svg"))
    if not found:
        sys.exit("run: no SVG files there")
    return found


def difference(picture, other):
    """The mean difference of two pictures' bytes, 0 to 1."""
    return sum(abs(a - b) for a, b in zip(picture, other)) / (255 * len(picture))


def standing(renderer, reference, file, size, folder):
    """"ok", or why this renderer's times for the file cannot be compared with Quor's."""
    picture = renderer.pixels(file, *size, folder)
    if picture is None:
        return "fails"
    if reference is None or difference(picture, reference) > LARGEST_DIFFERENCE:
        return "differs"
    return "ok"


def standings(ours, others, file, folder):
    """What each renderer makes of the file, by name."""
    size = others[0].fitted_size(file, COMPARED_SIDE) or (COMPARED_SIDE, COMPARED_SIDE)
    reference = ours.pixels(file, *size, folder)
    found = {other.name: standing(other, reference, file, size, folder) for other in others}
    found[ours.name] = "fails" if reference is None else "ok"
    return found


def median_seconds(runners, file, size, rounds, budget):
    """Every renderer's median, by name. They take turns, so that all see the machine's moods."""
    times = {runner.name: [] for runner in runners}
    for _ in range(rounds):
        for runner in runners:
            times[runner.name].append(runner.seconds(file, *size, budget))
    return {name: statistics.median(seconds) for name, seconds in times.items()
            if None not in seconds}


def measure(arguments, ours, others):
    """A record for each file: its name, what each renderer makes of it, seconds by side."""
    records = []
    files = svg_files(arguments.folder)
    with tempfile.TemporaryDirectory() as folder:
        for number, file in enumerate(files, 1):
            print(f"\r{number} of {len(files)} ", end="", file=sys.stderr, flush=True)
            found = standings(ours, others, file, folder)
            able = [runner for runner in [ours, *others] if found[runner.name] == "ok"]
            record = {"file": str(file), "standings": found, "seconds": {}}
            for side in arguments.sizes:
                size = others[0].fitted_size(file, side) or (side, side)
                record["seconds"][side] = median_seconds(able, file, size, arguments.rounds,
                                                         arguments.budget)
            records.append(record)
    print(file=sys.stderr)
    return records


def main():
    arguments = parse_arguments()
    ours = renderers.quor("quor", arguments.build, arguments.drivers)
    others = renderers.peers(arguments.drivers)
    for named in arguments.compare:
        name, build = named.split("=", 1)
        others.append(renderers.quor(name, build, arguments.drivers))
    try:
        records = measure(arguments, ours, others)
    finally:
        for runner in [ours, *others]:
            runner.close()
    arguments.out.mkdir(parents=True, exist_ok=True)
    (arguments.out / "times.json").write_text(json.dumps(records, indent=1))
    names = [other.name for other in others]
    print(report.write(records, arguments.sizes, names, arguments.out), end="")
    subprocess.run([f"{arguments.build}/tools/quor", "render", arguments.out / "chart.svg"],
                   check=True)


if __name__ == "__main__":
    main()
