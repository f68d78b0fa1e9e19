"""Tests of the command `pack`: test_pack.py TOOL [options of unittest]."""
import json
import os
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
from picture import Picture

TOOL = ""  # path of the tool, from the command line

RED, LIME, BLUE = (255, 0, 0, 255), (0, 255, 0, 255), (0, 0, 255, 255)


def svg(*elements):
    return f'<svg xmlns="http://www.w3.org/2000/svg">{"".join(elements)}</svg>\n'


def rect(width, height, fill, identifier=""):
    name = f'id="{identifier}" ' if identifier else ""
    return f'<rect {name}x="5" y="7" width="{width}" height="{height}" fill="{fill}"/>'


class PackTest(unittest.TestCase):
    """Each test runs in an empty folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.write("one.svg", svg(rect(8, 4, "red", "hidden")))
        self.write("two.svg", svg(rect(6, 6, "lime", "leaf"), rect(3, 9, "blue")))

    def write(self, name, text):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
            file.write(text)

    def read(self, name):
        with open(os.path.join(self.folder, name), encoding="utf-8") as file:
            return file.read()

    def picture(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return Picture(file.read())

    def pack(self, *arguments, status=0):
        """Standard output and standard error."""
        done = subprocess.run([TOOL, "pack", *arguments], cwd=self.folder, timeout=60, text=True,
                              capture_output=True, check=False)
        self.assertEqual(done.returncode, status, done.stderr)
        return done.stdout, done.stderr

    def expect_frame(self, picture, box, size, color):
        """A frame cut out of its sheet has the size and is of one colour, with a free border."""
        x, y, w, h = (box[key] for key in "xywh")
        self.assertEqual((w, h), size)
        inside = {picture.at(i, j) for j in range(y, y + h) for i in range(x, x + w)}
        self.assertEqual(inside, {color})
        for i in range(x - 1, x + w + 1):
            self.assertEqual((picture.at(i, y - 1)[3], picture.at(i, y + h)[3]), (0, 0))
        for j in range(y - 1, y + h + 1):
            self.assertEqual((picture.at(x - 1, j)[3], picture.at(x + w, j)[3]), (0, 0))

    def frames(self, name="s.json"):
        return json.loads(self.read(name))["frames"]

    def test_json_hash(self):
        self.write("canvas.svg", '<svg xmlns="http://www.w3.org/2000/svg" width="20" height="30">'
                   f'{rect(8, 4, "red")}</svg>')
        output, errors = self.pack("canvas.svg", "-o", "sheet", "--scale", "2")
        self.assertEqual(errors, "")
        self.assertRegex(output, r"^sheet: 1 frame on 1 sheet, [\d.]+ % occupied, [\d.]+ s\n$")
        atlas = json.loads(self.read("sheet.json"))
        picture = self.picture(atlas["meta"]["image"])
        self.assertEqual(atlas["meta"]["size"], {"w": picture.width, "h": picture.height})
        entry = atlas["frames"]["canvas.svg"]
        self.expect_frame(picture, entry["frame"], (16, 8), RED)
        self.assertEqual(entry["sourceSize"], {"w": 40, "h": 60})
        self.assertEqual(entry["spriteSourceSize"], {"x": 10, "y": 14, "w": 16, "h": 8})
        self.assertTrue(entry["trimmed"])

        self.pack("canvas.svg", "-o", "sheet", "--no-trim")
        entry = self.frames("sheet.json")["canvas.svg"]
        self.assertEqual((entry["frame"]["w"], entry["frame"]["h"], entry["trimmed"]),
                         (20, 30, False))

    def test_elements_keep_their_names(self):
        """Whatever fits and shows: names go by the place in the file."""
        self.write("two.svg", svg("<title/>", rect(6, 6, "lime", "leaf"), rect(90, 9, "red"),
                                  rect(3, 9, "none"), "<g>", rect(3, 9, "blue"), "</g>"))
        self.pack("two.svg", "-o", "s", "--elements", "--max-size", "64", status=1)
        frames = self.frames()
        self.assertEqual(list(frames), ["two.svg/leaf", "two.svg/4"])
        self.expect_frame(self.picture("s-0.png"), frames["two.svg/4"]["frame"], (3, 9), BLUE)
        self.assertEqual(frames["two.svg/4"]["origin"], {"x": 5, "y": 7})
        self.pack("two.svg", "-o", "s", "--explode", "--pow2", "--border", "3")
        atlas = json.loads(self.read("s.json"))
        self.assertEqual(list(atlas["frames"]), ["two.svg/leaf", "two.svg/2", "two.svg/4.0"])
        for side in atlas["meta"]["size"].values():
            self.assertEqual(side & (side - 1), 0)
        self.assertGreaterEqual(atlas["frames"]["two.svg/leaf"]["frame"]["x"], 3)

    def test_folders_and_names(self):
        for name in ("ui/one.svg", "ui/deep/one.svg", "ui/ignored.txt"):
            os.makedirs(os.path.dirname(os.path.join(self.folder, name)), exist_ok=True)
            self.write(name, svg(rect(8, 4, "red")))
        self.pack("ui", "one.svg", "-o", "s")
        self.assertEqual(sorted(self.frames()), ["deep/one.svg", "one.svg", "one.svg-2"])
        self.pack("one.svg", "ui/deep/one.svg", "-o", "s", "--trim-names")
        self.assertEqual(sorted(self.frames()), ["one", "ui/deep/one"])

    def test_sizes(self):
        for name, side in (("a.svg", 16), ("b.svg", 512)):
            self.write(name, f'<svg viewBox="0 0 {side} {side // 2}">'
                       f'<rect width="{side}" height="{side}"/></svg>')
        self.pack("a.svg", "b.svg", "-o", "s", "--size", "24", "--size", "48")
        for size in (24, 48):
            for name in ("a.svg", "b.svg"):
                frame = self.frames(f"s@{size}.json")[name]["frame"]
                self.assertEqual((frame["w"], frame["h"]), (size, size // 2))
        self.pack("a.svg", "b.svg", "-o", "s", "--width", "40", "--height", "10")
        self.assertEqual([f["frame"]["w"] for f in self.frames().values()], [20, 20])
        self.assertEqual([name for name in os.listdir(self.folder) if "@" in name], [], "stale")

    def test_padding_and_extrusion(self):
        self.write("one.svg", svg(rect(8, 4, "red")))
        self.pack("one.svg", "-o", "s", "--extrude", "2", "--border", "1")
        frame, picture = self.frames()["one.svg"]["frame"], self.picture("s-0.png")
        self.assertEqual((frame["x"], frame["y"], frame["w"], frame["h"]), (3, 3, 8, 4))
        self.assertEqual(picture.at(1, 1), RED)
        self.assertEqual(picture.at(12, 8), RED)
        self.assertEqual(picture.at(0, 5)[3], 0)
        self.pack("one.svg", "-o", "s", "--padding", "2")
        entry, picture = self.frames()["one.svg"], self.picture("s-0.png")
        self.assertEqual((entry["frame"]["w"], entry["frame"]["h"]), (12, 8))
        self.assertEqual(picture.at(entry["frame"]["x"] + 2, entry["frame"]["y"] + 2), RED)
        self.assertEqual(picture.at(entry["frame"]["x"] + 1, entry["frame"]["y"] + 4)[3], 0)

    def test_many_sheets(self):
        options = ("one.svg", "two.svg", "-o", "s", "--max-size", "12", "--trim-names")
        self.pack(*options)
        first = json.loads(self.read("s.json"))
        self.assertEqual(first["meta"]["related_multi_packs"], ["s-1.json"])
        self.assertEqual(first["meta"]["files"], ["s-0.png", "s-1.png", "s.json", "s-1.json"])
        self.pack(*options, "--format", "json-array")
        textures = json.loads(self.read("s.json"))["textures"]
        self.assertEqual([t["image"] for t in textures], ["s-0.png", "s-1.png"])
        self.assertEqual(sorted(f["filename"] for t in textures for f in t["frames"]),
                         ["one", "two"])
        self.pack("one.svg", "-o", "s", "--format", "css")
        self.assertEqual(sorted(n for n in os.listdir(self.folder) if n.startswith("s")),
                         ["s-0.png", "s.css"])

    def test_text_and_style_sheet(self):
        canvas = '<svg xmlns="http://www.w3.org/2000/svg" width="20" height="30">'
        for name in ("a.svg", "b:c.svg", "arrow.left.svg", "arrow-left.svg", "家.svg", "犬.svg"):
            self.write(name, f'{canvas}{rect(8, 4, "red")}</svg>')
        self.pack("a.svg", "-o", "a", "--format", "atlas")
        self.assertEqual(self.read("a.atlas"), "\na-0.png\nsize: 10, 6\nformat: RGBA8888\n"
                         "filter: Linear, Linear\nrepeat: none\na.svg\n  rotate: false\n"
                         "  xy: 1, 1\n  size: 8, 4\n  orig: 20, 30\n  offset: 5, 19\n"
                         "  index: -1\n")
        _, errors = self.pack("b:c.svg", "-o", "a", "--format", "atlas")
        self.assertIn("b:c.svg: called b_c.svg", errors)
        self.assertIn("\nb_c.svg\n", self.read("a.atlas"))
        self.pack("a.svg", "-o", "a", "--format", "css", "--scale", "2")
        self.assertIn(".sprite-a-a_2esvg {\n  width: 20px;\n  height: 30px;\n"
                      '  background: url("a-0.png") -0.5px -0.5px / 21px 31px no-repeat;\n}\n',
                      self.read("a.css"))
        self.pack("arrow.left.svg", "arrow-left.svg", "家.svg", "犬.svg", "-o", "a", "--format",
                  "css", "--trim-names")
        classes = [line for line in self.read("a.css").splitlines() if line.startswith(".")]
        self.assertEqual(len(set(classes)), 4)

    def test_dilate_spreads_straight_colours(self):
        self.write("faint.svg", '<svg width="4" height="4">'
                   '<rect width="4" height="4" fill="red" fill-opacity=".2"/></svg>')
        self.pack("faint.svg", "-o", "s", "--border", "3")
        self.assertEqual(self.picture("s-0.png").at(2, 4), (0, 0, 0, 0))
        self.pack("faint.svg", "-o", "s", "--border", "3", "--dilate")
        self.assertEqual(self.picture("s-0.png").at(2, 4), (255, 0, 0, 0))
        self.assertEqual(self.picture("s-0.png").at(1, 4), (0, 0, 0, 0))

    def test_goes_on_after_bad_files(self):
        self.write("bad.svg", "<svg>")
        self.write("circle.svg", '<svg xmlns:xlink="x"><g id="g"><use xlink:href="#g"/></g></svg>')
        for unit in ([], ["--elements"]):
            output, errors = self.pack("bad.svg", "circle.svg", "missing.svg", "one.svg", "-o", "s",
                                       *unit, status=1)
            self.assertRegex(output, "^s: 1 frame on 1 sheet")
            self.assertEqual(sorted(line.split(":")[0] for line in errors.splitlines()),
                             ["bad.svg", "circle.svg", "missing.svg"])

    def test_says_what_is_left_out(self):
        self.write("empty.svg", svg('<path d="M0 0h24v24H0z" fill="none"/>'))
        _, errors = self.pack("empty.svg", "-o", "s", status=1)
        self.assertIn("empty.svg: nothing of it shows", errors)
        self.assertIn("s: nothing is packed", errors)
        self.assertFalse(os.path.exists(os.path.join(self.folder, "s.json")))
        self.write("large.svg", '<svg width="3000" height="8"><rect width="90" height="8"/></svg>')
        for options in (["--max-size", "64"], []):
            _, errors = self.pack("large.svg", "one.svg", "-o", "s", *options, status=1)
            self.assertRegex(errors, r"large\.svg: 3000 pixels long and a picture takes 2048; left "
                                     r"out\. Give --scale 0\.6")
        self.write("large.svg", svg(rect(8, 8, "red", "small"), rect(90, 8, "red", "long"),
                                    rect(8, 70, "red")))
        _, errors = self.pack("large.svg", "-o", "s", "--max-size", "64", "--elements", status=1)
        self.assertRegex(errors, r"large\.svg: long is about \d+ pixels long and a sheet takes 62; "
                                 r"left out\. Give --scale 0\.\d+ or less")
        self.assertIn("large.svg: element 2 is about", errors)
        scale = errors.splitlines()[0].split("--scale ")[1].split()[0]
        self.pack("large.svg", "-o", "s", "--max-size", "64", "--elements", "--scale", scale)

    def test_watch_and_preview(self):
        watching = subprocess.Popen([TOOL, "pack", "one.svg", "-o", "s", "--watch", "--preview"],
                                    cwd=self.folder, text=True, stdout=subprocess.PIPE)
        self.addCleanup(watching.stdout.close)
        self.addCleanup(watching.wait)
        self.addCleanup(watching.kill)
        self.assertIn("1 frame on 1 sheet", watching.stdout.readline())
        self.assertIn('"name":"one.svg"', self.read("s.html"))
        self.write("one.svg", svg(rect(18, 4, "red")))
        self.assertIn("1 frame on 1 sheet", watching.stdout.readline())
        self.assertRegex(watching.stdout.readline(), r"^one.svg changed, packed again in [\d.]+ s$")
        self.assertEqual(self.frames()["one.svg"]["frame"]["w"], 18)

    def test_wrong_command_lines(self):
        for arguments in (["one.svg"], ["-o", "s"], ["one.svg", "-o", "s", "--max-size", "4096"],
                          ["one.svg", "-o", "s", "--border", "4", "--max-size", "8"],
                          ["one.svg", "-o", "s", "--pow2", "--max-size", "100"],
                          ["one.svg", "-o", "s", "--scale", "0"],
                          ["one.svg", "-o", "s", "--scale", "nan"],
                          ["one.svg", "-o", "s", "--scale", "2", "--size", "9"],
                          ["one.svg", "-o", "s", "--format", "xml"]):
            with self.subTest(arguments=arguments):
                self.pack(*arguments, status=2)
        _, errors = self.pack("one.svg", "-o", "nowhere/s", status=1)
        self.assertIn("mkdir -p nowhere", errors)


if __name__ == "__main__":
    TOOL = os.path.abspath(sys.argv.pop(1))
    unittest.main()
