"""The frame of the books that are written in the words of the big spreadsheet, without any library between."""

from package_writer import DRAWING_TYPE, SHEET_TYPE, PackageWriter
from recipe import FIRST_ROW, HEADER, ROWS

MC = "http://schemas.openxmlformats.org/markup-compatibility/2006"
X14 = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/main"
X14AC = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac"
XM = "http://schemas.microsoft.com/office/excel/2006/main"
XR = "http://schemas.microsoft.com/office/spreadsheetml/2014/revision"
A14 = "http://schemas.microsoft.com/office/drawing/2010/main"

STYLES = """<styleSheet xmlns="{main}" xmlns:mc="{mc}" mc:Ignorable="x14ac x16r2" xmlns:x14ac="{x14ac}"
 xmlns:x16r2="http://schemas.microsoft.com/office/spreadsheetml/2015/02/main">
<numFmts count="2"><numFmt numFmtId="164" formatCode="0.000&quot; mm&quot;"/>
<numFmt numFmtId="165" formatCode="[$-409]d\\-mmm\\-yyyy;@"/></numFmts>
<fonts count="4" x14ac:knownFonts="1">
<font><sz val="11"/><color theme="1"/><name val="Calibri"/><family val="2"/><scheme val="minor"/></font>
<font><b/><sz val="14"/><color rgb="FF1F4E78"/><name val="Cambria"/><family val="1"/></font>
<font><i/><u/><sz val="11"/><color theme="10"/><name val="Calibri"/><family val="2"/><scheme val="minor"/></font>
<font><strike/><sz val="9"/><color indexed="10"/><name val="Arial"/></font></fonts>
<fills count="4"><fill><patternFill patternType="none"/></fill><fill><patternFill patternType="gray125"/></fill>
<fill><patternFill patternType="solid"><fgColor theme="4" tint="0.59999389629810485"/><bgColor indexed="64"/></patternFill></fill>
<fill><gradientFill degree="90"><stop position="0"><color theme="0"/></stop><stop position="1"><color theme="4"/></stop></gradientFill></fill></fills>
<borders count="2"><border><left/><right/><top/><bottom/><diagonal/></border>
<border diagonalUp="1"><left/><right/><top/><bottom style="double"><color auto="1"/></bottom><diagonal style="thin"><color rgb="FFFF0000"/></diagonal></border></borders>
<cellStyleXfs count="2"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/>
<xf numFmtId="0" fontId="2" fillId="0" borderId="0" applyNumberFormat="0" applyFill="0" applyBorder="0" applyAlignment="0" applyProtection="0"/></cellStyleXfs>
<cellXfs count="8"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>
<xf numFmtId="0" fontId="1" fillId="2" borderId="1" xfId="0" applyFont="1" applyFill="1" applyBorder="1" applyAlignment="1"><alignment horizontal="center" vertical="top" wrapText="1"/></xf>
<xf numFmtId="164" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/>
<xf numFmtId="165" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/>
<xf numFmtId="0" fontId="2" fillId="0" borderId="0" xfId="1"/>
<xf numFmtId="0" fontId="3" fillId="3" borderId="0" xfId="0" quotePrefix="1" applyFont="1" applyFill="1"/>
<xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0" applyProtection="1"><protection locked="0" hidden="1"/></xf>
<xf numFmtId="9" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/></cellXfs>
<cellStyles count="2"><cellStyle name="Hyperlink" xfId="1" builtinId="8"/><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles>
<dxfs count="2"><dxf><font><color rgb="FF9C0006"/></font><fill><patternFill><bgColor rgb="FFFFC7CE"/></patternFill></fill></dxf>
<dxf><font><b/><i/></font></dxf></dxfs>
<tableStyles count="1" defaultTableStyle="TableStyleMedium2" defaultPivotStyle="PivotStyleLight16">
<tableStyle name="Own" pivot="0" count="1"><tableStyleElement type="headerRow" dxfId="1"/></tableStyle></tableStyles>
<colors><mruColors><color rgb="FF123456"/></mruColors></colors>
<extLst><ext uri="{{EB79DEF2-80B8-43e5-95BD-54CBDDF9020C}}" xmlns:x14="{x14}"><x14:slicerStyles defaultSlicerStyle="SlicerStyleLight1"/></ext></extLst></styleSheet>"""

