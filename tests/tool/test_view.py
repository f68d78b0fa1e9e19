"""The window of `quor view`, driven on a virtual screen: test_view.py TOOL [options of unittest]."""
import os
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
import screen
from picture import Picture
from tool_test import TOOL, ToolTest, svg

RED, NAVY, WHITE, BLACK, GREY = (255, 0, 0), (0, 0, 128), (255,) * 3, (0,) * 3, (0xD8,) * 3

# Four quarters about the middle, and thin lines that show whether a picture was stretched.
QUARTERS = svg('viewBox="0 0 80 60"', """
    <rect width="40" height="30" fill="red"/><rect x="40" y="30" width="40" height="30" fill="navy"/>
    <path d="M40 0V30" stroke="lime" stroke-width=".25"/>""")


def is_built_in():
    done = subprocess.run([TOOL, "view", "-"], stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, check=False, env=dict(os.environ, SDL_VIDEODRIVER="none"))
    return "built without" not in done.stderr


@unittest.skipUnless(screen.is_available(), "needs Xvfb and xdotool")
class ViewTest(ToolTest):
    def setUp(self):
        super().setUp()
        if not is_built_in():
            self.skipTest("the tool was built without SDL2")
        self.screen = self.enterContext(screen.Screen())
        self.write("a.svg", QUARTERS)
        self.write("b.svg", QUARTERS.replace("red", "white"))
        self.viewer = subprocess.Popen([TOOL, "view", "a.svg", "b.svg"], cwd=self.folder,
                                       env=self.screen.environment, stderr=subprocess.PIPE)
        self.addCleanup(self.end)
        self.window = self.screen.wait_for(self.find_window, "the window")
        place = self.screen.do("getwindowgeometry", "--shell", self.window)
        values = dict(line.split("=") for line in place.splitlines())
        self.x, self.y = int(values["X"]), int(values["Y"])
        self.assertEqual((values["WIDTH"], values["HEIGHT"]), ("800", "600"))
        self.point(400, 300)

    def end(self):
        self.viewer.kill()
        self.viewer.communicate()

    def find_window(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "a.svg - "],
                               env=self.screen.environment, text=True, capture_output=True,
                               check=False)
        return found.stdout.strip()

    def point(self, x, y):
        self.screen.do("mousemove", str(self.x + x), str(self.y + y))

    def colors(self, *points):
        return [self.screen.photograph(self.x + x, self.y + y, 1, 1)[0][0] for x, y in points]

    def title(self):
        return self.screen.do("getwindowname", self.window)

    def expect(self, points):
        """Waits until the points of the window have these colours."""
        places, expected = list(points), list(points.values())
        try:
            self.screen.wait_for(lambda: self.colors(*places) == expected, "the colours")
        except AssertionError:
            self.assertEqual(self.colors(*places), expected)

    def test_view(self):
        with self.subTest("fitted, over a checker board"):
            self.expect({(10, 10): RED, (790, 590): NAVY, (399, 10): (0, 255, 0),
                         (410, 10): WHITE, (420, 10): GREY})
            self.assertRegex(self.title(), r"^a\.svg - 1000 % - \d+\.\d\d ms - 1 of 2$")
        with self.subTest("grounds"):
            self.screen.do("key", "g")
            self.expect({(410, 10): WHITE, (420, 10): WHITE})
            self.screen.do("key", "g")
            self.expect({(410, 10): BLACK, (420, 10): BLACK})
        with self.subTest("the wheel enlarges about the pointer"):
            self.point(400, 100)
            for _ in range(9):
                self.screen.do("click", "4")  # 1.25^9 = 7.45 times
            self.screen.wait_for(lambda: " 7451 % " in self.title(), "the scale in the title")
            # The line of 0.25 units has 18.6 pixels now, with sharp edges: it was drawn again.
            self.expect({(389, 100): RED, (392, 100): (0, 255, 0), (408, 100): (0, 255, 0),
                         (411, 100): BLACK})
        with self.subTest("dragging moves"):
            self.screen.do("mousedown", "1")
            self.point(500, 130)
            self.screen.do("mouseup", "1")
            self.expect({(489, 200): RED, (500, 200): (0, 255, 0), (511, 200): BLACK})
        with self.subTest("rotation is clockwise about the middle, fitting ends it"):
            self.screen.do("key", "f")
            self.expect({(10, 10): RED, (790, 590): NAVY})
            for _ in range(6):
                self.screen.do("key", "r")
            self.expect({(600, 100): RED, (200, 100): BLACK, (200, 500): NAVY, (90, 10): BLACK})
            self.screen.do("key", "f")
        with self.subTest("smoothing is off at quality none"):
            self.screen.do("key", "r", "n")
            self.screen.wait_for(lambda: self.count_colors() == 4, "four colours")
            self.screen.do("key", "f", "b")
        with self.subTest("next and previous file"):
            self.screen.do("key", "space")
            self.expect({(10, 10): WHITE, (790, 590): NAVY})
            self.assertRegex(self.title(), r"^b\.svg .* 2 of 2$")
            self.screen.do("key", "BackSpace")
            self.expect({(10, 10): RED})
        with self.subTest("what is seen is copied, without the ground"):
            self.screen.do("key", "c")
            self.screen.wait_for(lambda: "copied to a-view.png" in self.title(), "the copy")
            copy = Picture(self.read("a-view.png"))
            self.assertEqual((copy.width, copy.height), (800, 600))
            self.assertEqual([copy.at(10, 10), copy.at(410, 10)], [(*RED, 255), (0, 0, 0, 0)])
        with self.subTest("a file that changes is read again, a broken one left alone"):
            self.write("a.svg", QUARTERS.replace("red", "blue"))
            self.expect({(10, 10): (0, 0, 255)})
            self.write("a.svg", "<svg")
            self.screen.wait_for(lambda: "malformed" in self.title(), "the fault in the title")
            self.expect({(10, 10): (0, 0, 255)})
        self.screen.do("key", "Escape")
        self.assertEqual(self.viewer.wait(timeout=30), 0)

    def count_colors(self):
        rows = self.screen.photograph(self.x, self.y, 800, 600)
        return len({color for row in rows for color in row})


if __name__ == "__main__":
    unittest.main()
