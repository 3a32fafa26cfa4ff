"""Texts in UTF-16 units, the shapes that hold them, and where a sought text occurs in one."""

import re
import struct
import unicodedata

from markup import without_alternatives

PARAGRAPH_BREAK = "\r"
LINE_BREAK = "\v"
CONTROL = "(?:00[01][0-9A-Fa-f]|007[Ff])"


def units(text):
    """The text with one character per UTF-16 unit, so that an index is a position."""
    if text.isascii() or max(text) <= "\uffff":
        return text
    data = text.encode("utf-16-le", "surrogatepass")
    return "".join(map(chr, struct.unpack(f"<{len(data) // 2}H", data)))


def is_high(unit):
    return "\ud800" <= unit <= "\udbff"


def is_low(unit):
    return "\udc00" <= unit <= "\udfff"


def divides_pair(text, at):
    return 0 < at < len(text) and is_low(text[at]) and is_high(text[at - 1])


def join_pair(high, low):
    return chr(0x10000 + ((ord(high) - 0xD800) << 10) + ord(low) - 0xDC00)


def decode_controls(text):
    """PowerPoint writes control characters as _xHHHH_ (a line break within a run is _x000B_), and the underscore of a
    text that would read as one of these as _x005F_."""
    return re.sub(f"_x({CONTROL}|005[Ff](?=_x{CONTROL}_))_", lambda match: chr(int(match[1], 16)), text)


def fold(text):
    """Simple case folding, one unit to one unit; `text` is in units."""
    if text.isascii():
        return text.lower()
    return "".join(folded_unit(unit) for unit in text) if max(text) < "\ud800" else fold_pairs(text)


def fold_pairs(text):
    folded = []
    at = 0
    while at < len(text):
        if is_high(text[at]) and is_low(text[at + 1:at + 2] or "\0"):
            folded.append(units(folded_unit(join_pair(text[at], text[at + 1]))))
            at += 2
        else:
            folded.append(folded_unit(text[at]))
            at += 1
    return "".join(folded)


def folded_unit(character):
    full = character.casefold()
    if len(full) == 1:
        return full
    # Unicode's full folding makes several letters of one. The simple one is then the small letter, if there is one.
    small = character.lower()
    return small if len(small) == 1 else character


def is_word_character(character):
    return character == "_" or unicodedata.category(character)[0] in "LM" or unicodedata.category(character) == "Nd"


def is_word_before(text, at):
    if at == 0:
        return False
    if at > 1 and divides_pair(text, at - 1):
        return is_word_character(join_pair(text[at - 2], text[at - 1]))
    return is_word_character(text[at - 1])


def is_word_at(text, at):
    if at >= len(text):
        return False
    if divides_pair(text, at + 1):
        return is_word_character(join_pair(text[at], text[at + 1]))
    return is_word_character(text[at])


class Paragraph:
    """Its units, the spans of fields that PowerPoint writes anew, and the positions of what can't be searched."""

    def __init__(self, element):
        self.text = ""
        self.kept = []
        self.walls = []
        for child in element:
            if child.name == "a:r":
                self.text += content_of(child)
            elif child.name == "a:br":
                self.text += LINE_BREAK
            elif child.name == "a:fld":
                begin = len(self.text)
                self.text += content_of(child)
                kind = child.attribute("type").lower()
                if kind == "slidenum" or kind.startswith("datetime"):
                    self.kept.append((begin, len(self.text)))
            elif child.name not in ("a:pPr", "a:endParaRPr"):
                self.walls.append(len(self.text))  # an equation, or something newer


def content_of(run):
    element = run.child("a:t")
    return units(decode_controls(element.text())) if element is not None else ""


