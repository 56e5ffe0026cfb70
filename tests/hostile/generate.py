#!/usr/bin/env python3
"""Writes the table of the hostile-input test: one row for each public operation of the library.

Usage: generate.py ROOT OUT [COMPILER ARGUMENT...]

Reads the faces of the library (each header that only includes others, and what it includes) with
libclang. An operation that it cannot call needs a row by hand (ROW in a .cpp beside this file) or a
line with a reason in exempt.txt; otherwise, or where such a line names nothing, it fails. So a new
operation is tested from its first build on.
"""

import pathlib
import re
import sys

from clang.cindex import AccessSpecifier, AvailabilityKind, CursorKind, Index, TypeKind

FACES = ["host/Cadtypes.h", "host/Cadutils.h", "host/Cadgeometry.h", "host/Exceptions.h",
         "host/Zeblib.h", "host/tarnds.h", "containers/Container.h", "containers/TreeAlgorithm.h",
         "geometryAlgo/GeometryExtend.h", "geometryAlgo/NestOptimizeAlgo.h",
         "geometryAlgo/ShapeApp.h", "geometryAlgo/SweepLine.h", "geometryAlgo/UDualSimplex.h",
         "geometryAlgo/UMatrixAlgo.h", "geometryAlgo/UPolygonGetter.h", "geometryAlgo/VedaType.h",
         "geometryAlgo/flyscanAlgo.h"]
BESIDE_FACES = ["host/Cadgeometry/CurvePiece.h"]  # what TGeCurve2D hands out

# How templates are instantiated. A template without an entry is an operation nobody can call.
# (+: an argument that keeps its default, named for the types of the members.)
COMPARER = "std::function<int(const double&, const double&)>"
INSTANCES = {
    "TNullable": {"T": "double"},
    "Tuple2": {"T1": "double", "T2": "int"},
    "TBytewiseEqual": {"T": "TPoint2D"},
    "TBytewiseHash": {"T": "TPoint2D"},
    "TCollection": {"T": "TPointL2D"},
    "TLinkedListNode": {"T": "TPoint2D"},
    "TLinkedList": {"T": "TPoint2D"},
    "TObjectList": {"T": "TVLine2D"},
    "TOrderedDic": {"K": "double", "V": "TVLine2D"},
    "TKeyHash": {"K": "double"},
    "TKeyEqual": {"K": "double"},
    "TOwnValueDic": {"K": "double", "V": "TVLine2D", "+THash": "TKeyHash<double>",
                     "+TEqual": "TKeyEqual<double>"},
    "TExactComparer": {"K": "double"},
    "TGeneralSBTreeNode": {"K": "double", "V": "int"},
    "TGeneralSBTree": {"K": "double", "V": "int", "+TComparer": COMPARER},
    "THeapNode": {"T": "double"},
    "TMinHeap": {"T": "double", "+TComparer": COMPARER},
    "TTreeNode": {"T": "int"},
    "TMultiTree": {"T": "int"},
    "TMultiTreeList": {"T": "int"},
    "TVGeometry2DList": {"T": "TVPolyline2D"},
    "TRTreeNode": {"T": "int"},
    "TRTree": {"T": "int"},
    "TGeToDataDic": {"TData": "int"},
}

SIZE_NAME = re.compile(r"Count|Capacity|Size|Rows|Columns|^N$|Digits|Limit|Accuracy|Steps")
CLASSES = (CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL, CursorKind.CLASS_TEMPLATE)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR)


def read_faces(root):
    """The faces and the pages they include."""
    pages = []
    waiting = list(FACES)
    while waiting:
        page = waiting.pop(0)
        if page in pages:
            continue
        pages.append(page)
        text = (root / page).read_text()
        if "{" not in text:  # a face has no code of its own
            waiting += re.findall(r'#include "([^"]+)"', text)
    return pages + BESIDE_FACES


def is_public(cursor):
    return cursor.access_specifier in (AccessSpecifier.PUBLIC, AccessSpecifier.INVALID)


def is_deleted(cursor):
    return cursor.availability == AvailabilityKind.NOT_AVAILABLE


