"""Books in the words of the big spreadsheet, each about a few features that a run has to leave alone."""

import re
import zipfile

from by_hand_base import A14, DRAWING_TYPE, MC, SHEET_TYPE, X14, XM, Book, text_cell
from by_hand_drawings import BOOKS as DRAWING_BOOKS
from by_hand_drawings import VML_BUTTON, VML_NOTE, vml
from recipe import LAST_ROW, Recipe

OFFICE_2006 = "http://schemas.microsoft.com/office/2006/relationships/"
OFFICE_2017 = "http://schemas.microsoft.com/office/2017/10/relationships/"
NUMBERS = "B5:D16"


def macros(path):
    """Macros, their code names, a button of the old kind with its control properties, and a ribbon of the book's own."""
    book = Book(macros=True)
    book.defaults["bin"] = "application/vnd.ms-office.vbaProject"
    book.defaults["vml"] = "application/vnd.openxmlformats-officedocument.vmlDrawing"
    # Nothing looks inside, so bytes of every value do, the ones that begin a compound file first.
    book.add("xl/vbaProject.bin", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(range(256)) * 9)
    book.relate("xl/workbook.xml", OFFICE_2006 + "vbaProject", "vbaProject.bin")
    book.add("xl/vbaProjectSignature.bin", bytes(range(255, -1, -1)), "application/vnd.ms-office.vbaProjectSignature")
    book.relate("xl/vbaProject.bin", OFFICE_2006 + "vbaProjectSignature", "vbaProjectSignature.bin")
    book.add("customUI/customUI.xml", '<customUI xmlns="http://schemas.microsoft.com/office/2006/01/customui"><ribbon/></customUI>')  # fmt: skip
    book.relate("", OFFICE_2006 + "ui/extensibility", "customUI/customUI.xml")
    control = (
        f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice Requires="x14"><controls>'
        f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice Requires="x14"><control shapeId="1025" r:id="rId2" name="Button 1">'
        '<controlPr defaultSize="0" print="0" autoFill="0" autoPict="0" macro="[0]!Run"><anchor moveWithCells="1" sizeWithCells="1">'
        '<from><xdr:col xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing">20</xdr:col></from>'
        "</anchor></controlPr></control></mc:Choice></mc:AlternateContent></controls></mc:Choice></mc:AlternateContent>"
    )
    sheet = book.worksheet(after='<pageMargins left="0.7" right="0.7" top="0.75" bottom="0.75" header="0.3" footer="0.3"/><legacyDrawing r:id="rId1"/>' + control.replace('Requires="x14"', f'Requires="x14" xmlns:x14="{X14}"'))  # fmt: skip
    book.add("xl/drawings/vmlDrawing1.vml", vml(VML_BUTTON).encode())
    book.relate(sheet, "vmlDrawing", "../drawings/vmlDrawing1.vml")
    book.add("xl/ctrlProps/ctrlProp1.xml", f'<formControlPr xmlns="{X14}" objectType="Button" lockText="1"/>', "application/vnd.ms-excel.controlproperties+xml")  # fmt: skip
    book.relate(sheet, "ctrlProp", "../ctrlProps/ctrlProp1.xml")
    book.finish(path)


SPARKLINES = (
    '<ext uri="{{05C60535-1F16-4fd2-B633-F4F36F0B64E0}}" xmlns:x14="{x14}"><x14:sparklineGroups xmlns:xm="{xm}">'
    '<x14:sparklineGroup displayEmptyCellsAs="gap" markers="1"><x14:colorSeries theme="4" tint="-0.5"/><x14:sparklines>'
    "<x14:sparkline><xm:f>Data!B5:D5</xm:f><xm:sqref>N5</xm:sqref></x14:sparkline></x14:sparklines></x14:sparklineGroup></x14:sparklineGroups></ext>"
)
RULES = (
    '<ext uri="{{78C0D931-6437-407d-A8EE-F0AAD7539E65}}" xmlns:x14="{x14}"><x14:conditionalFormattings>'
    '<x14:conditionalFormatting xmlns:xm="{xm}"><x14:cfRule type="dataBar" id="{{2C5A6C51-6C1C-4B4E-8F06-0F8A1C2D3E4F}}">'
    '<x14:dataBar minLength="0" maxLength="100" border="1" negativeBarBorderColorSameAsPositive="0"><x14:cfvo type="autoMin"/><x14:cfvo type="autoMax"/>'
    '<x14:borderColor rgb="FF638EC6"/><x14:negativeFillColor rgb="FFFF0000"/><x14:axisColor rgb="FF000000"/></x14:dataBar></x14:cfRule>'
    "<xm:sqref>C5:C16</xm:sqref></x14:conditionalFormatting></x14:conditionalFormattings></ext>"
)
CHOICES = (
    '<ext uri="{{CCE6A557-97BC-4b89-ADB6-D9C93CAAB3DF}}" xmlns:x14="{x14}"><x14:dataValidations count="1" xmlns:xm="{xm}">'
    '<x14:dataValidation type="list" allowBlank="1" showInputMessage="1"><x14:formula1><xm:f>Lists!$A$1:$A$3</xm:f></x14:formula1>'
    "<xm:sqref>P5</xm:sqref></x14:dataValidation></x14:dataValidations></ext>"
)


