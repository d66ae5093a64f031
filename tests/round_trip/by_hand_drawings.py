"""Books with drawings in the words of the big spreadsheet: pictures, shapes and charts of every title, and a sheet of a chart."""

from by_hand_base import A14, DRAWING_TYPE, MC, SHEET_TYPE, Book
from package_writer import png
from recipe import Recipe

VML_FRONT = (
    '<xml xmlns:v="urn:schemas-microsoft-com:vml" xmlns:o="urn:schemas-microsoft-com:office:office" xmlns:x="urn:schemas-microsoft-com:office:excel">'
    '<o:shapelayout v:ext="edit"><o:idmap v:ext="edit" data="1"/></o:shapelayout>'
)
VML_NOTE = (
    '<v:shape id="_x0000_s10{row}" type="#_x0000_t202" style="position:absolute;visibility:hidden" fillcolor="#ffffe1" o:insetmode="auto">'
    '<v:textbox><div style="text-align:left"></div></v:textbox><x:ClientData ObjectType="Note"><x:MoveWithCells/><x:SizeWithCells/>'
    "<x:Anchor>15, 15, 3, 10, 17, 15, 7, 4</x:Anchor><x:AutoFill>False</x:AutoFill><x:Row>{row}</x:Row><x:Column>{column}</x:Column></x:ClientData></v:shape>"
)
VML_BUTTON = (
    '<v:shape id="Button_x0020_1" o:spid="_x0000_s1025" type="#_x0000_t201" style="position:absolute;width:64pt;height:20pt" o:button="t" fillcolor="buttonFace">'
    '<v:textbox><div style="text-align:center">Run<br></div></v:textbox><x:ClientData ObjectType="Button"><x:Anchor>20, 0, 1, 0, 21, 0, 2, 0</x:Anchor>'
    "<x:FmlaMacro>[0]!Run</x:FmlaMacro></x:ClientData></v:shape>"
)


def vml(shapes):
    """NB: such a drawing is not even well-formed XML: the big spreadsheet writes open <br> elements."""
    return VML_FRONT + shapes + "</xml>"


def anchor(content, row, column, kind="twoCellAnchor", attributes=""):
    def corner(name, r, c):
        return f"<xdr:{name}><xdr:col>{c}</xdr:col><xdr:colOff>12700</xdr:colOff><xdr:row>{r}</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:{name}>"

    place = corner("from", row, column)
    place += corner("to", row + 8, column + 4) if kind == "twoCellAnchor" else '<xdr:ext cx="952500" cy="952500"/>'
    return f"<xdr:{kind}{attributes}>{place}{content}<xdr:clientData/></xdr:{kind}>"


def chart_frame(identifier, name, relation):
    return (
        f'<xdr:graphicFrame macro=""><xdr:nvGraphicFramePr><xdr:cNvPr id="{identifier}" name="{name}"><a:extLst><a:ext uri="{{FF2B5EF4-FFF2-40B4-BE49-F238E27FC236}}"/></a:extLst></xdr:cNvPr><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr>'
        '<xdr:xfrm><a:off x="0" y="0"/><a:ext cx="0" cy="0"/></xdr:xfrm><a:graphic><a:graphicData uri="{c}"><c:chart xmlns:c="{c}" xmlns:r="{r}" r:id="'
        + relation
        + '"/></a:graphicData></a:graphic></xdr:graphicFrame>'
    )