class Table:
    """Collects rows by unit, makers of arguments by type."""

    def __init__(self, hand_draws, hand_rows, exempt):
        self.hand_draws = hand_draws
        self.hand_rows = hand_rows
        self.exempt = exempt
        self.used = set()
        self.rows = {}      # unit: list of (key, class name, mutates, body)
        self.scopes = {}    # unit: lines of scope structs
        self.draws = []     # (type, body)
        self.enums = []
        self.uncalled = []
        self.keys = set()

    def is_settled(self, key):
        """By hand, or exempt."""
        self.keys.add(key)
        if key in self.hand_rows:
            self.used.add(key)
            return True
        for pattern in self.exempt:
            if re.fullmatch(pattern, key):
                self.used.add(pattern)
                return True
        return False


def clean(spelling, scope):
    """The type as it reads inside the class: without the class's own name before its members."""
    for name in scope:
        spelling = re.sub(r"\b(tarnalgo::)?%s::" % name, "", spelling)
    return spelling


class Writer:
    def __init__(self, table, root, pages):
        self.table = table
        self.root = root
        self.pages = set(pages)

    def page_of(self, cursor):
        file = cursor.location.file
        if file is None:
            return None
        path = pathlib.Path(file.name)
        try:
            page = str(path.relative_to(self.root))
        except ValueError:
            return None
        return page if page in self.pages else None

    def walk(self, cursor, spaces):
        for child in cursor.get_children():
            if child.kind == CursorKind.NAMESPACE:
                if child.spelling != "detail":
                    self.walk(child, spaces + [child.spelling])
            elif child.kind == CursorKind.UNEXPOSED_DECL:
                self.walk(child, spaces)
            elif self.page_of(child) is None:
                continue
            elif child.kind in CLASSES:
                if child.is_definition():
                    self.write_class(child, spaces, None, "")
            elif child.kind == CursorKind.ENUM_DECL:
                self.write_enum(child, spaces)
            elif child.kind == CursorKind.FUNCTION_DECL:
                if child.semantic_parent.kind == CursorKind.NAMESPACE:
                    self.write_function(child, "::".join(spaces), None, [], "")
            elif child.kind == CursorKind.FUNCTION_TEMPLATE:
                if child.semantic_parent.kind == CursorKind.NAMESPACE:
                    self.need_hand("", child)

    def need_hand(self, where, cursor):
        key = where + cursor.displayname
        if not self.table.is_settled(key):
            self.table.uncalled.append(key)

    def is_deleted_template(self, cursor):
        text = pathlib.Path(cursor.location.file.name).read_bytes()
        return b"= delete" in text[cursor.extent.start.offset:cursor.extent.end.offset + 10]

    def unit(self, cursor):
        page = self.page_of(cursor)
        parts = pathlib.PurePath(page).parts
        if parts[0] == "geometryAlgo":
            return parts[1].removesuffix(".h")
        return parts[0]

    def write_enum(self, cursor, spaces):
        name = "::".join(spaces + [cursor.spelling])
        members = [f"{name}::{c.spelling}" for c in cursor.get_children()
                   if c.kind == CursorKind.ENUM_CONSTANT_DECL]
        if name not in [known for known, _ in self.table.enums]:  # `using enum` shows it again
            self.table.enums.append((name, members))

    # --- A class ---

    def write_class(self, cursor, spaces, outer, outer_key):
        if not is_public(cursor):
            return
        name = cursor.spelling
        key = outer_key + name + "::"
        scope = None
        if cursor.kind == CursorKind.CLASS_TEMPLATE:
            if name not in INSTANCES:
                if not self.table.is_settled(key):
                    self.table.uncalled.append(key)
                return
            binding = INSTANCES[name]
            full = "::".join(spaces + [name]) + "<" + \
                ", ".join(v for k, v in binding.items() if k[0] != "+") + ">"
            scope = (name, binding, full)
        elif "<" in cursor.displayname:  # a specialisation
            full = cursor.semantic_parent.spelling + "::" + cursor.displayname
            key = outer_key + cursor.displayname + "::"
        else:
            full = "::".join(spaces + [name]) if outer is None else f"{outer}::{name}"
        if outer is not None and "<" in outer:
            return
        fields = []
        constructors = []
        rows = []
        for child in cursor.get_children():
            if not is_public(child) and child.kind != CursorKind.FRIEND_DECL:
                continue
            if child.kind in CLASSES and child.is_definition():
                self.write_class(child, spaces, full, key)
            elif child.kind == CursorKind.ENUM_DECL:
                self.write_enum(child, full.split("::"))
            elif child.kind == CursorKind.FRIEND_DECL:
                for friend in child.get_children():
                    if friend.kind == CursorKind.FUNCTION_DECL and not is_deleted(friend):
                        self.write_function(friend, None, full, [], key, scope)
            elif is_deleted(child):
                continue
            elif child.kind == CursorKind.FUNCTION_TEMPLATE:
                if not self.is_deleted_template(child):
                    self.need_hand(key, child)
            elif child.kind == CursorKind.FIELD_DECL:
                if not child.type.is_const_qualified():
                    fields.append(child)
            elif child.kind == CursorKind.CONSTRUCTOR:
                if not cursor.is_abstract_record():
                    if not child.is_copy_constructor() and not child.is_move_constructor():
                        constructors.append(child)
                    self.write_function(child, None, full, fields, key, scope)
            elif child.kind == CursorKind.CXX_METHOD:
                self.write_function(child, None, full, fields, key, scope)
        self.write_draw(cursor, full, constructors, fields, scope)

    def write_draw(self, cursor, full, constructors, fields, scope):
        short = full.removeprefix("tarnalgo::")
        if short in self.table.hand_draws or cursor.is_abstract_record():
            return
        lines = []
        kept = [c for c in constructors
                if not any("initializer_list" in a.type.spelling for a in c.get_arguments())]
        name = full if scope is None else "TMade"
        if kept:
            kept.sort(key=lambda c: len(list(c.get_arguments())))
            lines.append(f"switch (H.Pick({len(kept)})) {{")
            for number, constructor in enumerate(kept):
                args = list(constructor.get_arguments())
                lines.append(f"case {number}: {{")
                lines += self.arguments(args, scope, None)
                given = ", ".join(self.passed(a, i, scope) for i, a in enumerate(args))
                lines.append(f"  Made = std::make_unique<{name}>({given}); break; }}")
            lines.append("}")
        else:
            lines.append(f"Made = H.ByDefault<{name}>();")
        if fields:
            lines.append("if (!H.IsPlain()) {")
            for field in fields:
                kind = self.spelled(field.type, scope)
                lines.append(f"  if (H.Coin()) Made->{field.spelling} = H.Take<{kind}>();")
            lines.append("}")
        self.table.draws.append((full, lines, scope))

    # --- A function ---

    def spelled(self, kind, scope):
        """The type without reference and const."""
        target = kind.get_pointee() if kind.kind in (TypeKind.LVALUEREFERENCE,
                                                     TypeKind.RVALUEREFERENCE) else kind
        if scope is None:
            text = target.get_canonical().spelling.replace(", 18446744073709551615", "")  # a span
        else:
            text = clean(target.spelling, [scope[0]])
        return text if target.kind == TypeKind.POINTER else re.sub(r"^const ", "", text)

    def arguments(self, args, scope, owner):
        lines = []
        for number, argument in enumerate(args):
            kind = self.spelled(argument.type, scope)
            if kind.startswith("std::initializer_list"):
                continue
            if kind == "int" and SIZE_NAME.search(argument.spelling):
                lines.append(f"  int A{number} = H.Size();")
            elif owner is not None and kind == owner and \
                    argument.type.kind == TypeKind.LVALUEREFERENCE:
                lines.append(f"  auto& A{number} = H.IsAlias() ? Self : H.Ref<{kind}>();")
            else:
                lines.append(f"  auto& A{number} = H.Ref<{kind}>();")
        return lines

    def passed(self, argument, number, scope):
        kind = argument.type
        text = self.spelled(kind, scope)
        if text.startswith("std::initializer_list"):
            item = re.match(r"std::initializer_list<(.*)>", text).group(1)
            return "{" + ", ".join([f"H.Take<{item}>()"] * 3) + "}"
        if kind.kind == TypeKind.LVALUEREFERENCE or "*" in text:
            return f"A{number}"
        return f"std::move(A{number})"

    def write_function(self, cursor, space, owner, fields, where, scope=None):
        del fields
        key = where + cursor.displayname + (" const" if cursor.is_const_method() else "")
        if self.table.is_settled(key):
            return
        args = list(cursor.get_arguments())
        is_method = cursor.kind == CursorKind.CXX_METHOD and not cursor.is_static_method()
        self_type = owner if is_method else None
        inner = owner if scope is None else "TInner"
        lines = []
        if is_method:
            lines.append(f"auto& Self = *static_cast<{inner}*>(S);")
        lines += self.arguments(args, scope, inner if is_method and scope is None else None)
        given = [self.passed(a, i, scope) for i, a in enumerate(args)]
        name = cursor.spelling
        if cursor.kind == CursorKind.CONSTRUCTOR:
            if any(g.startswith("{") for g in given) or not given:
                call = f"{inner} Made{{{', '.join(given) if given else ''}}}"
                if given:
                    call = f"{inner} Made({', '.join(given)})"
            else:
                call = f"{inner} Made({', '.join(given)})"
            lines.append(f"[[maybe_unused]] {call};")
        else:
            target = "std::as_const(Self)" if cursor.is_const_method() else "Self"
            operator = name.removeprefix("operator") if name.startswith("operator") else None
            if operator is not None and not operator[:1].isalnum():
                operands = ([target] if is_method else []) + given
                if operator == "()":
                    call = f"{operands[0]}({', '.join(operands[1:])})"
                elif operator == "[]":
                    call = f"{operands[0]}[{operands[1]}]"
                elif len(operands) == 1:
                    call = f"{operator}{operands[0]}"
                else:
                    call = f"{operands[0]} {operator} {operands[1]}"
            elif is_method:
                call = f"{target}.{name}({', '.join(given)})"
            elif owner is not None and cursor.kind == CursorKind.CXX_METHOD:
                call = f"{inner}::{name}({', '.join(given)})"
            else:
                call = f"{space}::{name}({', '.join(given)})" if space else \
                    f"{name}({', '.join(given)})"
            returns_nothing = cursor.result_type.kind == TypeKind.VOID
            lines.append(f"{call};" if returns_nothing else f"H.Use({call});")
        mutates = is_method and not cursor.is_const_method()
        self.table.rows.setdefault(self.unit(cursor), []).append(
            (key, self_type, mutates, lines, scope))


