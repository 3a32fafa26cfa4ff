"""The document properties of a presentation as texts: what a search looks into (ECMA-376 part 1, 15.2.12)."""

import datetime
import re
import time

from texts import units

# In PowerPoint's order: name, kind, element, and what one that is not in the file reads as (None: it can't be read).
BUILT_IN = (
    ("Title", "text", "dc:title", ""),
    ("Subject", "text", "dc:subject", ""),
    ("Author", "text", "dc:creator", ""),
    ("Keywords", "text", "cp:keywords", ""),
    ("Comments", "text", "dc:description", ""),
    ("Template", "text", "app:Template", ""),
    ("Last author", "text", "cp:lastModifiedBy", ""),
    ("Revision number", "text", "cp:revision", ""),
    ("Application name", "text", "app:Application", ""),
    ("Last print date", "date", "cp:lastPrinted", None),
    ("Creation date", "date", "dcterms:created", None),
    ("Last save time", "date", "dcterms:modified", None),
    ("Total editing time", "number", "app:TotalTime", "0"),
    ("Number of pages", "number", "app:Pages", None),
    ("Number of words", "number", "app:Words", "0"),
    ("Number of characters", "number", "app:Characters", None),
    ("Security", "number", "app:DocSecurity", "0"),
    ("Category", "text", "cp:category", ""),
    ("Format", "text", "app:PresentationFormat", ""),
    ("Manager", "text", "app:Manager", ""),
    ("Company", "text", "app:Company", ""),
    ("Number of bytes", "number", "", None),
    ("Number of lines", "number", "app:Lines", None),
    ("Number of paragraphs", "number", "app:Paragraphs", "0"),
    ("Number of slides", "number", "app:Slides", "slides"),
    ("Number of notes", "number", "app:Notes", "0"),
    ("Number of hidden Slides", "number", "app:HiddenSlides", "0"),
    ("Number of multimedia clips", "number", "app:MMClips", "0"),
    ("Hyperlink base", "text", "app:HyperlinkBase", ""),
    ("Number of characters (with spaces)", "number", "app:CharactersWithSpaces", None),
    ("Content type", "text", "cp:contentType", ""),
    ("Content status", "text", "cp:contentStatus", ""),
    ("Language", "text", "dc:language", ""),
    ("Document version", "text", "cp:version", ""),
)
TEXTS = {"lpwstr", "lpstr", "bstr"}
WHOLE_NUMBERS = {"i1", "i2", "i4", "int", "i8", "ui1", "ui2", "ui4", "uint", "ui8"}
FLOATS = {"r4", "r8", "decimal", "cy"}


def decode(text):
    """Line ends of properties are written as _x000d_ (ECMA-376 part 1, 22.9.2.19)."""
    return units(re.sub("_x([0-9A-Fa-f]{4})_", lambda match: chr(int(match[1], 16)), text))


def date_text(text):
    """Local time in the "C" locale; midnight as the date alone. None for what is no date."""
    match = re.match(r"(\d{4})-(\d\d)-(\d\d)(?:[T ](\d\d):(\d\d)(?::(\d\d))?(?:\.\d*)?(?:([+-])(\d\d):(\d\d))?)?", text)
    if not match:
        return None
    year, month, day, hour, minute, second = (int(part or 0) for part in match.groups()[:6])
    if not (1 <= month <= 12 and 1 <= day <= 31):
        return None
    try:
        moment = datetime.datetime(year, month, 1, tzinfo=datetime.timezone.utc)
        moment += datetime.timedelta(days=day - 1, hours=hour, minutes=minute, seconds=second)
        if match[7]:
            offset = datetime.timedelta(hours=int(match[8]), minutes=int(match[9]))
            moment += offset if match[7] == "-" else -offset
    except (ValueError, OverflowError):
        return None
    local = time.localtime(moment.timestamp())
    is_midnight = (local.tm_hour, local.tm_min, local.tm_sec) == (0, 0, 0)
    return time.strftime("%m/%d/%y" if is_midnight else "%m/%d/%y %H:%M:%S", local)


def number_text(text):
    """The digits at the start; what follows them doesn't count."""
    match = re.match(r"-?\d+", text)
    return str(int(match[0])) if match else "0"


def built_in(package, slide_count):
    """(name, text) of each; the text is None where it can't be read."""
    stored = {}
    for kind in (("core-properties",), ("extended-properties", "extendedProperties")):
        part = package.first_of("", *kind)
        if part is not None:
            for element in package.root_of(part):
                stored.setdefault(element.name, element)
    for name, kind, element, unset in BUILT_IN:
        text = str(slide_count) if unset == "slides" else unset
        if element in stored:
            text = decode(stored[element].text())
            if kind == "number":
                text = number_text(text)
            elif kind == "date":
                text = date_text(text)
        yield name, text


def custom(package):
    """(name, text) of each, in the order of the file."""
    part = package.first_of("", "custom-properties", "customProperties")
    if part is None:
        return
    for element in package.root_of(part):
        if element.name == "custom:property":
            yield units(element.attribute("name")), units(custom_text(element))


def custom_text(element):
    value = next(iter(element), None)
    if value is None:
        return ""
    kind = value.name.removeprefix("vt:")
    text = decode(value.text())
    if kind in WHOLE_NUMBERS and re.fullmatch(r"-?\d+", text):
        return str(int(text))
    if kind in FLOATS:
        return float_text(text)
    if kind == "bool":
        return "True" if text in ("1", "true", "True", "TRUE") else "False"
    if kind in ("filetime", "date"):
        return date_text(text) or text
    return text if kind in TEXTS | WHOLE_NUMBERS else ""


def float_text(text):
    try:
        number = float(text)
    except ValueError:
        return text
    return str(int(number)) if number.is_integer() and abs(number) < 1e15 else repr(number)
