"""Presentations for tests, written part by part as plain text, and copies of those that lie elsewhere."""

import os
import pathlib
import shutil
import zipfile

MAIN_TYPE = "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml"
NAMESPACES = ('xmlns:p="http://schemas.openxmlformats.org/presentationml/2006/main" '
              'xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main" '
              'xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships" '
              'xmlns:mc="http://schemas.openxmlformats.org/markup-compatibility/2006" '
              'xmlns:a14="http://schemas.microsoft.com/office/drawing/2010/main" '
              'xmlns:p14="http://schemas.microsoft.com/office/powerpoint/2010/main"')
RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
CORE = "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties"


def is_binary(path):
    """Of PowerPoint 97 to 2003, which the reader of these checks doesn't know: counts-agree is for them."""
    with path.open("rb") as file:
        return path.suffix in (".ppt", ".pot", ".pps") and file.read(4) == b"\xd0\xcf\x11\xe0"


def copy_tree(source, folder):
    """Copies files that may be read-only to writable ones. Folders get numbers in place of names: "pptx" in a path
    would take part in the names of backups."""
    folder.mkdir()
    names = {}
    for path in sorted(pathlib.Path(source).rglob("*")):
        if path.is_file():
            target = folder / str(names.setdefault(path.parent, len(names)))
            target.mkdir(exist_ok=True)
            shutil.copyfile(path, target / path.name)
            # A whole second, so that a date which was put back can be told from one that stayed.
            os.utime(target / path.name, (1_000_000_000, 1_000_000_000))


# Texts


def run(text, properties=""):
    return f"<a:r><a:rPr>{properties}</a:rPr><a:t>{text}</a:t></a:r>"


def field(kind, text):
    return f'<a:fld type="{kind}"><a:rPr/><a:t>{text}</a:t></a:fld>'


def body(*paragraphs):
    return "<p:txBody><a:bodyPr/>" + "".join(f"<a:p>{content}</a:p>" for content in paragraphs) + "</p:txBody>"


def click(relationship, more=""):
    return f'<a:hlinkClick r:id="{relationship}" {more}/>'


BREAK = "<a:br/>"
EQUATION = ('<mc:AlternateContent><mc:Choice Requires="a14"><a14:m/></mc:Choice>'
            "<mc:Fallback><a:r><a:t>the fallback of an equation</a:t></a:r></mc:Fallback></mc:AlternateContent>")

# Shapes


def shape(name, text="", application="", drawing="", properties="", marks=""):
    return (f'<p:sp><p:nvSpPr><p:cNvPr id="2" name="{name}">{drawing}</p:cNvPr><p:cNvSpPr {marks}/>'
            f"<p:nvPr>{application}</p:nvPr></p:nvSpPr><p:spPr>{properties}</p:spPr>{text}</p:sp>")


def placeholder(kind, name, text):
    return shape(name, text, f'<p:ph type="{kind}"/>' if kind else "<p:ph/>")


def text_box(name, text, drawing=""):
    return shape(name, text, drawing=drawing, marks='txBox="1"')


def line(text):
    return shape("Line", text, properties='<a:prstGeom prst="line"/>')


def group(name, *members, drawing=""):
    return (f'<p:grpSp><p:nvGrpSpPr><p:cNvPr id="3" name="{name}">{drawing}</p:cNvPr><p:cNvGrpSpPr/><p:nvPr/>'
            f"</p:nvGrpSpPr><p:grpSpPr/>{''.join(members)}</p:grpSp>")


def frame(name, kind, content):
    return (f'<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id="4" name="{name}"/><p:cNvGraphicFramePr/><p:nvPr/>'
            f'</p:nvGraphicFramePr><p:xfrm/><a:graphic><a:graphicData uri="http://schemas.openxmlformats.org/{kind}">'
            f"{content}</a:graphicData></a:graphic></p:graphicFrame>")


def table(*cells):
    rows = "".join(f"<a:tc>{cell.replace('p:txBody', 'a:txBody')}</a:tc>" for cell in cells)
    return frame("Table", "drawingml/2006/table", f"<a:tbl><a:tblPr/><a:tblGrid/><a:tr>{rows}</a:tr></a:tbl>")


def linked_object(name, relationship):
    return frame(name, "presentationml/2006/ole",
                 f'<p:oleObj name="{name}" r:id="{relationship}" progId="Excel.Sheet.12"><p:link/></p:oleObj>')


def either(choice, fallback, requires="p14"):
    return (f'<mc:AlternateContent><mc:Choice Requires="{requires}">{choice}</mc:Choice>'
            f"<mc:Fallback>{fallback}</mc:Fallback></mc:AlternateContent>")