THEME_COLORS = "".join(
    f'<a:{name}><a:srgbClr val="{value}"/></a:{name}>'
    for name, value in (
        ("dk1", "000000"), ("lt1", "FFFFFF"), ("dk2", "44546A"), ("lt2", "E7E6E6"), ("accent1", "4472C4"),
        ("accent2", "ED7D31"), ("accent3", "A5A5A5"), ("accent4", "FFC000"), ("accent5", "5B9BD5"),
        ("accent6", "70AD47"), ("hlink", "0563C1"), ("folHlink", "954F72"),
    )
)  # fmt: skip
THEME = (
    '<a:theme xmlns:a="{a}" name="Office"><a:themeElements><a:clrScheme name="Office">'
    + THEME_COLORS
    + '</a:clrScheme><a:fontScheme name="Office"><a:majorFont><a:latin typeface="Calibri Light"/><a:ea typeface=""/>'
    '<a:cs typeface=""/></a:majorFont><a:minorFont><a:latin typeface="Calibri"/><a:ea typeface=""/><a:cs typeface=""/>'
    '</a:minorFont></a:fontScheme><a:fmtScheme name="Office"><a:fillStyleLst>'
    + '<a:solidFill><a:schemeClr val="phClr"/></a:solidFill>' * 3
    + "</a:fillStyleLst><a:lnStyleLst>"
    + '<a:ln w="6350"><a:solidFill><a:schemeClr val="phClr"/></a:solidFill></a:ln>' * 3
    + "</a:lnStyleLst><a:effectStyleLst>"
    + "<a:effectStyle><a:effectLst/></a:effectStyle>" * 3
    + "</a:effectStyleLst><a:bgFillStyleLst>"
    + '<a:solidFill><a:schemeClr val="phClr"/></a:solidFill>' * 3
    + "</a:bgFillStyleLst></a:fmtScheme></a:themeElements><a:objectDefaults/><a:extraClrSchemeLst/></a:theme>"
)

# The first texts of the table of shared texts; the rest are the headings and the names.
RICH_TEXTS = (
    '<si><r><rPr><b/><sz val="14"/><color rgb="FF1F4E78"/><rFont val="Cambria"/><family val="1"/></rPr><t xml:space="preserve">Three </t></r>'
    "<r><rPr><i/><vertAlign val=\"superscript\"/></rPr><t>measures</t></r></si>",
    "<si><t>\u6771\u4eac</t><rPh sb=\"0\" eb=\"2\"><t>\u30c8\u30a6\u30ad\u30e7\u30a6</t></rPh><phoneticPr fontId=\"1\"/></si>",
    '<si><t xml:space="preserve">  blanks around  </t></si>',
    "<si><t>tab_x0009_and_x005F_mark &amp; &lt;more&gt;\nsecond line</t></si>",
)
TEXTS = RICH_TEXTS + tuple(f"<si><t>{text}</t></si>" for text in (*HEADER, *(row[0] for row in ROWS)))


def text_cell(place, number, style=0):
    return f'<c r="{place}"' + (f' s="{style}"' if style else "") + f' t="s"><v>{number}</v></c>'


def table_rows(number_style=0):
    """The common table as rows 4 to 16, and a title with odd texts above it."""
    yield 1, ' spans="1:4" ht="30" customHeight="1" x14ac:dyDescent="0.25"', (
        text_cell("A1", 0, 1) + '<c r="B1" s="1"/><c r="C1" s="1"/><c r="D1" s="1"/>'
    )
    yield 2, ' spans="1:4"', text_cell("A2", 1) + text_cell("B2", 2) + text_cell("C2", 3, 5)
    first = len(RICH_TEXTS)
    yield 4, ' spans="1:4"', "".join(text_cell(f"{c}4", first + i) for i, c in enumerate("ABCD"))
    for row, (_, *values) in enumerate(ROWS, FIRST_ROW):
        style = f' s="{number_style}"' if number_style else ""
        cells = "".join(f'<c r="{c}{row}"{style}><v>{value!r}</v></c>' for c, value in zip("BCD", values))
        yield row, ' spans="1:4"', text_cell(f"A{row}", first + 4 + row - FIRST_ROW) + cells


