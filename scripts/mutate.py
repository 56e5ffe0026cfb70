#!/usr/bin/python3
"""Changes the library in small ways and counts how many of the changes the tests notice.

    scripts/mutate.py                       every core file, report to the terminal
    scripts/mutate.py --doc                 the same, and the tables of docs/reliability.md
    scripts/mutate.py --doc --files Arc,EdgeTree    only the rows of these files
    scripts/mutate.py --files Numeric,MinHeap --most 1000

A mutant is one operator, constant or statement changed. All mutants of all files are compiled in at
once, each behind a switch that reads the environment (`Lt(17, A, B)` is `A < B`, and `A <= B` while
mutant 17 is active), into a copy of the tree under build/mutants. A first run records which test
reaches which mutant, so that afterwards each mutant runs only the tests that can notice it, those
of its own unit. Killed: a test fails, crashes or takes ten times as long.

Of a file with more than `--most` mutants a sample is drawn by the hash of the mutant's text and
`--seed`: the same one as long as these lines stay. `scripts/mutants_explained.txt` lists the
survivors that no test can kill, with the reason.

Needs Debian's python3-clang-14, GCC, CMake and Ninja.
"""

import argparse
import collections
import concurrent.futures
import hashlib
import inspect
import itertools
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys

import clang.cindex as cindex
from clang.cindex import CursorKind as Kind, TypeKind

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "mutants"
TREE = BUILD / "tree"
EXPLAINED = ROOT / "scripts" / "mutants_explained.txt"
DOC = ROOT / "docs" / "reliability.md"

# The core files of each unit and the programs that test it.
UNITS = [
    (["HostTest", "CadgeometryTest"],
     ["host/Cadutils.h", "host/tarnds/SBTree.cpp"] + ["host/Cadtypes/" + name for name in (
         "Arc.cpp", "ArcOverlap.cpp", "Bezier.cpp", "Circle.cpp", "Line.cpp", "Numeric.cpp",
         "Point.cpp", "Rect.cpp", "Tolerance.cpp")]),
    (["CadgeometryTest"], ["host/Cadgeometry/" + name for name in (
        "BernsteinRoots.h", "BoxTree.cpp", "CubicCrossing.cpp", "CurvePiece.cpp",
        "GeCompositeCurve.cpp", "IntersectCurve.cpp", "PieceCrossing.cpp")]),
    (["ContainerTest"], ["containers/Container/" + name for name in (
        "HashIndex.h", "MergeSort.h", "OrderedDic.h")]),
    (["TreeAlgorithmTest"], ["containers/TreeAlgorithm/" + name for name in (
        "GeneralSBTree.h", "MinHeap.h")]),
    (["SweepLineTest"], ["geometryAlgo/SweepLine/" + name for name in (
        "Meeting.cpp", "OrderSearch.cpp", "PassedSegments.cpp", "SeglinePairs.cpp",
        "SeglinesIntersector.cpp", "SegmentEnds.cpp", "SegmentOrder.cpp", "SideOfLine.cpp")]),
    (["ShapeAppTest"], ["geometryAlgo/ShapeApp/" + name for name in (
        "ConvexGenerate.cpp", "ConvexHull.cpp", "HullFilter.cpp", "MinRectangle.cpp",
        "PointsBasicAlgo.cpp", "PolygonDistance.cpp", "PolygonMeasure.cpp", "SimpleRing.cpp",
        "Triangulation.cpp")]),
    (["VedaTypeTest"], ["geometryAlgo/VedaType/" + name for name in (
        "Arc.cpp", "EdgeTree.cpp", "GeometryUtilsCross.cpp", "HPolygon.cpp", "LABPolylineCross.cpp",
        "LABSegline.cpp", "LABSeglineCross.cpp", "Line.cpp", "Point.cpp", "PolylineCross.cpp",
        "PolylineEdit.cpp", "PolylineList.cpp", "PolylineParam.cpp", "PolylineShape.cpp",
        "Rect.cpp", "RingIndex.cpp", "ShapeRelationUtils.cpp", "StrictHull.cpp")]),
    (["RTreeTest"], ["geometryAlgo/VedaType/RTree/" + name for name in (
        "GenericRTree.h", "ObjectRTree.cpp", "RTreeNode.h")]),
    (["GeometryExtendTest"], ["geometryAlgo/GeometryExtend/" + name for name in (
        "PathCompare.cpp", "PathCut.cpp", "PathEdit.cpp", "PathGroups.cpp", "PathParam.cpp",
        "PathQuery.cpp", "PathRegions.cpp", "RingLoops.cpp")]),
    (["NestOptimizeAlgoTest"], ["geometryAlgo/NestOptimizeAlgo/" + name for name in (
        "ChordScan.cpp", "PolyDecimator.cpp", "PolyDecimatorClean.cpp", "RunBoxes.cpp",
        "TriangleClip.cpp")]),
    (["UPolygonGetterTest"], ["geometryAlgo/UPolygonGetter/" + name for name in (
        "BridgeTool.cpp", "ChainsScatter.cpp", "CompareTool.cpp", "EndSnapper.cpp",
        "NodeEdges.cpp", "TopoBridges.cpp", "TopoGraph.cpp", "TopoGroups.cpp",
        "TopoPolygons.cpp")]),
    (["FlyscanTest"], ["geometryAlgo/flyscanAlgo/" + name for name in (
        "CrossTool.cpp", "FlyCurve.cpp", "FlyscanToolConnect.cpp", "LinearSegment.cpp",
        "LinearSegmentList.cpp", "TransitionLineFunc.cpp")]),
    (["UDualSimplexTest"], ["geometryAlgo/UDualSimplex/" + name for name in (
        "BranchAndBound.cpp", "LinearProgramMethod.cpp", "SimplexSolve.cpp", "SimplexTable.cpp",
        "SimplexTableau.cpp")]),
    (["UMatrixAlgoTest"], ["geometryAlgo/UMatrixAlgo/" + name for name in (
        "FloatMatrixParts.cpp", "LUDecomposition.cpp", "LinearSolveDirect.cpp",
        "LinearSolveIterate.cpp", "NumberText.cpp", "OrthogonalFactors.cpp", "Orthonormal.cpp",
        "SingularValues.cpp", "SymmetricFactor.cpp", "TriangularSolve.cpp")]),
]

