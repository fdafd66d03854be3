"""Prints a table of the medians in the result files (*.json) of Google Benchmark.

usage: bench_table.py FOLDER

Benchmarks named <topic>/ours[/argument...] and <topic>/peer<what>[/argument...] are compared: the row of a peer shows
the ratio ours/peer.
"""

import json
import pathlib
import sys

# Name parts that Google Benchmark adds to describe the measurement.
MEASURING = ("min_time:", "min_warmup_time:", "iterations:", "repeats:", "process_time", "threads:")
WALL_CLOCK = ("real_time", "manual_time")
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_aggregates(path):
    """Yields ((topic, variant, arguments), aggregate, value) for each aggregate in a file.

    The value is a time in nanoseconds, or a fraction for the coefficient of variation ("cv").
    """
    for entry in json.loads(path.read_text(encoding="utf-8"))["benchmarks"]:
        if "aggregate_name" not in entry:
            continue
        parts = entry["run_name"].split("/")
        clock = "real_time" if any(part in WALL_CLOCK for part in parts) else "cpu_time"
        unit = 1 if entry["aggregate_name"] == "cv" else NANOSECONDS[entry["time_unit"]]
        parts = [part for part in parts if part not in WALL_CLOCK and not part.startswith(MEASURING)]
        variant = parts[1] if len(parts) > 1 else ""
        yield (parts[0], variant, "/".join(parts[2:])), entry["aggregate_name"], entry[clock] * unit


def time_text(nanoseconds):
    """Formats a time in the largest unit that gives a value of at least 1."""
    for unit in ("s", "ms", "us"):
        if nanoseconds >= NANOSECONDS[unit]:
            return f"{nanoseconds / NANOSECONDS[unit]:.2f} {unit}"
    return f"{nanoseconds:.1f} ns"


def reading_order(key):
    """Sort key: topic, then arguments (numerically if possible), then variant, so that "ours" precedes its peers."""
    topic, variant, arguments = key
    return topic, [(part.isdigit() and int(part), part) for part in arguments.split("/")], variant


def table_rows(medians, spreads):
    """Yields one row of strings per benchmark."""
    for topic, variant, arguments in sorted(medians, key=reading_order):
        key = (topic, variant, arguments)
        ours = medians.get((topic, "ours", arguments))
        ratio = f"{ours / medians[key]:.3g}" if ours and variant.startswith("peer") and medians[key] else ""
        spread = f"{100 * spreads[key]:.1f} %" if key in spreads else ""
        yield (topic, arguments, variant, time_text(medians[key]), spread, ratio)


def main(folder):
    medians, spreads = {}, {}
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        for key, aggregate, value in read_aggregates(path):
            if aggregate == "median":
                medians[key] = value
            elif aggregate == "cv":
                spreads[key] = value
    if not medians:
        sys.exit("No benchmark results found.")
    rows = [("topic", "argument", "variant", "median", "spread", "ours/peer"), *table_rows(medians, spreads)]
    widths = [max(map(len, column)) for column in zip(*rows)]
    for row in rows:
        texts = [text.ljust(width) for text, width in zip(row[:3], widths)]
        numbers = [text.rjust(width) for text, width in zip(row[3:], widths[3:])]
        print("  ".join(texts + numbers).rstrip())


main(sys.argv[1])