def rules(path):
    """Conditional formats old and new, sparklines, choices from another sheet, links, merged cells, printer settings."""
    book = Book()
    book.defaults["bin"] = "application/vnd.openxmlformats-officedocument.spreadsheetml.printerSettings"
    after = (
        '<mergeCells count="2"><mergeCell ref="A1:D1"/><mergeCell ref="M40:O42"/></mergeCells>'
        '<phoneticPr fontId="1" type="noConversion"/>'
        f'<conditionalFormatting sqref="{NUMBERS}"><cfRule type="cellIs" dxfId="0" priority="2" operator="greaterThan"><formula>200</formula></cfRule></conditionalFormatting>'
        '<conditionalFormatting sqref="C5:C16"><cfRule type="dataBar" priority="1"><dataBar><cfvo type="min"/><cfvo type="max"/><color rgb="FF638EC6"/></dataBar>'
        f'<extLst><ext xmlns:x14="{X14}" uri="{{B025F937-C7B1-47D3-B67F-A62EFF666E3E}}"><x14:id>{{2C5A6C51-6C1C-4B4E-8F06-0F8A1C2D3E4F}}</x14:id></ext></extLst></cfRule></conditionalFormatting>'
        '<dataValidations count="1"><dataValidation type="decimal" errorStyle="warning" allowBlank="1" showErrorMessage="1" errorTitle="Size" error="0 to 400" sqref="B5:D16 M44"><formula1>0</formula1><formula2>400</formula2></dataValidation></dataValidations>'
        '<hyperlinks><hyperlink ref="M45" r:id="rId1" tooltip="a &quot;tip&quot;"/><hyperlink ref="M46" location="Lists!A1" display="inside"/></hyperlinks>'
        '<printOptions horizontalCentered="1" gridLines="1"/><pageMargins left="0.7" right="0.7" top="0.75" bottom="0.75" header="0.3" footer="0.3"/>'
        '<pageSetup paperSize="9" orientation="landscape" r:id="rId2"/><headerFooter differentFirst="1"><oddHeader>&amp;L&amp;F&amp;R&amp;D</oddHeader><firstFooter>&amp;P</firstFooter></headerFooter>'
        '<customProperties><customPr name="tag" r:id="rId3"/></customProperties>'
        '<cellWatches><cellWatch r="B5"/></cellWatches><ignoredErrors><ignoredError sqref="P44" numberStoredAsText="1"/></ignoredErrors>'
        + book.space(f"<extLst>{RULES}{CHOICES}{SPARKLINES}</extLst>")
    )
    rows = (
        (44, "", '<c r="M44" s="7"><v>0.5</v></c><c r="P44" s="5" t="inlineStr"><is><r><rPr><b/></rPr><t>rich</t></r><r><t xml:space="preserve"> inline</t></r></is></c>'),
        (45, "", text_cell("M45", 1, 4)),
        (46, "", text_cell("M46", 2, 4)),
    )  # fmt: skip
    sheet = book.worksheet(rows=rows, after=after)
    book.relate(sheet, "hyperlink", "https://example.org/a?b=c&amp;d=%20e", external=True)
    book.add("xl/printerSettings/printerSettings1.bin", bytes(range(256)))
    book.relate(sheet, "printerSettings", "../printerSettings/printerSettings1.bin")
    book.add("xl/customProperty1.bin", "mörtel".encode("utf-16-le"), f"{SHEET_TYPE}customProperty")
    book.relate(sheet, "customProperty", "../customProperty1.bin")
    book.plain_sheet("sheet2.xml", "Lists", inside='<sheetData><row r="1"><c r="A1" t="s"><v>4</v></c></row></sheetData>')
    book.add("customXml/item1.xml", '<notes xmlns="urn:example:notes"><note>kept</note></notes>')
    book.relate("", "customXml", "customXml/item1.xml")
    book.add("customXml/itemProps1.xml", '<ds:datastoreItem xmlns:ds="http://schemas.openxmlformats.org/officeDocument/2006/customXml" ds:itemID="{4F1B6C1A-0000-4000-8000-000000000001}"/>', "application/vnd.openxmlformats-officedocument.customXmlProperties+xml")  # fmt: skip
    book.relate("customXml/item1.xml", "customXmlProps", "itemProps1.xml")
    book.finish(path)