PICTURE = (
    '<xdr:pic><xdr:nvPicPr><xdr:cNvPr id="2" name="Picture 1" descr="a red square"/><xdr:cNvPicPr><a:picLocks noChangeAspect="1"/></xdr:cNvPicPr></xdr:nvPicPr>'
    '<xdr:blipFill><a:blip xmlns:r="{r}" r:embed="rId1"/><a:stretch><a:fillRect/></a:stretch></xdr:blipFill>'
    '<xdr:spPr><a:xfrm><a:off x="0" y="0"/><a:ext cx="952500" cy="952500"/></a:xfrm><a:prstGeom prst="rect"><a:avLst/></a:prstGeom></xdr:spPr></xdr:pic>'
)
SHAPE = (
    '<xdr:sp macro="" textlink="Data!$A$5"><xdr:nvSpPr><xdr:cNvPr id="{id}" name="Text {id}"><a:hlinkClick xmlns:r="{r}" r:id="rId2"/></xdr:cNvPr><xdr:cNvSpPr txBox="1"/></xdr:nvSpPr>'
    '<xdr:spPr><a:xfrm><a:off x="0" y="0"/><a:ext cx="952500" cy="952500"/></a:xfrm><a:prstGeom prst="rect"><a:avLst/></a:prstGeom><a:noFill/></xdr:spPr>'
    "<xdr:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:rPr lang=\"en-US\"/><a:t>a &amp; b</a:t></a:r></a:p></xdr:txBody></xdr:sp>"
)
TITLES = {
    "rich": "<c:title><c:tx><c:rich><a:bodyPr/><a:p><a:r><a:rPr b=\"1\"/><a:t>Sizes </a:t></a:r><a:r><a:t>of samples</a:t></a:r></a:p></c:rich></c:tx><c:overlay val=\"0\"/></c:title><c:autoTitleDeleted val=\"0\"/>",
    "referenced": "<c:title><c:tx><c:strRef><c:f>Data!$B$4</c:f><c:strCache><c:ptCount val=\"1\"/><c:pt idx=\"0\"><c:v>Length</c:v></c:pt></c:strCache></c:strRef></c:tx><c:overlay val=\"0\"/></c:title><c:autoTitleDeleted val=\"0\"/>",
    "automatic": "<c:title><c:overlay val=\"0\"/></c:title><c:autoTitleDeleted val=\"0\"/>",
    "none": "<c:autoTitleDeleted val=\"1\"/>",
    "earlier": "<c:title><c:tx><c:rich><a:bodyPr/><a:p><a:r><a:t>Clusters weights</a:t></a:r></a:p></c:rich></c:tx></c:title><c:autoTitleDeleted val=\"0\"/>",
}  # fmt: skip


def chart(book, number, title, more=""):
    body = (
        '<c:chartSpace xmlns:c="{c}" xmlns:a="{a}" xmlns:r="{r}" xmlns:c16r2="http://schemas.microsoft.com/office/drawing/2015/06/chart"><c:date1904 val="0"/><c:roundedCorners val="0"/>'
        f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice Requires="c14" xmlns:c14="http://schemas.microsoft.com/office/drawing/2007/8/2/chart"><c14:style val="102"/></mc:Choice><mc:Fallback><c:style val="2"/></mc:Fallback></mc:AlternateContent>'
        f"<c:chart>{TITLES[title]}<c:plotArea><c:layout/>"
        '<c:barChart><c:barDir val="col"/><c:grouping val="clustered"/><c:varyColors val="0"/><c:ser><c:idx val="0"/><c:order val="0"/><c:tx><c:strRef><c:f>Data!$C$4</c:f></c:strRef></c:tx><c:invertIfNegative val="0"/><c:val><c:numRef><c:f>Data!$C$5:$C$16</c:f></c:numRef></c:val></c:ser>'
        '<c:gapWidth val="219"/><c:axId val="1"/><c:axId val="2"/></c:barChart><c:catAx><c:axId val="1"/><c:scaling><c:orientation val="minMax"/></c:scaling><c:delete val="0"/><c:axPos val="b"/><c:crossAx val="2"/></c:catAx>'
        '<c:valAx><c:axId val="2"/><c:scaling><c:orientation val="minMax"/></c:scaling><c:delete val="0"/><c:axPos val="l"/><c:crossAx val="1"/></c:valAx></c:plotArea><c:plotVisOnly val="1"/><c:dispBlanksAs val="gap"/></c:chart>'
        + more
        + "</c:chartSpace>"
    )
    return book.add(f"xl/charts/chart{number}.xml", book.space(body), f"{DRAWING_TYPE}ml.chart+xml")


def drawing(book, number, anchors):
    body = '<xdr:wsDr xmlns:xdr="{xdr}" xmlns:a="{a}">' + "".join(anchors) + "</xdr:wsDr>"
    body = body.replace("{c}", book.spaces["c"]).replace("{r}", book.spaces["r"])
    body = body.replace("{xdr}", book.spaces["xdr"]).replace("{a}", book.spaces["a"])
    return book.add(f"xl/drawings/drawing{number}.xml", body, f"{DRAWING_TYPE}.drawing+xml".replace("drawing.drawing", "drawing"))  # fmt: skip


