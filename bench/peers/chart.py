"""A bar chart as an SVG drawing of paths alone, lettering included, so that Quor can draw it."""

import math

# Pixels. LABELS is where the bars begin, SIDE_LINE the height of a group's heading.
WIDTH, BAR, GAP, GROUP_GAP, SIDE_LINE, LABELS = 720, 16, 4, 26, 18, 84
COLORS = {"quor": "#2a6f97", "resvg": "#e07a5f", "librsvg": "#81b29a", "QtSvg": "#f2cc8f"}
OTHER_COLOR = "#9a9a9a"

# Strokes of each letter on a grid: the baseline at y 8, x-height 3, capitals and ascenders 0;
# after the path, how far the next letter is.
LETTERS = {
    "0": ("M0 2a2.5 2 0 0 1 5 0v4a2.5 2 0 0 1-5 0z", 7), "1": ("M1 2l2-2v8", 6),
    "2": ("M0 2a2.5 2 0 0 1 5 0c0 2-5 4-5 6h5", 7),
    "3": ("M0 1.5a2.3 1.9 0 1 1 2.5 2.3a2.3 2.1 0 1 1-2.5 2.6", 7),
    "4": ("M4 8v-8l-4 5.5h5.5", 7), "5": ("M4.5 0h-4l-.3 3.6a2.5 2.3 0 1 1-.2 3.4", 7),
    "6": ("M4 0c-3 1-4 3.5-4 5.5a2.5 2.5 0 1 0 0-.5", 7), "7": ("M0 0h5l-3 8", 7),
    "8": ("M2.5 3.7a1.9 1.85 0 1 1 .01 0a2.4 2.15 0 1 1-.01 0", 7),
    "9": ("M1 8c3-1 4-3.5 4-5.5a2.5 2.5 0 1 0 0 .5", 7), " ": ("", 4), "+": ("M0 5h4m-2-2v4", 6),
    ",": ("M1 7.5v.5l-.7 1.5", 3), "-": ("M0 5h3", 5), ".": ("M.5 7.5v.5", 3),
    "×": ("M0 3l4 4m0-4l-4 4", 6), "a": ("M4 3v5m0-3a2 2.5 0 1 0 0 1", 6),
    "b": ("M0 0v8m0-2a2 2.5 0 1 0 0-1", 6), "d": ("M4 0v8m0-2a2 2.5 0 1 1 0-1", 6),
    "e": ("M0 5.3h4a2 2.5 0 1 0-.6 1.9", 6), "f": ("M3.5 0c-2-.3-2.5.5-2.5 2v6m-1-5h3", 5),
    "g": ("M4 3v6a2 1.7 0 0 1-4 .3m4-3.3a2 2.5 0 1 1 0-1", 6),
    "h": ("M0 0v8m0-3a2 2 0 0 1 4 0v3", 6), "i": ("M0 3v5m0-7.5v.5", 2.5), "l": ("M0 0v8", 2.5),
    "n": ("M0 3v5m0-3a2 2 0 0 1 4 0v3", 6), "o": ("M0 5.5a2 2.5 0 1 1 4 0a2 2.5 0 1 1-4 0", 6),
    "p": ("M0 3v7m0-4a2 2.5 0 1 0 0-1", 6), "q": ("M4 3v7m0-4a2 2.5 0 1 1 0-1", 6),
    "r": ("M0 3v5m0-2.5c0-2 1-2.8 2.8-2.5", 4.5),
    "s": ("M3.6 3.8c-1-1.2-3.4-1-3.4.4c0 1.6 3.6.9 3.6 2.6c0 1.5-2.8 1.7-3.8.2", 6),
    "t": ("M1 1v5.5q0 1.5 2 1.5m-3-5h3", 5), "u": ("M0 3v3a2 2 0 0 0 4 0m0-3v5", 6),
    "v": ("M0 3l2 5l2-5", 6), "w": ("M0 3l1.5 5l1.5-5l1.5 5l1.5-5", 8),
    "x": ("M0 3l4 5m0-5l-4 5", 6),
    "Q": ("M0 4a2.8 4 0 1 1 5.6 0a2.8 4 0 1 1-5.6 0m3.5 2l2.5 2.5", 8),
    "S": ("M5 1.5c-1.5-2-5-2-5 .5c0 2.6 5.2 1.2 5.2 4c0 2.6-4 2.6-5.4.4", 7),
}


def lettering_width(text):
    return sum(LETTERS[letter][1] for letter in text if letter in LETTERS)


def lettering(text, x, y, scale=1.2):
    """The text from x on, its baseline at y. Letters that are not in the table are left out."""
    parts = []
    for letter in text:
        if letter not in LETTERS:
            continue
        path, advance = LETTERS[letter]
        parts.append(f'<path transform="translate({x:.2f} {y - 8 * scale:.2f}) scale({scale})" '
                     f'd="{path}"/>' if path else "")
        x += advance * scale
    return "".join(parts)


def label_before(text, x, y):
    return lettering(text, x - lettering_width(text) * 1.2, y)


def bar(name, value, y, unit):
    length = value * unit
    color = COLORS.get(name, OTHER_COLOR)
    return (f'<rect x="{LABELS}" y="{y}" width="{length:.1f}" height="{BAR}" fill="{color}" '
            'stroke="none"/>'
            + label_before(name, LABELS - 4, y + 13)
            + lettering(f"{value:.2f} ×", LABELS + length + 6, y + 13) + "\n")


def svg(bars, sizes):
    """bars: for each name a value for each size; Quor's own bar, 1, comes first in each group."""
    known = [value for values in bars.values() for value in values if math.isfinite(value)]
    unit = (WIDTH - LABELS - 80) / max([1.0, *known])
    y = 44
    body = lettering("load + draw, shorter is better", 12, 24, 1.5) + "\n"
    for index, side in enumerate(sizes):
        body += lettering(f"{side} px", 12, y + 12) + "\n"
        y += SIDE_LINE
        for name, values in {"quor": [1.0] * len(sizes), **bars}.items():
            if math.isfinite(values[index]):
                body += bar(name, values[index], y, unit)
                y += BAR + GAP
        y += GROUP_GAP
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{y}" '
            f'viewBox="0 0 {WIDTH} {y}">\n'
            f'<rect width="{WIDTH}" height="{y}" fill="white"/>\n'
            '<g fill="none" stroke="#333" stroke-linecap="round" stroke-linejoin="round">\n'
            f'{body}</g>\n</svg>\n')
