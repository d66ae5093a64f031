"""Books in the words of the big spreadsheet with what people keep beside their rows, and a signed one."""

from by_hand_base import SHEET_TYPE, X14, Book, text_cell
from by_hand_drawings import anchor, drawing
from recipe import Recipe

OFFICE_2007 = "http://schemas.microsoft.com/office/2007/relationships/"
SIGNATURES = "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/"
X15 = "http://schemas.microsoft.com/office/spreadsheetml/2010/11/main"
STYLE = '<tableStyleInfo name="TableStyleMedium2" showFirstColumn="0" showLastColumn="0" showRowStripes="1" showColumnStripes="0"/>'
FAR = 40  # the first row of what stands beside, below the blocks and right of the charts


def inline(place, text):
    return f'<c r="{place}" t="inlineStr"><is><t>{text}</t></is></c>'


def price_rows(first, columns="VW"):
    """A table of three rows with headings and a total."""
    left, right = columns
    yield first, "", inline(f"{left}{first}", "Item") + inline(f"{right}{first}", "Price")
    for row, (item, price) in enumerate((("pen", 2), ("ink", 7), ("pad", 4)), first + 1):
        yield row, "", inline(f"{left}{row}", item) + f'<c r="{right}{row}"><v>{price}</v></c>'
    total = first + 4
    yield total, "", inline(f"{left}{total}", "Total") + f'<c r="{right}{total}"><f>SUBTOTAL(109,Prices[Price])</f><v>13</v></c>'


def price_table(book, ref, filtered):
    return book.add("xl/tables/table1.xml", book.space(f'<table xmlns="{{main}}" id="1" name="Prices" displayName="Prices" ref="{ref}" totalsRowCount="1"><autoFilter ref="{filtered}"/><tableColumns count="2"><tableColumn id="1" name="Item" totalsRowLabel="Total"/><tableColumn id="2" name="Price" totalsRowFunction="sum"/></tableColumns>{STYLE}</table>'), f"{SHEET_TYPE}table+xml")  # fmt: skip


def table_beside(path):
    """A table with a total and a slicer of its own beside the rows, and another that shares their rows."""
    book = Book()
    slicers = (
        '<extLst><ext uri="{{3A4CF648-6AED-40f4-86FF-DC5316D8AED3}}" xmlns:x14="{x14}"><x14:slicerList>'
        '<x14:slicer r:id="rId3"/></x14:slicerList></ext></extLst>'
    )
    rows = (*price_rows(FAR), *((row, "", cells) for row, _, cells in price_rows(FAR + 10, "YZ")))
    sheet = book.worksheet(rows=rows, after='<drawing r:id="rId2"/><tableParts count="1"><tablePart r:id="rId1"/></tableParts>' + book.space(slicers))  # fmt: skip
    price_table(book, f"V{FAR}:W{FAR + 4}", f"V{FAR}:W{FAR + 3}")
    book.relate(sheet, "table", "../tables/table1.xml")
    shape = (
        '<mc:AlternateContent xmlns:mc="http://schemas.openxmlformats.org/markup-compatibility/2006" xmlns:sle15="http://schemas.microsoft.com/office/drawing/2012/slicer"><mc:Choice Requires="sle15">'
        '<xdr:graphicFrame macro=""><xdr:nvGraphicFramePr><xdr:cNvPr id="2" name="Item"/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><xdr:xfrm><a:off x="0" y="0"/><a:ext cx="0" cy="0"/></xdr:xfrm>'
        '<a:graphic><a:graphicData uri="http://schemas.microsoft.com/office/drawing/2010/slicer"><sle:slicer xmlns:sle="http://schemas.microsoft.com/office/drawing/2010/slicer" name="Item"/></a:graphicData></a:graphic></xdr:graphicFrame>'
        '</mc:Choice><mc:Fallback><xdr:sp macro="" textlink=""><xdr:nvSpPr><xdr:cNvPr id="0" name=""/><xdr:cNvSpPr/></xdr:nvSpPr><xdr:spPr/></xdr:sp></mc:Fallback></mc:AlternateContent>'
    )
    drawing(book, 1, [anchor(shape, FAR, 24)])
    book.relate(sheet, "drawing", "../drawings/drawing1.xml")
    book.add("xl/slicers/slicer1.xml", f'<slicers xmlns="{X14}"><slicer name="Item" cache="Slicer_Item" caption="Item" rowHeight="241300"/></slicers>', "application/vnd.ms-excel.slicer+xml")  # fmt: skip
    book.relate(sheet, OFFICE_2007 + "slicer", "../slicers/slicer1.xml")
    work = "xl/workbook.xml"
    cache = book.add("xl/slicerCaches/slicerCache1.xml", f'<slicerCacheDefinition xmlns="{X14}" name="Slicer_Item" sourceName="Item"><extLst><x:ext xmlns:x="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:x15="{X15}" uri="{{2F2917AC-EB37-4324-AD4E-5DD8C200BD13}}"><x15:tableSlicerCache tableId="1" column="1"/></x:ext></extLst></slicerCacheDefinition>', "application/vnd.ms-excel.slicerCache+xml")  # fmt: skip
    in_book = book.relate(work, OFFICE_2007 + "slicerCache", cache.removeprefix("xl/"))
    book.workbook_end += f'<extLst><ext uri="{{46BE6895-7355-4a93-B00E-2C351335B9C9}}" xmlns:x15="{X15}"><x15:slicerCaches xmlns:x14="{X14}"><x14:slicerCache r:id="{in_book}"/></x15:slicerCaches></ext></extLst>'  # fmt: skip
    book.workbook_middle = '<definedNames><definedName name="Slicer_Item">#N/A</definedName></definedNames>'
    book.finish(path)


