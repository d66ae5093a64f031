#!/usr/bin/python3
"""Gives the program files that are no workbooks, damaged ones and traps.

Each has to end at once, with a clear line, mostly one of advice, and the status of trouble with a file, in little memory and
without a result; what is only odd has to be clustered all the same.
"""

import os
import re
import struct
import subprocess
import tempfile
import time
import unittest
import zipfile

import program
from by_hand_base import Book
from package_reader import PackageReader
from package_writer import png

FILE_TROUBLE = 3
MOST_MEMORY = 400 * 1024  # KiB; a trap would take thousands of times as much
IS_SANITIZED = os.environ.get("MERVANE_SANITIZED") == "1"
SHEET = "xl/worksheets/sheet1.xml"
COMPOUND = b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(504)
LAUGHS = b'<!DOCTYPE x [<!ENTITY a "haha"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;"><!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;">]>'
OUTSIDE = b'<!DOCTYPE x [<!ENTITY a SYSTEM "file:///etc/passwd">]>'


def good_parts():
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "book.xlsx")
        book = Book()
        book.worksheet()
        book.finish(path)
        return PackageReader(path).parts


GOOD = good_parts()


def packed(parts):
    with tempfile.TemporaryFile() as file:
        with zipfile.ZipFile(file, "w", zipfile.ZIP_DEFLATED) as archive:
            for name, content in parts.items():
                archive.writestr(name, content)
        file.seek(0)
        return file.read()


def with_part(name, change):
    """The good book with one part changed: other bytes, or what a function makes of the old ones."""
    content = change(GOOD[name]) if callable(change) else change
    assert content != GOOD.get(name), f"{name} is what it was"
    return packed({**GOOD, name: content})


def replaced(name, old, new):
    assert old in GOOD[name], f"{old} is not in {name}"
    return with_part(name, GOOD[name].replace(old, new, 1))


def with_trick(name, trick, reference=b""):
    return with_part(name, lambda old: old.replace(b"?>", b"?>" + trick, 1).replace(b"<row ", reference + b"<row ", 1))


def without(name):
    return packed({part: content for part, content in GOOD.items() if part != name})


def wide(name):
    return name.encode("utf-16-le")


def bomb(name=SHEET, size=150 << 20):
    """A part that is a thousand times as large as it is packed."""
    begin, end = GOOD[name].split(b"<sheetData>")
    return packed({**GOOD, name: begin + b"<sheetData>" + b" " * size + end})


def lying_size(data, name, size):
    """The archive says another size of a part than unpacking gives."""
    central = data.rindex(name.encode()) - 46
    assert data[central : central + 4] == b"PK\x01\x02"
    return data[: central + 24] + struct.pack("<I", size) + data[central + 28 :]


def flipped(data, name):
    """One bit of a part's packed bytes is another."""
    at = data.index(name.encode()) + len(name) + 40
    return data[:at] + bytes((data[at] ^ 0x10,)) + data[at + 1 :]


def repeated(data, times):
    """A table of contents whose many entries all lead to the same bytes."""
    end = data.rindex(b"PK\x05\x06")
    size, start = struct.unpack("<II", data[end + 12 : end + 20])
    table = data[start : start + size]
    last = table[table.rindex(b"PK\x01\x02") :]
    name_length = struct.unpack("<H", last[28:30])[0]
    names = (f"{number:0{name_length}}".encode() for number in range(times))
    more = b"".join(last[:46] + name + last[46 + name_length :] for name in names)
    count = struct.unpack("<H", data[end + 10 : end + 12])[0] + times
    return data[:start] + table + more + b"PK\x05\x06" + bytes(4) + struct.pack("<HHIIH", count, count, size + len(more), start, 0)  # fmt: skip


def sheet_with(old, new):
    return replaced(SHEET, old, new)


