"""Checks that the properties in a Word document come in the order of the schema (ECMA-376, part 1, annex A), on which a
word processor may insist.

    check_order.py FOLDER

The folder has the parts of the document.
"""

import pathlib
import sys
import xml.etree.ElementTree as xml

NAMESPACE = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"

RUN = """rStyle rFonts b bCs i iCs caps smallCaps strike dstrike outline shadow emboss imprint noProof snapToGrid vanish
    webHidden color spacing w kern position sz szCs highlight u effect bdr shd fitText vertAlign rtl cs em lang"""
PARAGRAPH = """pStyle keepNext keepLines pageBreakBefore framePr widowControl numPr suppressLineNumbers pBdr shd tabs
    suppressAutoHyphens kinsoku wordWrap overflowPunct topLinePunct autoSpaceDE autoSpaceDN bidi adjustRightInd
    snapToGrid spacing ind contextualSpacing mirrorIndents suppressOverlap jc textDirection textAlignment
    textboxTightWrap outlineLvl divId cnfStyle rPr sectPr"""
ORDERS = {
    "rPr": RUN,
    "pPr": PARAGRAPH,
    "pBdr": "top left bottom right between bar",
    "numPr": "ilvl numId",
    "tbl": "tblPr tblGrid tr",
    "tblPr": """tblStyle tblpPr tblOverlap bidiVisual tblStyleRowBandSize tblStyleColBandSize tblW jc tblCellSpacing
        tblInd tblBorders shd tblLayout tblCellMar tblLook""",
    "tblBorders": "top left bottom right insideH insideV",
    "tblCellMar": "top left bottom right",
    "tr": "trPr tc",
    "tc": "tcPr p",
    "tcPr": "cnfStyle tcW gridSpan hMerge vMerge tcBorders shd noWrap tcMar textDirection tcFitText vAlign hideMark",
    "sectPr": """headerReference footerReference footnotePr endnotePr type pgSz pgMar paperSrc pgBorders lnNumType
        pgNumType cols formProt vAlign noEndnote titlePg textDirection bidi rtlGutter docGrid""",
    "lvl": "start numFmt lvlRestart pStyle isLgl suff lvlText lvlPicBulletId legacy lvlJc pPr rPr",
    "abstractNum": "nsid multiLevelType tmpl name styleLink numStyleLink lvl",
    "num": "abstractNumId lvlOverride",
    "numbering": "numPicBullet abstractNum num numIdMacAtCleanup",
    "style": """name aliases basedOn next link autoRedefine hidden uiPriority semiHidden unhideWhenUsed qFormat locked
        personal personalCompose personalReply rsid pPr rPr tblPr trPr tcPr tblStylePr""",
    "styles": "docDefaults latentStyles style",
    "settings": "zoom defaultTabStop characterSpacingControl compat themeFontLang",
}


def check(part):
    for element in xml.parse(part).iter():
        name = element.tag.removeprefix(NAMESPACE)
        if element.tag == name or name not in ORDERS:
            continue
        order = ORDERS[name].split()
        places = [order.index(child.tag.removeprefix(NAMESPACE)) for child in element]
        assert places == sorted(places), (part, name, [child.tag for child in element])


parts = list(pathlib.Path(sys.argv[1]).glob("word/*.xml"))
assert len(parts) >= 4, parts
for path in parts:
    check(path)
