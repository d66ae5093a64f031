#include "tests/hosts_workbook/part_order/vocabulary.h"

namespace mervane::workbook::tests {

namespace {

const std::vector<std::string> anchored = {"sp|grpSp|graphicFrame|cxnSp|pic|contentPart", "clientData"};

std::vector<std::string> following(std::vector<std::string> first, const std::vector<std::string>& rest) {
  first.insert(first.end(), rest.begin(), rest.end());
  return first;
}

/// What every axis begins with.
const std::vector<std::string> axis = {"axId",           "scaling", "delete", "axPos",         "majorGridlines",
                                       "minorGridlines", "title",   "numFmt", "majorTickMark", "minorTickMark",
                                       "tickLblPos",     "spPr",    "txPr",   "crossAx",       "crosses|crossesAt"};
const std::vector<std::string> labelSettings = {"numFmt",        "spPr",           "txPr",        "dLblPos",
                                                "showLegendKey", "showVal",        "showCatName", "showSerName",
                                                "showPercent",   "showBubbleSize", "separator"};
const std::vector<std::string> fillOfShape = {"noFill|solidFill|gradFill|blipFill|pattFill|grpFill"};
const std::vector<std::string> effects = {"effectLst|effectDag"};
const std::vector<std::string> textSettings =
    following({"ln", "noFill|solidFill|gradFill|blipFill|pattFill|grpFill", "effectLst|effectDag"},
              {"highlight", "uLnTx|uLn", "uFillTx|uFill", "latin", "ea", "cs", "sym", "hlinkClick", "hlinkMouseOver",
               "rtl", "extLst"});

}  // namespace

const Sequences& drawingSequences() {
  static const Sequences sequences = {
      {"chartSpace",
       {"date1904", "lang", "roundedCorners", "style", "clrMapOvr", "pivotSource", "protection", "chart", "spPr",
        "txPr", "externalData", "printSettings", "userShapes", "extLst"}},
      {"chartSpace/chart",
       {"title", "autoTitleDeleted", "pivotFmts", "view3D", "floor", "sideWall", "backWall", "plotArea", "legend",
        "plotVisOnly", "dispBlanksAs", "showDLblsOverMax", "extLst"}},
      {"title", {"tx", "layout", "overlay", "spPr", "txPr", "extLst"}},
      {"tx", {"strRef|rich|v"}},
      {"strRef", {"f", "strCache", "extLst"}},
      {"numRef", {"f", "numCache", "extLst"}},
      {"strCache", {"ptCount", "pt*", "extLst"}},
      {"strLit", {"ptCount", "pt*", "extLst"}},
      {"numCache", {"formatCode", "ptCount", "pt*", "extLst"}},
      {"numLit", {"formatCode", "ptCount", "pt*", "extLst"}},
      {"pt", {"v"}},
      {"layout", {"manualLayout", "extLst"}},
      {"manualLayout", {"layoutTarget", "xMode", "yMode", "wMode", "hMode", "x", "y", "w", "h", "extLst"}},
      {"plotArea",
       {"layout",
        "(areaChart|area3DChart|lineChart|line3DChart|stockChart|radarChart|scatterChart|pieChart|pie3DChart|"
        "doughnutChart|barChart|bar3DChart|ofPieChart|surfaceChart|surface3DChart|bubbleChart)*",
        "(valAx|catAx|dateAx|serAx)*", "dTable", "spPr", "extLst"}},
      {"lineChart",
       {"grouping", "varyColors", "ser*", "dLbls", "dropLines", "hiLowLines", "upDownBars", "marker", "smooth", "axId*",
        "extLst"}},
      {"barChart",
       {"barDir", "grouping", "varyColors", "ser*", "dLbls", "gapWidth", "overlap", "serLines*", "axId*", "extLst"}},
      {"lineChart/ser",
       {"idx", "order", "tx", "spPr", "marker", "dPt*", "dLbls", "trendline*", "errBars", "cat", "val", "smooth",
        "extLst"}},
      {"barChart/ser",
       {"idx", "order", "tx", "spPr", "invertIfNegative", "pictureOptions", "dPt*", "dLbls", "trendline*", "errBars",
        "cat", "val", "shape", "extLst"}},
      {"ser/marker", {"symbol", "size", "spPr", "extLst"}},
      {"dPt/marker", {"symbol", "size", "spPr", "extLst"}},
      {"dPt", {"idx", "invertIfNegative", "marker", "bubble3D", "explosion", "spPr", "pictureOptions", "extLst"}},
      {"dLbls", following({"dLbl*", "delete"}, following(labelSettings, {"showLeaderLines", "leaderLines", "extLst"}))},
      {"dLbl", following({"idx", "delete", "layout", "tx"}, following(labelSettings, {"extLst"}))},
      {"cat", {"multiLvlStrRef|numRef|numLit|strRef|strLit"}},
      {"val", {"numRef|numLit"}},
      {"catAx",
       following(axis, {"auto", "lblAlgn", "lblOffset", "tickLblSkip", "tickMarkSkip", "noMultiLvlLbl", "extLst"})},
      {"dateAx", following(axis, {"auto", "lblOffset", "baseTimeUnit", "majorUnit", "majorTimeUnit", "minorUnit",
                                  "minorTimeUnit", "extLst"})},
      {"valAx", following(axis, {"crossBetween", "majorUnit", "minorUnit", "dispUnits", "extLst"})},
      {"scaling", {"logBase", "orientation", "max", "min", "extLst"}},
      {"majorGridlines", {"spPr"}},
      {"minorGridlines", {"spPr"}},
      {"dispUnits", {"custUnit|builtInUnit", "dispUnitsLbl", "extLst"}},
      {"legend", {"legendPos", "legendEntry*", "layout", "overlay", "spPr", "txPr", "extLst"}},
      {"printSettings", {"headerFooter", "pageMargins", "pageSetup", "legacyDrawingHF"}},

      {"spPr", following({"xfrm", "custGeom|prstGeom"},
                         following(fillOfShape, following({"ln"}, following(effects, {"scene3d", "sp3d", "extLst"}))))},
      {"ln",
       {"noFill|solidFill|gradFill|pattFill", "prstDash|custDash", "round|bevel|miter", "headEnd", "tailEnd",
        "extLst"}},
      {"solidFill", {"scrgbClr|srgbClr|hslClr|sysClr|schemeClr|prstClr"}},
      {"pattFill", {"fgClr", "bgClr"}},
      {"rich", {"bodyPr", "lstStyle", "p*"}},
      {"txPr", {"bodyPr", "lstStyle", "p*"}},
      {"p", {"pPr", "(r|br|fld)*", "endParaRPr"}},
      {"pPr",
       {"lnSpc", "spcBef", "spcAft", "buClrTx|buClr", "buSzTx|buSzPct|buSzPts", "buFontTx|buFont",
        "buNone|buAutoNum|buChar|buBlip", "tabLst", "defRPr", "extLst"}},
      {"r", {"rPr", "t"}},
      {"rPr", textSettings},
      {"defRPr", textSettings},
      {"endParaRPr", textSettings},

      {"wsDr", {"(twoCellAnchor|oneCellAnchor|absoluteAnchor)*"}},
      {"twoCellAnchor", following({"from", "to"}, anchored)},
      {"oneCellAnchor", following({"from", "ext"}, anchored)},
      {"absoluteAnchor", following({"pos", "ext"}, anchored)},
      {"from", {"col", "colOff", "row", "rowOff"}},
      {"to", {"col", "colOff", "row", "rowOff"}},
      {"graphicFrame", {"nvGraphicFramePr", "xfrm", "graphic"}},
      {"nvGraphicFramePr", {"cNvPr", "cNvGraphicFramePr"}},
      {"xfrm", {"off", "ext"}},
      {"graphic", {"graphicData"}},
  };
  return sequences;
}

}  // namespace mervane::workbook::tests
