"""Finds the places in a file of C++ where a mutant can be put in, with the compiler's own syntax tree.

A mutant is another text for one stretch of a file. Four kinds are made:

arithmetic  + for -, * for /, += for -=, ++ for --, a left-out sign
comparison  the boundary moved (< for <=), the sense turned round, && for ||, a left-out or added "not"
order       two neighbouring statements change places, floating point operations are grouped otherwise
deletion    a statement, or a conditional with all that hangs on it, is left out
"""

import dataclasses
import pathlib
import re

from clang.cindex import Cursor, CursorKind, Index, TypeKind

ARITHMETIC = {"+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "<<": [">>"], ">>": ["<<"], "&": ["|"], "|": ["&"]}
ASSIGNMENT = {"+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|=", "<<=": ">>=", ">>=": "<<="}
COMPARISON = {
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "==": ["!="],
    "!=": ["=="],
    "&&": ["||"],
    "||": ["&&"],
}
# How (a X b) Y c is grouped otherwise. The value differs in the last bits alone, which is why the order counts.
GROUPED = {
    ("*", "/"): "{a} * ({b} / {c})",
    ("/", "*"): "{a} * {c} / {b}",
    ("*", "*"): "{a} * ({b} * {c})",
    ("/", "/"): "{a} / ({b} * {c})",
    ("+", "+"): "{a} + ({b} + {c})",
    ("+", "-"): "{a} + ({b} - {c})",
    ("-", "+"): "{a} + {c} - {b}",
    ("-", "-"): "{a} - ({b} + {c})",
}
NUMBERS = {
    TypeKind.BOOL, TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.USHORT, TypeKind.UINT, TypeKind.ULONG, TypeKind.ULONGLONG,
    TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.SHORT, TypeKind.INT, TypeKind.LONG, TypeKind.LONGLONG, TypeKind.FLOAT,
    TypeKind.DOUBLE, TypeKind.POINTER, TypeKind.DEPENDENT, TypeKind.UNEXPOSED, TypeKind.AUTO,
}  # fmt: skip
FLOATS = {TypeKind.FLOAT, TypeKind.DOUBLE}
FUNCTIONS = {
    CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR,
    CursorKind.CONVERSION_FUNCTION, CursorKind.FUNCTION_TEMPLATE,
}  # fmt: skip
LOOPS = {CursorKind.FOR_STMT, CursorKind.WHILE_STMT, CursorKind.CXX_FOR_RANGE_STMT}
# Statements that are no expressions and can be left out or moved all the same.
DELETABLE = LOOPS | {CursorKind.IF_STMT, CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT}
LEAVING = {CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT}


@dataclasses.dataclass
class Mutant:
    """One change. `text` replaces an expression or is the statement put before another; None stands for one left out."""

    kind: str
    place: str  # file and function
    change: str  # what a reader sees
    text: str | None = None
    number: int = 0

    @property
    def name(self) -> str:
        return f"{self.place}: {self.change}"


@dataclasses.dataclass
class Region:
    """A stretch of a file, by byte offsets, with all mutants of that stretch."""

    start: int
    end: int
    statement: bool
    condition: bool = False  # Stands where a truth is wanted.
    mutants: list[Mutant] = dataclasses.field(default_factory=list)
    # Of a statement: the one behind it, and the mutant in which the two change places.
    next: "Region | None" = None
    swap: Mutant | None = None
    calls: bool = False  # Something by name; plain assignments that change places are seen by nobody.


def shortened(text: str, length: int = 70) -> str:
    line = re.sub(r"\s+", " ", re.sub(r"//[^\n]*", "", text)).strip()
    return line if len(line) <= length else line[: length * 2 // 3] + " ... " + line[-length // 4 :]


class Finder:
    """Collects the regions of all files of one folder that a translation unit shows."""

    def __init__(self, root: pathlib.Path, folder: str):
        self.root = root
        self.folder = folder
        self.index = Index.create()
        self.texts: dict[str, str] = {}
        self.regions: dict[str, dict[tuple, Region]] = {}
        self.names: set[str] = set()

    def text(self, path: str) -> str:
        if path not in self.texts:
            # One character a byte, so that the compiler's offsets fit.
            self.texts[path] = (self.root / path).read_bytes().decode("latin-1")
            self.regions[path] = {}
        return self.texts[path]

    def read(self, source: pathlib.Path, arguments: list[str]) -> None:
        unit = self.index.parse(str(source), arguments)
        bad = [str(one) for one in unit.diagnostics if one.severity >= 3]
        if bad:
            raise SystemExit(f"{source} could not be read:\n" + "\n".join(bad))
        self.skipped = set(self.regions)  # Headers that an earlier unit has shown are not read twice.
        for cursor in unit.cursor.get_children():
            self.declaration(cursor)

    def own(self, cursor: Cursor) -> str | None:
        """The path of the folder's file that the cursor lies in."""
        file = cursor.location.file
        if file is None:
            return None
        path = pathlib.Path(file.name).resolve()
        if path.parent != self.root / self.folder:
            return None
        return str(path.relative_to(self.root))

    def declaration(self, cursor: Cursor) -> None:
        path = self.own(cursor)
        if path is None or path in self.skipped:
            return
        if cursor.kind in FUNCTIONS:
            self.path, self.source = path, self.text(path)
            owner = "" if cursor.kind == CursorKind.FUNCTION_DECL else cursor.semantic_parent.spelling
            self.function = f"{path} {owner + '::' if owner else ''}{re.sub(r'<.*', '', cursor.spelling)}"
            head = self.source[self.source.rfind("\n", 0, cursor.extent.start.offset) + 1 : cursor.location.offset]
            self.never_returns = "[[noreturn]]" in head
            if cursor.is_definition():
                for child in cursor.get_children():
                    if child.kind == CursorKind.COMPOUND_STMT:
                        self.visit(child, cursor)
        elif cursor.kind in (
            CursorKind.NAMESPACE, CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL, CursorKind.CLASS_TEMPLATE,
            CursorKind.UNEXPOSED_DECL, CursorKind.LINKAGE_SPEC,
        ):  # fmt: skip
            for child in cursor.get_children():
                self.declaration(child)

    # Extents.

    def span(self, cursor: Cursor) -> tuple[int, int]:
        return cursor.extent.start.offset, cursor.extent.end.offset

    def cut(self, cursor: Cursor) -> str:
        start, end = self.span(cursor)
        return self.source[start:end]

    def between(self, left: Cursor, right: Cursor) -> str:
        gap = self.source[left.extent.end.offset : right.extent.start.offset]
        return re.sub(r"/\*.*?\*/|//[^\n]*", "", gap, flags=re.S).strip()

    def region(self, start: int, end: int, statement: bool) -> Region:
        regions = self.regions[self.path]
        return regions.setdefault((start, end, statement), Region(start, end, statement))

    def add(self, region: Region, kind: str, change: str, text: str | None = None) -> Mutant | None:
        if any(one.text == text and one.kind == kind for one in region.mutants):
            return None  # The tree shows some expressions twice.
        mutant = Mutant(kind, self.function, change, text)
        count = 1
        while mutant.name in self.names:
            count += 1
            mutant.change = f"{change} #{count}"
        self.names.add(mutant.name)
        region.mutants.append(mutant)
        return mutant

    def change(self, cursor: Cursor, kind: str, other: str, text: str) -> None:
        """Another text for an expression."""
        self.add(self.region(*self.span(cursor), False), kind, f"{shortened(self.cut(cursor))} -> {other}", text)

    # Walking.

    def visit(self, cursor: Cursor, parent: Cursor) -> None:
        kind = cursor.kind
        if kind == CursorKind.VAR_DECL and re.search(r"\bconstexpr\b", self.cut(cursor).split("=")[0]):
            return
        if kind in (CursorKind.STATIC_ASSERT, CursorKind.TYPE_ALIAS_DECL, CursorKind.TEMPLATE_REF, CursorKind.TYPE_REF):
            return
        children = list(cursor.get_children())
        if kind == CursorKind.CASE_STMT:
            children = children[1:]
        if kind == CursorKind.IF_STMT and re.match(r"if\s+constexpr\b", self.cut(cursor)):
            children = children[1:]
        elif kind == CursorKind.IF_STMT and children:
            self.condition(children[0])
        elif kind == CursorKind.CONDITIONAL_OPERATOR and len(children) == 3:
            self.condition(children[0])
        if kind == CursorKind.COMPOUND_STMT:
            self.statements(cursor, children, parent)
        elif kind == CursorKind.IF_STMT and len(children) == 3:
            # With an "else", leaving out one branch is another thing than leaving out the conditional.
            for branch in children[1:]:
                if branch.kind not in (CursorKind.COMPOUND_STMT, CursorKind.IF_STMT):
                    self.deletion(branch)
        elif kind == CursorKind.BINARY_OPERATOR and len(children) == 2:
            self.binary(cursor, children[0], children[1])
        elif kind == CursorKind.CALL_EXPR and cursor.spelling.startswith("operator") and len(children) >= 2:
            self.overloaded(cursor, children)
        elif kind == CursorKind.COMPOUND_ASSIGNMENT_OPERATOR and len(children) == 2:
            self.assignment(cursor, children[0], children[1])
        elif kind == CursorKind.UNARY_OPERATOR and children:
            self.unary(cursor, children[0])
        for child in children:
            self.visit(child, cursor)

    def condition(self, test: Cursor) -> None:
        """A test without an operator of its own is turned round."""
        inner = test
        while inner.kind == CursorKind.UNEXPOSED_EXPR:
            below = list(inner.get_children())
            if len(below) != 1:
                break
            inner = below[0]
        if inner.kind not in (CursorKind.CALL_EXPR, CursorKind.DECL_REF_EXPR, CursorKind.MEMBER_REF_EXPR):
            return
        if inner.kind == CursorKind.CALL_EXPR and re.match(r"operator\W", inner.spelling) and inner.spelling != "operator()":
            return
        start, end = self.span(test)
        text = self.source[start:end]
        region = self.region(start, end, False)
        region.condition = True
        self.add(region, "comparison", f"{shortened(text)} -> not so", f"!({text})")

    def binary(self, cursor: Cursor, left: Cursor, right: Cursor) -> None:
        operator = self.between(left, right)
        a, b = self.cut(left), self.cut(right)
        if operator in COMPARISON:
            for other in COMPARISON[operator]:
                self.change(cursor, "comparison", other, f"{a} {other} {b}")
            return
        kind = cursor.type.get_canonical().kind
        if operator not in ARITHMETIC or kind not in NUMBERS:
            return
        for other in ARITHMETIC[operator]:
            self.change(cursor, "arithmetic", other, f"({a}) {other} ({b})")
        if kind in FLOATS:
            self.grouping(cursor, left, right, operator)

    def grouping(self, cursor: Cursor, left: Cursor, right: Cursor, operator: str) -> None:
        def parts(side: Cursor, through_parentheses: bool):
            kinds = {CursorKind.UNEXPOSED_EXPR} | ({CursorKind.PAREN_EXPR} if through_parentheses else set())
            while side.kind in kinds:
                side = next(side.get_children())
            below = list(side.get_children())
            if side.kind != CursorKind.BINARY_OPERATOR or len(below) != 2:
                return None
            return self.cut(below[0]), self.between(*below), self.cut(below[1])

        if inner := parts(left, False):
            if pattern := GROUPED.get((inner[1], operator)):
                text = pattern.format(a=f"({inner[0]})", b=f"({inner[2]})", c=f"({self.cut(right)})")
                self.change(cursor, "order", shortened(text), text)
        if operator == "/" and right.kind == CursorKind.PAREN_EXPR and (inner := parts(right, True)) and inner[1] == "*":
            text = f"({self.cut(left)}) / ({inner[0]}) / ({inner[2]})"
            self.change(cursor, "order", shortened(text), text)

    def overloaded(self, cursor: Cursor, children: list[Cursor]) -> None:
        left, right = children[0], children[-1]
        operator = self.between(left, right)
        for other in COMPARISON.get(operator, []):
            text = f"{self.cut(left)} {other} {self.cut(right)}"
            self.change(cursor, "comparison", other, text)

    def assignment(self, cursor: Cursor, left: Cursor, right: Cursor) -> None:
        operator = self.between(left, right)
        if operator not in ASSIGNMENT or left.type.get_canonical().kind not in NUMBERS:
            return
        other = ASSIGNMENT[operator]
        text = f"{self.cut(left)} {other} {self.cut(right)}"
        self.change(cursor, "arithmetic", other, text)

    def unary(self, cursor: Cursor, operand: Cursor) -> None:
        text = self.cut(cursor)
        if text.startswith(("++", "--")) or text.endswith(("++", "--")):
            other = text.replace("++", "\0").replace("--", "++").replace("\0", "--")
            if operand.type.get_canonical().kind in NUMBERS and not self.counts_loop(cursor):
                self.change(cursor, "arithmetic", shortened(other), other)
        elif text.startswith("!") and not text.startswith("!="):  # The tree shows a != b as !(a == b).
            self.change(cursor, "comparison", "without !", f"static_cast<bool>({self.cut(operand)})")
        elif text.startswith("-") and operand.kind not in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL):
            self.change(cursor, "arithmetic", "without -", f"({self.cut(operand)})")

    def counts_loop(self, cursor: Cursor) -> bool:
        """A loop's own counter turned round never ends: that proves nothing and takes long."""
        before = self.source[: cursor.extent.start.offset].rstrip()
        behind = self.source[cursor.extent.end.offset :].lstrip()
        return before.endswith((";", ",")) and behind.startswith((")", ",")) and not behind.startswith(");")

    # Statements.

    def whole(self, statement: Cursor) -> tuple[int, int] | None:
        """The statement with its semicolon."""
        start, end = self.span(statement)
        if self.source[end - 1] in ";}" and statement.kind in LOOPS | {CursorKind.IF_STMT}:
            return start, end
        behind = re.match(r"\s*;", self.source[end:])
        if not behind:
            return None
        return start, end + behind.end()

    def removable(self, statement: Cursor) -> bool:
        if statement.kind in DELETABLE:
            return not re.match(r"if\s+constexpr\b", self.cut(statement))
        return statement.kind.is_expression() and not self.cut(statement).startswith("throw")

    def deletion(self, statement: Cursor) -> Region | None:
        span = self.whole(statement)
        if span is None or not self.removable(statement):
            return None
        region = self.region(*span, True)
        self.add(region, "deletion", f"without {shortened(self.source[span[0]:span[1]])}")
        return region

    def calls(self, statement: Cursor) -> bool:
        return any(
            one.kind == CursorKind.CALL_EXPR and one.spelling and not re.match(r"operator\W", one.spelling)
            for one in statement.walk_preorder()
        )

    def statements(self, block: Cursor, children: list[Cursor], holder: Cursor) -> None:
        # The only statement of a lambda's, a loop's or a conditional's body goes with what holds it.
        branches = len(list(holder.get_children()))
        # A function that must not return would, without its only statement, run on into whatever lies behind it.
        if len(children) == 1 and (
            holder.kind in FUNCTIONS and self.never_returns or holder.kind == CursorKind.LAMBDA_EXPR or holder.kind in LOOPS or holder.kind == CursorKind.IF_STMT and branches == 2
        ):
            return
        before: Region | None = None
        for child in children:
            region = self.deletion(child)
            if region is None or child.kind in LEAVING:
                before = None
                continue
            region.calls = self.calls(child)
            if before and before.calls and region.calls:
                first = self.source[before.start : before.end]
                second = self.source[region.start : region.end]
                before.swap = self.add(before, "order", f"{shortened(first, 45)} <-> {shortened(second, 45)}", second)
                before.next = region
            before = region
