"""What `render` refuses, and how: test_messages.py TOOL [options of unittest]."""
import gzip
import os
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from tool_test import ToolTest, svg


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
            (gzip.compress(svg("").encode())[:60], ": its compressed data is damaged or cut off"),
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
        self.expect_failure("folder: there is no .svg or .svgz file in this folder", "folder")

    def test_bad_outputs(self):
        name = self.write("a.svg", svg('width="4" height="4"'))
        other = self.write("b.svg", svg('width="4" height="4"'))
        os.mkdir(os.path.join(self.folder, "a.png"))
        cases = [
            ((name, "-o", "no/"), "no/: there is no such folder; create it with: mkdir -p no/\n"),
            ((name, "-o", "no/a.png"), "no: there is no such folder; create it with: mkdir -p no\n"),
            ((name, other, "-o", "x.png"), "x.png: one file cannot hold 2 pictures; name a folder"),
            ((name, other, "-o", "-"), "-: one file cannot hold 2 pictures; name a folder"),
            ((name, "-o", "a.svg"), "a.svg: pictures are .png, .webp or .raw, not .svg; choose"),
            ((name, "-o", "a.svg", "--format", "png"),
             "a.svg: the picture would overwrite its own document; choose"),
            ((name, "-o", "a.jpg"), "a.jpg: pictures are .png, .webp or .raw, not .jpg; choose"),
            ((name,), "a.svg: cannot write a.png: Is a directory; choose another place with -o"),
            ((name, "-o", "/dev/full"), "a.svg: cannot write /dev/full: No space left on device"),
        ]
        for arguments, message in cases:
            with self.subTest(arguments=arguments):
                self.expect_failure(message, *arguments)
        self.assertEqual(self.read(name).decode(), svg('width="4" height="4"'))
        self.assertEqual(self.files(), ["a.png", "a.svg", "b.svg"])  # nothing half-written

    def test_wrong_command_lines(self):
        name = self.write("a.svg", svg('width="4" height="4"'))
        size = "is not a whole number of pixels from 1 to 32768"
        cases = [
            ([], "IN.svg is required"),
            (["--width", "0"], "--width: '0' " + size),
            (["-w", "32769"], "--width: '32769' " + size),
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
            (["--region", "0,0,4"], "--region: '0,0,4' is not four numbers"),
            (["--region", "0,0,0,4"], "--region: '0,0,0,4' is not four numbers"),
            (["--color", "none"], "--color: 'none' is not an opaque colour"),
            (["--jobs", "0"], "--jobs: '0' is not a whole number from 1"),
            (["--compression", "10"], "--compression: '10' is not a level from 0 to 9"),
            (["-h"], "--height: 1 required PIXELS missing"),
            (["--frobnicate"], "quor render: there is no option --frobnicate.\n"),
            (["--backgroud=red"],
             "quor render: there is no option --backgroud=red. Did you mean --background?\n"),
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
        status, output, errors = self.run_tool("rendr", "a.svg")
        self.assertEqual((status, errors.splitlines()[0]),
                         (2, "quor: there is no command rendr. Did you mean render?"))
        status, output, _ = self.run_tool("--version")
        self.assertEqual(status, 0)
        self.assertRegex(output.decode(), r"^quor \d+\.\d+")

    def test_manual_and_completion(self):
        status, page, _ = self.run_tool("manual", "render")
        self.assertEqual(status, 0)
        self.assertRegex(page.decode(), r"(?s)^\.TH QUOR\\-RENDER 1\n.*\n\.TP\n\.B \\-w, \\-\\-width PIXELS\n")
        self.assertRegex(self.run_tool("manual")[1].decode(), r"(?s)\.SH COMMANDS\n\.TP\n\.B render\n")
        self.assertEqual(self.run_tool("manual", "nothing")[0], 2)
        self.write("words", self.run_tool("completion", "bash")[1])
        for words, expected in (("quor vi", "view\n"), ("quor render --co", "--color\n--compression\n"),
                                ("quor render a.s", "\n")):
            done = subprocess.run(
                ["bash", "-c", "source words; COMP_WORDS=($0); COMP_CWORD=$((${#COMP_WORDS[@]}-1));"
                 "_quor; printf '%s\\n' \"${COMPREPLY[@]}\"", words], cwd=self.folder,
                capture_output=True, text=True, check=True)
            self.assertEqual(done.stdout, expected)
        for shell in ("zsh", "fish"):
            self.assertIn(b"--trim" if shell == "zsh" else b"-l trim",
                          self.run_tool("completion", shell)[1])


if __name__ == "__main__":
    unittest.main()