class ShapeText:
    """The text of a shape: its paragraphs, with a break between each two."""

    def __init__(self, paragraphs):
        self.paragraphs = paragraphs
        self.starts = []
        self.text = PARAGRAPH_BREAK.join(paragraph.text for paragraph in paragraphs)
        self._kept = []
        self._walls = []
        begin = 0
        for paragraph in paragraphs:
            self.starts.append(begin)
            self._kept += [(begin + first, begin + last) for first, last in paragraph.kept]
            self._walls += [begin + at for at in paragraph.walls]
            begin += len(paragraph.text) + 1
        self._folded = None

    def folded(self):
        if self._folded is None:
            self._folded = fold(self.text)
        return self._folded

    def occurrences(self, pair):
        """The first unit of each; they may overlap, as the search goes on one unit after the last one's start."""
        text = self.text if pair.match_case else self.folded()
        at = text.find(pair.sought)
        while at != -1:
            if self._is_hit(at, at + len(pair.sought), pair.whole_word):
                yield at
            at = text.find(pair.sought, at + 1)

    def _is_hit(self, begin, end, whole_word):
        if divides_pair(self.text, begin) or divides_pair(self.text, end):
            return False
        if whole_word and (is_word_before(self.text, begin) or is_word_at(self.text, end)):
            return False
        if any(begin < last and first < end for first, last in self._kept):
            return False
        return not any(begin < at < end for at in self._walls)


def text_of_body(body):
    return ShapeText([Paragraph(child) for child in body if child.name == "a:p"] if body is not None else [])


PLACEHOLDER, TEXT_BOX, AUTO_SHAPE, LINKED_OBJECT, OTHER = range(5)
SHAPES = {"p:sp", "p:pic", "p:graphicFrame", "p:grpSp", "p:cxnSp", "p:contentPart"}


class Shape:
    """One element of a page's shapes. A group is one, and is not entered."""

    def __init__(self, element):
        self.element = element
        self.drawing, application = non_visual(element)
        self.name = self.drawing.attribute("name") if self.drawing is not None else ""
        placeholder = None
        if element.name in ("p:sp", "p:pic", "p:graphicFrame") and application is not None:
            placeholder = application.child("p:ph")
        self.placeholder = placeholder.attribute("type", "obj") if placeholder is not None else None
        self.object = None  # p:oleObj of a linked object
        self.kind = self._kind()
        preset = element.child("p:spPr", "a:prstGeom")
        is_line = placeholder is None and preset is not None and (
            preset.attribute("prst") == "line" or
            preset.attribute("prst") == "lineInv" and self.kind != TEXT_BOX)
        self.has_text = element.name == "p:sp" and not is_line and self.placeholder != "sldImg"
        self._text = None

    def _kind(self):
        if self.placeholder is not None:
            return PLACEHOLDER
        if self.element.name == "p:sp":
            properties = self.element.child("p:nvSpPr", "p:cNvSpPr")
            if properties is not None and properties.is_true("txBox"):
                return TEXT_BOX
            if self.element.child("p:spPr", "a:custGeom") is not None:
                return OTHER
            preset = self.element.child("p:spPr", "a:prstGeom")
            return OTHER if preset is not None and preset.attribute("prst") in ("line", "lineInv") else AUTO_SHAPE
        if self.element.name == "p:graphicFrame":
            data = self.element.child("a:graphic", "a:graphicData")
            if data is not None and data.attribute("uri").endswith("/ole"):
                found = next((child for child in without_alternatives(data) if child.name == "p:oleObj"), None)
                if found is not None and found.child("p:link") is not None:
                    self.object = found
                    return LINKED_OBJECT
        return OTHER

    def text(self):
        if self._text is None:
            self._text = text_of_body(self.element.child("p:txBody"))
        return self._text


def non_visual(element):
    """p:cNvPr and p:nvPr, which stand in a shape's first child whatever that is called."""
    first = next(iter(element), None)
    if first is None:
        return None, None
    return first.child("p:cNvPr"), first.child("p:nvPr")


def is_shape(element):
    # Ink and models may stand in a namespace of PowerPoint's own.
    return element.name in SHAPES or element.name.endswith(("}contentPart", "}model3d"))


def shapes_of(root):
    tree = root.child("p:cSld", "p:spTree")
    return [Shape(child) for child in without_alternatives(tree) if is_shape(child)] if tree is not None else []
