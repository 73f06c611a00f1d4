"""Checks that the elements of Word documents and workbooks come in the order of the schemas (ECMA-376, part 1, annex A),
on which their readers may insist.

    check_order.py FILE...

Every element with different children has to be listed here.
"""

import sys
import xml.etree.ElementTree as xml
import zipfile

# The children of elements, by the last part of their namespace. "*": any others, in any order.
DRAWING = {
    "blipFill": "blip srcRect tile stretch",
    "cNvPr": "hlinkClick hlinkHover extLst",
    "docPr": "hlinkClick hlinkHover extLst",
    "from": "col colOff row rowOff",
    "inline": "extent effectExtent docPr cNvGraphicFramePr graphic",
    "nvPicPr": "cNvPr cNvPicPr",
    "oneCellAnchor": "from ext pic clientData",
    "pic": "nvPicPr blipFill spPr style",
    "spPr": "xfrm custGeom prstGeom noFill ln",
    "xfrm": "off ext",
}
WORD = {
    "abstractNum": "nsid multiLevelType tmpl name styleLink numStyleLink lvl",
    "body": "* sectPr",
    "compat": "*",
    "hyperlink": "*",
    "lvl": "start numFmt lvlRestart pStyle isLgl suff lvlText lvlPicBulletId legacy lvlJc pPr rPr",
    "num": "abstractNumId lvlOverride",
    "numPr": "ilvl numId",
    "numbering": "numPicBullet abstractNum num numIdMacAtCleanup",
    "p": "pPr *",
    "pBdr": "top left bottom right between bar",
    "pPr": """pStyle keepNext keepLines pageBreakBefore framePr widowControl numPr suppressLineNumbers pBdr shd tabs
        suppressAutoHyphens kinsoku wordWrap overflowPunct topLinePunct autoSpaceDE autoSpaceDN bidi adjustRightInd
        snapToGrid spacing ind contextualSpacing mirrorIndents suppressOverlap jc textDirection textAlignment
        textboxTightWrap outlineLvl divId cnfStyle rPr sectPr""",
    "r": "rPr *",
    "rPr": """rStyle rFonts b bCs i iCs caps smallCaps strike dstrike outline shadow emboss imprint noProof snapToGrid
        vanish webHidden color spacing w kern position sz szCs highlight u effect bdr shd fitText vertAlign rtl cs em
        lang""",
    "sectPr": """headerReference footerReference footnotePr endnotePr type pgSz pgMar paperSrc pgBorders lnNumType
        pgNumType cols formProt vAlign noEndnote titlePg textDirection bidi rtlGutter docGrid""",
    "settings": "zoom defaultTabStop characterSpacingControl compat themeFontLang",
    "style": """name aliases basedOn next link autoRedefine hidden uiPriority semiHidden unhideWhenUsed qFormat locked
        personal personalCompose personalReply rsid pPr rPr tblPr trPr tcPr tblStylePr""",
    "styles": "docDefaults latentStyles style",
    "tbl": "tblPr tblGrid tr",
    "tblBorders": "top left bottom right insideH insideV",
    "tblCellMar": "top left bottom right",
    "tblPr": """tblStyle tblpPr tblOverlap bidiVisual tblStyleRowBandSize tblStyleColBandSize tblW jc tblCellSpacing
        tblInd tblBorders shd tblLayout tblCellMar tblLook""",
    "tc": "tcPr *",
    "tcPr": "cnfStyle tcW gridSpan hMerge vMerge tcBorders shd noWrap tcMar textDirection tcFitText vAlign hideMark",
    "tr": "trPr tc",
    "trPr": "*",
    "docDefaults": "rPrDefault pPrDefault",
}
SHEET = {
    "border": "start end left right top bottom diagonal vertical horizontal",
    "c": "f v is extLst",
    "fill": "patternFill gradientFill",
    "font": "b i strike condense extend outline shadow u vertAlign sz color name family charset scheme",
    "is": "t r rPh phoneticPr",
    "patternFill": "fgColor bgColor",
    "r": "rPr t",
    "rPr": "*",
    "sheetPr": "tabColor outlinePr pageSetUpPr",
    "sheetView": "pane selection pivotSelection extLst",
    "headerFooter": "oddHeader oddFooter evenHeader evenFooter firstHeader firstFooter",
    "styleSheet": """numFmts fonts fills borders cellStyleXfs cellXfs cellStyles dxfs tableStyles colors extLst""",
    "workbook": """fileVersion fileSharing workbookPr workbookProtection bookViews sheets functionGroups
        externalReferences definedNames calcPr oleSize customWorkbookViews pivotCaches""",
    "worksheet": """sheetPr dimension sheetViews sheetFormatPr cols sheetData sheetCalcPr sheetProtection protectedRanges
        scenarios autoFilter sortState dataConsolidate customSheetViews mergeCells phoneticPr conditionalFormatting
        dataValidations hyperlinks printOptions pageMargins pageSetup headerFooter rowBreaks colBreaks customProperties
        cellWatches ignoredErrors smartTags drawing legacyDrawing legacyDrawingHF picture oleObjects controls
        webPublishItems tableParts extLst""",
    "xf": "alignment protection extLst",
}
ORDERS = {
    "http://schemas.openxmlformats.org/wordprocessingml/2006/main": WORD,
    "http://schemas.openxmlformats.org/spreadsheetml/2006/main": SHEET,
}


def check(part, element):
    namespace, _, name = element.tag.removeprefix("{").rpartition("}")
    children = [child.tag.rpartition("}")[2] for child in element]
    orders = ORDERS.get(namespace, DRAWING)
    if name not in orders:
        assert len(set(children)) <= 1, (part, name, children)
        return
    order = orders[name].split()
    other = order.index("*") if "*" in order else None
    places = [order.index(child) if child in order else other for child in children]
    assert None not in places and places == sorted(places), (part, name, children)


def check_file(path):
    elements = 0
    with zipfile.ZipFile(path) as file:
        for part in file.namelist():
            if part.startswith(("word/", "xl/")) and part.endswith(".xml"):
                for element in xml.fromstring(file.read(part)).iter():
                    check(part, element)
                    elements += 1
    assert elements > 100, path


for path in sys.argv[1:]:
    check_file(path)
