"""Parts of documents and pictures of many tiles: test_parts.py TOOL [options of unittest]."""
import resource
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from picture import Picture
from tool_test import CLEAR, NAVY, RED, TOOL, ToolTest, svg

# Edges that cross tiles, curves, a gradient, a stroke, and a shape that comes again and again.
BUSY = """
<defs>
  <linearGradient id="l"><stop stop-color="gold"/><stop offset="1" stop-color="teal"/></linearGradient>
  <g id="d"><circle r="1.37"/><path d="M-1 -2L2.3 1L-.7 1.9Z" fill="navy"/></g>
</defs>
<rect x="1" y="1" width="97" height="98" fill="url(#l)"/>
<path d="M3 5L95 61L40 97Z" fill="red" fill-opacity=".6"/>
<circle cx="50" cy="50" r="47.3" fill="none" stroke="maroon" stroke-width="2.7"/>
<g transform="rotate(7.7)">""" + "".join(
    f'<use xlink:href="#d" x="{9 + 7.3 * i}" y="{1 + 5.9 * i}"/>' for i in range(12)) + "</g>"
SPACE = 'xmlns:xlink="http://www.w3.org/1999/xlink"'


class LargePictureTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.write("square.svg", svg(SPACE + ' viewBox="0 0 100 100"', BUSY))
        self.write("banner.svg", svg(SPACE + ' viewBox="0 0 100 100" preserveAspectRatio="none"',
                                     BUSY))

    def picture(self, *arguments):
        status, output, errors = self.run_tool("render", *arguments, "-o", "-")
        self.assertEqual((status, errors), (0, ""))
        return Picture(output)

    def test_a_part_by_itself_equals_that_part_of_the_whole(self):
        cases = [
            # file, size of the whole, the part in pixels: left, top, width, height
            ("square.svg", (2048, 2048), [(0, 0, 1024, 1024), (1024, 0, 1024, 1024),
                                          (0, 1024, 1024, 1024), (1024, 1024, 1024, 1024)]),
            ("square.svg", (4096, 4096), [(2048, 1024, 2048, 1024), (3000, 3001, 200, 300)]),
            ("banner.svg", (16384, 128), [(8192, 0, 1024, 128), (15000, 32, 1384, 64)]),
            ("banner.svg", (128, 32768), [(0, 32000, 128, 768), (32, 16000, 64, 2048)]),
        ]
        for name, (width, height), parts in cases:
            whole = self.picture(name, "-w", str(width), "-h", str(height))
            self.assertEqual((whole.width, whole.height), (width, height))
            for part in parts:
                with self.subTest(size=(width, height), part=part):
                    across, down = 100 / width, 100 / height
                    region = [part[0] * across, part[1] * down, part[2] * across, part[3] * down]
                    alone = self.picture(name, "--region", ",".join(map(str, region)),
                                         "-w", str(part[2]), "-h", str(part[3]))
                    self.assertEqual(alone.part(0, 0, *part[2:]), whole.part(*part))
                    self.assertGreater(len(set(b"".join(alone.part(0, 0, *part[2:])))), 4)

    def test_tiles_show_what_one_surface_shows(self):
        """Apart from what cutting edges at tiles does: 1/32 pixel."""
        alone = self.picture("square.svg", "-w", "1500", "--background", "white")
        tiled = self.picture("square.svg", "-w", "1500", "--background", "white",
                             "--region", "0,0,100,100")
        pairs = [(a, b) for x, y in zip(alone.part(0, 0, 1500, 1500), tiled.part(0, 0, 1500, 1500))
                 if x != y for a, b in zip(x, y) if a != b]
        self.assertLess(len(pairs), 1500 * 1500 * 4 // 1000)
        self.assertLessEqual(max(abs(a - b) for a, b in pairs), 16)

    def test_the_memory_is_that_of_a_row_of_tiles(self):
        with open(TOOL, "rb") as tool:
            if b"__asan_init" in tool.read():
                self.skipTest("the sanitizers need memory of their own")
        limit = 180 << 20  # bytes; the whole picture has 256 MiB, a row of tiles 64
        done = subprocess.run([TOOL, "render", "banner.svg", "-w", "16384", "-h", "4096",
                               "--format", "raw", "-o", "/dev/null"], cwd=self.folder, check=False,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS,
                                                                    (limit, limit)))
        self.assertEqual(done.returncode, 0)


class PartTest(ToolTest):
    DOCUMENT = svg('viewBox="10 10 40 20"', """
        <g fill="red" transform="translate(10)"><g id="chain">
            <rect id="left" x="4" y="14" width="8" height="4"/>
            <rect id="right" x="24" y="14" width="8" height="4" fill="navy"/></g></g>
        <defs><rect id="never" width="4" height="4"/></defs>""")

    def test_region(self):
        picture = self.render(self.DOCUMENT, "--region", "12,12,12,8", "--scale", "0.25")
        self.assertEqual((picture.width, picture.height), (128, 85))
        picture = self.render(self.DOCUMENT, "--region", "12,12,12,8", "-w", "24")
        self.assertEqual((picture.width, picture.height), (24, 16))
        self.assertEqual([picture.at(3, 4), picture.at(4, 3), picture.at(4, 4)], [CLEAR, CLEAR, RED])
        sized = self.DOCUMENT.replace("viewBox", 'width="80" height="40" viewBox')
        picture = self.render(sized, "--region", "12,12,12,8")  # at the scale of the whole
        self.assertEqual((picture.width, picture.height), (24, 16))

    def test_element_is_fitted_in_its_own_style(self):
        for name, size, color in (("left", (16, 8), RED), ("right", (16, 8), NAVY)):
            picture = self.render(self.DOCUMENT, "--element", name, "-w", "16")
            self.assertEqual((picture.width, picture.height), size)
            self.assertEqual({picture.at(x, y) for x in range(1, 15) for y in range(1, 7)}, {color})
        picture = self.render(self.DOCUMENT, "--element", "chain", "-w", "280")
        self.assertEqual((picture.width, picture.height), (280, 40))
        self.assertEqual([picture.at(40, 20), picture.at(140, 20), picture.at(240, 20)],
                         [RED, CLEAR, NAVY])
        name = self.write("a.svg", self.DOCUMENT)
        self.expect_failure("a.svg: there is no element with the id 'x'", name, "--element", "x")
        self.expect_failure("a.svg:6: the element 'never' is in <defs>", name, "--element", "never")

    def test_trim(self):
        plain = self.render(self.DOCUMENT, "-w", "80", "--trim")
        self.assertEqual((plain.width, plain.height), (56, 8))
        self.assertEqual([plain.at(0, 0), plain.at(20, 0), plain.at(55, 7)], [RED, CLEAR, NAVY])
        large = self.render(self.DOCUMENT, "-w", "4000", "--trim", "--background", "red")
        self.assertEqual((large.width, large.height), (800, 400))
        self.assertEqual(large.colors(), {NAVY})
        name = self.write("a.svg", svg("", ""))
        self.expect_failure("a.svg: nothing of it is seen, so --trim leaves", name, "--trim")


if __name__ == "__main__":
    unittest.main()
