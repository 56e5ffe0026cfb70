"""The part of coverage.sh that reads llvm-cov's export:

    coverage_table.py EXPORT.json MISSED.txt RELIABILITY.md

A branch is one outcome of one condition; of a template it counts once, taken when any instance
takes it. llvm-cov itself counts instances apart. `coverage_explained.txt` beside this file says why
branches are not reached.
"""

import collections
import json
import pathlib
import re
import sys

START, END = "<!-- coverage: written by scripts/coverage.sh -->", "<!-- /coverage -->"
LIBRARY = ("host/", "containers/", "geometryAlgo/")
ROOT = pathlib.Path(__file__).resolve().parent.parent


OTHERS = "Not explained one by one: `build/coverage/missed.txt` lists them"


def explanations():
    """[(what it holds for, reason)] of the file beside this one."""
    rules, reason = [], ""
    for line in pathlib.Path(__file__).with_name("coverage_explained.txt").read_text().splitlines():
        if line.startswith("  "):
            rules.append((re.compile(line[2:]), reason))
        elif line and not line.startswith("#"):
            reason = line
    return rules


def relative(path):
    try:
        return str(pathlib.Path(path).resolve().relative_to(ROOT))
    except ValueError:
        return ""


def line_counts(segments):
    """Line → most executions of a region on it; lines without code are absent."""
    counts = {}
    for segment, (next_line, next_column, *_) in zip(segments, segments[1:]):
        line, _, count, has_count = segment[:4]
        if has_count:
            last = next_line if next_column > 1 else next_line - 1
            for at in range(line, max(line, last) + 1):
                counts[at] = max(counts.get(at, 0), count)
    return counts


def main():
    export, missed_file, doc_file = sys.argv[1:]
    data = json.loads(pathlib.Path(export).read_text())["data"][0]
    branches = collections.defaultdict(dict)  # file → place → [times true, times false]
    for function in data["functions"]:
        name = relative(function["filenames"][0])
        for line, column, end_line, end_column, taken, not_taken, file, *_ in function["branches"]:
            name = relative(function["filenames"][file])
            both = branches[name].setdefault((line, column, end_line, end_column), [0, 0])
            both[0] += taken
            both[1] += not_taken
    rows, missed, reasons, rules = [], [], collections.Counter(), explanations()
    total = [0, 0, 0, 0]
    for entry in sorted(data["files"], key=lambda e: e["filename"]):
        name = relative(entry["filename"])
        if not name.startswith(LIBRARY):
            continue
        source = (ROOT / name).read_text().splitlines()
        lines = line_counts(entry["segments"])
        for line, count in sorted(lines.items()):
            if count == 0:
                missed.append(f"{name}:{line}: never run: {source[line - 1].strip()}")
        for place in list(branches[name]):
            if is_no_branch(source[place[0] - 1]):
                del branches[name][place]
        outcomes = [count for both in branches[name].values() for count in both]
        for (line, column, _, end_column), both in sorted(branches[name].items()):
            if lines.get(line, 0) == 0:
                continue  # said already
            for outcome, count in zip(("true", "false"), both):
                if count == 0:
                    said = f"never {outcome}: {source[line - 1][column - 1:end_column - 1]}"
                    reason = next((why for rule, why in rules if rule.search(f"{name}: {said}")), "")
                    reasons[reason or OTHERS] += 1
                    missed.append(f"{name}:{line}:{column}: {said}")
        row = [len(lines), reached(lines.values()), len(outcomes), reached(outcomes)]
        if row[0] == 0:
            continue
        total = [a + b for a, b in zip(total, row)]
        rows.append((name, row))
    table = ["| File | Lines | reached | Branches | reached |", "|---|---:|---:|---:|---:|"]
    table += [table_row(name, row) for name, row in [*rows, ("**all**", total)]]
    summary = table[-1]
    table += ["", "| Why a branch of a line that runs is not reached | Branches |", "|---|---:|"]
    table += [f"| {why} | {count} |" for why, count in reasons.most_common()]
    pathlib.Path(missed_file).write_text("\n".join(missed) + "\n")
    doc = pathlib.Path(doc_file)
    before, rest = doc.read_text().split(START)
    doc.write_text(before + START + "\n" + "\n".join(table) + "\n" + END + rest.split(END)[1])
    print(summary)


def is_no_branch(line):
    """What llvm-cov counts besides conditions: the missing `default` of a `switch` over all members
    and the comparisons that the compiler writes."""
    return re.match(r"\s*switch \(", line) or line.rstrip().endswith("= default;")


def table_row(name, row):
    lines, lines_reached, branches, branches_reached = row
    return (f"| {name} | {lines} | {share(lines_reached, lines)} | {branches} | "
            f"{share(branches_reached, branches)} |")


def reached(counts):
    return sum(count > 0 for count in counts)


def share(part, whole):
    if whole == 0:
        return "–"
    # Never rounded up to 100 %.
    return "100 %" if part == whole else f"{int(1000 * part / whole) / 10:.1f} %"


main()
