"""The driver processes: one for each renderer, asked in turn (driver.h has the conversation)."""

import os
import pathlib
import subprocess
import threading


class Renderer:
    """A driver that stays for the whole run, and is started anew when a file kills it."""

    PATIENCE = 60  # seconds for one answer

    def __init__(self, name, command, environment=None):
        self.name = name
        self._command = command
        self._environment = {**os.environ, **(environment or {})}
        self._process = None

    def seconds(self, file, width, height, budget):
        """Processor seconds of one load and draw, measured for `budget` seconds; None: failed."""
        answer = self._ask(f"time {width} {height} {budget} {file}")
        return float(answer[0]) if answer else None

    def pixels(self, file, width, height, folder):
        """The picture's bytes, premultiplied B G R A; None: failed."""
        out = pathlib.Path(folder, f"{self.name}.pixels")
        if self._ask(f"pixels {width} {height} {out} {file}") is None:
            return None
        picture = out.read_bytes()
        return picture if len(picture) == 4 * width * height else None

    def fitted_size(self, file, side):
        """Width and height of the picture whose longer side is `side`; None: failed."""
        answer = self._ask(f"fit {side} {file}")
        return tuple(map(int, answer)) if answer else None

    def close(self):
        if self._process is not None:
            self._process.stdin.close()
            self._process.wait()
            self._process.stdout.close()
            self._process = None

    def _ask(self, line):
        """The words after "ok", or None."""
        if self._process is None:
            self._start()
        timer = threading.Timer(self.PATIENCE, self._process.kill)
        timer.start()
        try:
            self._process.stdin.write(line + "\n")
            self._process.stdin.flush()
            words = self._process.stdout.readline().split()
        except BrokenPipeError:
            words = []
        finally:
            timer.cancel()
        if not words:  # it crashed, or was too slow
            self._process.kill()
            self._process.wait()
            self._process = None
            return None
        return words[1:] if words[0] == "ok" else None

    def _start(self):
        self._process = subprocess.Popen(
            self._command, env=self._environment, text=True, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)


def quor(name, build, drivers):
    """Quor as built in the folder `build`."""
    return Renderer(name, [f"{drivers}/quor_driver"], {"LD_LIBRARY_PATH": f"{build}/src"})


def peers(drivers):
    """The others; resvg comes first and decides about the size of each picture."""
    script = pathlib.Path(__file__).with_name("resvg_driver.js")
    modules = {"NODE_PATH": f"{drivers}/node_modules"}
    return [
        Renderer("resvg", ["node", "--expose-gc", str(script)], modules),
        Renderer("librsvg", [f"{drivers}/librsvg_driver"]),
        Renderer("QtSvg", [f"{drivers}/qtsvg_driver"]),
    ]
