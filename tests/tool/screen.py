"""A virtual screen for the test of `quor view`: Xvfb, driven by xdotool."""
import mmap
import os
import shutil
import struct
import subprocess
import tempfile
import time


def is_available():
    return shutil.which("Xvfb") is not None and shutil.which("xdotool") is not None


class Screen:
    """A context: the screen is there inside it."""

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        reader, writer = os.pipe()  # Xvfb chooses a free number and tells it
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1000x700x24", "-fbdir",
             self.folder.name, "-nolisten", "tcp"], pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as number:
            # What the libraries of the window system never free is no leak of the tool.
            self.environment = dict(os.environ, DISPLAY=":" + number.readline().strip(),
                                    SDL_VIDEODRIVER="x11", ASAN_OPTIONS="detect_leaks=0")
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()
        self.folder.cleanup()

    def do(self, *arguments):
        """What xdotool prints."""
        return subprocess.run(["xdotool", *arguments], env=self.environment, text=True, timeout=30,
                              capture_output=True, check=True).stdout.strip()

    def wait_for(self, fact, what):
        """Polls until fact() is true, and returns what it returns."""
        end = time.monotonic() + 30
        while time.monotonic() < end:
            value = fact()
            if value:
                return value
            time.sleep(0.05)
        raise AssertionError("waited in vain for " + what)

    def photograph(self, x, y, width, height):
        """Rows of (red, green, blue) of a part of the screen."""
        with open(os.path.join(self.folder.name, "Xvfb_screen0"), "rb") as file:
            with mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ) as data:
                header = struct.unpack(">25I", data[:100])  # of an X window dump
                start, stride = header[0] + 12 * header[19], header[12]
                rows = []
                for row in range(y, y + height):
                    begin = start + row * stride + 4 * x
                    line = data[begin : begin + 4 * width]
                    rows.append([(line[4 * i + 2], line[4 * i + 1], line[4 * i])
                                 for i in range(width)])
                return rows
