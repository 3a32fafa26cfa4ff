"""The parts of a presentation and how they name each other (ECMA-376 part 2)."""

import posixpath
import urllib.parse
import zipfile
import zlib

from markup import Damaged, parse

MAIN_TYPES = {
    "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
    "application/vnd.ms-powerpoint.presentation.macroenabled.main+xml",
    "application/vnd.openxmlformats-officedocument.presentationml.template.main+xml",
    "application/vnd.ms-powerpoint.template.macroenabled.main+xml",
    "application/vnd.openxmlformats-officedocument.presentationml.slideshow.main+xml",
    "application/vnd.ms-powerpoint.slideshow.macroenabled.main+xml",
    "application/vnd.ms-powerpoint.addin.macroenabled.main+xml",
}


class Relationship:
    def __init__(self, element):
        self.id = element.attribute("Id")
        self.target = element.attribute("Target")
        self.is_external = element.attribute("TargetMode").lower() == "external"
        # Producers write the base in several ways; the last segment tells the kind, but for Strict's own spelling.
        self.kind = element.attribute("Type").rpartition("/")[2]


class Package:
    def __init__(self, path):
        try:
            self._zip = zipfile.ZipFile(path)
        except (zipfile.BadZipFile, OSError, ValueError, NotImplementedError) as error:
            raise Damaged(str(error)) from error
        # A later entry of the same name stands for all before it. Letters' case doesn't count.
        self._entries = {comparable(info.filename): info for info in self._zip.infolist()}
        self._roots = {}
        self._relationships = {}

    def close(self):
        self._zip.close()

    def has(self, part):
        return comparable(part) in self._entries

    def bytes_of(self, part):
        try:
            return self._zip.read(self._entries[comparable(part)])
        except (zipfile.BadZipFile, zlib.error, EOFError, RuntimeError, NotImplementedError, OSError) as error:
            raise Damaged(f"{part}: {error}") from error

    def root_of(self, part):
        key = comparable(part)
        if key not in self._roots:
            self._roots[key] = parse(self.bytes_of(part), part)
        return self._roots[key]

    def relationships_of(self, part):
        """Those of a part, "" for the package itself, in their order."""
        if part not in self._relationships:
            folder, _, name = part.rpartition("/")
            source = posixpath.join(folder, "_rels", name + ".rels")
            found = []
            if self.has(source):
                found = [Relationship(element) for element in self.root_of(source)
                         if element.name == "rels:Relationship"]
            self._relationships[part] = found
        return self._relationships[part]

    def relationship(self, part, relationship_id):
        return next((item for item in self.relationships_of(part) if item.id == relationship_id), None)

    def follow(self, part, relationship):
        """The part that a relationship leads to; None for none, an external one and a missing part."""
        if relationship is None or relationship.is_external:
            return None
        target = relationship.target.replace("\\", "/")
        folder = "" if target.startswith("/") else part.rpartition("/")[0]
        whole = posixpath.normpath(posixpath.join("/", folder, target)).lstrip("/")
        for name in (whole, urllib.parse.unquote(whole)):
            if self.has(name):
                return name
        return None

    def first_of(self, part, *kinds):
        relationship = next((item for item in self.relationships_of(part) if item.kind in kinds), None)
        return self.follow(part, relationship)

    def main_part(self):
        if not self.has("[Content_Types].xml"):
            raise Damaged("no content types")
        main = self.first_of("", "officeDocument")
        if main is None:
            raise Damaged("no main part")
        kind = self._type_of(main).split(";")[0].strip().lower()
        if kind not in MAIN_TYPES:
            raise Damaged(f"the main part is of type {kind!r}")
        return main

    def _type_of(self, part):
        defaults = {}
        for element in self.root_of("[Content_Types].xml"):
            if element.name == "types:Override" and comparable(element.attribute("PartName")) == comparable(part):
                return element.attribute("ContentType")
            if element.name == "types:Default":
                defaults[element.attribute("Extension").lower()] = element.attribute("ContentType")
        return defaults.get(part.rpartition(".")[2].lower(), "")


def comparable(name):
    return name.replace("\\", "/").lstrip("/").lower()