# Each core file has its own range of mutant numbers, so that one file's changes rebuild no other.
NUMBERS_OF_A_FILE = 2000


def core_files():
    """File → the programs that test it."""
    return {file: programs for programs, files in UNITS for file in files}


# --- What the changed sources call ----------------------------------------------------------------

SWITCH_HEADER = """#pragma once
#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <type_traits>
namespace mutant {
inline const int Active = [] {
  const char* Text = std::getenv("TARNALGO_MUTANT");  // a number; -1: note who reaches what
  return Text == nullptr ? 0 : std::atoi(Text);
}();
inline unsigned char Reached[%(numbers)d];
inline bool Is(int Id) {
  if (Active > 0) return Active == Id;
  if (Active < 0) Reached[Id] = 1;
  return false;
}
%(comparisons)s
template <class A, class B> auto Plus(int Id, const A& X, const B& Y) {
  return Is(Id) ? X - Y : X + Y;
}
template <class A, class B> auto Minus(int Id, const A& X, const B& Y) {
  return Is(Id) ? X + Y : X - Y;
}
template <class T> T Constant(int Id, T X) {
  if constexpr (std::is_floating_point_v<T>) {
    if (Is(Id)) return X == 0 ? T(0.001) : X * T(%(up)s);
    if (Is(Id + 1)) return X == 0 ? T(-0.001) : X / T(%(up)s);
    return X;
  } else {
    return T(X + Is(Id) - Is(Id + 1));
  }
}
template <class T> T Tolerance(int Id, T X) {
  if constexpr (!std::is_floating_point_v<T>) return Constant(Id, X);
  else return X * (Is(Id) ? T(2) : Is(Id + 1) ? T(0.5) : T(1));
}
template <int Id, class T> const T& Min(const T& A, const T& B) {
  return Is(Id) ? std::max(A, B) : std::min(A, B);
}
template <int Id, class T> const T& Max(const T& A, const T& B) {
  return Is(Id) ? std::min(A, B) : std::max(A, B);
}
template <int Id, class T> T Min(std::initializer_list<T> L) {
  return Is(Id) ? std::max(L) : std::min(L);
}
template <int Id, class T> T Max(std::initializer_list<T> L) {
  return Is(Id) ? std::min(L) : std::max(L);
}
}  // namespace mutant
"""

CONSTANT_FACTOR = "1.1"

# Operator: the function that stands for it, and what its mutants do.
COMPARISONS = {
    "<": ("Lt", ["<=", ">="]),
    "<=": ("Le", ["<", ">"]),
    ">": ("Gt", [">=", "<="]),
    ">=": ("Ge", [">", "<"]),
    "==": ("Eq", ["!="]),
    "!=": ("Ne", ["=="]),
}