# --- Output ---

HEAD = """// Generated by tests/hostile/generate.py.
"""


def scope_lines(scope, indent):
    lines = [f"{indent}using TInner = {scope[2]};", f"{indent}using TMade = TInner;"]
    lines += [f"{indent}using {name.strip('+')} = {value};" for name, value in scope[1].items()]
    return lines


def write_if_changed(path, text):
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def write_draws(table, out):
    head = [HEAD + '#pragma once', '#include "tests/hostile/Draws.h"', "namespace tarnalgo::test {"]
    body = [HEAD + '#include "Makers.h"', "namespace tarnalgo::test {"]
    for name, members in table.enums:
        head += [f"template <> struct TDraw<{name}> {{",
                 f"  static std::unique_ptr<{name}> New(THostile& H);", "};"]
        body += [f"std::unique_ptr<{name}> TDraw<{name}>::New(THostile& H) {{",
                 f"  static constexpr {name} All[] = {{{', '.join(members)}}};",
                 f"  return std::make_unique<{name}>(All[H.Pick({len(members)})]);", "}"]
    for name, lines, scope in table.draws:
        head += [f"template <> struct TDraw<{name}> {{",
                 f"  static std::unique_ptr<{name}> New(THostile& H);"]
        if scope:
            body += [f"struct TMaker{len(body)} : {name} {{"] + scope_lines(scope, "  ")
            body += ["  static std::unique_ptr<TMade> Make(THostile& H) {",
                     "    std::unique_ptr<TMade> Made;"]
            opened = f"TMaker{len(body) - 2 - len(scope_lines(scope, ''))- 1}"
            body += ["    " + line for line in lines] + ["    return Made;", "  }", "};"]
            body += [f"std::unique_ptr<{name}> TDraw<{name}>::New(THostile& H) {{",
                     f"  return H.Made([&H] {{ return {opened}::Make(H); }});", "}"]
        else:
            body += [f"std::unique_ptr<{name}> TDraw<{name}>::New(THostile& H) {{",
                     "  return H.Made([&H] {", f"    std::unique_ptr<{name}> Made;"]
            body += ["    " + line for line in lines]
            body += ["    return Made;", "  });", "}"]
        head += ["};"]
    write_if_changed(out / "Makers.h", "\n".join(head + ["}  // namespace", ""]))
    write_if_changed(out / "Makers.cpp", "\n".join(body + ["}  // namespace", ""]))