# Packages


def page(root, *shapes, attributes="", after=""):
    return (f'<p:{root} {NAMESPACES} {attributes}><p:cSld><p:spTree><p:nvGrpSpPr><p:cNvPr id="1" name=""/>'
            f"<p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr/>{''.join(shapes)}</p:spTree></p:cSld>"
            f"{after}</p:{root}>")


def id_list(name, item, first, count):
    items = "".join(f'<p:{item} r:id="rId{first + i}"/>' for i in range(count))
    return f"<p:{name}>{items}</p:{name}>" if count else ""


def relationships(*rows):
    """Each row: id, kind or whole type, target, and "External" or nothing."""
    elements = ""
    for identifier, kind, target, *mode in rows:
        kind = kind if ":" in kind else RELATIONSHIPS + kind
        elements += (f'<Relationship Id="{identifier}" Type="{kind}" Target="{target}"'
                     + (f' TargetMode="{mode[0]}"' if mode else "") + "/>")
    return ('<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
            f"{elements}</Relationships>")


def theme(name):
    return f'<a:theme {NAMESPACES} name="{name}"/>'


def write(path, parts, main_type=MAIN_TYPE):
    """`parts`: the text of each but the content types."""
    content_types = ('<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
                     '<Default Extension="xml" ContentType="application/xml"/>'
                     '<Default Extension="rels" '
                     'ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
                     f'<Override PartName="/ppt/presentation.xml" ContentType="{main_type}"/></Types>')
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        for name, text in {"[Content_Types].xml": content_types, **parts}.items():
            package.writestr(name, text if isinstance(text, bytes) else text.encode())


def plain(*slides, **more):
    """The parts of a presentation of slides and nothing else; `more` holds further ones."""
    parts = {"_rels/.rels": relationships(("rId1", "officeDocument", "ppt/presentation.xml")),
             "ppt/presentation.xml": f"<p:presentation {NAMESPACES}>"
                                     f"{id_list('sldIdLst', 'sldId', 1, len(slides))}</p:presentation>",
             "ppt/_rels/presentation.xml.rels":
                 relationships(*((f"rId{i}", "slide", f"slides/slide{i}.xml") for i in range(1, len(slides) + 1)))}
    for number, shapes in enumerate(slides, 1):
        parts[f"ppt/slides/slide{number}.xml"] = page("sld", *shapes)
    return {**parts, **more}