# Notes for each test what it reached. Appended to each test program.
NOTE_SOURCE = """#include <gtest/gtest.h>
#include <cstdio>
#include <cstring>
#include <ctime>
#include "mutant_switch.h"
namespace {
struct TNotes : testing::EmptyTestEventListener {
  std::clock_t Begun = 0;
  void Write(const char* Suite, const char* Name) {
    std::FILE* File = std::fopen(std::getenv("TARNALGO_MUTANT_NOTES"), "a");
    const double Time = static_cast<double>(std::clock() - Begun) / CLOCKS_PER_SEC;
    std::fprintf(File, "%s.%s %.3f", Suite, Name, Time);
    for (int I = 1; I < static_cast<int>(sizeof mutant::Reached); ++I) {
      if (mutant::Reached[I]) std::fprintf(File, " %d", I);
    }
    std::fputc('\\n', File);
    std::fclose(File);
    std::memset(mutant::Reached, 0, sizeof mutant::Reached);
  }
  void OnTestProgramStart(const testing::UnitTest&) override { Write("", ""); }
  void OnTestStart(const testing::TestInfo&) override { Begun = std::clock(); }
  void OnTestEnd(const testing::TestInfo& Info) override {
    Write(Info.test_suite_name(), Info.name());
  }
};
const bool kAdded = [] {
  if (mutant::Active < 0) testing::UnitTest::GetInstance()->listeners().Append(new TNotes);
  return true;
}();
}  // namespace
"""


def switch_header():
    comparisons = ""
    for operator, (name, others) in COMPARISONS.items():
        tests = "".join(f"  if (Is(Id + {i})) return X {other} Y;\n"
                        for i, other in enumerate(others))
        comparisons += (f"template <class A, class B> bool {name}(int Id, const A& X, const B& Y) "
                        f"{{\n{tests}  return X {operator} Y;\n}}\n")
    return SWITCH_HEADER % {"numbers": NUMBERS_OF_A_FILE * (1 + len(core_files())),
                            "comparisons": comparisons, "up": CONSTANT_FACTOR}


# --- Where a file can be changed ------------------------------------------------------------------

Mutant = collections.namedtuple("Mutant", "file line column code change")

# A place in a file: its mutants in a row, and the edits [(from, to, text)] that put a switch there,
# with %d for the number of the first mutant.
Site = collections.namedtuple("Site", "start changes edits")


def around(start, end, before, after):
    return [(start, start, before), (end, end, after)]


