"""From measured times to a table and a chart."""

import math

import chart

OURS = "quor"


def geometric_mean(values):
    return math.exp(sum(map(math.log, values)) / len(values)) if values else math.nan


def comparable(records, name, side):
    """Pairs (their seconds, ours) for the files that both draw alike."""
    for record in records:
        seconds = record["seconds"][side]
        if record["standings"][name] == "ok" and name in seconds and OURS in seconds:
            yield seconds[name], seconds[OURS]


def ratio(records, name, side):
    """How many times longer `name` takes than Quor: the geometric mean over files."""
    return geometric_mean([theirs / ours for theirs, ours in comparable(records, name, side)])


def ratio_to_fastest(records, names, side):
    """The same against whichever of them is the fastest on each file."""
    ratios = []
    for record in records:
        seconds = record["seconds"][side]
        theirs = [seconds[name] for name in names if name in seconds]
        if theirs and OURS in seconds:
            ratios.append(min(theirs) / seconds[OURS])
    return geometric_mean(ratios)


def mean_microseconds(records, side):
    return 1e6 * geometric_mean([record["seconds"][side][OURS] for record in records
                                 if OURS in record["seconds"][side]])


def row(cells):
    return "| " + " | ".join(cells) + " |\n"


def table(records, sizes, names, peer_names):
    """Markdown: a row for each renderer, a column for each size."""
    text = row(["load + draw; times as long as Quor", *(f"{side} px" for side in sizes), "files",
                "fails", "differs"])
    text += row(["---"] * (len(sizes) + 4))
    for name in names:
        marks = [record["standings"][name] for record in records]
        text += row([name, *(f"{ratio(records, name, side):.2f}" for side in sizes),
                     *(str(marks.count(mark)) for mark in ("ok", "fails", "differs"))])
    text += row(["the fastest of them on each file",
                 *(f"{ratio_to_fastest(records, peer_names, side):.2f}" for side in sizes),
                 "", "", ""])
    ours = [record["standings"][OURS] for record in records]
    text += row(["Quor itself, µs a file",
                 *(f"{mean_microseconds(records, side):.0f}" for side in sizes),
                 str(ours.count("ok")), str(ours.count("fails")), ""])
    return text


def write(records, sizes, names, folder):
    """Stores table.md and chart.svg in the folder; the table."""
    text = table(records, sizes, names, [name for name in names if name in chart.COLORS])
    (folder / "table.md").write_text(text)
    bars = {name: [ratio(records, name, side) for side in sizes] for name in names}
    (folder / "chart.svg").write_text(chart.svg(bars, sizes))
    return text