class Book(PackageWriter):
    """A book with the sheet "Data", to which a recipe adds what it is about."""

    def __init__(self, strict=False, macros=False):
        super().__init__(strict)
        self.macros = macros
        self.sheets = []  # name, attributes, relation
        self.workbook_front = '<fileVersion appName="xl" lastEdited="7" lowestEdited="7" rupBuild="22228"/>'
        self.workbook_properties = '<workbookPr codeName="ThisWorkbook" defaultThemeVersion="166925"/>'
        self.workbook_middle = ""  # between bookViews and sheets there is nothing; this stands behind sheets
        self.workbook_end = '<calcPr calcId="191029"/>'
        self.views = '<workbookView xWindow="0" yWindow="0" windowWidth="22260" windowHeight="12645" activeTab="0"/>'
        self.extra_texts = ()
        self.relate("", "officeDocument", "xl/workbook.xml")
        self.add("docProps/app.xml", '<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/extended-properties"><Application>Microsoft Excel</Application><DocSecurity>0</DocSecurity></Properties>', "application/vnd.openxmlformats-officedocument.extended-properties+xml")  # fmt: skip
        self.relate("", "extended-properties", "docProps/app.xml")

    def space(self, text):
        return text.format(**self.spaces, mc=MC, x14=X14, x14ac=X14AC, xm=XM, xr=XR, a14=A14)

    def sheet_part(self, file, name, body, kind="worksheet", attributes=""):
        folder = {"worksheet": "worksheets", "chartsheet": "chartsheets", "dialogsheet": "dialogsheets"}[kind]
        part = self.add(f"xl/{folder}/{file}", body, f"{SHEET_TYPE}{kind}+xml")
        self.sheets.append((name, attributes, self.relate("xl/workbook.xml", kind, f"{folder}/{file}")))
        return part

    def worksheet(self, before="", rows=(), after="", sheet_pr='<sheetPr codeName="Sheet1"/>', number_style=0):
        """The sheet "Data": what stands before the cells, more rows, and what stands behind the cells."""
        body = (
            self.space('<worksheet xmlns="{main}" xmlns:r="{r}" xmlns:mc="{mc}" mc:Ignorable="x14ac xr" xmlns:x14ac="{x14ac}"'
                       ' xmlns:xr="{xr}" xr:uid="{{7E4D1B5C-0A6F-4B7F-9C7B-0F4C5C5F0E01}}">')
            + sheet_pr + '<dimension ref="A1:D16"/>'
        )  # fmt: skip
        if "<sheetViews" not in before:
            body += '<sheetViews><sheetView tabSelected="1" workbookViewId="0"/></sheetViews>'
        if "<sheetFormatPr" not in before:
            before += '<sheetFormatPr defaultRowHeight="15" x14ac:dyDescent="0.25"/>'
        # The format of all columns and the widths of some come behind the view.
        body += before + "<sheetData>"
        for number, attributes, cells in (*table_rows(number_style), *rows):
            body += f'<row r="{number}"{attributes}>{cells}</row>'
        body += "</sheetData>" + after + "</worksheet>"
        return self.sheet_part("sheet1.xml", "Data", body)

    def plain_sheet(self, file, name, attributes="", inside="<sheetData/>"):
        return self.sheet_part(file, name, self.space('<worksheet xmlns="{main}" xmlns:r="{r}">') + inside + "</worksheet>", attributes=attributes)  # fmt: skip

    def finish(self, path, **more):
        work = "xl/workbook.xml"
        self.add("xl/styles.xml", self.space(STYLES), f"{SHEET_TYPE}styles+xml")
        self.relate(work, "styles", "styles.xml")
        self.add("xl/theme/theme1.xml", self.space(THEME), "application/vnd.openxmlformats-officedocument.theme+xml")
        self.relate(work, "theme", "theme/theme1.xml")
        texts = TEXTS + tuple(self.extra_texts)
        self.add("xl/sharedStrings.xml", self.space('<sst xmlns="{main}" ') + f'count="{len(texts) + 2}" uniqueCount="{len(texts)}">' + "".join(texts) + "</sst>", f"{SHEET_TYPE}sharedStrings+xml")  # fmt: skip
        self.relate(work, "sharedStrings", "sharedStrings.xml")
        sheets = "".join(f'<sheet name="{name}" sheetId="{number}"{attributes} r:id="{relation}"/>' for number, (name, attributes, relation) in enumerate(self.sheets, 1))  # fmt: skip
        body = (
            self.space('<workbook xmlns="{main}" xmlns:r="{r}" xmlns:mc="{mc}" mc:Ignorable="x15 xr" xmlns:xr="{xr}"'
                       ' xmlns:x15="http://schemas.microsoft.com/office/spreadsheetml/2010/11/main"')
            + (' conformance="strict"' if "purl" in self.spaces["main"] else "") + ">"
            + self.workbook_front + self.workbook_properties
            + f"<bookViews>{self.views}</bookViews><sheets>{sheets}</sheets>"
            + self.workbook_middle + self.workbook_end + "</workbook>"
        )  # fmt: skip
        kind = "application/vnd.ms-excel.sheet.macroEnabled.main+xml" if self.macros else f"{SHEET_TYPE}sheet.main+xml"
        self.add(work, body, kind)
        self.write(path, **more)


__all__ = ["Book", "DRAWING_TYPE", "SHEET_TYPE", "text_cell", "MC", "X14", "X14AC", "XM", "XR", "A14"]
