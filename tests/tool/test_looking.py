"""What the tool tells of documents: test_looking.py TOOL [options of unittest]."""
import os
import pty
import re
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from tool_test import SQUARE, TOOL, ToolTest, svg

PARTLY = svg('width="2cm" viewBox="0 0 80 60"', f"""<text>a</text>
<g id="one" style="opacity: .5; filter:url(#f)">{SQUARE}</g>
<text x="1">b<tspan>c</tspan></text><g id="two" opacity="1" mask="none"/><style/>""")


class LookingTest(ToolTest):
    def test_info(self):
        self.write("partly.svg", PARTLY)
        self.write("bad.svg", "<svg>")
        self.write("whole.svg", svg('viewBox="0 0 4 4"'))
        status, output, errors = self.run_tool("info", "partly.svg", "bad.svg", "whole.svg")
        self.assertEqual(status, 1)
        self.assertRegex(errors, r"^bad\.svg:1: an element is not closed[^\n]*\n$")
        rows = [re.sub(r"  +", " ", line).strip() for line in output.decode().splitlines()]
        self.assertEqual(rows, [
            "partly.svg",
            "size width 75.5905 px, height not given",
            "shows x 0, y 0, width 80, height 60 (--region)",
            "picture 76 x 57 pixels",
            "elements 8: 2 g, 1 rect, 1 style, 1 svg, 2 text, 1 tspan",
            "ids one two (--element)",
            "not drawn <text> on line 2 (2 times): convert text to paths in the editor",
            "not drawn opacity= on line 3: use fill-opacity and stroke-opacity",
            "not drawn filter= on line 3: shapes are drawn without it",
            "not drawn <style> on line 4: style sheets are not read; write presentation attributes",
            "whole.svg",
            "size width not given, height not given",
            "shows x 0, y 0, width 4, height 4 (--region)",
            "picture 512 x 512 pixels",
            "elements 2: 1 rect, 1 svg",
            "not drawn nothing: all of it is drawn",
        ])

    def test_render_warns_in_one_line(self):
        self.write("partly.svg", PARTLY)
        self.write("whole.svg", svg('viewBox="0 0 4 4"'))
        self.assertEqual(self.run_tool("render", "partly.svg", "whole.svg"), (0, b"", ""))
        status, _, errors = self.run_tool("render", "--warn", "partly.svg", "whole.svg")
        self.assertEqual((status, errors), (0, "partly.svg: passed over: 2 <text> (line 2), "
                                            "1 opacity= (line 3), 1 filter= (line 3), "
                                            "1 <style> (line 4)\n"))

    def test_bench(self):
        self.write("a.svg", svg('viewBox="0 0 4 2"'))
        status, output, errors = self.run_tool("bench", "a.svg", "no.svg", "--size", "64",
                                               "--seconds", "0.01")
        self.assertEqual(status, 1)
        self.assertRegex(errors, r"^no\.svg: cannot read it")
        self.assertRegex(output.decode(), r"^a\.svg, 64 x 32 pixels\n"
                         r"( +(load|first draw|later draw) +\d+\.\d+ [um]s  #+\n){3}$")

    def test_colours_are_for_terminals(self):
        self.write("a.svg", svg('viewBox="0 0 4 2"'))
        self.assertIn(b"\x1b[1ma.svg\x1b[0m", self.on_terminal({}))
        self.assertNotIn(b"\x1b", self.on_terminal({"NO_COLOR": "1"}))
        self.assertNotIn(b"\x1b", self.run_tool("info", "a.svg")[1])

    def on_terminal(self, environment):
        controller, terminal = pty.openpty()
        with open(controller, "rb", buffering=0) as screen:
            variables = {k: v for k, v in os.environ.items() if k != "NO_COLOR"} | environment
            subprocess.run([TOOL, "info", "a.svg"], cwd=self.folder, stdout=terminal, timeout=60,
                           check=True, env=variables)
            os.close(terminal)
            return screen.read(4000)


if __name__ == "__main__":
    unittest.main()