def threads(path):
    """Notes with their old drawing, and threads of comments with the list of persons."""
    book = Book()
    book.defaults["vml"] = "application/vnd.openxmlformats-officedocument.vmlDrawing"
    sheet = book.worksheet(after='<legacyDrawing r:id="rId1"/>')
    book.add("xl/drawings/vmlDrawing1.vml", vml(VML_NOTE.format(row=4, column=1) + VML_NOTE.format(row=39, column=12)).encode())  # fmt: skip
    book.relate(sheet, "vmlDrawing", "../drawings/vmlDrawing1.vml")
    book.add("xl/comments1.xml", book.space('<comments xmlns="{main}"><authors><author>tc={{01}}</author><author>Ann</author></authors><commentList><comment ref="B5" authorId="0" shapeId="0"><text><t>[Threaded comment]</t></text></comment><comment ref="M40" authorId="1" shapeId="0"><text><r><rPr><b/></rPr><t>Ann:</t></r><r><t xml:space="preserve"> a note</t></r></text></comment></commentList></comments>'), f"{SHEET_TYPE}comments+xml")  # fmt: skip
    book.relate(sheet, "comments", "../comments1.xml")
    threaded = "http://schemas.microsoft.com/office/spreadsheetml/2018/threadedcomments"
    book.add("xl/threadedComments/threadedComment1.xml", f'<ThreadedComments xmlns="{threaded}"><threadedComment ref="B5" dT="2024-01-02T03:04:05.06" personId="{{02}}" id="{{01}}"><text>why so small?</text></threadedComment></ThreadedComments>', "application/vnd.ms-excel.threadedcomments+xml")  # fmt: skip
    book.relate(sheet, OFFICE_2017 + "threadedComment", "../threadedComments/threadedComment1.xml")
    book.add("xl/persons/person.xml", f'<personList xmlns="{threaded}"><person displayName="Ann" id="{{02}}" userId="ann" providerId="None"/></personList>', "application/vnd.ms-excel.person+xml")  # fmt: skip
    book.relate("xl/workbook.xml", OFFICE_2017 + "person", "persons/person.xml")
    book.finish(path)


