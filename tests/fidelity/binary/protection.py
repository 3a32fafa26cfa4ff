"""RC4 CryptoAPI encryption [MS-OFFCRYPTO] with the password that PowerPoint tries by itself: that of presentations
which only changing is protected of."""

import hashlib
import struct

SILENT_PASSWORD = "/01Hannes Ruescher/01"


class PasswordNeeded(Exception):
    pass


def rc4(key, data):
    state, j = list(range(256)), 0
    for i in range(256):
        j = (j + state[i] + key[i % len(key)]) & 255
        state[i], state[j] = state[j], state[i]
    out, i, j = bytearray(), 0, 0
    for byte in data:
        i = (i + 1) & 255
        j = (j + state[i]) & 255
        state[i], state[j] = state[j], state[i]
        out.append(byte ^ state[(state[i] + state[j]) & 255])
    return bytes(out)


class Session:
    def __init__(self, data):
        size = struct.unpack_from("<I", data, 8)[0]
        bits = struct.unpack_from("<I", data, 12 + 16)[0] or 40
        verifier = data[12 + size:]
        salt = verifier[4:20]
        self.size = bits // 8
        self.base = hashlib.sha1(salt + SILENT_PASSWORD.encode("utf-16-le")).digest()
        text = rc4(self.key(0), verifier[20:36] + verifier[40:60])
        if hashlib.sha1(text[:16]).digest() != text[16:36]:
            raise PasswordNeeded()

    def key(self, block):
        key = hashlib.sha1(self.base + struct.pack("<I", block)).digest()[:self.size]
        return key.ljust(16, b"\0") if self.size == 5 else key

    def decrypt(self, persist, data):
        return rc4(self.key(persist), data)