def full():
    """A presentation with something in every location, its slides in another order than their files."""
    rich = [
        placeholder("ctrTitle", "Title 1", body(run("The PowerP") + run("oint") + BREAK + run(" of the\tTheme "))),
        placeholder("sldNum", "Number", body(run("slide ") + field("slidenum", "the 1") + run("1 of 11"))),
        text_box("Text &amp; box", body(
            run("banana, the other"), "", run("ee eee e: ") + EQUATION + run("eé e\u0301e"),
            field("footer", "the field") + run("Straße STRASSE ÜBER über"))),
        text_box("Pairs", body(
            run("😀 the 😀😀 𝐀the𝐀 the_x000B_x aa😀aa"), run("的 テスト. aa aaa"))),
        shape("", body(run("An office shape without a name 2007"))),
        shape("Curve", body(run("the freeform is not searched")), properties="<a:custGeom/>"),
        line(body(run("the line is not searched"))),
        group("Group", text_box("Member", body(run("the member is not searched", click("rId2")))),
              drawing=click("rId1")),
        table(body(run("the cell is not searched", click("rId1"))), body(run("more", click("rId3")))),
        either(text_box("Chosen", body(run("the chosen"))), text_box("Other", body(run("the fallback")))),
        either(text_box("Newer", body(run("the newer"))), text_box("Fallback", body(run("the known"))), "none"),
        text_box("Links", body(run("one ", click("rId1")) + run("link", click("rId1")) + BREAK
                               + run("end", click("rId1")) + run(" ") + run("two", click("rId1")),
                               run("slide", click("rId4", 'action="ppaction://hlinksldjump"'))
                               + run("show", click("", 'action="ppaction://hlinkshowjump?jump=nextslide"'))
                               + run("mail", click("rId5"))), drawing=click("rId3")),
        linked_object("Object", "rId6"),
    ]
    second = [
        placeholder("ftr", "Footer", body(run("A footer of the office, E e ") + field("slidenum", "the 2"))),
        placeholder("title", "Title", body("")),
        placeholder("", "Content", body(run("the first"), run("the second"), "", run("the last e"))),
        placeholder("body", "Empty", ""),
    ]
    master = [placeholder("title", "Master title", body(run("Click to edit the title"))),
              placeholder("ftr", "Footer", body("")), shape("Logo", body(run("the logo 1")))]
    parts = {
        "_rels/.rels": relationships(("rId1", "officeDocument", "ppt/presentation.xml"),
                                     ("rId2", CORE, "docProps/core.xml"),
                                     ("rId3", "extended-properties", "docProps/app.xml"),
                                     ("rId4", "custom-properties", "/docProps/custom.xml")),
        "ppt/presentation.xml": f"<p:presentation {NAMESPACES}>" + id_list("sldMasterIdLst", "sldMasterId", 10, 2)
                                + id_list("notesMasterIdLst", "notesMasterId", 12, 1)
                                + id_list("handoutMasterIdLst", "handoutMasterId", 13, 1)
                                + id_list("sldIdLst", "sldId", 1, 3) + "</p:presentation>",
        "ppt/_rels/presentation.xml.rels": relationships(
            ("rId1", "slide", "slides/slide2.xml"), ("rId2", "slide", "slides/slide1.xml"),
            ("rId3", "slide", "slides/slide3.xml"), ("rId10", "slideMaster", "slideMasters/slideMaster1.xml"),
            ("rId11", "slideMaster", "slideMasters/slideMaster2.xml"),
            ("rId12", "notesMaster", "notesMasters/notesMaster1.xml"),
            ("rId13", "handoutMaster", "handoutMasters/handoutMaster1.xml")),
        "ppt/slides/slide2.xml": page("sld", *rich),
        "ppt/slides/_rels/slide2.xml.rels": relationships(
            ("rId1", "hyperlink", "http://www.the.com/the%20office?e=1#the", "External"),
            ("rId2", "hyperlink", "file:///C:\\the%20office\\the.xml", "External"),
            ("rId3", "hyperlink", "../the/ee%20e.pptx", "External"), ("rId4", "slide", "slide1.xml"),
            ("rId5", "hyperlink", "mailto:the@e.com?subject=e#e", "External"),
            ("rId6", "oleObject", "file:///C:\\the%20office\\Theme.xlsx!the!R1C1", "External"),
            ("rId7", "slideLayout", "../slideLayouts/slideLayout1.xml"),
            ("rId8", "notesSlide", "../notesSlides/notesSlide1.xml")),
        "ppt/slides/slide1.xml": page("sld", *second, attributes='show="0"'),
        "ppt/slides/_rels/slide1.xml.rels": relationships(("rId1", "slideLayout", "../slideLayouts/slideLayout2.xml")),
        "ppt/slides/slide3.xml": page("sld", text_box("Last", body(run("the slide without a title"))),
                                      placeholder("ftr", "Footer", body(run("the other footer")))),
        "ppt/notesSlides/notesSlide1.xml": page("notes", placeholder("sldImg", "Image", body(run("the image"))),
                                                placeholder("body", "Notes", body(run("the notes"), run("the more")))),
        "ppt/slideLayouts/slideLayout1.xml": page(
            "sldLayout", placeholder("ctrTitle", "Layout title", body(run("Click the A"))), attributes='type="title"'),
        "ppt/slideLayouts/slideLayout2.xml": page("sldLayout", attributes='type="obj"'),
        "ppt/slideMasters/slideMaster1.xml": page("sldMaster", *master,
                                                  after=id_list("sldLayoutIdLst", "sldLayoutId", 2, 2)),
        "ppt/slideMasters/slideMaster2.xml": page("sldMaster", *master[:1]),
        "ppt/notesMasters/notesMaster1.xml": page(
            "notesMaster", placeholder("hdr", "Header", body(run("the header r"))),
            placeholder("ftr", "Footer", body(run("the footer r x"))), text_box("Box", body(run("the notes master")))),
        "ppt/handoutMasters/handoutMaster1.xml": page(
            "handoutMaster", placeholder("hdr", "Header", body(run("the handout r")))),
        "ppt/theme/theme1.xml": theme("The Theme"),
        "ppt/theme/theme2.xml": theme("Other, é"),
        "docProps/core.xml": '<c:coreProperties xmlns:c="http://schemas.openxmlformats.org/package/2006/metadata/'
                             'core-properties" xmlns:dc="http://purl.org/dc/elements/1.1/" '
                             'xmlns:dcterms="http://purl.org/dc/terms/"><dc:title>the title_x000d_ of the e</dc:title>'
                             "<dc:creator>Theme the</dc:creator><dcterms:created>2007-01-11T00:00:00Z</dcterms:created>"
                             "<dcterms:modified>2007-01-11T10:20:31Z</dcterms:modified></c:coreProperties>",
        "docProps/app.xml":
            '<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/extended-properties">'
            "<Words>2007</Words><Application>Microsoft Office PowerPoint</Application><Slides>3</Slides>"
            "<HyperlinkBase>1the 1theE the</HyperlinkBase></Properties>",
        "docProps/custom.xml":
            '<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/custom-properties" '
            'xmlns:vt="http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes">'
            + "".join(f'<property fmtid="{{D5CDD505-2E9C-101B-9397-08002B2CF9AE}}" pid="{pid}" name="{name}">'
                      f"<vt:{kind}>{value}</vt:{kind}></property>" for pid, (name, kind, value) in enumerate((
                          ("The text", "lpwstr", "the 😀 text"), ("Number", "i4", "11"), ("Float", "r8", "1.10"),
                          ("Truth", "bool", "true"), ("Date", "filetime", "2007-01-11T10:20:31Z")), 2))
            + "</Properties>",
    }
    parts["ppt/slides/_rels/slide3.xml.rels"] = parts["ppt/slides/_rels/slide1.xml.rels"]
    parts["ppt/slideLayouts/_rels/slideLayout1.xml.rels"] = relationships(
        ("rId1", "slideMaster", "../slideMasters/slideMaster1.xml"))
    parts["ppt/slideLayouts/_rels/slideLayout2.xml.rels"] = parts["ppt/slideLayouts/_rels/slideLayout1.xml.rels"]
    parts["ppt/slideMasters/_rels/slideMaster1.xml.rels"] = relationships(
        ("rId1", "theme", "../theme/theme1.xml"), ("rId2", "slideLayout", "../slideLayouts/slideLayout2.xml"),
        ("rId3", "slideLayout", "../slideLayouts/slideLayout1.xml"))
    parts["ppt/slideMasters/_rels/slideMaster2.xml.rels"] = relationships(("rId1", "theme", "/ppt/theme/theme2.xml"))
    return parts