def formulas(path):
    """Formulas of every kind, the chain of their calculation, defined names, a link to another book, a sheet of charts' kind."""
    book = Book()
    rows = (
        (40, "", '<c r="M40"><f>SUM(B5:B16)</f><v>65</v></c><c r="N40" t="str"><f>A5&amp;" &lt;"</f><v>sample 1 &lt;</v></c><c r="O40" t="b"><f>B5&lt;C5</f><v>1</v></c><c r="P40" t="e"><f>1/0</f><v>#DIV/0!</v></c>'),
        (41, "", '<c r="M41"><f t="shared" ref="M41:M42" si="0">B5*2</f><v>2</v></c><c r="N41" cm="1"><f t="array" ref="N41:N42">B5:B6*2</f><v>2</v></c>'),
        (42, "", '<c r="M42"><f t="shared" si="0"/><v>10.5</v></c><c r="N42"><v>10.5</v></c><c r="O42"><f ca="1">NOW()</f><v>45000.5</v></c><c r="P42"><f>[1]Sheet1!$A$1</f><v>7</v></c><c r="Q42"><f>Rate*2</f><v>3</v></c>'),
    )  # fmt: skip
    book.worksheet(rows=rows)
    work = "xl/workbook.xml"
    chain = "".join(f'<c r="{cell}" i="1"/>' for cell in ("M40", "N40", "O40", "P40", "M41", "M42", "N41", "O42", "P42", "Q42"))  # fmt: skip
    book.add("xl/calcChain.xml", book.space('<calcChain xmlns="{main}">') + chain + "</calcChain>", f"{SHEET_TYPE}calcChain+xml")  # fmt: skip
    book.relate(work, "calcChain", "calcChain.xml")
    link = book.add("xl/externalLinks/externalLink1.xml", book.space('<externalLink xmlns="{main}" xmlns:r="{r}"><externalBook r:id="rId1"><sheetNames><sheetName val="Sheet1"/></sheetNames><sheetDataSet><sheetData sheetId="0"><row r="1"><cell r="A1"><v>7</v></cell></row></sheetData></sheetDataSet></externalBook></externalLink>'), f"{SHEET_TYPE}externalLink+xml")  # fmt: skip
    book.relate(link, "externalLinkPath", "other%20book.xlsx", external=True)
    external = book.relate(work, "externalLink", "externalLinks/externalLink1.xml")
    book.add("xl/metadata.xml", book.space('<metadata xmlns="{main}" xmlns:xda="http://schemas.microsoft.com/office/spreadsheetml/2017/dynamicarray"><metadataTypes count="1"><metadataType name="XLDAPR" minSupportedVersion="120000" copy="1" pasteAll="1" cellMeta="1"/></metadataTypes><futureMetadata name="XLDAPR" count="1"><bk><extLst><ext uri="{{bdbb8cdc-fa1e-496e-a857-3c3f30c029c3}}"><xda:dynamicArrayProperties fDynamic="1" fCollapsed="0"/></ext></extLst></bk></futureMetadata><cellMetadata count="1"><bk><rc t="1" v="0"/></bk></cellMetadata></metadata>'), f"{SHEET_TYPE}sheetMetadata+xml")  # fmt: skip
    book.relate(work, "sheetMetadata", "metadata.xml")
    book.workbook_middle = (
        f'<externalReferences><externalReference r:id="{external}"/></externalReferences><definedNames>'
        '<definedName name="_xlnm.Print_Area" localSheetId="0">Data!$A$1:$E$31</definedName><definedName name="_xlnm.Print_Titles" localSheetId="0">Data!$4:$4</definedName>'
        '<definedName name="Measures" comment="the numbers">Data!$B$5:$D$16</definedName><definedName name="Rate" hidden="1">1.5</definedName></definedNames>'
    )
    book.finish(path)


