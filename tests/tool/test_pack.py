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

    def test_json_hash(self):
        output, errors = self.pack("one.svg", "two.svg", "-o", "sheet")
        self.assertEqual(errors, "")
        self.assertRegex(output, r"^sheet: 3 frames on 1 sheet, [\d.]+ % occupied, [\d.]+ s\n$")
        atlas = json.loads(self.read("sheet.json"))
        picture = self.picture(atlas["meta"]["image"])
        self.assertEqual(atlas["meta"]["size"], {"w": picture.width, "h": picture.height})
        self.assertEqual(list(atlas["frames"]), ["one.svg", "two.svg/leaf", "two.svg/1"])
        for name, size, color in (("one.svg", (8, 4), RED), ("two.svg/leaf", (6, 6), LIME),
                                  ("two.svg/1", (3, 9), BLUE)):
            entry = atlas["frames"][name]
            self.expect_frame(picture, entry["frame"], size, color)
            self.assertEqual(entry["sourceSize"], {"w": size[0], "h": size[1]})
            self.assertEqual(entry["origin"], {"x": 5, "y": 7})

    def test_many_sheets(self):
        options = ("one.svg", "two.svg", "-o", "s", "--max-size", "11", "--trim-names")
        self.pack(*options)
        first = json.loads(self.read("s-0.json"))
        self.assertIn("s-1.json", first["meta"]["related_multi_packs"])
        self.pack(*options, "--format", "json-array")
        textures = json.loads(self.read("s.json"))["textures"]
        names = []
        for texture in textures:
            picture = self.picture(texture["image"])
            self.assertEqual(texture["size"], {"w": picture.width, "h": picture.height})
            for frame in texture["frames"]:
                names.append(frame["filename"])
                box = frame["frame"]
                color = {"one": RED, "two/leaf": LIME, "two/1": BLUE}[frame["filename"]]
                self.expect_frame(picture, box, (box["w"], box["h"]), color)
        self.assertEqual(sorted(names), ["one", "two/1", "two/leaf"])

    def test_text_and_style_sheet(self):
        self.pack("one.svg", "-o", "a", "--format", "atlas")
        self.assertEqual(self.read("a.atlas"), "\na-0.png\nsize: 10, 6\nformat: RGBA8888\n"
                         "filter: Linear, Linear\nrepeat: none\none.svg\n  rotate: false\n"
                         "  xy: 1, 1\n  size: 8, 4\n  orig: 8, 4\n  offset: 0, 0\n  index: -1\n")
        self.pack("one.svg", "-o", "a", "--format", "css", "--scale", "2")
        self.assertEqual(self.read("a.css"), ".sprite-a-one-svg {\n  width: 8px;\n  height: 4px;\n"
                         '  background: url("a-0.png") -0.5px -0.5px / 9px 5px no-repeat;\n}\n')

    def test_scales(self):
        output, _ = self.pack("one.svg", "-o", "s", "--scale", "1", "--scale", "2.5")
        self.assertEqual(len(output.splitlines()), 2)
        for scale, size in (("1", (8, 4)), ("2.5", (21, 11))):
            meta = json.loads(self.read(f"s@{scale}x.json"))
            self.assertEqual(float(meta["meta"]["scale"]), float(scale))
            frame = meta["frames"]["one.svg"]["frame"]
            self.assertEqual((frame["w"], frame["h"]), size)
            self.assertEqual(meta["meta"]["image"], f"s@{scale}x-0.png")

    def test_explode_pow2_and_border(self):
        self.write("group.svg", svg('<g id="g">', rect(8, 8, "red", "a"), rect(8, 8, "lime", "b"),
                                    "</g>"))
        self.pack("group.svg", "-o", "s", "--explode", "--pow2", "--border", "3")
        atlas = json.loads(self.read("s.json"))
        self.assertEqual(list(atlas["frames"]), ["group.svg/a", "group.svg/b"])
        self.assertEqual(sorted(atlas["meta"]["size"].values()), [16, 32])
        self.assertGreaterEqual(atlas["frames"]["group.svg/a"]["frame"]["x"], 3)

    def test_dilate_spreads_straight_colours(self):
        self.write("faint.svg", svg('<rect width="4" height="4" fill="red" fill-opacity=".2"/>'))
        self.pack("faint.svg", "-o", "s", "--border", "3")
        self.assertEqual(self.picture("s-0.png").at(2, 4), (0, 0, 0, 0))
        self.pack("faint.svg", "-o", "s", "--border", "3", "--dilate")
        self.assertEqual(self.picture("s-0.png").at(2, 4), (255, 0, 0, 0))
        self.assertEqual(self.picture("s-0.png").at(1, 4), (0, 0, 0, 0))

    def test_equal_names_are_told_apart(self):
        os.mkdir(os.path.join(self.folder, "other"))
        self.write("other/one.svg", svg(rect(8, 4, "blue")))
        self.pack("one.svg", "other/one.svg", "-o", "s")
        self.assertEqual(sorted(json.loads(self.read("s.json"))["frames"]),
                         ["one.svg", "one.svg-2"])

    def test_goes_on_after_bad_files(self):
        self.write("bad.svg", "<svg>")
        self.write("circle.svg", '<svg xmlns:xlink="x"><g id="g"><use xlink:href="#g"/></g></svg>')
        output, errors = self.pack("bad.svg", "circle.svg", "missing.svg", "one.svg", "-o", "s",
                                   status=1)
        self.assertRegex(output, "^s: 1 frames on 1 sheet")
        lines = sorted(errors.splitlines())
        self.assertEqual([line.split(":")[0] for line in lines],
                         ["bad.svg", "circle.svg", "missing.svg"])

    def test_names_what_is_too_large(self):
        self.write("large.svg", svg(rect(8, 8, "red", "small"), rect(90, 8, "red", "long"),
                                    rect(8, 70, "red")))
        output, errors = self.pack("large.svg", "-o", "s", "--max-size", "64", status=1)
        self.assertRegex(output, "^s: 1 frames")
        self.assertRegex(errors, r"large\.svg: long is about \d+ pixels long and a sheet takes 62; "
                                 r"left out\. Give --scale 0\.\d+ or less")
        self.assertIn("large.svg: element 2 is about", errors)
        scale = errors.splitlines()[0].split("--scale ")[1].split()[0]
        self.pack("large.svg", "-o", "s", "--max-size", "64", "--scale", scale)

    def test_wrong_command_lines(self):
        for arguments in (["one.svg"], ["-o", "s"], ["one.svg", "-o", "s", "--max-size", "4096"],
                          ["one.svg", "-o", "s", "--border", "4", "--max-size", "8"],
                          ["one.svg", "-o", "s", "--pow2", "--max-size", "100"],
                          ["one.svg", "-o", "s", "--scale", "0"],
                          ["one.svg", "-o", "s", "--scale", "nan"],
                          ["one.svg", "-o", "s", "--format", "xml"]):
            with self.subTest(arguments=arguments):
                self.pack(*arguments, status=2)
        _, errors = self.pack("one.svg", "-o", "nowhere/s", status=1)
        self.assertIn("mkdir -p nowhere", errors)


if __name__ == "__main__":
    TOOL = os.path.abspath(sys.argv.pop(1))
    unittest.main()
