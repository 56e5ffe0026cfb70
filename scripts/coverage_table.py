"""The part of coverage.sh that reads llvm-cov's export:

    coverage_table.py EXPORT.json MISSED.txt RELIABILITY.md

A branch is one outcome of one condition; of a template it counts once, taken when any instance
takes it. llvm-cov itself counts instances apart. `coverage_explained.txt` beside this file says why
what is not reached is not.
"""

import collections
import fnmatch
import json
import pathlib
import re
import sys

START, END = "<!-- coverage: written by scripts/coverage.sh -->", "<!-- /coverage -->"
CODE, GAP = 0, 3  # kinds of regions
LIBRARY = ("host/", "containers/", "geometryAlgo/")
ROOT = pathlib.Path(__file__).resolve().parent.parent
EXPLAINED = pathlib.Path(__file__).with_name("coverage_explained.txt")


class Explanations:
    """The file beside this one: reasons, and below each what it holds for."""

    def __init__(self):
        self.rules, self.used = [], set()
        reason = ""
        for line in EXPLAINED.read_text().splitlines():
            if line.startswith("  "):
                file, what = line.strip().split(" | ")
                self.rules.append((file, what, reason))
            elif line and not line.startswith("#"):
                reason = line

    def reason(self, name, what):
        for rule in self.rules:
            file, part, reason = rule
            if part in what and fnmatch.fnmatch(name, file):
                self.used.add(rule)
                return reason
        return ""

    def unused(self):
        return [f"  {file} | {part}" for file, part, _ in dict.fromkeys(self.rules)
                if not any(used[:2] == (file, part) for used in self.used)]


def relative(path):
    try:
        return str(pathlib.Path(path).resolve().relative_to(ROOT))
    except ValueError:
        return ""


def line_counts(functions):
    """File → line → most executions of what begins on it or holds its beginning, in any instance;
    lines without code are absent."""
    lines = collections.defaultdict(dict)
    for function in functions:
        for file, filename in enumerate(function["filenames"]):
            counts = lines[relative(filename)]
            # Sorted, so that the last region that holds a place is the innermost one.
            regions = sorted(((line, column), (end_line, end_column), count, kind == GAP)
                             for line, column, end_line, end_column, count, of_file, _, kind
                             in function["regions"] if of_file == file and kind in (CODE, GAP))
            for at in range(regions[0][0][0], max(end[0] for _, end, *_ in regions) + 1):
                begun = [count for start, _, count, is_gap in regions if start[0] == at and not is_gap]
                around = [(count, is_gap) for start, end, count, is_gap in regions
                          if start < (at, 1) < end and start[0] < at]
                if around and not around[-1][1]:
                    begun.append(around[-1][0])
                if begun:
                    counts[at] = max([counts.get(at, 0), *begun])
    return lines


def branch_counts(functions):
    """File → place → [times true, times false]."""
    branches = collections.defaultdict(dict)
    for function in functions:
        for line, column, end_line, end_column, taken, not_taken, file, *_ in function["branches"]:
            name = relative(function["filenames"][file])
            both = branches[name].setdefault((line, column, end_line, end_column), [0, 0])
            both[0] += taken
            both[1] += not_taken
    return branches


def is_no_branch(line):
    """What llvm-cov counts besides conditions: the missing `default` of a `switch` over all members
    and the comparisons that the compiler writes."""
    return re.match(r"\s*switch \(", line) or line.rstrip().endswith("= default;")


def missed_places(source, lines, branches):
    """[(line, what)]: stretches of lines that never run, named by their first line, and the outcomes
    that are missed on lines that do."""
    places, before = [], None
    for line, count in sorted(lines.items()):
        if count == 0 and before != line - 1:
            places.append((line, f"never run: {source[line - 1].strip()}"))
        if count == 0:
            before = line
    for (line, column, end_line, end_column), both in branches.items():
        if lines.get(line, 0) == 0:
            continue  # said already
        text = source[line - 1:end_line]
        text[-1] = text[-1][:end_column - 1]
        text[0] = text[0][column - 1:]
        condition = " ".join(part.strip() for part in text)
        places += [(line, f"never {outcome}: {condition}")
                   for outcome, count in zip(("true", "false"), both) if count == 0]
    return sorted(places)


def main():
    export, missed_file, doc_file = sys.argv[1:]
    data = json.loads(pathlib.Path(export).read_text())["data"][0]
    functions = [f for f in data["functions"] if relative(f["filenames"][0]).startswith(LIBRARY)]
    branches, lines_of = branch_counts(functions), line_counts(functions)
    explanations, reasons = Explanations(), collections.Counter()
    rows, missed = [], []
    for name, lines in sorted(lines_of.items()):
        if not name.startswith(LIBRARY):
            continue
        source = (ROOT / name).read_text().splitlines()
        conditions = {place: both for place, both in branches[name].items()
                      if not is_no_branch(source[place[0] - 1])}
        places = missed_places(source, lines, conditions)
        left = 0
        for line, what in places:
            reason = explanations.reason(name, what)
            if reason:
                reasons[reason] += 1
            else:
                left += 1
            missed.append(f"{'explained' if reason else 'left'}:{line}:  {name} | {what}")
        outcomes = [count for both in conditions.values() for count in both]
        rows.append((name, [len(lines), reached(lines.values()), len(outcomes), reached(outcomes),
                            len(places) - left, left]))
    total = [sum(column) for column in zip(*(row for _, row in rows))]
    table = ["| File | Lines | reached | Branches | reached | Explained | Left |",
             "|---|---:|---:|---:|---:|---:|---:|"]
    table += [table_row(name, row) for name, row in [*rows, ("**all**", total)]]
    summary = table[-1]
    table += ["", "| Why no test gets there | Places |", "|---|---:|"]
    table += [f"| {why} | {count} |" for why, count in reasons.most_common()]
    pathlib.Path(missed_file).write_text("\n".join(missed) + "\n")
    doc = pathlib.Path(doc_file)
    before, rest = doc.read_text().split(START)
    doc.write_text(before + START + "\n" + "\n".join(table) + "\n" + END + rest.split(END)[1])
    print(*[line for line in missed if line.startswith("left")], sep="\n")
    for rule in explanations.unused():
        print("explains nothing: " + rule)
    print(summary)


def table_row(name, row):
    lines, lines_reached, branches, branches_reached, explained, left = row
    return (f"| {name} | {lines} | {share(lines_reached, lines)} | {branches} | "
            f"{share(branches_reached, branches)} | {explained or '–'} | {left or '–'} |")


def reached(counts):
    return sum(count > 0 for count in counts)


def share(part, whole):
    if whole == 0:
        return "–"
    # Never rounded up to 100 %.
    return "100 %" if part == whole else f"{int(1000 * part / whole) / 10:.1f} %"


main()
