"""Property sets [MS-OLEPS]: the built-in properties under the names of PowerPoint's object model, and custom ones."""

import datetime
import struct

SUMMARY = {2: "Title", 3: "Subject", 4: "Author", 5: "Keywords", 6: "Comments", 7: "Template", 8: "Last author",
           9: "Revision number", 10: "Total editing time", 11: "Last print date", 12: "Creation date",
           13: "Last save time", 14: "Number of pages", 15: "Number of words", 16: "Number of characters",
           18: "Application name", 19: "Security"}
DOCUMENT = {2: "Category", 3: "Format", 4: "Number of bytes", 5: "Number of lines", 6: "Number of paragraphs",
            7: "Number of slides", 8: "Number of notes", 9: "Number of hidden Slides",
            10: "Number of multimedia clips", 14: "Manager", 15: "Company", 17: "Number of characters (with spaces)",
            26: "Content type", 27: "Content status", 28: "Language", 29: "Document version"}
LINK_BASE, LINK_LIST = "_PID_LINKBASE", "_PID_HLINKS"
CODECS = {1200: "utf-16-le", 65001: "utf-8", 10000: "mac_roman", 10029: "mac_latin2"}
NUMBERS = {2: "<h", 3: "<i", 4: "<f", 5: "<d", 16: "<b", 17: "<B", 18: "<H", 19: "<I", 20: "<q", 21: "<Q", 22: "<i",
           23: "<I"}
EPOCH = datetime.datetime(1601, 1, 1)


class Section:
    def __init__(self, data, at):
        self.data, self.at = data, at
        size, count = struct.unpack_from("<II", data, at)
        self.places = {}
        for i in range(min(count, (len(data) - at) // 8)):
            number, offset = struct.unpack_from("<II", data, at + 8 + 8 * i)
            self.places.setdefault(number, at + offset)
        page = self.value(1) if 1 in self.places else 1252
        self.page = page & 0xFFFF if isinstance(page, int) else 1252

    def text(self, raw):
        codec = CODECS.get(self.page, f"cp{self.page}")
        try:
            text = raw.decode(codec, "replace")
        except LookupError:
            text = raw.decode("cp1252", "replace")
        return text.split("\0")[0]

    def value(self, number):
        at = self.places[number]
        kind = struct.unpack_from("<I", self.data, at)[0] & 0xFFFF
        at += 4
        if kind == 30:
            size = struct.unpack_from("<I", self.data, at)[0]
            return self.text(self.data[at + 4:at + 4 + size])
        if kind == 31:
            size = struct.unpack_from("<I", self.data, at)[0]
            return self.data[at + 4:at + 4 + 2 * size].decode("utf-16-le", "replace").split("\0")[0]
        if kind == 11:
            return struct.unpack_from("<h", self.data, at)[0] != 0
        if kind == 64:
            return {"steps": struct.unpack_from("<Q", self.data, at)[0]}
        if kind == 65:
            size = struct.unpack_from("<I", self.data, at)[0]
            return self.data[at + 4:at + 4 + size]
        if kind in NUMBERS:
            return struct.unpack_from(NUMBERS[kind], self.data, at)[0]
        return "" if kind in (0, 1) else None

    def names(self):
        """The dictionary, in its order: [(number, name)]."""
        if 0 not in self.places:
            return []
        at = self.places[0]
        count = struct.unpack_from("<I", self.data, at)[0]
        at += 4
        names = []
        for _ in range(min(count, len(self.data) // 8)):
            number, size = struct.unpack_from("<II", self.data, at)
            at += 8
            size *= 2 if self.page == 1200 else 1
            names.append((number, self.text(self.data[at:at + size])))
            at += (size + 3) // 4 * 4 if self.page == 1200 else size
        return names


def sections(data):
    count = struct.unpack_from("<I", data, 24)[0]
    return [Section(data, struct.unpack_from("<I", data, 44 + 20 * i)[0]) for i in range(min(count, 2))]


def shown(name, value):
    if not isinstance(value, dict):
        return value
    if name == "Total editing time":
        return value["steps"] // 600_000_000
    if value["steps"] == 0:
        return None
    try:
        return (EPOCH + datetime.timedelta(microseconds=value["steps"] // 10)).isoformat()
    except OverflowError:
        return None


def listed_links(blob):
    """The list of all links that old versions read: six values for each, of which the last two are texts."""
    values, at = [], 4
    try:
        for _ in range(struct.unpack_from("<I", blob, 0)[0]):
            kind, value = struct.unpack_from("<II", blob, at)
            at += 8
            if kind == 31:
                text = blob[at:at + 2 * value].decode("utf-16-le", "replace")
                at += (2 * value + 3) // 4 * 4
                value = text.rstrip("\0")
            values.append(value)
    except struct.error:
        pass
    return [{"address": values[i + 4], "subAddress": values[i + 5]} for i in range(0, len(values) - 5, 6)]


def read(streams):
    """{"builtIn": {name: value}, "custom": [{"name", "value"}], "links": [{"address", "subAddress"}]}; a date is a
    text, what can't be shown is null."""
    result = {"builtIn": {}, "custom": [], "links": []}
    for stream, table in (("\x05SummaryInformation", SUMMARY), ("\x05DocumentSummaryInformation", DOCUMENT)):
        try:
            found = sections(streams.get(stream, b""))
        except struct.error:
            continue
        for number, name in table.items():
            if found and number in found[0].places:
                put(result["builtIn"], name, found[0], number)
        for number, name in found[1].names() if len(found) > 1 and table is DOCUMENT else ():
            if name == LINK_BASE:
                base = found[1].value(number)
                if isinstance(base, bytes):
                    result["builtIn"]["Hyperlink base"] = base.decode("utf-16-le", "replace").split("\0")[0]
            elif name == LINK_LIST:
                blob = found[1].value(number)
                result["links"] = listed_links(blob) if isinstance(blob, bytes) else []
            elif not name.startswith("_PID_") and number in found[1].places:
                property_ = {}
                put(property_, name, found[1], number)
                result["custom"] += [{"name": n, "value": v} for n, v in property_.items()]
    return result


def put(values, name, section, number):
    try:
        value = shown(name, section.value(number))
    except struct.error:
        return
    values[name] = None if isinstance(value, bytes) else value