def pivot(path):
    """A table, a pivot table with its cache and records, a slicer on it, and a sheet that is hidden very well."""
    book = Book()
    book.worksheet()
    work = "xl/workbook.xml"
    fields = "".join(f'<cacheField name="{n}" numFmtId="0"><sharedItems containsSemiMixedTypes="0" containsString="0" containsNumber="1"/></cacheField>' for n in ("Length", "Width"))  # fmt: skip
    cache = book.add("xl/pivotCache/pivotCacheDefinition1.xml", book.space('<pivotCacheDefinition xmlns="{main}" xmlns:r="{r}" r:id="rId1" refreshOnLoad="0" recordCount="1"><cacheSource type="worksheet"><worksheetSource ref="B4:C16" sheet="Data"/></cacheSource><cacheFields count="2">') + fields + "</cacheFields></pivotCacheDefinition>", f"{SHEET_TYPE}pivotCacheDefinition+xml")  # fmt: skip
    book.add("xl/pivotCache/pivotCacheRecords1.xml", book.space('<pivotCacheRecords xmlns="{main}" count="1"><r><n v="1"/><n v="10.5"/></r></pivotCacheRecords>'), f"{SHEET_TYPE}pivotCacheRecords+xml")  # fmt: skip
    book.relate(cache, "pivotCacheRecords", "pivotCacheRecords1.xml")
    in_book = book.relate(work, "pivotCacheDefinition", "pivotCache/pivotCacheDefinition1.xml")
    summary = book.plain_sheet("sheet2.xml", "Summary", inside='<sheetData><row r="3"><c r="A3" t="inlineStr"><is><t>Sum of Width</t></is></c></row></sheetData><tableParts count="1"><tablePart r:id="rId2"/></tableParts>' + book.space(f'<extLst><ext uri="{{{{A8765BA9-456A-4dab-B4F3-ACF838C121DE}}}}" xmlns:x14="{X14}"><x14:slicerList><x14:slicer r:id="rId3"/></x14:slicerList></ext></extLst>'))  # fmt: skip
    table = book.add("xl/pivotTables/pivotTable1.xml", book.space('<pivotTableDefinition xmlns="{main}" name="PivotTable1" cacheId="1" dataOnRows="0" applyNumberFormats="0" updatedVersion="6" minRefreshableVersion="3" createdVersion="6" indent="0" outline="1" outlineData="1" dataCaption="Values"><location ref="A3:A4" firstHeaderRow="1" firstDataRow="1" firstDataCol="0"/><pivotFields count="2"><pivotField showAll="0"/><pivotField dataField="1" showAll="0"/></pivotFields><rowItems count="1"><i/></rowItems><colItems count="1"><i/></colItems><dataFields count="1"><dataField name="Sum of Width" fld="1" baseField="0" baseItem="0"/></dataFields><pivotTableStyleInfo name="PivotStyleLight16"/></pivotTableDefinition>'), f"{SHEET_TYPE}pivotTable+xml")  # fmt: skip
    book.relate(summary, "pivotTable", "../pivotTables/pivotTable1.xml")
    book.relate(table, "pivotCacheDefinition", "../pivotCache/pivotCacheDefinition1.xml")
    book.add("xl/tables/table1.xml", book.space('<table xmlns="{main}" id="1" name="Prices" displayName="Prices" ref="E3:F5" totalsRowShown="0"><autoFilter ref="E3:F5"/><tableColumns count="2"><tableColumn id="1" name="Item"/><tableColumn id="2" name="Price"><calculatedColumnFormula>1+1</calculatedColumnFormula></tableColumn></tableColumns><tableStyleInfo name="TableStyleMedium2" showFirstColumn="0" showRowStripes="1"/></table>'), f"{SHEET_TYPE}table+xml")  # fmt: skip
    book.relate(summary, "table", "../tables/table1.xml")
    book.parts[summary] = book.parts[summary].replace(b"</c></row></sheetData>", b'</c><c r="E3" t="inlineStr"><is><t>Item</t></is></c><c r="F3" t="inlineStr"><is><t>Price</t></is></c></row></sheetData>')  # fmt: skip
    book.add("xl/slicers/slicer1.xml", f'<slicers xmlns="{X14}"><slicer name="Width" cache="Slicer_Width" caption="Width" rowHeight="241300"/></slicers>', "application/vnd.ms-excel.slicer+xml")  # fmt: skip
    book.relate(summary, "http://schemas.microsoft.com/office/2007/relationships/slicer", "../slicers/slicer1.xml")
    slicer = book.add("xl/slicerCaches/slicerCache1.xml", f'<slicerCacheDefinition xmlns="{X14}" name="Slicer_Width" sourceName="Width"><pivotTables><pivotTable tabId="2" name="PivotTable1"/></pivotTables></slicerCacheDefinition>', "application/vnd.ms-excel.slicerCache+xml")  # fmt: skip
    in_slicers = book.relate(work, "http://schemas.microsoft.com/office/2007/relationships/slicerCache", slicer.removeprefix("xl/"))  # fmt: skip
    book.plain_sheet("sheet3.xml", "Very well hidden", ' state="veryHidden"')
    book.plain_sheet("sheet4.xml", "Hidden", ' state="hidden"', inside='<sheetData/><sheetProtection algorithmName="SHA-512" hashValue="abcd" saltValue="ef01" spinCount="100000" sheet="1" objects="1"/>')  # fmt: skip
    book.workbook_end += f'<pivotCaches><pivotCache cacheId="1" r:id="{in_book}"/></pivotCaches><extLst><ext uri="{{BBE1A952-AA13-448e-AADC-164F8A28A991}}" xmlns:x14="{X14}"><x14:slicerCaches><x14:slicerCache r:id="{in_slicers}"/></x14:slicerCaches></ext></extLst>'  # fmt: skip
    book.finish(path)


