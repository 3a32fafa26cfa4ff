"""Compound files (MS-CFB): storages and streams by their paths."""

import struct

SIGNATURE = b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1"
LAST_CHAIN_NUMBER = 0xFFFFFFFA  # Everything from here on ends a chain.
STREAM, ROOT = 2, 5


class CompoundFile:
    """`streams` has the bytes of each stream by its path ("PP97_DUALSTORAGE/Pictures"), as far as they can be read."""

    def __init__(self, data):
        if data[:8] != SIGNATURE:
            raise ValueError("no compound file")
        self.data = data
        self.sector_size = 1 << struct.unpack_from("<H", data, 0x1E)[0]
        self.mini_size = 1 << struct.unpack_from("<H", data, 0x20)[0]
        self.cutoff = struct.unpack_from("<I", data, 0x38)[0]
        self.fat = self.read_fat()
        directory_start, mini_start = struct.unpack_from("<I", data, 0x30)[0], struct.unpack_from("<I", data, 0x3C)[0]
        directory = b"".join(self.sectors(directory_start))
        mini = b"".join(self.sectors(mini_start))
        self.mini_fat = struct.unpack(f"<{len(mini) // 4}I", mini[:len(mini) // 4 * 4])
        self.entries = [directory[at:at + 128] for at in range(0, len(directory) - 127, 128)]
        self.mini_stream = b"".join(self.sectors(struct.unpack_from("<I", self.entries[0], 0x74)[0]))
        self.streams = {}
        self.add_tree(struct.unpack_from("<I", self.entries[0], 0x4C)[0], "", set())

    def sector(self, number):
        start = (number + 1) * self.sector_size
        return self.data[start:start + self.sector_size]

    def read_fat(self):
        numbers = list(struct.unpack_from("<109I", self.data, 0x4C))
        further, seen = struct.unpack_from("<I", self.data, 0x44)[0], set()
        while further < LAST_CHAIN_NUMBER and further not in seen:
            seen.add(further)
            block = self.sector(further)
            values = struct.unpack(f"<{len(block) // 4}I", block[:len(block) // 4 * 4])
            if len(values) < self.sector_size // 4:
                break
            numbers += values[:-1]
            further = values[-1]
        fat = []
        for number in numbers:
            if number < LAST_CHAIN_NUMBER:
                block = self.sector(number)
                fat += struct.unpack(f"<{len(block) // 4}I", block[:len(block) // 4 * 4])
        return fat

    def sectors(self, number):
        seen = set()
        while number < len(self.fat) and number not in seen:
            seen.add(number)
            yield self.sector(number)
            number = self.fat[number]

    def mini_sectors(self, number):
        seen = set()
        while number < len(self.mini_fat) and number not in seen:
            seen.add(number)
            yield self.mini_stream[number * self.mini_size:(number + 1) * self.mini_size]
            number = self.mini_fat[number]

    def add_tree(self, first, folder, seen):
        waiting = [(first, folder)]
        while waiting:
            number, folder = waiting.pop()
            if number >= len(self.entries) or number in seen:
                continue
            seen.add(number)
            entry = self.entries[number]
            length, kind = struct.unpack_from("<HB", entry, 0x40)
            left, right, child = struct.unpack_from("<III", entry, 0x44)
            start, size = struct.unpack_from("<IQ", entry, 0x74)
            name = entry[:max(0, min(length, 64) - 2)].decode("utf-16-le", "replace")
            if self.sector_size == 512:
                size &= 0xFFFFFFFF
            if kind == STREAM:
                parts = self.mini_sectors(start) if size < self.cutoff else self.sectors(start)
                self.streams[folder + name] = b"".join(parts)[:size]
            waiting += [(left, folder), (right, folder), (child, folder + name + "/")]
