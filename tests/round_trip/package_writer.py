"""Builds packages part by part, for books that are written in the very words of a producer."""

import zipfile
import zlib

TRANSITIONAL = {
    "main": "http://schemas.openxmlformats.org/spreadsheetml/2006/main",
    "r": "http://schemas.openxmlformats.org/officeDocument/2006/relationships",
    "a": "http://schemas.openxmlformats.org/drawingml/2006/main",
    "xdr": "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing",
    "c": "http://schemas.openxmlformats.org/drawingml/2006/chart",
}
STRICT = {
    "main": "http://purl.oclc.org/ooxml/spreadsheetml/main",
    "r": "http://purl.oclc.org/ooxml/officeDocument/relationships",
    "a": "http://purl.oclc.org/ooxml/drawingml/main",
    "xdr": "http://purl.oclc.org/ooxml/drawingml/spreadsheetDrawing",
    "c": "http://purl.oclc.org/ooxml/drawingml/chart",
}
DECLARATION = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\r\n'
PACKAGE = "http://schemas.openxmlformats.org/package/2006/"
SHEET_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml."
DRAWING_TYPE = "application/vnd.openxmlformats-officedocument.drawing"


def png(width=4, height=4, color=(200, 60, 40)):
    """A small picture of one colour."""

    def chunk(kind, data):
        body = kind + data
        return len(data).to_bytes(4, "big") + body + zlib.crc32(body).to_bytes(4, "big")

    header = width.to_bytes(4, "big") + height.to_bytes(4, "big") + bytes((8, 2, 0, 0, 0))
    lines = (b"\0" + bytes(color) * width) * height
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b"")


class PackageWriter:
    def __init__(self, strict=False):
        self.spaces = STRICT if strict else TRANSITIONAL
        self.parts = {}
        self.defaults = {
            "rels": "application/vnd.openxmlformats-package.relationships+xml",
            "xml": "application/xml",
        }
        self.overrides = {}
        self.relations = {}

    def add(self, name, content, content_type=None):
        """A text of a part gets a declaration in front; bytes are taken as they are."""
        self.parts[name] = content if isinstance(content, bytes) else (DECLARATION + content).encode()
        if content_type:
            self.overrides[name] = content_type
        return name

    def relate(self, source, kind, target, identifier=None, external=False):
        """The kind is the last word of a type in the format's own family, or a whole address."""
        own = self.relations.setdefault(source, [])
        identifier = identifier or f"rId{len(own) + 1}"
        kind = kind if "://" in kind else f"{self.spaces['r']}/{kind}"
        own.append((identifier, kind, target, external))
        return identifier

    def relation_part(self, source):
        lines = "".join(
            f'<Relationship Id="{identifier}" Type="{kind}" Target="{target}"'
            + (' TargetMode="External"' if external else "")
            + "/>"
            for identifier, kind, target, external in self.relations[source]
        )
        return f'<Relationships xmlns="{PACKAGE}relationships">{lines}</Relationships>'

    def all_parts(self):
        defaults = "".join(f'<Default Extension="{e}" ContentType="{t}"/>' for e, t in self.defaults.items())
        overrides = "".join(f'<Override PartName="/{n}" ContentType="{t}"/>' for n, t in self.overrides.items())
        types = f'<Types xmlns="{PACKAGE}content-types">{defaults}{overrides}</Types>'
        yield "[Content_Types].xml", (DECLARATION + types).encode()
        for source in self.relations:
            folder, _, file = source.rpartition("/")
            name = f"{folder}/_rels/{file}.rels" if folder else f"_rels/{file}.rels"
            yield name, (DECLARATION + self.relation_part(source)).encode()
        yield from self.parts.items()

    def write(self, path, compression=zipfile.ZIP_DEFLATED):
        with zipfile.ZipFile(path, "w", compression) as archive:
            for name, content in self.all_parts():
                # The date that the big spreadsheet gives its entries.
                archive.writestr(zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0)), content, compression)
