"""External objects of a document: OLE objects and media, with the sources of linked ones."""

import struct
import zlib

from compound import CompoundFile

EMBEDDED, CONTROL, LINKED = 4044, 4078, 4046
MEDIA = (4101, 4102, 4103, 4109, 4110, 4111, 4112)  # Movies; sounds in and beside the file; music of a disc.
MEDIA_ATOM, OLE_ATOM = 4100, 4035
FILE_MONIKER, ITEM_MONIKER, COMPOSITE_MONIKER = 0x303, 0x304, 0x309


class ExternalObject:
    def __init__(self, record, presentation):
        self.id = None
        self.source = None
        self.shape_type = {EMBEDDED: 7, LINKED: 10, CONTROL: 12}.get(record.type, 16)
        atom = next(record.all(MEDIA_ATOM if record.type in MEDIA else OLE_ATOM), None)
        if atom is not None:
            self.id = atom.number(0 if record.type in MEDIA else 8)
            if record.type == LINKED:
                self.source = source_of(storage_of(presentation.object(atom.number(16))))


def external_objects(presentation):
    listed = presentation.document.child(1033)
    objects = {}
    for record in listed.children() if listed else ():
        if record.type in (EMBEDDED, CONTROL, LINKED) + MEDIA:
            made = ExternalObject(record, presentation)
            objects[made.id] = made
    return objects


def storage_of(record):
    if record is None or record.type != 4113:
        return {}
    data = record.data
    try:
        return CompoundFile(zlib.decompress(data[4:]) if record.instance == 1 else data).streams
    except (ValueError, struct.error, zlib.error, IndexError):
        return {}


def source_of(streams):
    """The absolute moniker in the stream of an OLE object [MS-OLEDS], as "path!item"."""
    data = streams.get("\x01Ole", b"")
    try:
        at = 16
        for _ in range(2):  # Reserved and relative monikers.
            at += max(4, struct.unpack_from("<I", data, at)[0])
        if struct.unpack_from("<I", data, at)[0] == 0:
            return ""
        return moniker(data, at + 4)[0]
    except struct.error:
        return ""


def moniker(data, at):
    """The text of a moniker, and where it ends."""
    kind = struct.unpack_from("<I", data, at)[0]
    at += 16
    if kind == COMPOSITE_MONIKER:
        count = struct.unpack_from("<I", data, at)[0]
        at += 4
        text = ""
        for _ in range(min(count, 16)):
            part, at = moniker(data, at)
            text += part
        return text, at
    if kind == ITEM_MONIKER:
        parts = []
        for _ in range(2):
            size = struct.unpack_from("<I", data, at)[0]
            parts.append(data[at + 4:at + 4 + size])
            at += 4 + size
        return "".join(part.split(b"\0")[0].decode("cp1252", "replace") for part in parts), at
    if kind != FILE_MONIKER:
        return "", len(data)
    size = struct.unpack_from("<I", data, at + 2)[0]
    path = data[at + 6:at + 6 + size].split(b"\0")[0].decode("cp1252", "replace")
    at += 6 + size + 24
    size = struct.unpack_from("<I", data, at)[0]
    if size > 6:
        length = struct.unpack_from("<I", data, at + 4)[0]
        path = data[at + 10:at + 10 + length].decode("utf-16-le", "replace")
    return path, at + 4 + size