def views(path):
    """Frozen panes, outlines, hidden and formatted columns and rows, breaks, views of several persons, a filter that is on."""
    book = Book()
    before = (
        '<sheetViews><sheetView showGridLines="0" tabSelected="1" zoomScale="90" zoomScaleNormal="90" workbookViewId="0"><pane xSplit="1" ySplit="4" topLeftCell="B5" activePane="bottomRight" state="frozen"/>'
        '<selection pane="topRight" activeCell="B1" sqref="B1"/><selection pane="bottomLeft" activeCell="A5" sqref="A5"/><selection pane="bottomRight" activeCell="C7" sqref="C7:D8"/></sheetView></sheetViews>'
        '<sheetFormatPr baseColWidth="10" defaultColWidth="10.7109375" defaultRowHeight="15" outlineLevelRow="1" outlineLevelCol="2" x14ac:dyDescent="0.25"/>'
        '<cols><col min="1" max="1" width="18.140625" customWidth="1"/><col min="2" max="20" width="6.28515625" style="7" customWidth="1" outlineLevel="1"/><col min="21" max="16384" width="9.140625" hidden="1" customWidth="1"/></cols>'
    )
    rows = (
        (40, ' s="6" customFormat="1" ht="33.75" customHeight="1" outlineLevel="1" collapsed="1" thickBot="1" x14ac:dyDescent="0.25"', '<c r="A40" s="6"/><c r="M40" s="7"><v>0.25</v></c>'),
        (41, ' hidden="1" ph="1"', '<c r="M41" s="3"><v>45000</v></c>'),
        (43, ' ht="9" customHeight="1"', ""),
    )  # fmt: skip
    after = (
        '<sheetCalcPr fullCalcOnLoad="0"/><protectedRanges><protectedRange sqref="M40" name="Range1"/></protectedRanges>'
        '<scenarios current="0"><scenario name="high" count="1" user="Ann"><inputCells r="M40" val="9"/></scenario></scenarios>'
        f'<autoFilter ref="A4:D{LAST_ROW}"/><sortState ref="A5:D{LAST_ROW}"><sortCondition ref="B5:B{LAST_ROW}"/></sortState><dataConsolidate/>'
        f'<customSheetViews><customSheetView guid="{{11111111-2222-3333-4444-555555555555}}" scale="80"><selection activeCell="A1" sqref="A1"/></customSheetView></customSheetViews>'
        '<pageMargins left="0.7" right="0.7" top="0.75" bottom="0.75" header="0.3" footer="0.3"/>'
        '<rowBreaks count="1" manualBreakCount="1"><brk id="30" max="16383" man="1"/></rowBreaks><colBreaks count="1" manualBreakCount="1"><brk id="5" max="1048575" man="1"/></colBreaks>'
    )
    book.worksheet(before, rows, after, sheet_pr='<sheetPr codeName="Sheet1"><tabColor rgb="FF00B050"/><outlinePr summaryBelow="0"/><pageSetUpPr fitToPage="1"/></sheetPr>', number_style=2)  # fmt: skip
    book.workbook_properties = '<workbookPr codeName="ThisWorkbook"/><workbookProtection lockStructure="1"/>'
    book.workbook_middle = f'<definedNames><definedName name="_xlnm._FilterDatabase" localSheetId="0" hidden="1">Data!$A$4:$D${LAST_ROW}</definedName></definedNames>'  # fmt: skip
    book.workbook_end += '<customWorkbookViews><customWorkbookView name="Ann" guid="{11111111-2222-3333-4444-555555555555}" windowWidth="100" windowHeight="100" activeSheetId="1"/></customWorkbookViews>'  # fmt: skip
    book.finish(path)


def filtered_rows(path):
    """A filter that hides two of the rows."""
    book = Book()
    after = '<autoFilter ref="A4:D16"><filterColumn colId="1"><customFilters><customFilter operator="lessThan" val="9.3"/></customFilters></filterColumn></autoFilter>'
    sheet = book.worksheet(after=after, sheet_pr='<sheetPr codeName="Sheet1" filterMode="1"/>')
    for row in (13, 16):
        book.parts[sheet] = book.parts[sheet].replace(f'<row r="{row}"'.encode(), f'<row r="{row}" hidden="1"'.encode())
    book.workbook_middle = '<definedNames><definedName name="_xlnm._FilterDatabase" localSheetId="0" hidden="1">Data!$A$4:$D$16</definedName></definedNames>'  # fmt: skip
    book.finish(path)


def strict(path):
    """The strict form, whose namespaces have other addresses and whose dates may be written as dates."""
    book = Book(strict=True)
    book.workbook_front = ""
    book.worksheet(rows=((40, "", '<c r="M40" s="3" t="d"><v>2024-02-29</v></c><c r="N40" s="3"><v>45351</v></c>'),))
    book.finish(path)


