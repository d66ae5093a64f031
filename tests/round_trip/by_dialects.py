"""Books in the words of other writers: what the format allows, or what readers pass over, and the big spreadsheet never writes."""

import re

from by_hand_base import SHEET_TYPE, Book
from recipe import FIRST_ROW, HEADER, ROWS, Recipe

RELATIONS = "application/vnd.openxmlformats-package.relationships+xml"
SHEET = "xl/worksheets/sheet1.xml"


def rewritten(change):
    """A recipe's maker: the plain book with the change made to its writer before it is written."""

    def make(path):
        book = Book()
        book.worksheet()
        write = book.write

        def write_changed(to, **more):
            change(book)
            write(to, **more)

        book.write = write_changed
        book.finish(path)

    make.__doc__ = change.__doc__
    return make


def replace(book, part, pattern, by):
    text, count = re.subn(pattern, by, book.parts[part].decode())
    assert count, f"{part} has nothing of {pattern}"
    book.parts[part] = text.encode()


def wide_texts(book):
    """Parts in UTF-16."""
    for name, content in book.parts.items():
        if name.endswith(".xml"):
            book.parts[name] = content.decode().replace("UTF-8", "UTF-16").encode("utf-16")


def without_addresses(book):
    """Rows and cells that do not say where they are; blank ones stand in for those that are left out."""
    replace(book, SHEET, r'<row r="4"', '<row r="3"/><row r="4"')
    replace(book, SHEET, r'<(row|c) r="[A-Z]*\d+"', r"<\1")


def empty_attributes(book):
    """Formats and values that are there and say nothing."""
    replace(book, SHEET, r'<c r="([BCD]\d+)"><v>', r'<c r="\1" s=""><v>')
    replace(book, SHEET, "</sheetData>", '<row r="40" s=""><c r="M40" s="" t="s"><v/></c><c r="N40" t="b"><v></v></c></row></sheetData>')


def single_types(book):
    """A content type for each table of relations there is, and none for those to come."""
    del book.defaults["rels"]
    for source in book.relations:
        folder, _, file = source.rpartition("/")
        book.overrides[f"{folder}/_rels/{file}.rels" if folder else f"_rels/{file}.rels"] = RELATIONS


def other_quotes(book):
    """Single quotes, blanks around equals signs, comments and processing instructions between elements."""
    replace(book, SHEET, r'<c r="([A-Z]+\d+)"', r"<c  r = '\1' ")
    replace(book, SHEET, r"<row ", "<!-- a row --><?pi of somebody?><row ")
    replace(book, SHEET, r"</c>", "</c >")


def long_numbers(book):
    """Numbers with a plus sign, an exponent or zeros behind."""
    replace(book, SHEET, r"<v>1\.0</v>", "<v>+1.000000000000000000</v>")
    replace(book, SHEET, r"<v>50\.0</v>", "<v>5E+1</v>")


def true_and_false(book):
    """Truth values as words."""
    replace(book, SHEET, 'customHeight="1"', 'customHeight="true" hidden="false"')
    replace(book, SHEET, 'tabSelected="1"', 'tabSelected="true" showGridLines="false"')


def bare(path):
    """The least that is a book: no formats, no shared texts, no properties, no theme."""
    book = Book()
    rows = [(4, [f'<c r="{c}4" t="inlineStr"><is><t>{text}</t></is></c>' for c, text in zip("ABCD", HEADER)])]
    for number, (name, *values) in enumerate(ROWS, FIRST_ROW):
        cells = [f'<c r="A{number}" t="inlineStr"><is><t>{name}</t></is></c>']
        rows.append((number, cells + [f'<c r="{c}{number}"><v>{value!r}</v></c>' for c, value in zip("BCD", values)]))
    inside = "".join(f'<row r="{number}">{"".join(cells)}</row>' for number, cells in rows)
    book.plain_sheet("sheet1.xml", "Data", inside=f"<sheetData>{inside}</sheetData>")
    book.add("xl/workbook.xml", book.space('<workbook xmlns="{main}" xmlns:r="{r}"><sheets><sheet name="Data" sheetId="1" r:id="rId1"/></sheets></workbook>'), f"{SHEET_TYPE}sheet.main+xml")  # fmt: skip
    for name in ("docProps/app.xml",):
        del book.parts[name], book.overrides[name]
    book.relations[""] = book.relations[""][:1]
    book.write(path)


BOOKS = (
    Recipe("wide_texts.xlsx", rewritten(wide_texts)),
    Recipe("without_addresses.xlsx", rewritten(without_addresses)),
    Recipe("empty_attributes.xlsx", rewritten(empty_attributes)),
    Recipe("single_types.xlsx", rewritten(single_types)),
    Recipe("other_quotes.xlsx", rewritten(other_quotes)),
    Recipe("long_numbers.xlsx", rewritten(long_numbers)),
    Recipe("true_and_false.xlsx", rewritten(true_and_false)),
    Recipe("bare.xlsx", bare),
)