def write_rows(unit, rows, out):
    text = [HEAD + '#include "Makers.h"', '#include "tests/hostile/Table.h"',
            "namespace tarnalgo::test {", "namespace {"]
    table = []
    for number, (key, owner, mutates, lines, scope) in enumerate(rows):
        head = f"void Row{number}([[maybe_unused]] THostile& H, [[maybe_unused]] void* S) {{"
        inside = ["  " + line for line in lines]
        if scope:
            base = scope[2]
            text += [f"struct TScope{number} : {base} {{"] + scope_lines(scope, "  ")
            text += ["  static " + head] + inside + ["  }", "};"]
            call = f"TScope{number}::Row{number}"
        else:
            text += [head] + inside + ["}"]
            call = f"Row{number}"
        self_name = f'"{owner}"' if owner else "nullptr"
        make = f"&MakeSelf<{owner}>" if owner else "nullptr"
        table.append(f'  {{"{key}", {self_name}, {"true" if mutates else "false"}, '
                     f"&{call}, {make}}},")
    text += ["const TRow Rows[] = {"] + table + ["};", "const TRegisterRows Registered(Rows);",
                                                  "}  // namespace", "}  // namespace", ""]
    write_if_changed(out / f"Rows{unit}.cpp", "\n".join(text))


UNITS = ["GeometryExtend", "NestOptimizeAlgo", "ShapeApp", "SweepLine", "UDualSimplex",
         "UMatrixAlgo", "UPolygonGetter", "VedaType", "containers", "flyscanAlgo", "host",
         "ClipperAdditions"]


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    out = pathlib.Path(sys.argv[2])
    here = root / "tests/hostile"
    source = "".join(f'#include "{face}"\n' for face in FACES)
    unit = Index.create().parse("all.cpp", args=["-std=c++20", f"-I{root}"] + sys.argv[3:],
                                unsaved_files=[("all.cpp", source)])
    errors = [d for d in unit.diagnostics if d.severity >= 3]
    if errors:
        sys.exit("\n".join(map(str, errors)))

    hand_draws = set(re.findall(r"struct TDraw<(.*?)> (?:\{|: )", (here / "Draws.h").read_text()))
    hand_rows = set()
    for file in sorted(here.glob("*.cpp")):
        hand_rows |= set(re.findall(r'ROW\(\s*"([^"]+)"', file.read_text()))
    exempt = {}
    for line in (here / "exempt.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            pattern, _, reason = line.partition(" | ")
            if not reason:
                sys.exit(f"exempt.txt: no reason in: {line}")
            exempt[pattern] = reason

    table = Table(hand_draws, hand_rows, exempt)
    Writer(table, root, read_faces(root)).walk(unit.cursor, [])
    stale = sorted((set(exempt) | hand_rows) - table.used)
    problems = [f"no row: {key}" for key in table.uncalled]
    problems += [f"names no operation: {key}" for key in stale]
    problems += [f"unit without a file: {u}" for u in table.rows if u not in UNITS]
    if problems:
        sys.exit("\n".join(problems))
    write_draws(table, out)
    for name in UNITS:
        write_rows(name, table.rows.get(name, []), out)
    print(f"{len(table.keys)} operations, {sum(map(len, table.rows.values()))} generated rows")


if __name__ == "__main__":
    main()
