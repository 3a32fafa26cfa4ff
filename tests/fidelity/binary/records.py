"""Records of a binary presentation [MS-PPT], and the persist objects that are alive in its newest edit."""

import struct

from protection import Session

USER_EDIT, CURRENT_USER = 4085, 4086
PERSIST_DIRECTORIES = (6001, 6002)
CRYPT_SESSION = 12052
PLAIN_TOKEN, ENCRYPTED_TOKEN = 0xE391C05F, 0xF3D1C4DF


class Record:
    def __init__(self, data, at, end=None):
        end = len(data) if end is None else end
        head, self.type, length = struct.unpack_from("<HHI", data, at)
        self.version, self.instance = head & 15, head >> 4
        self.at, self.end = at, at + 8 + length
        if self.end > end:
            raise ValueError(f"a record of type {self.type} is longer than what holds it")
        self.source = data

    @property
    def data(self):
        return self.source[self.at + 8:self.end]

    def children(self):
        at = self.at + 8
        while at + 8 <= self.end:
            try:
                record = Record(self.source, at, self.end)
            except ValueError:
                return
            yield record
            at = record.end

    def child(self, kind, instance=None):
        return next((c for c in self.children() if c.type == kind and instance in (None, c.instance)), None)

    def all(self, kind):
        """Those of a type at any depth, in order."""
        for child in self.children():
            if child.type == kind:
                yield child
            if child.version == 15:
                yield from child.all(kind)

    def number(self, at, form="<I"):
        return struct.unpack_from(form, self.data, at)[0]


class Presentation:
    """What is alive: `objects` by persist id, and the document among them."""

    def __init__(self, streams):
        prefix = "PP97_DUALSTORAGE/" if "PP97_DUALSTORAGE/PowerPoint Document" in streams else ""
        self.stream = streams.get(prefix + "PowerPoint Document")
        if self.stream is None:
            raise ValueError("no presentation")
        self.user = streams.get(prefix + "Current User", b"")
        self.edits = list(self.read_edits())
        if not self.edits:
            raise ValueError("no user edit")
        self.offsets = {}
        for edit in self.edits:
            for persist, offset in self.directory(edit):
                self.offsets.setdefault(persist, offset)
        self.session = self.read_session()
        self.document = self.object(self.edits[0].number(16))
        if self.document is None or self.document.type != 1000:
            raise ValueError("no document")

    def record(self, at, kinds):
        try:
            record = Record(self.stream, at)
        except (ValueError, struct.error):
            return None
        return record if record.type in kinds else None

    def read_edits(self):
        """From the newest to the oldest. Where one names none that can be, the one before it in the stream follows."""
        start = None
        if len(self.user) >= 20 and struct.unpack_from("<H", self.user, 2)[0] == CURRENT_USER:
            start = struct.unpack_from("<I", self.user, 16)[0]
        edit = self.record(start, [USER_EDIT]) if start is not None else None
        edit = edit or self.edit_before(len(self.stream))
        while edit is not None:
            yield edit
            last = edit.number(8)
            if last == 0:
                return
            following = self.record(last, [USER_EDIT]) if last < edit.at else None
            edit = following or self.edit_before(edit.at)

    def edit_before(self, end):
        while True:
            end = self.stream.rfind(b"\xf5\x0f", 0, end)
            if end < 2:
                return None
            edit = self.record(end - 2, [USER_EDIT])
            if edit is not None and edit.version == 0 and edit.end - edit.at in (36, 40):
                return edit

    def directory(self, edit):
        record = self.record(edit.number(12), PERSIST_DIRECTORIES)
        data, at = (record.data if record else b""), 0
        while at + 4 <= len(data):
            head = struct.unpack_from("<I", data, at)[0]
            at += 4
            for i in range(head >> 20):
                if at + 4 > len(data):
                    return
                yield (head & 0xFFFFF) + i, struct.unpack_from("<I", data, at)[0]
                at += 4

    def read_session(self):
        edit = self.edits[0]
        persist = edit.number(28) if len(edit.data) >= 32 else 0
        record = self.record(self.offsets.get(persist, len(self.stream)), [CRYPT_SESSION]) if persist else None
        return Session(record.data) if record else None

    def object(self, persist):
        at = self.offsets.get(persist)
        if at is None:
            return None
        try:
            if self.session is None:
                return Record(self.stream, at)
            head = self.session.decrypt(persist, self.stream[at:at + 8])
            length = 8 + struct.unpack_from("<I", head, 4)[0]
            return Record(self.session.decrypt(persist, self.stream[at:at + length]), 0)
        except (ValueError, struct.error):
            return None