def charts(path, strict=False):
    """A picture, shapes, a group, a shape of a newer kind, and charts with titles of every kind; two of them have to go."""
    book = Book(strict=strict)
    book.defaults["png"] = "image/png"
    sheet = book.worksheet(after='<drawing r:id="rId1"/>')
    newer = f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice xmlns:a14="{A14}" Requires="a14">{SHAPE.replace("{id}", "20")}</mc:Choice><mc:Fallback/></mc:AlternateContent>'
    group = '<xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id="12" name="Group 1"/><xdr:cNvGrpSpPr/></xdr:nvGrpSpPr><xdr:grpSpPr/>' + SHAPE.replace("{id}", "13") + "</xdr:grpSp>"  # fmt: skip
    part = drawing(book, 1, [
        anchor(PICTURE, 40, 12, "oneCellAnchor"),
        anchor(SHAPE.replace("{id}", "3"), 40, 16, attributes=' editAs="absolute"'),
        anchor(chart_frame(4, "Titled", "rId3"), 50, 0),
        anchor(chart_frame(5, "Referring", "rId4"), 50, 6),
        anchor(chart_frame(6, "Untitled", "rId5"), 50, 12),
        anchor(chart_frame(7, "Automatic", "rId6"), 60, 0),
        anchor(chart_frame(8, "Earlier", "rId7"), 60, 6),
        f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice xmlns:a14="{A14}" Requires="a14">' + anchor(group, 70, 0) + "</mc:Choice><mc:Fallback/></mc:AlternateContent>",
        anchor(newer, 70, 6),
    ])  # fmt: skip
    book.relate(sheet, "drawing", "../drawings/drawing1.xml")
    book.add("xl/media/image1.png", png())
    book.relate(part, "image", "../media/image1.png")
    book.relate(part, "hyperlink", "https://example.org/", external=True)
    for number, title in enumerate(("rich", "referenced", "none", "automatic", "earlier"), 1):
        own = chart(book, number, title, '<c:userShapes xmlns:r="{r}" r:id="rId1"/>' if title == "rich" else "")
        book.relate(part, "chart", f"../charts/chart{number}.xml")
        if title == "rich":
            book.add("xl/drawings/drawing2.xml", book.space('<c:userShapes xmlns:c="{c}"/>'), f"{DRAWING_TYPE}ml.chartshapes+xml")  # fmt: skip
            book.relate(own, "chartUserShapes", "../drawings/drawing2.xml")
        if title in ("none", "rich"):
            family = "http://schemas.microsoft.com/office/2011/relationships/chart"
            space = "http://schemas.microsoft.com/office/drawing/2012/chartStyle"
            book.add(f"xl/charts/style{number}.xml", f'<cs:chartStyle xmlns:cs="{space}" id="201"/>', "application/vnd.ms-office.chartstyle+xml")  # fmt: skip
            book.add(f"xl/charts/colors{number}.xml", f'<cs:colorStyle xmlns:cs="{space}" meth="cycle" id="10"/>', "application/vnd.ms-office.chartcolorstyle+xml")  # fmt: skip
            book.relate(own, family + "Style", f"style{number}.xml")
            book.relate(own, family + "ColorStyle", f"colors{number}.xml")
    book.finish(path)


def other_charts(path):
    """A sheet that is one chart, and a drawing on another sheet whose untitled chart no run may touch."""
    book = Book()
    book.worksheet()
    page = book.sheet_part("sheet1.xml", "Chart page", book.space('<chartsheet xmlns="{main}" xmlns:r="{r}"><sheetViews><sheetView workbookViewId="0" zoomToFit="1"/></sheetViews><drawing r:id="rId1"/></chartsheet>'), kind="chartsheet")  # fmt: skip
    absolute = '<xdr:absoluteAnchor><xdr:pos x="0" y="0"/><xdr:ext cx="9294091" cy="6003636"/>' + chart_frame(2, "Chart 1", "rId1") + "<xdr:clientData/></xdr:absoluteAnchor>"  # fmt: skip
    first = drawing(book, 1, [absolute])
    book.relate(page, "drawing", "../drawings/drawing1.xml")
    chart(book, 1, "none")
    book.relate(first, "chart", "../charts/chart1.xml")
    other = book.plain_sheet("sheet2.xml", "Other", inside='<sheetData/><drawing r:id="rId1"/>')
    second = drawing(book, 2, [anchor(chart_frame(2, "Chart 1", "rId1"), 2, 2)])
    book.relate(other, "drawing", "../drawings/drawing2.xml")
    chart(book, 2, "earlier")
    book.relate(second, "chart", "../charts/chart2.xml")
    book.finish(path)


GONE = ("xl/charts/chart3.xml", "xl/charts/chart5.xml")
BOOKS = (
    Recipe("charts.xlsx", charts, gone=GONE),
    Recipe("strict_charts.xlsx", lambda path: charts(path, strict=True), gone=GONE),
    Recipe("other_charts.xlsx", other_charts),
)

__all__ = ["BOOKS", "SHEET_TYPE", "VML_BUTTON", "VML_NOTE", "vml"]