class Finder:
    """All sites of one file, in the order of the syntax tree (outer ones first)."""

    def __init__(self, file, arguments):
        self.file = file
        self.path = str(ROOT / file)
        self.source = (ROOT / file).read_bytes()
        self.sites = []
        unit = cindex.Index.create().parse(
            "mutated.cpp", args=arguments,
            unsaved_files=[("mutated.cpp", f'#include "{self.path}"\n')])
        errors = [d for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
        if errors:
            sys.exit(f"{file}: Clang cannot read it: {errors[0]}")
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == self.path:
                self.visit(cursor, [])

    def text(self, start, end):
        return self.source[start:end].decode(errors="replace")

    @staticmethod
    def range(cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def bare(self, start, end):
        """The text between two places without comments and blanks."""
        return re.sub(r"//[^\n]*|/\*.*?\*/|\s+", "", self.text(start, end), flags=re.S)

    def add(self, start, changes, edits):
        self.sites.append(Site(start, changes, edits))

    def visit(self, cursor, above):
        if self.is_constant_context(cursor):
            return
        start, end = self.range(cursor)
        if cursor.kind in FINDERS and start < end:
            FINDERS[cursor.kind](self, cursor, above, start, end)
        children = list(cursor.get_children())
        if cursor.kind == Kind.CASE_STMT:
            children = children[1:]
        for child in children:
            if not self.is_part_of_type(cursor, child):
                self.visit(child, above + [cursor])

    def is_constant_context(self, cursor):
        """What the compiler evaluates cannot read the switch."""
        if cursor.kind in (Kind.STATIC_ASSERT, Kind.ENUM_DECL,
                           Kind.TEMPLATE_NON_TYPE_PARAMETER, Kind.TYPE_ALIAS_DECL):
            return True
        if cursor.kind in (Kind.VAR_DECL, Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR,
                           Kind.FUNCTION_TEMPLATE, Kind.FIELD_DECL):
            start, _ = self.range(cursor)
            head = self.text(start, max(start, cursor.location.offset))
            return re.search(r"\bconst(expr|eval|init)\b", head) is not None
        if cursor.kind == Kind.IF_STMT:
            start, _ = self.range(cursor)
            return re.match(r"if\s+constexpr\b", self.text(start, start + 20)) is not None
        return False

    def is_part_of_type(self, parent, child):
        """A number in `T A[4]`, in `std::array<T, 4> A` or in `std::get<0>`."""
        if parent.kind in (Kind.VAR_DECL, Kind.FIELD_DECL, Kind.PARM_DECL):
            if parent.kind == Kind.PARM_DECL:
                return True  # a default argument is compiled into its callers
            name_end = parent.location.offset + len(parent.spelling.encode())
            between = self.bare(name_end, child.extent.start.offset)
            return child.extent.start.offset < name_end or between.startswith("[")
        return parent.kind in (Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR, Kind.OVERLOADED_DECL_REF,
                               Kind.TYPE_REF, Kind.TEMPLATE_REF) and child.kind in (
                                   Kind.INTEGER_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR)

    def binary(self, cursor, _above, start, end):
        operands = list(cursor.get_children())
        if len(operands) != 2:
            return
        (_, left_end), (right_start, _) = self.range(operands[0]), self.range(operands[1])
        operator = self.bare(left_end, right_start)
        # Brackets are no nodes of their own for every operand: only a plain operator is changed.
        if operator in COMPARISONS:
            name, others = COMPARISONS[operator]
            self.add(start, [f"{operator} to {other}" for other in others],
                     [(start, start, f"mutant::{name}(%d, "), (left_end, right_start, ", "),
                      (end, end, ")")])
        elif operator in ("&&", "||"):
            other = "||" if operator == "&&" else "&&"
            # Not (not L and not R) is L or R, and only one of them is ever compiled.
            self.add(start, [f"{operator} to {other}"], [
                (start, start, "(mutant::Is(%d) != ((mutant::Is(%d) != static_cast<bool>("),
                (left_end, right_start, f")) {operator} (mutant::Is(%d) != static_cast<bool>("),
                (end, end, "))))")])
        elif operator in ("+", "-") and all(is_integer(o.type) for o in operands):
            name, other = ("Plus", "-") if operator == "+" else ("Minus", "+")
            self.add(start, [f"{operator} to {other}"],
                     [(start, start, f"mutant::{name}(%d, "), (left_end, right_start, ", "),
                      (end, end, ")")])

    def number(self, cursor, _above, start, end):
        text = self.text(start, end)
        if not re.fullmatch(r"[0-9.][0-9a-fA-FxX.'eEpPuUlLzZ+-]*", text):
            return
        before, after = self.text(max(start - 80, 0), start), self.text(end, end + 40)
        if re.search(r"\w<[^<>()]*$", before) and re.match(r"[^<>()]*>", after):
            return  # clang-format leaves no blank before the bracket of a template
        if cursor.kind == Kind.INTEGER_LITERAL:
            changes = [f"{text} + 1", f"{text} - 1"]
        elif re.fullmatch(r"[0.]+[lLfF]?", text):
            changes = [f"{text} to 0.001", f"{text} to -0.001"]
        else:
            changes = [f"{text} * {CONSTANT_FACTOR}", f"{text} / {CONSTANT_FACTOR}"]
        self.add(start, changes, around(start, end, "mutant::Constant(%d, ", ")"))

    def name(self, cursor, _above, start, end):
        target = cursor.referenced
        if (target is None or target.kind != Kind.VAR_DECL
                or not re.match(r"k[A-Z]", cursor.spelling)
                or self.text(start, end).rsplit("::", 1)[-1] != cursor.spelling
                or "nan" in cursor.spelling.lower()):
            return
        kind = cursor.type.get_canonical().kind
        if kind in (TypeKind.DOUBLE, TypeKind.LONGDOUBLE, TypeKind.FLOAT):
            changes = [f"{cursor.spelling} * 2", f"{cursor.spelling} / 2"]
        elif is_integer(cursor.type) and kind != TypeKind.BOOL:
            changes = [f"{cursor.spelling} + 1", f"{cursor.spelling} - 1"]
        else:
            return
        self.add(start, changes, around(start, end, "mutant::Tolerance(%d, ", ")"))

    def truth(self, _cursor, _above, start, end):
        text = self.text(start, end)
        if text not in ("true", "false"):
            return
        self.add(start, [f"{text} to {'false' if text == 'true' else 'true'}"],
                 around(start, end, "(mutant::Is(%d) != ", ")"))

    def call(self, _cursor, _above, start, end):
        match = re.match(r"std::(min|max)\(", self.text(start, end))
        if not match:
            return
        name = match.group(1)
        other = "max" if name == "min" else "min"
        self.add(start, [f"{name} to {other}"],
                 [(start, start + 8, f"mutant::{name.capitalize()}<%d>")])

    def choice(self, cursor, _above, _start, _end):
        """A condition that is no comparison: those have mutants of their own."""
        condition = next(iter(cursor.get_children()), None)
        if condition is None or not condition.kind.is_expression():
            return
        start, end = self.range(condition)
        inner = condition
        while inner.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR):
            children = list(inner.get_children())
            if len(children) != 1:
                break
            inner = children[0]
        if inner.kind in (Kind.BINARY_OPERATOR, Kind.CXX_BOOL_LITERAL_EXPR):
            return
        self.add(start, ["condition negated"], around(
            start, end, "(mutant::Is(%d) != static_cast<bool>(", "))"))

    def leave(self, _cursor, above, start, _end):
        """A return under an `if` without `else`, where something follows."""
        parents = [p for p in above]
        inner = parents.pop() if parents else None
        if inner is not None and inner.kind == Kind.COMPOUND_STMT:
            inner = parents.pop() if parents else None
        if inner is None or inner.kind != Kind.IF_STMT:
            return
        parts = list(inner.get_children())
        between = self.bare(self.range(parts[-2])[1], self.range(parts[-1])[0])
        if len(parts) > 2 and "else" in between:
            return
        block = parents.pop() if parents else None
        if block is None or block.kind != Kind.COMPOUND_STMT:
            return
        if self.range(list(block.get_children())[-1]) == self.range(inner):
            return
        self.add(start, ["left out"], [(start, start, "if (!mutant::Is(%d)) ")])


FINDERS = {
    Kind.BINARY_OPERATOR: Finder.binary,
    Kind.INTEGER_LITERAL: Finder.number,
    Kind.FLOATING_LITERAL: Finder.number,
    Kind.DECL_REF_EXPR: Finder.name,
    Kind.CXX_BOOL_LITERAL_EXPR: Finder.truth,
    Kind.CALL_EXPR: Finder.call,
    Kind.IF_STMT: Finder.choice,
    Kind.CONDITIONAL_OPERATOR: Finder.choice,
    Kind.RETURN_STMT: Finder.leave,
    Kind.CONTINUE_STMT: Finder.leave,
}


def is_integer(kind):
    kind = kind.get_canonical().kind
    return TypeKind.BOOL.value < kind.value <= TypeKind.INT128.value and kind not in (
        TypeKind.CHAR_S, TypeKind.CHAR_U)


def clang_arguments():
    resources = subprocess.run(["clang++", "-print-resource-dir"], capture_output=True, text=True,
                               check=True).stdout.strip()
    return ["-xc++", "-std=gnu++20", f"-I{ROOT}", "-resource-dir", resources, "-w"]


def find_sites(file, arguments):
    """The sites of a file; kept beside the build, for reading all files takes half a minute."""
    rules = inspect.getsource(Finder) + str(COMPARISONS) + CONSTANT_FACTOR
    key = hashlib.sha256((ROOT / file).read_bytes() + rules.encode()).hexdigest()
    kept = BUILD / "sites" / (file.replace("/", "_") + ".json")
    if kept.exists():
        content = json.loads(kept.read_text())
        if content["key"] == key:
            return [Site(*site) for site in content["sites"]]
    sites = Finder(file, arguments).sites
    kept.parent.mkdir(parents=True, exist_ok=True)
    kept.write_text(json.dumps({"key": key, "sites": sites}))
    return sites


class ChosenFile:
    """A file with the sites chosen from it."""

    def __init__(self, file, sites, most, seed, refused):
        self.file = file
        self.source = (ROOT / file).read_bytes()
        lines = self.source.decode().split("\n")
        scored = []
        seen = collections.Counter()
        for order, site in enumerate(sites):
            before = self.source[:site.start]
            line = before.count(b"\n") + 1
            column = site.start - (before.rfind(b"\n") + 1) + 1
            code = lines[line - 1].strip()
            if (file, line) in refused:
                continue
            for place, change in enumerate(site.changes):
                key = (code, column, change)
                seen[key] += 1
                text = f"{seed}|{file}|{code}|{change}|{column}|{seen[key]}"
                scored.append((hashlib.sha256(text.encode()).digest(), order, place,
                               Mutant(file, line, column, code, change)))
        self.found = len(scored)
        scored.sort(key=lambda s: s[0])
        chosen = scored[:most]
        self.mutants = {(order, place): mutant for _, order, place, mutant in chosen}
        self.sites = [(order, sites[order]) for order in sorted({s[1] for s in chosen})]

    def number(self, first, mutants):
        """Gives each mutant its number; a site takes numbers in a row for all its changes."""
        self.edits = []
        for order, site in self.sites:
            for place in range(len(site.changes)):
                if (order, place) in self.mutants:
                    mutants[first + place] = self.mutants[(order, place)]
            # Edits at one place: ends of inner sites first, then starts of outer ones first.
            for at, (start, end, text) in enumerate(site.edits):
                closes = at > 0 and start == end
                text = text.replace("%d", str(first))
                rank = (0, -order) if closes else (1, order)
                self.edits.append((start, *rank, end, text))
            first += len(site.changes)

    def write(self):
        result = bytearray()
        at = 0
        for start, _, _, end, text in sorted(self.edits):
            result += self.source[at:start] + text.encode()
            at = end
        result += self.source[at:]
        path = TREE / self.file
        if not path.exists() or path.read_bytes() != bytes(result):
            path.write_bytes(bytes(result))


# --- Building and running -------------------------------------------------------------------------

def copy_tree(untouched):
    """The tree as it stands, changed files only, so that Ninja rebuilds little."""
    files = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                           cwd=ROOT, capture_output=True, check=True).stdout.decode().split("\0")
    for file in filter(None, files):
        source, target = ROOT / file, TREE / file
        if file in untouched or not source.is_file():
            continue
        data = source.read_bytes()
        if file == "tests/CMakeLists.txt":
            data += NOTE_RULES.encode()
        if target.exists() and target.read_bytes() == data:
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(data)


