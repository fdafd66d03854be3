"""Prints a table of the medians in the result files (*.json) of Google Benchmark.

usage: bench_table.py FOLDER

Benchmarks named <topic>/ours[/argument...] and <topic>/peer<what>[/argument...] are compared: a peer's line has the
ratio ours/peer.
"""

import json
import pathlib
import sys

# Parts that the benchmark library appends to a name to tell how it measured.
MEASURING = ("min_time:", "min_warmup_time:", "iterations:", "repeats:", "process_time", "threads:")
WALL_CLOCK = ("real_time", "manual_time")
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_aggregates(path):
    """Yields ((topic, variant, arguments), aggregate, nanoseconds or share) of one file."""
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
    """The time with three digits or more, in a unit that suits it."""
    for unit in ("s", "ms", "us"):
        if nanoseconds >= NANOSECONDS[unit]:
            return f"{nanoseconds / NANOSECONDS[unit]:.2f} {unit}"
    return f"{nanoseconds:.1f} ns"


def reading_order(key):
    """Sorts by topic, then by arguments as numbers; ours come before their peers."""
    topic, variant, arguments = key
    return topic, [(part.isdigit() and int(part), part) for part in arguments.split("/")], variant


def table_rows(medians, spreads):
    """One row of texts per benchmark."""
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
        sys.exit("No benchmark was run.")
    rows = [("topic", "argument", "variant", "median", "spread", "ours/peer"), *table_rows(medians, spreads)]
    widths = [max(map(len, column)) for column in zip(*rows)]
    for row in rows:
        texts = [text.ljust(width) for text, width in zip(row[:3], widths)]
        numbers = [text.rjust(width) for text, width in zip(row[3:], widths[3:])]
        print("  ".join(texts + numbers).rstrip())


main(sys.argv[1])