CELL = b'<c r="B5"><v>1.0</v></c>'
ROW = b'<row r="5" '
REFUSED = {
    # name: the bytes, and words of the answer
    "empty": (b"", "is empty"),
    "text": (b"a,b\n1,2\n", "is no workbook"),
    "page": (b"<!DOCTYPE html><html><table></table></html>", "XML or HTML"),
    "picture": (png(), "is no workbook"),
    "encrypted": (COMPOUND + wide("EncryptedPackage") + bytes(512), "encrypted"),
    "old format": (COMPOUND + wide("Workbook") + bytes(512), ".xls"),
    "open document": (packed({"mimetype": "application/vnd.oasis.opendocument.spreadsheet", "content.xml": "<x/>"}), ".ods"),
    "binary workbook": (packed({"[Content_Types].xml": "<Types/>", "xl/workbook.bin": "x"}), ".xlsb"),
    "document of words": (packed({"[Content_Types].xml": "<Types/>", "word/document.xml": "<x/>"}), "not a workbook"),
    "cut in half": (packed(GOOD)[: len(packed(GOOD)) // 2], "damaged"),
    "cut at the end": (packed(GOOD)[:-30], "damaged"),
    "only a beginning": (b"PK\x03\x04" + bytes(40), "damaged"),
    "flipped bit": (flipped(packed(GOOD), SHEET), "damaged"),
    "too small a size": (lying_size(packed(GOOD), SHEET, 10), "damaged"),
    "too large a size": (lying_size(packed(GOOD), SHEET, 0x7FFFFFF0), ""),
    "bomb": (bomb(), "times its size"),
    "many parts in the same bytes": (repeated(packed({**GOOD, "x/long enough a name.bin": bytes(300_000)}), 60000), "unpack to more than"),
    "laughs in the sheet": (with_trick(SHEET, LAUGHS), "document type"),
    "laughs in the workbook": (with_trick("xl/workbook.xml", LAUGHS), "document type"),
    "laughs in the texts": (with_trick("xl/sharedStrings.xml", LAUGHS), "document type"),
    "laughs in the formats": (with_trick("xl/styles.xml", LAUGHS), "document type"),
    "laughs in the types": (with_trick("[Content_Types].xml", LAUGHS), "document type"),
    "laughs in the relations": (with_trick("xl/_rels/workbook.xml.rels", LAUGHS), "document type"),
    "entity from outside": (with_trick(SHEET, OUTSIDE), "document type"),
    "entity that is not declared": (sheet_with(b"<v>1.0</v>", b"<v>&a;</v>"), "near B5"),
    "row beyond the sheet": (sheet_with(ROW, b'<row r="1048577" '), "1048577"),
    "row without end": (sheet_with(ROW, b'<row r="99999999999999999999" '), "99999999999999999999"),
    "negative row": (sheet_with(ROW, b'<row r="-5" '), "-5"),
    "column beyond the sheet": (sheet_with(b'r="B5"', b'r="XFE5"'), "XFE5"),
    "column without end": (sheet_with(b'r="B5"', b'r="ZZZZZZZZZZZZ5"'), "ZZZZ"),
    "cell twice": (sheet_with(CELL, CELL + CELL), "twice"),
    "cell in another row": (sheet_with(b'r="B5"', b'r="B6"'), "B6"),
    "no number": (sheet_with(b"<v>1.0</v>", b"<v>one</v>"), "near B5"),
    "too large a number": (sheet_with(b"<v>1.0</v>", b"<v>1e999</v>"), "near B5"),
    "nan": (sheet_with(b"<v>1.0</v>", b"<v>NaN</v>"), "near B5"),
    "text that does not exist": (sheet_with(CELL, b'<c r="B5" t="s"><v>4294967295</v></c>'), "the text does not exist"),
    "format that does not exist": (sheet_with(b'r="B5"', b'r="B5" s="4294967296"'), "4294967296"),
    "deep nesting": (sheet_with(b"<sheetData>", b"<a>" * 300000 + b"<sheetData>"), "nested too deeply"),
    "deep nesting of relations": (with_part("xl/_rels/workbook.xml.rels", b"<a>" * 300000), ""),
    "deep nesting of formats": (replaced("xl/styles.xml", b"<fonts", b"<a>" * 300000 + b"<fonts"), ""),
    "unclosed element": (sheet_with(b"</sheetData>", b""), "does not match"),
    "zero byte": (sheet_with(b"<v>1.0</v>", b"<v>\0</v>"), ""),
    "no workbook part": (without("xl/workbook.xml"), "lacks its part"),
    "no relations": (without("_rels/.rels"), ""),
    "no sheet part": (without(SHEET), "no worksheet"),
    "part outside of the package": (replaced("xl/_rels/workbook.xml.rels", b"worksheets/sheet1.xml", b"../../../../etc/passwd"), ""),
    "formats that are none": (with_part("xl/styles.xml", b"<html/>"), "no cell formats"),
    "table of texts that is none": (with_part("xl/sharedStrings.xml", b"not XML"), "sharedStrings"),
}  # fmt: skip

ODD = {
    "absurd dimension": sheet_with(b'<dimension ref="A1:D16"/>', b'<dimension ref="A1:XFD1048576"/>'),
    "dimension that is none": sheet_with(b'<dimension ref="A1:D16"/>', b'<dimension ref="##"/>'),
    "absurd columns": sheet_with(b"<sheetData>", b'<cols><col min="1" max="16384" width="255" customWidth="1"/></cols><sheetData>'),
    "absurd heights": sheet_with(b'<sheetFormatPr defaultRowHeight="15"', b'<sheetFormatPr defaultRowHeight="1e300"'),
    "absurd counts": replaced("xl/sharedStrings.xml", b"count=", b'x="4294967295" count='),
    "cell in the last corner": sheet_with(b"</sheetData>", b'<row r="1048576"><c r="XFD1048576"><v>1</v></c></row></sheetData>'),
    "formula shared by all cells": sheet_with(b"</sheetData>", b'<row r="99"><c r="A99"><f t="shared" ref="A1:XFD1048576" si="0">A1</f><v>1</v></c></row></sheetData>'),
    "merged cells without end": sheet_with(b"</sheetData>", b'</sheetData><mergeCells count="1"><mergeCell ref="M100:XFD1048576"/></mergeCells>'),
}  # fmt: skip


class Hostile(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.book, self.out = (os.path.join(folder.name, name) for name in ("book.xlsx", "out.xlsx"))

    def run_on(self, data, *arguments):
        with open(self.book, "wb") as file:
            file.write(data)
        begin = time.monotonic()
        process = subprocess.Popen([program.PROGRAM, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        _, errors = process.communicate(timeout=60)
        self.seconds = time.monotonic() - begin
        return process.returncode, errors.decode()

    def cluster(self, data):
        return self.run_on(data, "cluster", self.book, "-i", "Data!B5:D16", "--outputs", "Data!G5", "-k", "3", "-q", "-o", self.out)  # fmt: skip

    def expect_refusal(self, data, words):
        for status, errors in (self.cluster(data), self.run_on(data, "sheets", self.book)):
            self.assertEqual(status, FILE_TROUBLE, errors)
            self.assertRegex(errors, r"\Amervane: error: [^\n]{20,400}\n(         [^\n]{10,200}\n)?\Z")
            self.assertIn(words, errors)
            self.assertIn("book.xlsx", errors)
            self.assertNotRegex(errors, re.escape("passwd:") + "|root:")
            self.assertLess(self.seconds, 30)
        self.assertFalse(os.path.exists(self.out), "there is a result")

    def test_memory_stays_small(self):
        import resource

        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
        for name in ("bomb", "too large a size", "many parts in the same bytes", "deep nesting"):
            self.cluster(REFUSED[name][0])
        for data in ODD.values():
            self.cluster(data)
        peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
        self.assertTrue(IS_SANITIZED or peak < max(MOST_MEMORY, before + 1), f"{peak} KiB")


def main():
    for name, (data, words) in REFUSED.items():
        test = f"test_{name.replace(' ', '_')}_is_refused"
        setattr(Hostile, test, lambda self, data=data, words=words: self.expect_refusal(data, words))
    for name, data in ODD.items():

        def is_clustered(self, data=data):
            status, errors = self.cluster(data)
            self.assertEqual(status, 0, errors)
            self.assertTrue(os.path.exists(self.out))

        setattr(Hostile, f"test_{name.replace(' ', '_')}_is_clustered", is_clustered)
    unittest.main()


if __name__ == "__main__":
    main()
