#!/usr/bin/python3
"""Plots how times and ratios grow with their data, for each table of the benchmark in a directory.

    plot_curves.py build/bench
"""
import json
import pathlib
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update(
    {
        "font.size": 12,  # Readable where the page is as wide as a telephone.
        "svg.fonttype": "none",
        "svg.hashsalt": "curves",  # The same rows make the same file.
    }
)
from matplotlib import pyplot, ticker

MARKERS = "osD^vPX*"


def read_curves(path):
    """The rows of each curve, by size."""
    curves = {}
    for row in json.loads(path.read_text("utf-8")):
        if row["curve"]:
            curves.setdefault(row["curve"], []).append(row)
    for rows in curves.values():
        rows.sort(key=lambda row: row["size"])
    return curves


def plot(curves, path):
    """Two plots, one above the other: the product's time, and the ratio of A to B."""
    figure, (times, ratios) = pyplot.subplots(2, 1, figsize=(6.4, 10), sharex=True)
    figure.subplots_adjust(left=0.16, right=0.97, top=0.98, bottom=0.3, hspace=0.06)
    for (name, rows), marker in zip(curves.items(), MARKERS):
        sizes = [row["size"] for row in rows]
        # Where more is better the product is B.
        product = [row["b" if row["goal_is"] == "at least" else "a"] / 1e3 for row in rows]
        (line,) = times.plot(sizes, product, marker + "-", label=name)
        ratios.plot(sizes, [row["median"] for row in rows], marker + "-")
        for row in rows:
            if row["goal"]:
                ends = row["size"] / 2, row["size"] * 2
                ratios.plot(ends, [row["goal"]] * 2, "--", color=line.get_color())
    times.plot([], [], "--", color="gray", label="goal, at the size that it is for")
    times.set(xscale="log", yscale="log", ylabel="Time, microseconds")
    ratios.set(
        xscale="log",
        yscale="log",
        ylabel="Ratio A : B",
        xlabel="Lanes, records, profiles or files beside",
    )
    for axes in (times, ratios):
        axes.grid(alpha=0.3)
        axes.minorticks_off()
        axes.yaxis.set_major_locator(ticker.LogLocator())
        axes.yaxis.set_major_formatter(ticker.StrMethodFormatter("{x:g}"))
    ratios.xaxis.set_major_formatter(ticker.StrMethodFormatter("{x:,.0f}"))
    figure.legend(loc="lower center", ncols=1)
    figure.savefig(path, metadata={"Date": None})
    pyplot.close(figure)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    tables = sorted(pathlib.Path(sys.argv[1]).glob("performance*.json"))
    if not tables:
        sys.exit(f"{sys.argv[1]} has no performance*.json")
    for table in tables:
        if curves := read_curves(table):
            plot(curves, table.with_suffix(".svg"))