def pivot_beside(path):
    """A pivot table over the rows on their own sheet, with a slicer and a timeline."""
    book = Book()
    rows = ((FAR, "", inline(f"V{FAR}", "Sum of Width")), (FAR + 1, "", f'<c r="V{FAR + 1}"><v>333.5</v></c>'))
    lists = (
        '<extLst><ext uri="{{A8765BA9-456A-4dab-B4F3-ACF838C121DE}}" xmlns:x14="{x14}"><x14:slicerList><x14:slicer r:id="rId2"/></x14:slicerList></ext>'
        f'<ext uri="{{{{7E03D99C-DC04-49d9-9315-930204A7B6E9}}}}" xmlns:x15="{X15}"><x15:timelineRefs><x15:timelineRef r:id="rId3"/></x15:timelineRefs></ext></extLst>'
    )
    sheet = book.worksheet(rows=rows, after=book.space(lists))
    work = "xl/workbook.xml"
    fields = "".join(f'<cacheField name="{n}" numFmtId="0"><sharedItems containsSemiMixedTypes="0" containsString="0" containsNumber="1"/></cacheField>' for n in ("Length", "Width"))  # fmt: skip
    cache = book.add("xl/pivotCache/pivotCacheDefinition1.xml", book.space('<pivotCacheDefinition xmlns="{main}" xmlns:r="{r}" r:id="rId1" recordCount="1"><cacheSource type="worksheet"><worksheetSource ref="B4:C16" sheet="Data"/></cacheSource><cacheFields count="2">') + fields + "</cacheFields></pivotCacheDefinition>", f"{SHEET_TYPE}pivotCacheDefinition+xml")  # fmt: skip
    book.add("xl/pivotCache/pivotCacheRecords1.xml", book.space('<pivotCacheRecords xmlns="{main}" count="1"><r><n v="1"/><n v="10.5"/></r></pivotCacheRecords>'), f"{SHEET_TYPE}pivotCacheRecords+xml")  # fmt: skip
    book.relate(cache, "pivotCacheRecords", "pivotCacheRecords1.xml")
    in_book = book.relate(work, "pivotCacheDefinition", "pivotCache/pivotCacheDefinition1.xml")
    table = book.add("xl/pivotTables/pivotTable1.xml", book.space(f'<pivotTableDefinition xmlns="{{main}}" name="PivotTable1" cacheId="1" dataCaption="Values"><location ref="V{FAR}:V{FAR + 1}" firstHeaderRow="1" firstDataRow="1" firstDataCol="0"/><pivotFields count="2"><pivotField showAll="0"/><pivotField dataField="1" showAll="0"/></pivotFields><rowItems count="1"><i/></rowItems><colItems count="1"><i/></colItems><dataFields count="1"><dataField name="Sum of Width" fld="1" baseField="0" baseItem="0"/></dataFields></pivotTableDefinition>'), f"{SHEET_TYPE}pivotTable+xml")  # fmt: skip
    book.relate(sheet, "pivotTable", "../pivotTables/pivotTable1.xml")
    book.relate(table, "pivotCacheDefinition", "../pivotCache/pivotCacheDefinition1.xml")
    book.add("xl/slicers/slicer1.xml", f'<slicers xmlns="{X14}"><slicer name="Width" cache="Slicer_Width" caption="Width" rowHeight="241300"/></slicers>', "application/vnd.ms-excel.slicer+xml")  # fmt: skip
    book.relate(sheet, OFFICE_2007 + "slicer", "../slicers/slicer1.xml")
    slicer = book.add("xl/slicerCaches/slicerCache1.xml", f'<slicerCacheDefinition xmlns="{X14}" name="Slicer_Width" sourceName="Width"><pivotTables><pivotTable tabId="1" name="PivotTable1"/></pivotTables></slicerCacheDefinition>', "application/vnd.ms-excel.slicerCache+xml")  # fmt: skip
    in_slicers = book.relate(work, OFFICE_2007 + "slicerCache", slicer.removeprefix("xl/"))
    book.add("xl/timelines/timeline1.xml", f'<timelines xmlns="{X15}"><timeline name="Day" cache="Timeline_Day" caption="Day" level="2" selectionLevel="2"/></timelines>', "application/vnd.ms-excel.timeline+xml")  # fmt: skip
    book.relate(sheet, "http://schemas.microsoft.com/office/2011/relationships/timeline", "../timelines/timeline1.xml")
    line = book.add("xl/timelineCaches/timelineCache1.xml", f'<timelineCacheDefinition xmlns="{X15}" name="Timeline_Day" sourceName="Day"><pivotTables><pivotTable tabId="1" name="PivotTable1"/></pivotTables></timelineCacheDefinition>', "application/vnd.ms-excel.timelineCache+xml")  # fmt: skip
    in_lines = book.relate(work, "http://schemas.microsoft.com/office/2011/relationships/timelineCache", line.removeprefix("xl/"))  # fmt: skip
    book.workbook_end += (
        f'<pivotCaches><pivotCache cacheId="1" r:id="{in_book}"/></pivotCaches><extLst>'
        f'<ext uri="{{BBE1A952-AA13-448e-AADC-164F8A28A991}}" xmlns:x14="{X14}"><x14:slicerCaches><x14:slicerCache r:id="{in_slicers}"/></x14:slicerCaches></ext>'
        f'<ext uri="{{D0CA8CA8-9F24-4464-BF8E-62219DCF47F9}}" xmlns:x15="{X15}"><x15:timelineCacheRefs><x15:timelineCacheRef r:id="{in_lines}"/></x15:timelineCacheRefs></ext></extLst>'
    )
    book.finish(path)


