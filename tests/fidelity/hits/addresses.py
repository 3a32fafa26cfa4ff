"""The hyperlinks of a slide, and what their addresses and the sources of linked objects read as."""

import re
import urllib.parse

from markup import chosen_branch
from texts import is_shape, non_visual, units


def address_of(target, with_fragment):
    """A relationship's target as PowerPoint shows it: web addresses as they are, paths decoded, with backslashes."""
    is_file = target.lower().startswith("file:")
    has_scheme = re.match(r"[A-Za-z][A-Za-z0-9+.-]+:", target)
    if with_fragment and not target.lower().startswith("mailto:"):
        target = target.partition("#")[0]
    if has_scheme and not is_file:
        return target
    if is_file:
        # file:///C:/a, file:///\\server\share and file://server/share, of which the last keeps its two slashes.
        slashes = re.match("/{0,3}", target[5:])[0]
        target = target[5:] if len(slashes) == 2 else target[5 + len(slashes):]
    return urllib.parse.unquote(target).replace("/", "\\")


class Hyperlink:
    def __init__(self, element, package, part):
        self.key = tuple(element.attribute(name) for name in ("r:id", "action", "invalidUrl", "tooltip"))
        relationship = package.relationship(part, element.attribute("r:id"))
        action = element.attribute("action")
        self.is_member = is_member(action, relationship, element)
        self.address = ""
        if relationship is not None and relationship.is_external:
            self.address = address_of(relationship.target, True)
        elif relationship is None:
            self.address = element.attribute("invalidUrl")
        self.address = units(self.address)


def is_member(action, relationship, element):
    """Whether PowerPoint's collection has it: links to places do, actions of a slide show don't."""
    if action.startswith(("ppaction://hlinkshowjump", "ppaction://customshow", "ppaction://program",
                          "ppaction://macro", "ppaction://ole", "ppaction://media", "ppaction://noaction")):
        return False
    return relationship is not None or element.attribute("invalidUrl") != ""


def hyperlinks_of(root, package, part):
    """In document order: of each shape first its own, on click before on hover, then those of its text."""
    links = []
    tree = root.child("p:cSld", "p:spTree")
    if tree is not None:
        collect(tree, package, part, links)
    return [link for link in links if link.is_member]


def collect(parent, package, part, links):
    for element in parent:
        if element.name == "mc:AlternateContent":
            collect(chosen_branch(element), package, part, links)
        if not is_shape(element):
            continue
        drawing, _ = non_visual(element)
        for name in ("a:hlinkClick", "a:hlinkHover"):
            found = drawing.child(name) if drawing is not None else None
            if found is not None:
                links.append(Hyperlink(found, package, part))
        if element.name == "p:grpSp":
            collect(element, package, part, links)
        elif element.name == "p:graphicFrame":
            table = element.child("a:graphic", "a:graphicData", "a:tbl")
            for row in table or ():
                for cell in row:
                    if row.name == "a:tr" and cell.name == "a:tc":
                        collect_from_text(cell.child("a:txBody"), package, part, links)
        else:
            collect_from_text(element.child("p:txBody"), package, part, links)


def collect_from_text(body, package, part, links):
    for paragraph in body or ():
        if paragraph.name != "a:p":
            continue
        # A link over several runs stands in each of them; a line break between them doesn't end it.
        current = {"a:hlinkClick": None, "a:hlinkMouseOver": None}
        for run in paragraph:
            if run.name not in ("a:r", "a:br", "a:fld"):
                continue
            for name, link in current.items():
                found = run.child("a:rPr", name)
                if found is None:
                    current[name] = link if run.name == "a:br" else None
                    continue
                new = Hyperlink(found, package, part)
                if link is None or link.key != new.key:
                    current[name] = new
                    links.append(new)
