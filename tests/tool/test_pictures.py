"""Sizes, places and pixels of pictures: test_pictures.py TOOL [options of unittest]."""
import sys
import unittest

sys.dont_write_bytecode = True
from tool_test import BLACK, CLEAR, NAVY, RED, ToolTest, svg


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
            ('width="33000" height="1500"', "",
             "the picture would have 33000 x 1500 pixels, and a side can have 32768; "
             "give --width 32768 or less"),
            ('width="3e30" height="6e30"', "", "the picture would have "),
            ('viewBox="0 0 1 2"', "--width 20000",
             "the picture would have 20000 x 40000 pixels, and a side can have 32768; "
             "give --height 32768 or less"),
            ('viewBox="0 0 1 1"', "--width 32768 --scale 1.5",
             "the picture would have 49152 x 49152"),
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

    def test_color(self):
        bar, half = '<rect width="4" height="2"', '<rect y="2" width="4" height="2"'
        cases = [
            # the drawing, the colours of its upper and lower half under --color navy
            (f"{bar}/>{half}/>", (NAVY, NAVY)),
            (f'{bar} fill="currentColor"/>{half}/>', (NAVY, BLACK)),
            (f'{bar} fill="none"/>{half}/>', (CLEAR, NAVY)),
            (f'{bar} style="stroke: none; fill: red"/>{half}/>', (RED, BLACK)),
            (f'<g color="red">{bar} fill="currentColor"/></g>{half} style="fill:currentColor"/>',
             (RED, NAVY)),
        ]
        for drawing, expected in cases:
            for attributes in ("", 'color="red"', 'style="color:red"'):
                with self.subTest(drawing=drawing, root=attributes):
                    picture = self.render(svg('viewBox="0 0 4 4" ' + attributes, drawing),
                                          "--width", "4", "--color", "navy")
                    self.assertEqual((picture.at(1, 0), picture.at(1, 3)), expected)
        # What the document says besides stays as it is.
        odd = '<title>a &lt; b &amp; c</title><!-- -- > --><g id="&quot;&#233;">' + bar + "/></g>"
        self.assertEqual(self.render(svg('viewBox="0 0 4 2"', odd), "--color", "#F00").colors(),
                         {RED})

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


if __name__ == "__main__":
    unittest.main()