NOTE_RULES = """
get_property(Programs DIRECTORY PROPERTY BUILDSYSTEM_TARGETS)
list(FILTER Programs INCLUDE REGEX "Test$")
foreach(Program IN LISTS Programs)
  target_sources(${Program} PRIVATE ${PROJECT_SOURCE_DIR}/mutant_notes.cpp)
endforeach()
"""


def write_if_new(path, text):
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def build(programs):
    """Builds all programs; returns the lines (file, line) that do not compile with a switch."""
    objects = BUILD / "build"
    launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    flags = "-w -Wno-narrowing -fpermissive -D_GLIBCXX_ASSERTIONS -include mutant_switch.h"
    subprocess.run(["cmake", "-S", TREE, "-B", objects, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                    "-DCMAKE_CXX_COMPILER=g++", "-DCMAKE_CXX_FLAGS_DEBUG=-O1",
                    f"-DCMAKE_CXX_FLAGS={flags} -I{TREE}", "-DTARNALGO_BUILD_EXAMPLES=OFF",
                    "-DTARNALGO_BUILD_TESTS=ON", f"-DTARNALGO_DATA={ROOT}/../shared/data",
                    *launcher],
                   check=True, stdout=subprocess.DEVNULL)
    cache = {"CCACHE_BASEDIR": str(ROOT), "CCACHE_NOHASHDIR": "1"}
    result = subprocess.run(["ninja", "-C", objects, "-k", "0", *programs], text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                            env={**os.environ, **cache})
    if result.returncode == 0:
        return set()
    place = (rf"(?:{re.escape(str(TREE))}|\.\./tree)/(\S+?):(\d+):\d+:\s+"
             r"(?:required from|(?:fatal )?error)")
    refused = {(file, int(line)) for file, line in re.findall(place, result.stdout)}
    (BUILD / "build.log").write_text(result.stdout)
    if not refused:
        sys.exit(result.stdout[-4000:])
    return refused


