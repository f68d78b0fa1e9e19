"""Tests of the command-line tool, through the command line: test_tool.py TOOL [options of unittest]."""
import os
import pty
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
from picture import Picture

TOOL = ""  # path of the tool, from the command line

RED, NAVY = (255, 0, 0, 255), (0, 0, 128, 255)
SQUARE = '<rect width="4" height="4" fill="red"/>'


def svg(attributes, content=SQUARE):
    return f'<svg xmlns="http://www.w3.org/2000/svg" {attributes}>\n{content}\n</svg>\n'


class ToolTest(unittest.TestCase):
    """Each test runs in an empty folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode()
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(data)
        return name

    def read(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read()

    def exists(self, name):
        return os.path.exists(os.path.join(self.folder, name))

    def run_tool(self, *arguments, stdin=b""):
        """(exit status, standard output, standard error as text)"""
        done = subprocess.run([TOOL, *arguments], input=stdin, cwd=self.folder, timeout=60,
                              capture_output=True, check=False)
        return done.returncode, done.stdout, done.stderr.decode()

    def render(self, document, *options):
        """The picture of a document that must render without a word."""
        status, output, errors = self.run_tool("render", "-", "-o", "-", *options,
                                               stdin=document.encode())
        self.assertEqual((status, errors), (0, ""))
        return Picture(output)

    def expect_failure(self, message, *arguments, status=1, stdin=b""):
        """`message` is what standard error begins with."""
        actual_status, output, errors = self.run_tool("render", *arguments, stdin=stdin)
        self.assertEqual(actual_status, status, errors)
        self.assertEqual(output, b"")
        self.assertEqual(errors[: len(message)], message, errors)


class SizeTest(ToolTest):
    def test_size(self):
        box = 'viewBox="0 0 40 20"'
        sized = 'width="30" height="60" ' + box
        cases = [
            # document, options, width and height of the picture
            (sized, "", (30, 60)),
            (box, "", (512, 256)),
            ('viewBox="0 0 20 40"', "", (256, 512)),
            ("", "", (512, 512)),
            ("", "--width 30 --height 20", (30, 20)),
            ('width="30" ' + box, "", (30, 15)),
            ('height="30" ' + box, "", (60, 30)),
            ('width="50%" height="30" ' + box, "", (60, 30)),
            (sized, "--width 15", (15, 30)),
            (sized, "--height 15", (8, 15)),
            (sized, "--width 7 --height 9", (7, 9)),
            (sized, "--scale 2", (60, 120)),
            (sized, "--scale 0.5 --width 10", (5, 10)),
            ('width="1in" height="2in"', "", (96, 192)),
            ('width="1in" height="2in"', "--dpi 48", (48, 96)),
            ('viewBox="0 0 100000 1"', "", (512, 1)),
            ('width="0" height="5"', "--width 3 --height 4", (3, 4)),
            ('width="2048" height="1"', "", (2048, 1)),
        ]
        for attributes, options, expected in cases:
            with self.subTest(attributes=attributes, options=options):
                picture = self.render(svg(attributes), *options.split())
                self.assertEqual((picture.width, picture.height), expected)

    def test_impossible_size(self):
        cases = [
            ('width="3000" height="1500"', "",
             "the picture would have 3000 x 1500 pixels, and a side can have 2048; "
             "give --width 2048 or less"),
            ('width="3e30" height="6e30"', "", "the picture would have "),
            ('viewBox="0 0 1 2"', "--width 2000",
             "the picture would have 2000 x 4000 pixels, and a side can have 2048; "
             "give --height 2048 or less"),
            ('viewBox="0 0 1 1"', "--width 2048 --scale 1.5", "the picture would have 3072 x 3072"),
            ('width="0" height="5"', "", "the document gives itself a width or height of 0; give"),
            ('viewBox="0 0 0 5"', "", "its viewBox has no area, so no size follows from it; give"),
        ]
        for attributes, options, message in cases:
            with self.subTest(attributes=attributes, options=options):
                self.expect_failure("<stdin>: " + message, "-", *options.split(),
                                    stdin=svg(attributes).encode())


class PictureTest(ToolTest):
    def test_pixels_are_stored_with_straight_alpha(self):
        half = '<rect width="4" height="4" fill="#ff8000" fill-opacity="0.5"/>'
        red, green, blue, alpha = self.render(svg('width="4" height="4"', half)).at(1, 1)
        self.assertIn(alpha, (127, 128))
        self.assertEqual((red, blue), (255, 0))
        self.assertAlmostEqual(green, 128, delta=1)
        self.assertEqual(self.render(svg('width="4" height="4"', "")).colors(), {(0, 0, 0, 0)})

    def test_background(self):
        cases = {
            "#08f": (0, 136, 255, 255), "#0088FF": (0, 136, 255, 255), "navy": NAVY, "RED": RED,
            "#ff000080": (255, 0, 0, 128), "none": (0, 0, 0, 0), "transparent": (0, 0, 0, 0),
        }
        for color, expected in cases.items():
            with self.subTest(color=color):
                picture = self.render(svg('width="3" height="2"', ""), "--background", color)
                self.assertEqual(picture.colors(), {expected})

    def test_placement(self):
        document = svg('viewBox="0 0 4 4"')  # a red square, on a picture of another shape
        left, middle, right = (0, 10), (15, 10), (29, 10)
        cases = [
            ("", {left: NAVY, middle: RED, right: NAVY}),
            ("--align xMinYMid", {left: RED, middle: RED, right: NAVY}),
            ("--align xMaxYMid", {left: NAVY, middle: RED, right: RED}),
            ("--align none", {left: RED, middle: RED, right: RED}),
            ("--slice", {left: RED, (15, 0): RED, (15, 19): RED, right: RED}),
        ]
        for options, pixels in cases:
            with self.subTest(options=options):
                picture = self.render(document, "--width", "30", "--height", "20",
                                      "--background", "navy", *options.split())
                for (x, y), color in pixels.items():
                    self.assertEqual(picture.at(x, y), color, (x, y))

    def test_rotation_is_clockwise_about_the_centre(self):
        document = svg('viewBox="0 0 8 8"')  # the red square is the top left quarter
        top_left, top_right, bottom_right, bottom_left = (1, 1), (6, 1), (6, 6), (1, 6)
        for degrees, red in {"0": top_left, "90": top_right, "180": bottom_right,
                             "-90": bottom_left, "-.5e0": top_left}.items():
            with self.subTest(degrees=degrees):
                picture = self.render(document, "--width", "8", "--rotate", degrees,
                                      "--background", "navy")
                for corner in (top_left, top_right, bottom_right, bottom_left):
                    self.assertEqual(picture.at(*corner), RED if corner == red else NAVY, corner)

    def test_quality(self):
        document = svg('width="32" height="32"', '<circle cx="16" cy="16" r="13.3" fill="red"/>')
        self.assertEqual(len(self.render(document, "--quality", "none").colors()), 2)
        for quality in ("faster", "best"):
            self.assertGreater(len(self.render(document, "--quality", quality).colors()), 8)


class MessageTest(ToolTest):
    def test_bad_documents(self):
        root = '<svg xmlns="http://www.w3.org/2000/svg" width="4" height="4"'
        loop = '<g id="a"><use xlink:href="#a"/></g>'
        cases = [
            # text, what follows the file's name in the message
            ("", ": the file is empty; it must hold an SVG document"),
            (" \n", ": there is no element"),
            ("<!-- only this -->", ": there is no element"),
            (svg("", "\n<g><rect></g>"), ":3: an element is not closed"),
            (svg("", "\n<rect x=1/>"), ":3: an attribute is malformed or given twice"),
            (svg("", "<!-- open"), ":2: a comment does not end in '-->'"),
            ("<g/>", ":1: the root element is <g>; it must be <svg>"),
            ("\n<a:svg xmlns:a='x'/>", ":2: the root element is <a:svg>; it must be <svg>"),
            (svg("", "<g>" * 5000 + "</g>" * 5000), ":2: elements nest too deep"),
            (svg("", "\0"), ":2: there is a NUL byte in the text; save"),
            (svg("").encode("utf-16"), ": its text is UTF-16; save it as UTF-8"),
            (b"\x1f\x8b\x08", ": it is compressed; unpack it first"),
            (svg('width="4" height="4" xmlns:xlink="x"', loop), ": its <use> elements refer in a "),
        ]
        for text, message in cases:
            with self.subTest(message=message):
                name = self.write("drawing.svg", text)
                self.expect_failure(name + message, name)
                self.assertFalse(self.exists("drawing.png"))

    def test_unreadable_inputs(self):
        os.mkdir(os.path.join(self.folder, "folder"))
        self.expect_failure("no.svg: cannot read it: No such file or directory; check", "no.svg")
        self.expect_failure("folder: cannot read it: Is a directory; check", "folder")

    def test_bad_outputs(self):
        name = self.write("a.svg", svg('width="4" height="4"'))
        other = self.write("b.svg", svg('width="4" height="4"'))
        os.mkdir(os.path.join(self.folder, "a.png"))
        cases = [
            ((name, "-o", "no/"), "no/: there is no such folder; create it with: mkdir -p no/\n"),
            ((name, "-o", "no/a.png"), "no: there is no such folder; create it with: mkdir -p no\n"),
            ((name, other, "-o", "x.png"), "x.png: one file cannot hold 2 pictures; name a folder"),
            ((name, other, "-o", "-"), "-: one file cannot hold 2 pictures; name a folder"),
            ((name, "-o", "a.svg"), "a.svg: the picture would overwrite its own document; choose"),
            ((name,), "a.svg: cannot write a.png: Is a directory; choose another place with -o"),
            ((name, "-o", "/dev/full"), "a.svg: cannot write /dev/full: No space left on device"),
        ]
        for arguments, message in cases:
            with self.subTest(arguments=arguments):
                self.expect_failure(message, *arguments)
        self.assertEqual(self.read(name).decode(), svg('width="4" height="4"'))

    def test_wrong_command_lines(self):
        name = self.write("a.svg", svg('width="4" height="4"'))
        size = "is not a whole number of pixels from 1 to 2048"
        cases = [
            ([], "IN.svg is required"),
            (["--width", "0"], "--width: '0' " + size),
            (["--width", "2049"], "--width: '2049' " + size),
            (["--height", "-1"], "--height: '-1' " + size),
            (["--height", "4px"], "--height: '4px' " + size),
            (["--scale", "0"], "--scale: '0' is not a number above 0"),
            (["--scale", "nan"], "--scale: 'nan' is not a number"),
            (["--dpi", "inf"], "--dpi: 'inf' is not a number above 0"),
            (["--rotate", ""], "--rotate: '' is not a number"),
            (["--quality", "better"], "--quality: 'better' is not one of none, faster, best"),
            (["--align", "middle"], "--align: 'middle' is not one of none, xMinYMin,"),
            (["--background", "#12345"], "--background: '#12345' is not a colour: #rgb,"),
            (["--background", "#-12"], "--background: '#-12' is not a colour"),
            (["--background", "mauve"], "--background: 'mauve' is not a colour"),
            (["--frobnicate"], "The following argument was not expected: --frobnicate"),
        ]
        for options, message in cases:
            with self.subTest(options=options):
                self.expect_failure(message, *([name] if options else []), *options, status=2)
                self.assertFalse(self.exists("a.png"))

    def test_help_and_version(self):
        status, output, _ = self.run_tool("render", "--help")
        self.assertEqual(status, 0)
        for option in ("--width", "--height", "--scale", "--quality", "--background", "--dpi",
                       "--rotate", "--align", "--slice", "-o"):
            self.assertIn(option, output.decode())
        status, output, _ = self.run_tool("--version")
        self.assertEqual(status, 0)
        self.assertRegex(output.decode(), r"^quor \d+\.\d+")


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
    TOOL = os.path.abspath(sys.argv.pop(1))
    unittest.main()