def in_strict_names(parts):
    """The same presentation in the names of the Strict family, with another prefix."""
    names = (("http://schemas.openxmlformats.org/presentationml/2006/main", "presentationml/main"),
             ("http://schemas.openxmlformats.org/drawingml/2006/main", "drawingml/main"),
             (RELATIONSHIPS[:-1], "officeDocument/relationships"),
             ("http://schemas.openxmlformats.org/officeDocument/2006/extended-properties",
              "officeDocument/extendedProperties"))
    others = (("relationships/extended-properties", "relationships/extendedProperties"),
              ("relationships/custom-properties", "relationships/customProperties"),
              ("<p:", "<ns0:"), ("</p:", "</ns0:"), ("xmlns:p=", "xmlns:ns0="))

    def strict(text):
        for before, after in names:
            text = text.replace(before, "http://purl.oclc.org/ooxml/" + after)
        for before, after in others:
            text = text.replace(before, after)
        return text

    return {name: strict(text) for name, text in parts.items()}


def make_all(folder):
    """Presentations with something in every location, some that are poor or odd, and some that can't be read."""
    folder.mkdir()
    write(folder / "full.pptx", full())
    write(folder / "strict.pptx", in_strict_names(full()))
    write(folder / "poor.pptx", plain([text_box("Box", body(run("the only text")))], []))
    write(folder / "empty.pptx", plain())
    long_text = " ".join(["the banana eee 😀"] * 50)
    write(folder / "long.pptx", plain([placeholder("title", long_text, body(run(long_text))),
                                       *(text_box(f"Box {i}", body(*[run(long_text)] * 3)) for i in range(3))]))
    utf16 = plain([text_box("Box", body(run("the é text in UTF-16 😀")))])
    utf16["ppt/slides/slide1.xml"] = utf16["ppt/slides/slide1.xml"].encode("utf-16")
    write(folder / "utf16.pptx", utf16)
    # None of these can be searched.
    write(folder / "sheet.pptx", plain([]), MAIN_TYPE.replace("presentationml.presentation", "spreadsheetml.sheet"))
    protected = plain([])
    protected["ppt/presentation.xml"] = protected["ppt/presentation.xml"].replace(
        "</p:presentation>", "<p:modifyVerifier/></p:presentation>")
    write(folder / "protected.pptx", protected)
    missing = plain([text_box("Box", body(run("the text")))], [])
    del missing["ppt/slides/slide2.xml"]
    write(folder / "missing.pptx", missing)
    broken = plain([text_box("Box", body(run("the text")))])
    broken["ppt/slides/slide1.xml"] = broken["ppt/slides/slide1.xml"].replace("</a:r>", "")
    write(folder / "broken.pptx", broken)
    (folder / "text.pptx").write_text("the text of no presentation")
    (folder / "nothing.pptx").write_bytes(b"")