def run(program, environment, filters, seconds, priority):
    """What came of it: "" (all passed), "failed" or "too long" (in seconds of the processor)."""
    def limit():
        resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
        os.nice(priority)

    work = BUILD / "work"
    work.mkdir(exist_ok=True)
    command = [BUILD / "build" / "tests" / program, "--gtest_fail_fast", "--gtest_brief=1"]
    if filters:
        command.append("--gtest_filter=" + ":".join(filters))
    done = subprocess.run(command, cwd=work, preexec_fn=limit, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, env={**os.environ, **environment})
    if done.returncode != 0 and environment["TARNALGO_MUTANT"] == "-1":
        raise RuntimeError(f"{program} fails without a mutant:\n{done.stdout.decode()[-3000:]}")
    if -done.returncode in (signal.SIGXCPU, signal.SIGKILL):
        return "too long"
    return "failed" if done.returncode != 0 else ""


QUICK = 0.05  # seconds that a test takes


class Reach:
    """Which tests of one program reach which mutants, and how long they take."""

    def __init__(self, program, priority):
        self.program, self.priority = program, priority
        notes, fresh = BUILD / f"{program}.notes", BUILD / f"{program}.notes.new"
        binary = BUILD / "build" / "tests" / program
        self.built = binary.stat().st_mtime
        if not notes.exists() or notes.stat().st_mtime < self.built:
            fresh.unlink(missing_ok=True)
            note = {"TARNALGO_MUTANT": "-1", "TARNALGO_MUTANT_NOTES": str(fresh)}
            run(program, note, [], 3600, priority)
            fresh.rename(notes)
        self.tests = collections.defaultdict(list)
        self.time = {}
        self.always = set()
        for line in notes.read_text().splitlines():
            name, time, *reached = line.split()
            if name == ".":
                self.always |= set(map(int, reached))
                continue
            self.time[name] = float(time)
            for mutant in reached:
                self.tests[int(mutant)].append(name)

    def fate(self, mutant):
        tests = list(self.time) if mutant in self.always else self.tests[mutant]
        if not tests:
            return "not reached"
        # The quick ones first: most mutants fall to them.
        quick = [test for test in tests if self.time[test] < QUICK]
        slow = sorted(set(tests) - set(quick), key=self.time.get)
        for some in ([quick] if quick else []) + [[test] for test in slow]:
            seconds = 5 + int(10.0 * sum(map(self.time.get, some)))
            filters = some if len(some) < len(self.time) else []
            switch = {"TARNALGO_MUTANT": str(mutant)}
            fate = run(self.program, switch, filters, seconds, self.priority)
            if fate:
                return fate
        return "survived"


