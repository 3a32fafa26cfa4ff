"""Shapes of a drawing, with the numbers of their types and what they hold."""

import struct

from texts import text_groups

GROUP, SHAPE, CLIENT_TEXT, CLIENT_DATA = 0xF003, 0xF004, 0xF00D, 0xF011
SHAPE_ATOM, OPTIONS, TERTIARY_OPTIONS = 0xF00A, 0xF00B, 0xF122
PLACEHOLDER, ROUND_TRIP_PLACEHOLDER, OBJECT_REFERENCE = 3011, 1056, 3009
OUTLINE_REFERENCE = 3998
PATRIARCH, DELETED = 0x4, 0x8
NOTES_IMAGES = (5, 11)
FOOTER = 9
VERTICES, TABLE, LINKED_PICTURE_FLAGS = 0x145, 0x39F, 0x106
LINK_TO_FILE = 8
WITHOUT_TEXT_FRAME = (6, 7, 9, 10, 11, 12, 13, 15, 16, 19)


def options(container):
    """The values of a shape's properties; of complex ones the size."""
    values = {}
    for record in container.children():
        if record.type in (OPTIONS, TERTIARY_OPTIONS):
            for i in range(min(record.instance, len(record.data) // 6)):
                number, value = struct.unpack_from("<HI", record.data, 6 * i)
                values[number & 0x3FFF] = value
    return values


class Shape:
    def __init__(self, record, page, in_group=False):
        self.record, self.page = record, page
        self.is_group = record.type == GROUP
        self.container = record.child(SHAPE) if self.is_group else record
        atom = self.container.child(SHAPE_ATOM) if self.container else None
        self.preset = atom.instance if atom else 0
        self.flags = atom.number(4) if atom else DELETED
        self.client = self.container.child(CLIENT_DATA) if self.container else None
        self.members = []
        if self.is_group:
            self.members = [Shape(child, page, True) for child in list(record.children())[1:]
                            if child.type in (GROUP, SHAPE)]
        self.text = self.read_text()

    def client_record(self, kind):
        return self.client.child(kind) if self.client else None

    @property
    def placement(self):
        atom = self.client_record(PLACEHOLDER)
        return atom.data[4] if atom and len(atom.data) > 4 else 0

    @property
    def footer_kind(self):
        atom = self.client_record(ROUND_TRIP_PLACEHOLDER)
        return atom.data[0] if atom and atom.data else 0

    @property
    def object(self):
        reference = self.client_record(OBJECT_REFERENCE)
        return self.page.objects.get(reference.number(0)) if reference else None

    def type(self):
        if self.placement or self.footer_kind:
            return 14
        values = options(self.container)
        if self.is_group:
            return 19 if values.get(TABLE, 0) & 1 else 6
        if self.preset == 202:
            return 17
        if self.preset == 75:
            if self.object is not None:
                return self.object.shape_type
            return 11 if values.get(LINKED_PICTURE_FLAGS, 0) & LINK_TO_FILE else 13
        if self.preset == 201:
            return 12
        if self.preset == 20 or 32 <= self.preset <= 40:
            return 9
        if self.preset == 0 and VERTICES in values:
            return 5
        return 15 if 136 <= self.preset <= 175 else 1

    def has_text_frame(self):
        if self.is_group or self.preset in (75, 201) or self.placement in NOTES_IMAGES:
            return False
        return self.text is not None or self.type() not in WITHOUT_TEXT_FRAME

    def read_text(self):
        box = self.container.child(CLIENT_TEXT) if self.container and not self.is_group else None
        if box is None:
            return None
        reference = box.child(OUTLINE_REFERENCE)
        if reference is not None:
            number = reference.number(0)
            return self.page.outline[number] if number < len(self.page.outline) else None
        return next(iter(text_groups(box.children())), None)

    def as_json(self):
        shape = {"type": self.type()}
        if self.has_text_frame():
            shape.update(self.text.as_json() if self.text else {"text": ""})
        if self.object is not None and self.object.source is not None:
            shape["source"] = self.object.source
        inside = [text for member in self.members for text in member.all_texts()]
        if inside:
            shape["inside"] = inside
        return shape

    def all_texts(self):
        if self.flags & DELETED:
            return
        if self.text is not None:
            yield self.text.characters
        for member in self.members:
            yield from member.all_texts()

    def links(self, links):
        """In the order of the collection: of the shape by click and hover, of its text, of its members."""
        infos = [c for c in self.client.children() if c.type == 4082] if self.client else []
        found = [links.of(info) for info in sorted(infos, key=lambda info: info.instance)]
        found += links.of_text(self.text) if self.text else ()
        yield from (link for link in found if link is not None)
        for member in self.members:
            yield from member.links(links)


class Page:
    """A container with a drawing. `outline` has the texts that its shapes refer to."""

    def __init__(self, record, objects, outline=()):
        self.record, self.objects, self.outline = record, objects, outline
        drawing = record.child(1036)
        art = drawing.child(0xF002) if drawing else None
        group = art.child(GROUP) if art else None
        members = [Shape(r, self) for r in group.children() if r.type in (GROUP, SHAPE)] if group else []
        self.shapes = [shape for shape in members if not shape.flags & (PATRIARCH | DELETED)]

    def as_json(self):
        return [shape.as_json() for shape in self.shapes]

    def links(self, links):
        return [link for shape in self.shapes for link in shape.links(links)]
