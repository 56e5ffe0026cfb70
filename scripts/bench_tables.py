#!/usr/bin/env python3
"""Makes the tables of docs/performance.md out of Google Benchmark's JSON files.

A row of a program is named "job/input/who/size", where `who` is "ours", a peer, or "limit: NAME" for
what the job cannot go below. Prints the tables, or writes them between the page's markers:
    bench_tables.py FILE.json... [--write PAGE]
"""

import argparse
import json
import math
import re
import sys

BEGIN = "<!-- measured by scripts/bench: begin -->"
END = "<!-- measured by scripts/bench: end -->"
NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_times(names):
    """Median processor times in ns: (job, input) -> who -> size -> time."""
    times = {}
    for name in names:
        with open(name, encoding="utf-8") as file:
            text = file.read()
        if not text:
            continue  # the filter left no row of this program
        for row in json.loads(text)["benchmarks"]:
            if row.get("aggregate_name") != "median" or row.get("error_occurred"):
                continue
            job, kind, who, size = row["run_name"].split("/")[:4]
            of_job = times.setdefault((job, kind), {})
            of_job.setdefault(who, {})[int(size)] = row["cpu_time"] * NANOSECONDS[row["time_unit"]]
    return times


def short(value):
    """Two digits that count."""
    if value >= 9.95:
        return f"{value:.0f}"
    if value >= 0.995:
        return f"{value:.1f}"
    return f"{value:.2f}" if value >= 0.095 else f"{value:.2g}"


def size_text(size):
    power = math.log10(size) if size > 0 else 0.5
    return f"10^{round(power)}" if power == round(power) and size > 100 else str(size)


def ratios(ours, other):
    sizes = sorted(set(ours) & set(other))
    texts = " · ".join(short(ours[size] / other[size]) for size in sizes)
    return f"{', '.join(size_text(size) for size in sizes)}", texts


def growth(times):
    """The exponent e of time ~ n^e over all sizes, by least squares of the logarithms."""
    if len(times) < 2:
        return "–"
    points = [(math.log(size), math.log(time)) for size, time in times.items()]
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    slope = sum((x - mean_x) * (y - mean_y) for x, y in points) / sum(
        (x - mean_x) ** 2 for x, _ in points)
    return f"{slope:.2f}"


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{short(nanoseconds / size)} {unit}"
    return f"{short(nanoseconds)} ns"


def limit_text(of_job):
    parts = []
    for who, times in of_job.items():
        if who.startswith("limit: "):
            size = max(set(times) & set(of_job["ours"]))
            parts.append(f"{short(of_job['ours'][size] / times[size])} × {who[len('limit: '):]}")
    return "; ".join(parts) or "–"


def tables(times):
    beside = ["| Job | Input | Peer | n | Ours / peer | Ours grows, n^ | Peer grows, n^ | Limit |",
              "|---|---|---|---|---|---|---|---|"]
    alone = ["| Job | Input | n | Time | For each | Grows, n^ | Limit |", "|---|---|---|---|---|---|---|"]
    for (job, kind), of_job in sorted(times.items()):
        ours = of_job.get("ours")
        if ours is None:
            continue
        peers = sorted(who for who in of_job if who != "ours" and not who.startswith("limit: "))
        for peer in peers:
            sizes, texts = ratios(ours, of_job[peer])
            beside.append(f"| {job} | {kind} | {peer} | {sizes} | {texts} | {growth(ours)} | "
                          f"{growth(of_job[peer])} | {limit_text(of_job)} |")
        if not peers:
            size = max(ours)
            alone.append(f"| {job} | {kind} | {size_text(size)} | {time_text(ours[size])} | "
                         f"{time_text(ours[size] / size)} | {growth(ours)} | {limit_text(of_job)} |")
    return "\n".join(["### Beside a peer", "", *beside, "", "### Alone", "", *alone])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("files", nargs="+")
    parser.add_argument("--write", metavar="PAGE")
    arguments = parser.parse_args()
    text = tables(read_times(arguments.files))
    if not arguments.write:
        print(text)
        return
    with open(arguments.write, encoding="utf-8") as file:
        page = file.read()
    if BEGIN not in page or END not in page:
        sys.exit(f"{arguments.write} lacks the markers")
    page = re.sub(f"{re.escape(BEGIN)}.*{re.escape(END)}", lambda _: f"{BEGIN}\n\n{text}\n\n{END}", page,
                  flags=re.DOTALL)
    with open(arguments.write, "w", encoding="utf-8") as file:
        file.write(page)


if __name__ == "__main__":
    main()
