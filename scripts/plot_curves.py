#!/usr/bin/python3
"""Plots how measured ratios grow with their data.

    plot_curves.py performance.json performance.svg
"""
import json
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "curves"  # The same rows make the same file.
from matplotlib import pyplot


def read_curves(path):
    """The rows of each curve, by size."""
    curves = {}
    with open(path, encoding="utf-8") as file:
        for row in json.load(file):
            if row["curve"]:
                curves.setdefault(row["curve"], []).append(row)
    for rows in curves.values():
        rows.sort(key=lambda row: row["size"])
    return curves


def plot(curves, path):
    """Two plots side by side: the time of one, and its ratio to what it is measured against."""
    figure, (times, ratios) = pyplot.subplots(1, 2, figsize=(12, 6))
    figure.subplots_adjust(left=0.06, right=0.98, top=0.93, bottom=0.3)
    for name, rows in curves.items():
        sizes = [row["size"] for row in rows]
        times.plot(sizes, [row["nanoseconds"] / 1e3 for row in rows], "o-", label=name)
        low_and_high = [
            [row["median"] - row["lowest"] for row in rows],
            [row["highest"] - row["median"] for row in rows],
        ]
        ratios.errorbar(
            sizes, [row["median"] for row in rows], yerr=low_and_high, fmt="o-", label=name
        )
    for axes, title in ((times, "Microseconds"), (ratios, "Ratio to the yardstick")):
        axes.set(xscale="log", yscale="log", xlabel="Size of the data", title=title)
        axes.grid(alpha=0.3)
    handles, labels = times.get_legend_handles_labels()
    figure.legend(handles, labels, loc="lower center", ncols=2, fontsize="small")
    figure.savefig(path, metadata={"Date": None})


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    plot(read_curves(sys.argv[1]), sys.argv[2])