# --- Report ---------------------------------------------------------------------------------------

def read_explained():
    """(file, code, change) → reason; a block is a reason and the indented mutants below it."""
    explained, reason = {}, ""
    if EXPLAINED.exists():
        for line in EXPLAINED.read_text().splitlines():
            if line.startswith("  "):
                file, rest = line.split(" | ", 1)
                code, change = rest.rsplit(" | ", 1)  # the code may hold a bar itself
                explained[(file.strip(), code.strip(), change.strip())] = reason
            elif line and not line.startswith("#"):
                reason = line
    return explained


KILLED = ("failed", "too long")


def describe(mutant):
    """Where it is, and below it the line for the file of explanations."""
    return (f"{mutant.file}:{mutant.line}:{mutant.column}\n"
            f"  {mutant.file} | {mutant.code} | {mutant.change}")


COLUMNS = ["mutants", "killed", "explained", "left"]


def report(chosen, mutants, fates, explained):
    """Prints what is left and the table; file → (places, count of each column)."""
    rows, lines = {}, []
    for file in chosen:
        count = collections.Counter()
        for number, mutant in sorted(mutants.items()):
            if mutant.file != file.file:
                continue
            fate = fates[number]
            reason = explained.get((mutant.file, mutant.code, mutant.change))
            if fate in KILLED:
                count["killed"] += 1
                if reason:
                    lines.append(f"{mutant.file}:{mutant.line}: killed, though explained: "
                                 f"{mutant.code} | {mutant.change}")
            elif reason:
                count["explained"] += 1
            else:
                count["left"] += 1
                lines.append(f"{fate}: {describe(mutant)}")
            count["mutants"] += 1
        rows[file.file] = (file.found, count)
    print("\n".join(lines + table(rows)))
    return rows


def table(rows):
    total = sum((count for _, count in rows.values()), collections.Counter())
    return ["| File | Places | " + " | ".join(map(str.capitalize, COLUMNS)) + " | Score |",
            "|---|" + "---:|" * (len(COLUMNS) + 2), *(row(file, *rows[file]) for file in rows),
            row("**all**", sum(found for found, _ in rows.values()), total)]


