"""XML as a tree of elements, read by expat, with the namespaces of Office Open XML under short names."""

import xml.parsers.expat

TRANSITIONAL = "http://schemas.openxmlformats.org/"
STRICT = "http://purl.oclc.org/ooxml/"

# Both families of names (ECMA-376 parts 1 and 4) under one short name each.
SHORT_NAMES = {
    TRANSITIONAL + "presentationml/2006/main": "p",
    STRICT + "presentationml/main": "p",
    TRANSITIONAL + "drawingml/2006/main": "a",
    STRICT + "drawingml/main": "a",
    TRANSITIONAL + "officeDocument/2006/relationships": "r",
    STRICT + "officeDocument/relationships": "r",
    TRANSITIONAL + "officeDocument/2006/extended-properties": "app",
    STRICT + "officeDocument/extendedProperties": "app",
    TRANSITIONAL + "officeDocument/2006/custom-properties": "custom",
    STRICT + "officeDocument/customProperties": "custom",
    TRANSITIONAL + "officeDocument/2006/docPropsVTypes": "vt",
    STRICT + "officeDocument/docPropsVTypes": "vt",
    TRANSITIONAL + "markup-compatibility/2006": "mc",
    TRANSITIONAL + "package/2006/content-types": "types",
    TRANSITIONAL + "package/2006/relationships": "rels",
    TRANSITIONAL + "package/2006/metadata/core-properties": "cp",
    "http://purl.org/dc/elements/1.1/": "dc",
    "http://purl.org/dc/terms/": "dcterms",
}
# What PowerPoint adds of its own: families by year.
EXTENSIONS = ("http://schemas.microsoft.com/office/powerpoint/", "http://schemas.microsoft.com/office/drawing/",
              "urn:schemas-microsoft-com:vml")


class Damaged(Exception):
    """What was read is no presentation that can be searched."""


def short_name(uri):
    return SHORT_NAMES.get(uri, uri)


def is_understood(uri):
    return uri in SHORT_NAMES or uri.startswith(EXTENSIONS)


class Element:
    __slots__ = ("name", "attributes", "content", "scope")

    def __init__(self, name, attributes, scope):
        self.name = name  # "p:sp", or "{uri}local" where the namespace has no short name
        self.attributes = attributes
        self.content = []  # elements and texts
        self.scope = scope  # the namespace of each prefix

    def __iter__(self):
        return (child for child in self.content if isinstance(child, Element))

    def child(self, *path):
        """The first child of that name, and so on downwards; None where there is none."""
        element = self
        for name in path:
            element = next((child for child in element if child.name == name), None)
            if element is None:
                return None
        return element

    def attribute(self, name, otherwise=""):
        return self.attributes.get(name, otherwise)

    def is_true(self, name):
        return self.attribute(name) in ("1", "true", "on")

    def text(self):
        """All text in it, elements within it included."""
        return "".join(child if isinstance(child, str) else child.text() for child in self.content)


def qualified(name, scope, is_attribute=False):
    prefix, colon, local = name.rpartition(":")
    if is_attribute and not colon:
        return local
    uri = scope.get(prefix, "")
    short = short_name(uri)
    return f"{short}:{local}" if short != uri else f"{{{uri}}}{local}"


def parse(data, part):
    """The root element. Raises Damaged for what is not well-formed, or declares a document type."""
    open_elements = []
    roots = []

    def start(name, pairs):
        scope = open_elements[-1].scope if open_elements else {"xml": "xml"}
        declared = {key[6:]: value for key, value in pairs.items() if key.startswith("xmlns:")}
        if "xmlns" in pairs:
            declared[""] = pairs["xmlns"]
        if declared:
            scope = {**scope, **declared}
        attributes = {qualified(key, scope, True): value for key, value in pairs.items()
                      if key != "xmlns" and not key.startswith("xmlns:")}
        element = Element(qualified(name, scope), attributes, scope)
        (open_elements[-1].content if open_elements else roots).append(element)
        open_elements.append(element)

    def end(_):
        open_elements.pop()

    def characters(text):
        content = open_elements[-1].content
        if content and isinstance(content[-1], str):
            content[-1] += text
        else:
            content.append(text)

    def document_type(*_):
        raise Damaged(f"{part}: a document type is declared")

    parser = xml.parsers.expat.ParserCreate()
    parser.buffer_text = True
    parser.StartElementHandler = start
    parser.EndElementHandler = end
    parser.CharacterDataHandler = characters
    parser.StartDoctypeDeclHandler = document_type
    try:
        parser.Parse(data, True)
    except (xml.parsers.expat.ExpatError, LookupError, ValueError) as error:
        raise Damaged(f"{part}: {error}") from error
    return roots[0]


def chosen_branch(alternate):
    """The branch of mc:AlternateContent that applies (ECMA-376 part 3, 9.3): an element, which may be empty."""
    for branch in alternate:
        if branch.name == "mc:Choice":
            required = branch.attribute("Requires").split()
            if required and all(is_understood(branch.scope.get(prefix, "")) for prefix in required):
                return branch
    return alternate.child("mc:Fallback") or Element("mc:Fallback", {}, alternate.scope)


def without_alternatives(parent):
    """The children of an element, those of chosen branches in the place of alternate content."""
    for child in parent:
        if child.name == "mc:AlternateContent":
            yield from without_alternatives(chosen_branch(child))
        else:
            yield child