def controls(path):
    """Check boxes, a list and a spinner of the newer kind, and one control of a program's own with its binary state."""
    book = Book()
    book.defaults["vml"] = "application/vnd.openxmlformats-officedocument.vmlDrawing"
    book.defaults["bin"] = "application/vnd.ms-office.activeX"
    kinds = ("CheckBox", "Drop", "Spin")
    listed = "".join(
        f'<control shapeId="{1025 + i}" r:id="rId{i + 2}" name="{kind} {i + 1}"/>' for i, kind in enumerate((*kinds, "Own"))
    )
    sheet = book.worksheet(after=f'<legacyDrawing r:id="rId1"/><controls>{listed}</controls>')
    book.add("xl/drawings/vmlDrawing1.vml", b'<xml xmlns:v="urn:schemas-microsoft-com:vml"><v:shape id="_x0000_s1025"/></xml>')
    book.relate(sheet, "vmlDrawing", "../drawings/vmlDrawing1.vml")
    for number, kind in enumerate(kinds, 1):
        book.add(f"xl/ctrlProps/ctrlProp{number}.xml", f'<formControlPr xmlns="{X14}" objectType="{kind}" fmlaLink="$V$40" lockText="1"/>', "application/vnd.ms-excel.controlproperties+xml")  # fmt: skip
        book.relate(sheet, "ctrlProp", f"../ctrlProps/ctrlProp{number}.xml")
    own = book.add("xl/activeX/activeX1.xml", book.space('<ax:ocx xmlns:ax="http://schemas.microsoft.com/office/2006/activeX" xmlns:r="{r}" ax:classid="{{D7053240-CE69-11CD-A777-00DD01143C57}}" ax:persistence="persistStreamInit" r:id="rId1"/>'), "application/vnd.ms-office.activeX+xml")  # fmt: skip
    book.relate(sheet, "control", "../activeX/activeX1.xml")
    book.add("xl/activeX/activeX1.bin", bytes(range(64)))
    book.relate(own, "http://schemas.microsoft.com/office/2006/relationships/activeXControlBinary", "activeX1.bin")
    book.finish(path)


def signed(path):
    """Signed by somebody, whose signature no change can keep valid; its parts stay for the spreadsheet to judge."""
    book = Book()
    book.defaults["sigs"] = "application/vnd.openxmlformats-package.digital-signature-origin"
    book.worksheet()
    book.add("_xmlsignatures/origin.sigs", b"")
    book.relate("", SIGNATURES + "origin", "_xmlsignatures/origin.sigs")
    book.add("_xmlsignatures/sig1.xml", '<Signature xmlns="http://www.w3.org/2000/09/xmldsig#" Id="idPackageSignature"><SignedInfo/><SignatureValue>AAAA</SignatureValue></Signature>', "application/vnd.openxmlformats-package.digital-signature-xmlsignature+xml")  # fmt: skip
    book.relate("_xmlsignatures/origin.sigs", SIGNATURES + "signature", "sig1.xml")
    book.finish(path)


def hidden_columns(path):
    """Columns that are hidden and formulas that are computed by hand."""
    book = Book()
    before = '<cols><col min="3" max="3" width="9.140625" hidden="1" customWidth="1"/><col min="13" max="14" width="4.7109375" hidden="1" customWidth="1"/></cols>'
    book.worksheet(before, rows=((FAR, "", text_cell(f"M{FAR}", 4)),))
    book.workbook_end = '<calcPr calcId="191029" calcMode="manual" calcOnSave="0"/>'
    book.finish(path)


BOOKS = (
    Recipe("table_beside.xlsx", table_beside),
    Recipe("pivot_beside.xlsx", pivot_beside),
    Recipe("controls.xlsx", controls),
    Recipe("signed.xlsx", signed),
    Recipe("hidden_columns.xlsx", hidden_columns),
)
