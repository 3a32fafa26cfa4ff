"""Does to the texts of a presentation what the hits of a replace run say, and compares them with the saved file's."""

from hits import label
from texts import LINKED_OBJECT, units

LINK = "link"


class Mismatch(Exception):
    """A hit that doesn't fit the text at its place."""


class Texts:
    """All that a run can replace: the text of each shape, link and property, under a key that stays as texts change."""

    def __init__(self, deck):
        self._deck = deck
        self.texts = {}
        names = [label(deck.design_name(master)) for master in deck.masters]
        # Masters of one name can't be told from each other.
        self._masters = {name: master for name, master in zip(names, deck.masters) if names.count(name) == 1}
        parts = [*deck.slides, deck.notes_master, deck.handout_master, *map(deck.notes, deck.slides),
                 *self._masters.values(), *map(deck.title_layout, self._masters.values())]
        for part in dict.fromkeys(part for part in parts if part is not None):
            for number, shape in enumerate(deck.shapes(part), 1):
                if shape.has_text:
                    self.texts[part, number] = shape.text().text
                elif shape.kind == LINKED_OBJECT and part in deck.slides:
                    self.texts[part, number] = deck.link_source(part, shape)
        for slide in deck.slides:
            for number, link in enumerate(deck.hyperlinks(slide), 1):
                self.texts[slide, LINK, number] = link.address
        for kind, properties in (("builtin-properties", deck.built_in_properties()),
                                 ("custom-properties", deck.custom_properties())):
            names = [name for name, _ in properties]
            for name, text in properties:
                if names.count(name) == 1:
                    self.texts[kind, label(name)] = text or ""

    def forget(self, key):
        self.texts.pop(key, None)

    def key_of(self, hit):
        """Where the hit's text is; None for a place that can't be told from another one."""
        location = hit["location"]
        slide = self._deck.slides[hit["slide"] - 1] if "slide" in hit else None
        if "property" in hit:
            key = location, units(hit["property"])
        elif "hyperlink" in hit:
            key = slide, LINK, hit["hyperlink"]
        else:
            part = self._part_of(hit, slide)
            kind = {"header": "hdr", "footer": "ftr"}.get(hit.get("headerFooter"))
            key = part, self._number_of(part, kind) if kind else hit["shape"]
        return key if key in self.texts else None

    def _part_of(self, hit, slide):
        location = hit["location"]
        if location == "notes":
            return self._deck.notes(slide)
        if slide is not None:
            return slide
        if location == "notes-master" or "headerFooter" in hit:
            return self._deck.notes_master
        if location == "handout-master":
            return self._deck.handout_master
        master = self._masters.get(units(hit.get("design", "")))
        return self._deck.title_layout(master) if master is not None and location == "title-master" else master

    def _number_of(self, part, kind):
        shapes = enumerate(self._deck.shapes(part), 1)
        return next(number for number, shape in shapes if shape.placeholder == kind and shape.has_text)


def check(before, after, hits):
    """Does to the texts of the presentation `before` what the hits say, in their order, and compares them with those of
    `after`. Raises Mismatch."""
    texts = Texts(before)
    saved = Texts(after)
    for slide in before.slides:
        if len(before.hyperlinks(slide)) != len(after.hyperlinks(slide)):
            # The text of a link was deleted, and the link with it: those after it have other numbers since then.
            for key in [key for key in texts.texts if key[:2] == (slide, LINK)]:
                texts.forget(key)
            for key in [key for key in saved.texts if key[:2] == (slide, LINK)]:
                saved.forget(key)
    replay(texts, hits)
    for key in sorted(texts.texts.keys() | saved.texts.keys(), key=str):
        if texts.texts.get(key) != saved.texts.get(key):
            raise Mismatch(f"{key} holds {saved.texts.get(key)!r}; by the hits it should hold {texts.texts.get(key)!r}")


def replay(texts, hits):
    at = 0
    while at < len(hits):
        key = texts.key_of(hits[at])
        # The hits of a plain value are all told of the value as it was before any of them.
        end = at + 1
        while "paragraph" not in hits[at] and end < len(hits) and follows(hits[end - 1], hits[end]):
            end += 1
        if key is not None:
            old = texts.texts[key]
            for hit in reversed(hits[at:end]):
                begin = place_of(hit, old)
                if hit["becomes"] is not None:
                    text = texts.texts[key]
                    texts.texts[key] = text[:begin] + units(hit["becomes"]) + text[begin + hit["length"]:]
        at = end


def follows(hit, later):
    """Whether two hits are of one value."""
    place = {"position", "length", "before", "text", "after", "cutBefore", "cutAfter", "becomes"}
    same = all(hit.get(key) == later.get(key) for key in (hit.keys() | later.keys()) - place)
    return same and later["position"] > hit["position"]


def place_of(hit, text):
    """The index in the text at which the hit stands, all that it tells of the text around included."""
    found, before, after = (units(hit[key]) for key in ("text", "before", "after"))
    begin = hit["position"] - 1
    if "paragraph" in hit:
        paragraphs = text.split("\r")
        begin += sum(len(paragraph) + 1 for paragraph in paragraphs[:hit["paragraph"] - 1])
    around = before + found + after
    if text[begin - len(before):begin - len(before) + len(around)] != around or len(found) != hit["length"]:
        raise Mismatch(f"{hit} does not stand in {text[max(begin - 100, 0):begin + 100]!r}")
    return begin
