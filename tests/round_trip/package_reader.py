"""Reads packages for comparison: parts by name, trees of XML with the names as they are written, relations, content types."""

import posixpath
import re
import urllib.parse
import xml.parsers.expat
import zipfile

from reach import number_of

TYPES = "[Content_Types].xml"


class Node:
    """An element. Names keep their prefixes, since attributes such as mc:Ignorable speak of those."""

    def __init__(self, name, attributes):
        self.name = name
        self.attributes = attributes
        self.children = []  # nodes and texts; blanks between elements are left out

    @property
    def local(self):
        return self.name.rpartition(":")[2]

    def elements(self, local=None):
        return [c for c in self.children if isinstance(c, Node) and local in (None, c.local)]

    def first(self, local):
        return next(iter(self.elements(local)), None)

    def text(self):
        return "".join(c if isinstance(c, str) else c.text() for c in self.children)

    def get(self, local, default=None):
        for name, value in self.attributes.items():
            if name.rpartition(":")[2] == local and not name.startswith("xmlns"):
                return value
        return default

    def descendants(self):
        yield self
        for child in self.elements():
            yield from child.descendants()

    def key(self):
        return (self.name, tuple(sorted(self.attributes.items())), tuple(c if isinstance(c, str) else c.key() for c in self.children))  # fmt: skip

    def __eq__(self, other):
        return isinstance(other, Node) and self.key() == other.key()

    def __hash__(self):
        return hash(self.key())

    def __repr__(self):
        attributes = "".join(f' {n}="{v}"' for n, v in self.attributes.items())
        return f"<{self.name}{attributes}>" + "".join(map(str, self.children)) + f"</{self.name}>"


def tree(content):
    root, stack = [], []

    def begin(name, attributes):
        node = Node(name, attributes)
        (stack[-1].children if stack else root).append(node)
        stack.append(node)

    def end(_):
        node = stack.pop()
        if any(isinstance(c, Node) for c in node.children):
            node.children = [c for c in node.children if isinstance(c, Node) or c.strip()]

    def text(data):
        children = stack[-1].children
        if children and isinstance(children[-1], str):
            children[-1] += data
        else:
            children.append(data)

    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler, parser.EndElementHandler, parser.CharacterDataHandler = begin, end, text
    parser.Parse(content, True)
    return root[0]


def letters(number):
    text = ""
    while number > 0:
        number, rest = divmod(number - 1, 26)
        text = chr(65 + rest) + text
    return text


def with_addresses(root):
    """Rows and cells may leave out where they are: each then stands behind the one before it."""
    data = root.first("sheetData") if root.local == "worksheet" else None
    number = 0
    for row in data.elements("row") if data is not None else []:
        number = int(row.attributes.setdefault("r", str(number + 1)))
        column = 0
        for cell in row.elements("c"):
            place = cell.attributes.setdefault("r", f"{letters(column + 1)}{number}")
            column = number_of(place.rstrip("0123456789"))
    return root


def relations_name(part):
    folder, _, file = part.rpartition("/")
    return f"{folder}/_rels/{file}.rels" if folder else f"_rels/{file}.rels"


def part_name(text):
    """Some writers separate folders as their own system does, or write the name of the table of types in their own way."""
    name = text.replace("\\", "/").lstrip("/")
    return TYPES if name.lower() == TYPES.lower() else name


class PackageReader:
    def __init__(self, path):
        with zipfile.ZipFile(path) as archive:
            damaged = archive.testzip()
            assert damaged is None, f"{damaged} is damaged"
            self.entries = archive.namelist()
            assert len(set(self.entries)) == len(self.entries), "an entry stands there twice"
            self.entries = [part_name(name) for name in self.entries]
            files = (info for info in archive.infolist() if not info.filename.endswith("/"))
            self.parts = {part_name(info.filename): archive.read(info) for info in files}
        self.by_lower_name = {name.lower(): name for name in self.parts}
        self.trees = {}

    def tree(self, part):
        if part not in self.trees:
            self.trees[part] = with_addresses(tree(self.parts[part]))
        return self.trees[part]

    def relations(self, part):
        """By id: the last word of the type, the target as a part name or an outside address, and whether it is outside."""
        name = relations_name(part)
        if name not in self.parts:
            return {}
        result = {}
        for node in self.tree(name).elements("Relationship"):
            target, external = node.get("Target"), node.get("TargetMode") == "External"
            if not external:
                target = urllib.parse.unquote(target.replace("\\", "/"))
                base = "" if target.startswith("/") else posixpath.dirname(part)
                target = posixpath.normpath(posixpath.join(base, target.lstrip("/")))
                target = self.by_lower_name.get(target.lower(), target)
            assert node.get("Id") not in result, f"{name} has the id {node.get('Id')} twice"
            result[node.get("Id")] = (node.get("Type").rpartition("/")[2], target, external)
        return result

    def content_types(self):
        """By part name; also the lists of both kinds as the table has them."""
        defaults, overrides = {}, {}
        for node in self.tree(TYPES).elements():
            if node.local == "Default":
                defaults[node.get("Extension").lower()] = node.get("ContentType")
            else:
                part = part_name(node.get("PartName"))
                part = self.by_lower_name.get(part.lower(), part)
                assert part not in overrides, f"the content type of {part} stands there twice"
                overrides[part] = node.get("ContentType")
        return defaults, overrides

    def reachable(self):
        seen, waiting = set(), [""]
        while waiting:
            part = waiting.pop()
            for _, target, external in self.relations(part).values():
                if not external and target not in seen:
                    seen.add(target)
                    waiting.append(target)
        return seen

    def plain_parts(self):
        return {name for name in self.parts if name != TYPES and not re.search(r"(^|/)_rels/[^/]*\.rels$", name)}

    def workbook(self):
        return next(target for kind, target, _ in self.relations("").values() if kind == "officeDocument")

    def sheet(self, name):
        """The part of the sheet with the name."""
        for node in self.tree(self.workbook()).first("sheets").elements("sheet"):
            if node.get("name") == name:
                return self.relations(self.workbook())[node.get("id")][1]
        raise AssertionError(f"there is no sheet {name}")

    def worksheets(self):
        return [target for kind, target, _ in self.relations(self.workbook()).values() if kind == "worksheet" and target in self.parts]

    def related(self, part, kind):
        return next((target for k, target, _ in self.relations(part).values() if k == kind), None)

    def texts(self):
        part = self.related(self.workbook(), "sharedStrings")
        if part is None:
            return []
        return ["".join(t.text() for r in (s, *s.elements("r")) for t in r.elements("t")) for s in self.tree(part).elements("si")]  # fmt: skip

    def cells(self, sheet_part):
        """By address: the node of each cell that holds or shows something."""
        rows = self.tree(sheet_part).first("sheetData").elements("row")
        return {cell.get("r"): cell for row in rows for cell in row.elements("c")}

    def value(self, cell, texts):
        kind = cell.get("t") or "n"
        if kind == "inlineStr":
            inside = cell.first("is")
            return "".join(t.text() for r in (inside, *inside.elements("r")) for t in r.elements("t"))
        value = cell.first("v")
        if value is None or (kind != "str" and not value.text()):
            return None
        if kind == "n":
            return float(value.text())
        return texts[int(value.text())] if kind == "s" else value.text()
