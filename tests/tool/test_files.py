"""Where pictures come from and go to: test_files.py TOOL [options of unittest]."""
import gzip
import os
import pty
import signal
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from picture import Picture
from tool_test import NAVY, RED, SQUARE, TOOL, ToolTest, svg


def children_of(process):
    with open(f"/proc/{process}/task/{process}/children", encoding="ascii") as children:
        return [int(child) for child in children.read().split()]


def open_files_of(process):
    folder = f"/proc/{process}/fd"
    return [os.readlink(os.path.join(folder, name)) for name in os.listdir(folder)]


class FilesTest(ToolTest):
    DOCUMENT = svg('width="4" height="4"')

    def test_where_the_picture_goes(self):
        os.mkdir(os.path.join(self.folder, "in"))
        os.mkdir(os.path.join(self.folder, "out"))
        self.write("in/a.svg", self.DOCUMENT)
        self.write("in/b.xml", self.DOCUMENT)
        cases = [
            (("in/a.svg",), "in/a.png"),
            (("in/b.xml",), "in/b.xml.png"),
            (("in/a.svg", "-o", "out"), "out/a.png"),
            (("in/b.xml", "-o", "out/"), "out/b.xml.png"),
            (("in/a.svg", "-o", "out/other.name"), "out/other.name"),
            (("-", "-o", "out/"), "out/stdin.png"),
        ]
        for arguments, path in cases:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.run_tool("render", *arguments, stdin=self.DOCUMENT.encode()),
                                 (0, b"", ""))
                self.assertEqual(Picture(self.read(path)).colors(), {RED})
        status, output, _ = self.run_tool("render", "-", stdin=self.DOCUMENT.encode())
        self.assertEqual((status, Picture(output).width), (0, 4))

    def test_folders_stand_for_their_drawings(self):
        os.makedirs(os.path.join(self.folder, "in/deeper"))
        self.write("in/b.svg", self.DOCUMENT)
        self.write("in/notes.txt", "no drawing")
        self.write("in/deeper/a.svgz", gzip.compress(self.DOCUMENT.replace("red", "navy").encode()))
        self.assertEqual(self.run_tool("render", "in", "-o", "out/"),
                         (1, b"", "out/: there is no such folder; create it with: mkdir -p out/\n"))
        os.mkdir(os.path.join(self.folder, "out"))
        self.assertEqual(self.run_tool("render", "in", "-o", "out/"), (0, b"", ""))
        self.assertEqual(Picture(self.read("out/b.png")).colors(), {RED})
        self.assertEqual(Picture(self.read("out/deeper/a.png")).colors(), {NAVY})
        self.assertEqual(sorted(os.listdir(os.path.join(self.folder, "out"))), ["b.png", "deeper"])

    def test_formats(self):
        half = self.write("half.svg", svg('width="3" height="2"', SQUARE.replace(
            "/>", ' fill-opacity=".5"/>')))
        for arguments in (("-o", "a.raw"), ("-o", "a.data", "--format", "raw")):
            self.assertEqual(self.run_tool("render", half, *arguments), (0, b"", ""))
            self.assertIn(self.read(arguments[1]), [bytes([255, 0, 0, a]) * 6 for a in (127, 128)])
        status, _, errors = self.run_tool("render", half, "-o", "a.webp")
        if "built without WebP" in errors:
            self.assertEqual(status, 1)
            self.assertFalse(self.exists("a.webp"))
        else:
            self.assertEqual((status, errors), (0, ""))
            data = self.read("a.webp")
            self.assertEqual((data[:4], data[8:16]), (b"RIFF", b"WEBPVP8L"))
            sides = int.from_bytes(data[21:25], "little")
            self.assertEqual((sides & 0x3FFF, sides >> 14 & 0x3FFF), (2, 1))  # less 1 each

    def test_compression_changes_the_size_alone(self):
        gradient = svg('width="99" height="99"', '''<radialGradient id="g"><stop stop-color="red"/>
            <stop offset="1" stop-color="teal"/></radialGradient>
            <rect width="99" height="99" fill="url(#g)"/>''')
        name = self.write("a.svg", gradient)
        outputs = [self.run_tool("render", name, "-o", "-", *options)[1] for options in
                   ((), ("--compression", "0"), ("--compression", "9"))]
        pictures = [Picture(output).part(0, 0, 99, 99) for output in outputs]
        self.assertEqual(pictures[0], pictures[1])
        self.assertEqual(pictures[0], pictures[2])
        stored, usual, small = len(outputs[1]), len(outputs[0]), len(outputs[2])
        self.assertGreater(stored, usual)
        self.assertGreater(usual, small)

    def test_a_byte_order_mark_is_no_fault(self):
        self.assertEqual(self.render("\ufeff" + self.DOCUMENT).colors(), {RED})

    def test_many_files_go_on_after_a_bad_one(self):
        self.write("a.svg", self.DOCUMENT)
        self.write("bad.svg", "<svg>")
        self.write("c.svg", self.DOCUMENT.replace("red", "navy"))
        status, _, errors = self.run_tool("render", "a.svg", "bad.svg", "no.svg", "c.svg")
        self.assertEqual(status, 1)
        lines = errors.splitlines()
        self.assertRegex(lines[0], r"^bad\.svg:1: ")
        self.assertRegex(lines[1], r"^no\.svg: cannot read it")
        self.assertEqual(lines[2:], ["quor: 2 of 4 files rendered; failed:", "  bad.svg", "  no.svg"])
        self.assertEqual(Picture(self.read("a.png")).colors(), {RED})
        self.assertEqual(Picture(self.read("c.png")).colors(), {NAVY})

    def test_processes_make_the_same_pictures_and_messages(self):
        names = []
        for i in range(40):
            color = "red" if i % 2 else "navy"
            content = "<svg>" if i % 7 == 3 else self.DOCUMENT.replace("red", color)
            names.append(self.write(f"{i:02}.svg", content))
        runs = []
        for jobs in ("1", "3"):
            os.mkdir(os.path.join(self.folder, "out" + jobs))
            runs.append(self.run_tool("render", *names, "no.svg", "-o", f"out{jobs}/", "-j", jobs))
        self.assertEqual(runs[0], runs[1])
        self.assertEqual(runs[0][0], 1)
        self.assertIn("34 of 41 files rendered", runs[0][2])
        made = sorted(os.listdir(os.path.join(self.folder, "out1")))
        self.assertEqual(made, sorted(os.listdir(os.path.join(self.folder, "out3"))))
        for name in made:
            self.assertEqual(self.read("out1/" + name), self.read("out3/" + name))

    def test_what_a_signal_interrupts_leaves_nothing(self):
        name = self.write("a.svg", self.DOCUMENT)
        for interruption in (signal.SIGINT, signal.SIGTERM):
            with subprocess.Popen([TOOL, "render", name, "-w", "32768"], cwd=self.folder) as process:
                while len(self.files()) == 1:
                    self.assertIsNone(process.poll())
                process.send_signal(interruption)
            self.assertEqual(process.returncode, -interruption)
            self.assertEqual(self.files(), ["a.svg"])

    def test_a_process_that_dies_fails_its_file_only(self):
        names = [self.write(f"{i}.svg", self.DOCUMENT) for i in range(6)]
        os.mkfifo(os.path.join(self.folder, "pipe.svg"))  # whoever reads it waits
        with subprocess.Popen([TOOL, "render", *names[:3], "pipe.svg", *names[3:], "-j", "2"],
                              cwd=self.folder, stderr=subprocess.PIPE, text=True) as process:
            with open(os.path.join(self.folder, "pipe.svg"), "wb"):  # returns when it is read
                for child in children_of(process.pid):
                    if any("pipe.svg" in target for target in open_files_of(child)):
                        os.kill(child, signal.SIGKILL)
                        break
                errors = process.communicate(timeout=60)[1]
        self.assertEqual(process.returncode, 1)
        self.assertIn("pipe.svg: the process that rendered it died", errors)
        self.assertIn("quor: 6 of 7 files rendered", errors)

    def test_watch_renders_what_changes(self):
        os.mkdir(os.path.join(self.folder, "in"))
        self.write("in/a.svg", self.DOCUMENT)
        self.write("in/b.svg", self.DOCUMENT)
        with subprocess.Popen([TOOL, "render", "in", "--watch"], cwd=self.folder,
                              stderr=subprocess.PIPE, text=True) as process:
            try:
                self.assertIn("2 rendered; waiting", process.stderr.readline())
                self.write("in/b.svg", self.DOCUMENT.replace("red", "navy"))
                self.assertIn("1 rendered; waiting", process.stderr.readline())
                self.write("in/c.svg", self.DOCUMENT)
                self.assertIn("1 rendered; waiting", process.stderr.readline())
            finally:
                process.terminate()
        self.assertEqual(Picture(self.read("in/b.png")).colors(), {NAVY})
        self.assertEqual(Picture(self.read("in/c.png")).colors(), {RED})

    def test_pictures_of_one_run_do_not_overwrite_each_other(self):
        for folder in ("x", "y", "out"):
            os.mkdir(os.path.join(self.folder, folder))
        self.write("x/a.svg", self.DOCUMENT)
        self.write("y/a.svg", self.DOCUMENT.replace("red", "navy"))
        status, _, errors = self.run_tool("render", "x/a.svg", "y/a.svg", "-o", "out/")
        self.assertEqual(status, 1)
        self.assertRegex(errors, r"^y/a\.svg: its picture would overwrite out/a\.png")
        self.assertEqual(Picture(self.read("out/a.png")).colors(), {RED})

    def test_progress_shows_on_a_terminal_for_many_files(self):
        self.write("a.svg", self.DOCUMENT)
        self.write("b.svg", self.DOCUMENT)
        self.assertEqual(self.run_tool("render", "a.svg", "b.svg")[2], "")
        self.assertEqual(self.errors_on_terminal("a.svg"), "")
        self.assertRegex(self.errors_on_terminal("a.svg", "b.svg"),
                         r"^\r\x1b\[K\[1/2\] a\.svg\r\x1b\[K\[2/2\] b\.svg\r\x1b\[K$")

    def errors_on_terminal(self, *inputs):
        controller, terminal = pty.openpty()
        with open(terminal, "wb") as errors, open(controller, "rb", buffering=0) as screen:
            subprocess.run([TOOL, "render", *inputs], cwd=self.folder, stderr=errors, timeout=60,
                           check=True)
            errors.write(b".")  # an end mark: a terminal has no end of file
            errors.flush()
            shown = b""
            while not shown.endswith(b"."):
                shown += screen.read(1000)
        return shown[:-1].decode()


if __name__ == "__main__":
    unittest.main()