def write_doc(fresh, survivors, explained):
    """Puts the fresh rows in the place of the old ones; the rows of other files stay."""
    start, end = "<!-- mutation: written by scripts/mutate.py -->", "<!-- /mutation -->"
    before, old, after = re.fullmatch(f"(.*{start}\n)(.*)({end}.*)", DOC.read_text(), re.S).groups()
    rows = {}
    for file, found, *counts in re.findall(r"^\| (\S+/\S+)" + r" \| (\d+)" * 5, old, re.M):
        rows[file] = (int(found), collections.Counter(dict(zip(COLUMNS, map(int, counts)))))
    rows.update(fresh)
    rows = {file: rows[file] for file in core_files() if file in rows}
    reasons = collections.Counter(
        explained[key] for key in ((m.file, m.code, m.change) for m in survivors.values())
        if key in explained and key[0] in rows)
    lines = table(rows) + ["", "| Why no test can kill them | Mutants |", "|---|---:|"]
    lines += [f"| {reason} | {count} |" for reason, count in reasons.most_common()]
    DOC.write_text(before + "\n".join(lines) + "\n" + after)


def row(name, found, count):
    testable = count["mutants"] - count["explained"]
    score = f"{100.0 * count['killed'] / testable:.0f} %" if testable else "–"
    return f"| {name} | {found} | " + " | ".join(str(count[c]) for c in COLUMNS) + f" | {score} |"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--files", help="only files whose path contains one of these, by commas")
    parser.add_argument("--most", type=int, default=7, help="mutants of one file (default 7)")
    parser.add_argument("--seed", default="1", help="draws the sample (default 1)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--nice", type=int, default=19, help="of the tests that run (default 19)")
    parser.add_argument("--doc", action="store_true", help="write tables to docs/reliability.md")
    options = parser.parse_args()

    wanted = options.files.split(",") if options.files else [""]
    programs_of = core_files()
    programs = sorted({p for file, names in programs_of.items() for p in names
                       if any(w in file for w in wanted)})
    arguments = clang_arguments()
    TREE.mkdir(parents=True, exist_ok=True)
    copy_tree(set(programs_of))
    write_if_new(TREE / "mutant_notes.cpp", NOTE_SOURCE)
    write_if_new(TREE / "mutant_switch.h", switch_header())

    with concurrent.futures.ProcessPoolExecutor(options.jobs) as pool:
        sites = list(pool.map(find_sites, programs_of, itertools.repeat(arguments)))
    refused = set()
    while True:
        chosen, mutants = [], {}
        for index, file in enumerate(programs_of, 1):
            chosen.append(ChosenFile(file, sites[index - 1], options.most, options.seed, refused))
            chosen[-1].number(index * NUMBERS_OF_A_FILE, mutants)
            chosen[-1].write()
        print(f"{len(mutants)} mutants in {len(chosen)} files; building", flush=True)
        lines = build(programs)
        if not lines:
            break
        if lines <= refused:
            sys.exit(f"the build fails for another reason, see {BUILD}/build.log")
        print(f"{len(lines - refused)} lines do not compile with a switch: left out", flush=True)
        refused |= lines
    chosen = [file for file in chosen if any(w in file.file for w in wanted)]
    every = mutants
    mutants = {n: m for n, m in mutants.items() if any(w in m.file for w in wanted)}

    print("Running without a mutant", flush=True)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        reach = dict(zip(programs, pool.map(Reach, programs, itertools.repeat(options.nice))))

    # What an interrupted run has found out stands as long as the programs do.
    kept_file = BUILD / "fates.log"
    kept = {}
    if kept_file.exists():
        kept = {tuple(line[:-1]): line[-1]
                for line in map(json.loads, kept_file.read_text().splitlines())}

    def fate_of(number):
        fate = "not reached"
        for program in programs_of[mutants[number].file]:
            key = (*mutants[number], program, reach[program].built)
            found = kept.get(key) or reach[program].fate(number)
            if key not in kept:
                with open(kept_file, "a") as out:
                    out.write(json.dumps([*key, found]) + "\n")
            if found in KILLED:
                return found
            if found == "survived":
                fate = found
        return fate

    fates = {}
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for number, fate in zip(mutants, pool.map(fate_of, mutants)):
            fates[number] = fate
            if len(fates) % 100 == 0:
                print(f"{len(fates)} of {len(mutants)}", flush=True)
    rows = report(chosen, mutants, fates, read_explained())
    if options.doc:
        survivors = {n: m for n, m in every.items() if fates.get(n) not in KILLED}
        write_doc(rows, survivors, read_explained())
    sys.exit(1 if any(count["left"] for _, count in rows.values()) else 0)


if __name__ == "__main__":
    main()
