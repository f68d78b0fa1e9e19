"""Times batches of icons from files to PNG files, as commands: batch.py QUOR MODULES [--folder DIR]

MODULES is the folder with node_modules of resvg and the icons. Prints a table: wall-clock and
processor seconds of the whole command, the least of the rounds each, and the bytes of the pictures.
"""
import argparse
import os
import resource
import subprocess
import tempfile
import time


def commands(quor, modules, width, out, files):
    size = str(width)
    return {
        "quor": [quor, "render", *files, "-o", out + "/", "-w", size],
        "quor, one process": [quor, "render", *files, "-o", out + "/", "-w", size, "-j", "1"],
        "@resvg/resvg-js": ["node", os.path.join(modules, "resvg_batch.js"), size, out, *files],
        # It takes one file at a time.
        "rsvg-convert": ["sh", "-c", 'out=$1 size=$2; shift 2; for file; do name=${file##*/}; '
                         'rsvg-convert -w "$size" -o "$out/${name%.svg}.png" "$file"; done',
                         "sh", out, size, *files],
    }


def seconds_of(command):
    """Wall-clock and processor seconds, those of its children included."""
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    subprocess.run(command, check=True)
    wall, after = time.monotonic() - start, resource.getrusage(resource.RUSAGE_CHILDREN)
    return wall, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def size_of(folder, count):
    names = os.listdir(folder)
    assert len(names) == count, f"{len(names)} pictures of {count} files"
    return sum(os.path.getsize(os.path.join(folder, name)) for name in names)


def measure(quor, modules, width, files, rounds):
    times, sizes = {}, {}
    for _ in range(rounds):
        for name in commands(quor, modules, width, "", []):
            with tempfile.TemporaryDirectory() as out:
                command = commands(quor, modules, width, out, files)[name]
                times.setdefault(name, []).append(seconds_of(command))
                sizes[name] = size_of(out, len(files))
    return {name: (*map(min, zip(*times[name])), sizes[name]) for name in times}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("quor")
    parser.add_argument("modules")
    parser.add_argument("--folder", help="icons; else those of bootstrap-icons")
    parser.add_argument("--rounds", type=int, default=3)
    options = parser.parse_args()
    folder = options.folder or os.path.join(options.modules, "node_modules/bootstrap-icons/icons")
    files = sorted(os.path.join(folder, name) for name in os.listdir(folder)
                   if name.endswith(".svg"))
    print("| Batch | Command | Wall, s | Processor, s | MB |\n|---|---|---|---|---|")
    for width, batch in ((64, files), (1024, files[:200])):
        results = measure(options.quor, options.modules, width, batch, options.rounds)
        for name, (wall, processor, size) in results.items():
            print(f"| {len(batch)} at {width} px | {name} | {wall:.2f} | {processor:.2f} | "
                  f"{size / 1e6:.1f} |", flush=True)


if __name__ == "__main__":
    main()
