"""Texts of a binary presentation: groups of records that begin with a header, and the links in them."""

import struct

TEXT_HEADER, TEXT_CHARS, TEXT_BYTES = 3999, 4000, 4008
INTERACTIVE_INFO, TEXT_INTERACTIVE_INFO = 4082, 4063
METACHARACTERS = (4056, 4087, 4088, 4089, 4090, 4117)
HYPERLINK_ACTION = 4
SHOW_JUMPS = (0, 1, 2, 3, 6)  # Next, previous, first, last slide; a custom show: no places that a person could edit.


class Text:
    def __init__(self):
        self.characters = ""
        self.fields = []
        self.spans = []  # (first character, hover, InteractiveInfo)

    def as_json(self):
        return {"text": self.characters, "fields": self.fields} if self.fields else {"text": self.characters}


def text_groups(records):
    """The texts of a list of records, in order."""
    groups, info = [], None
    for record in records:
        if record.type == TEXT_HEADER:
            groups.append(Text())
            info = None
        if not groups:
            continue
        if record.type == TEXT_CHARS:
            groups[-1].characters = record.data.decode("utf-16-le", "surrogatepass")
        elif record.type == TEXT_BYTES:
            groups[-1].characters = record.data.decode("latin-1")
        elif record.type in METACHARACTERS:
            groups[-1].fields.append(record.number(0, "<i"))
        elif record.type == INTERACTIVE_INFO:
            info = record
        elif record.type == TEXT_INTERACTIVE_INFO and info is not None:
            groups[-1].spans.append((record.number(0, "<i"), info.instance, info))
            info = None
    return groups


class Links:
    """The external hyperlinks of the document, and what a use of one leads to. `listed` are those of the properties:
    PowerPoint 97 had the addresses there alone, in the order of the records."""

    def __init__(self, document, listed):
        self.known = {}
        position = 0
        objects = document.child(1033)
        for record in objects.children() if objects else ():
            atom = record.child(4051)
            if record.type == 4055 and atom is not None:
                texts = {c.instance: c.data.decode("utf-16-le", "surrogatepass")
                         for c in record.children() if c.type == 4026}
                link = {"address": texts.get(1, ""), "subAddress": texts.get(3, "")}
                if 1 not in texts and position < len(listed):
                    link["listed"] = listed[position]
                self.known[atom.number(0)] = link
                position += 1

    def of(self, info):
        """None for what is no member of the collection."""
        atom = info.child(4083)
        if atom is None or len(atom.data) < 16:
            return None
        link, action, kind = atom.number(4), atom.data[8], atom.data[12]
        if action != HYPERLINK_ACTION or kind in SHOW_JUMPS:
            return None
        return self.known.get(link)

    def of_text(self, text):
        for _, _, info in sorted(text.spans, key=lambda span: span[:2]):
            yield self.of(info)