def dates_1904(path):
    """Days counted from 1904."""
    book = Book()
    book.workbook_properties = '<workbookPr date1904="1" codeName="ThisWorkbook"/>'
    book.worksheet(rows=((40, "", '<c r="M40" s="3"><v>0</v></c><c r="N40" s="3"><v>43889</v></c>'),))
    book.finish(path)


def filtered_table(path):
    """The rows belong to a table, whose headings and filter are in a part of their own."""
    book = Book()
    sheet = book.worksheet(after='<tableParts count="1"><tablePart r:id="rId1"/></tableParts>')
    columns = "".join(f'<tableColumn id="{i}" xr3:uid="{{0000000{i}-0000-0000-0000-000000000000}}" name="{n}"/>' for i, n in enumerate(("Name", "Length", "Width", "Height"), 1))  # fmt: skip
    book.add("xl/tables/table1.xml", book.space('<table xmlns="{main}" xmlns:mc="{mc}" mc:Ignorable="xr3" xmlns:xr3="http://schemas.microsoft.com/office/spreadsheetml/2016/revision3" id="1" name="Samples" displayName="Samples" ref="A4:D16" totalsRowShown="0"><autoFilter ref="A4:D16"/><tableColumns count="4">') + columns + '</tableColumns><tableStyleInfo name="Own" showFirstColumn="0" showLastColumn="0" showRowStripes="1" showColumnStripes="0"/></table>', f"{SHEET_TYPE}table+xml")  # fmt: skip
    book.relate(sheet, "table", "../tables/table1.xml")
    book.finish(path)


def odd_package(path):
    """Absolute targets, entries that are not packed, folders in the archive, and names in other cases than the table has."""
    book = Book()
    book.worksheet()
    book.plain_sheet("sheet2.xml", "Täbelle &amp; Co 'x'")
    book.add("xl/extra/ignored.txt", b"a part that nobody refers to\r\n", "text/plain")
    for relation in (book.relations["xl/workbook.xml"],):
        relation[:] = [(i, k, t if e else "/xl/" + t, e) for i, k, t, e in relation]
    book.finish(path, compression=zipfile.ZIP_STORED)
    with zipfile.ZipFile(path, "a") as archive:
        archive.writestr("xl/empty folder/", b"")


def prefixed(path):
    """Every element of the main family has a prefix, as some libraries of the big spreadsheet's own maker write them."""
    book = Book()
    book.worksheet(rows=((40, "", '<c r="M40" t="inlineStr"><is><t>inline</t></is></c><c r="N40"><f>B5+1</f><v>2</v></c>'),))
    finish = book.write

    def write_prefixed(to, **more):
        for part in ("xl/workbook.xml", "xl/worksheets/sheet1.xml", "xl/styles.xml", "xl/sharedStrings.xml"):
            text = re.sub(r"<(/?)([A-Za-z]+)(?=[ />])", r"<\1x:\2", book.parts[part].decode())
            book.parts[part] = text.replace(" xmlns=", " xmlns:x=", 1).encode()
        finish(to, **more)

    book.write = write_prefixed
    book.finish(path)


BOOKS = (
    Recipe("prefixed.xlsx", prefixed),
    Recipe("macros.xlsm", macros),
    Recipe("rules.xlsx", rules),
    Recipe("threads.xlsx", threads),
    Recipe("formulas.xlsx", formulas, rewritten=("xl/calcChain.xml",)),
    Recipe("pivot.xlsx", pivot),
    Recipe("views.xlsx", views, has_plain_columns=False),
    Recipe("views_without_filter.xlsx", views, filter_option="--no-autofilter", has_plain_columns=False),
    Recipe("filtered_rows.xlsx", filtered_rows, sorts=False),
    Recipe("filtered_rows_without_filter.xlsx", filtered_rows, filter_option="--no-autofilter", sorts=False),
    Recipe("strict.xlsx", strict),
    Recipe("dates_1904.xlsx", dates_1904),
    Recipe("filtered_table.xlsx", filtered_table),
    Recipe("odd_package.xlsx", odd_package),
    *DRAWING_BOOKS,
)

__all__ = ["BOOKS", "A14", "DRAWING_TYPE", "XM"]
