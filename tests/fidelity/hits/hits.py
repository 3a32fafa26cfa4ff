"""The hits of pairs in a presentation, found by reading the file alone: what a find run has to tell."""

import bisect
import dataclasses

import addresses
import properties
import texts
from markup import Damaged
from package import Package, comparable
from texts import AUTO_SHAPE, LINKED_OBJECT, PLACEHOLDER, TEXT_BOX, fold, units

LONGEST_LABEL = 200
ALL_KINDS = {AUTO_SHAPE, TEXT_BOX, PLACEHOLDER}

# In the order in which a run goes through them.
LOCATIONS = ("slides", "hyperlinks", "shapes", "header", "footer", "builtin-properties", "custom-properties", "notes",
             "master-per-slide", "master-per-presentation", "title-master", "notes-master", "handout-master", "links")


@dataclasses.dataclass
class Pair:
    find: str
    match_case: bool = False
    whole_word: bool = False

    def __post_init__(self):
        self.find = units(self.find)
        self.sought = self.find if self.match_case else fold(self.find)


@dataclasses.dataclass
class Hit:
    """Positions and numbers count from 1, in UTF-16 units; 0 and "" stand for what a location doesn't have."""

    location: str
    pair: int
    slide: int = 0
    title: str = ""
    design: str = ""
    property: str = ""
    part: str = ""  # "header" or "footer"
    hyperlink: int = 0
    shape: int = 0
    name: str = ""
    paragraph: int = 0
    position: int = 0
    length: int = 0
    before: str = ""
    text: str = ""
    after: str = ""
    cut_before: bool = False
    cut_after: bool = False
    counted: bool = True


class Presentation:
    def __init__(self, path):
        self._package = Package(path)
        self._main = self._package.main_part()
        root = self._package.root_of(self._main)
        if root.name != "p:presentation":
            raise Damaged("the main part is no presentation")
        if root.child("p:modifyVerifier") is not None:
            raise Damaged("a password is asked for before changes")
        self.slides = self._listed(root, "p:sldIdLst", "p:sldId")
        self.masters = self._listed(root, "p:sldMasterIdLst", "p:sldMasterId")
        self.notes_master = next(iter(self._listed(root, "p:notesMasterIdLst", "p:notesMasterId")), None)
        self.handout_master = next(iter(self._listed(root, "p:handoutMasterIdLst", "p:handoutMasterId")), None)
        self._shapes = {}

    def close(self):
        self._package.close()

    def _listed(self, root, list_name, item_name):
        parts = []
        for item in root.child(list_name) or ():
            if item.name != item_name:
                continue
            relationship = self._package.relationship(self._main, item.attribute("r:id"))
            part = self._package.follow(self._main, relationship)
            if part is None or comparable(part) in map(comparable, parts):
                raise Damaged(f"{item_name} names a part that is missing, or one twice")
            parts.append(part)
        return parts

    def shapes(self, part):
        if part not in self._shapes:
            root = self._package.root_of(part)
            if root.child("p:cSld", "p:spTree") is None:
                raise Damaged(f"{part}: no shape tree")
            self._shapes[part] = texts.shapes_of(root)
        return self._shapes[part]

    def title(self, slide):
        """What the slide's title says, as it is told of each hit on the slide."""
        for shape in self.shapes(slide):
            if shape.placeholder in ("title", "ctrTitle"):
                return label(shape.text().text) if shape.has_text else ""
        return ""

    def hyperlinks(self, slide):
        return addresses.hyperlinks_of(self._package.root_of(slide), self._package, slide)

    def notes(self, slide):
        return self._package.first_of(slide, "notesSlide")

    def design_of(self, slide):
        """The master of a slide; the first one where the slide's own layout leads to none."""
        layout = self._package.first_of(slide, "slideLayout")
        master = self._package.first_of(layout, "slideMaster") if layout is not None else None
        for known in self.masters:
            if master is not None and comparable(known) == comparable(master):
                return known
        return self.masters[0] if self.masters else None

    def design_name(self, master):
        """That of the master's theme."""
        theme = self._package.first_of(master, "theme") if master is not None else None
        return units(self._package.root_of(theme).attribute("name")) if theme is not None else ""

    def title_layout(self, master):
        for item in self._package.root_of(master).child("p:sldLayoutIdLst") or ():
            relationship = self._package.relationship(master, item.attribute("r:id"))
            layout = self._package.follow(master, relationship)
            if layout is not None and self._package.root_of(layout).attribute("type") == "title":
                return layout
        return None

    def built_in_properties(self):
        return list(properties.built_in(self._package, len(self.slides)))

    def custom_properties(self):
        return list(properties.custom(self._package))

    def link_source(self, slide, shape):
        relationship = self._package.relationship(slide, shape.object.attribute("r:id"))
        if relationship is None:
            raise Damaged("a linked object names no source")
        return units(addresses.address_of(relationship.target, False))

    def header_or_footer(self, part, kind):
        """The text of the first such placeholder; None without one."""
        for shape in self.shapes(part) if part is not None else ():
            if shape.placeholder == kind and shape.has_text:
                return shape.text().text
        return None


def label(text):
    """Names and titles are told on one line, without blanks at their ends, and at most 200 units of them."""
    cut = text[:LONGEST_LABEL - texts.divides_pair(text, LONGEST_LABEL)]
    return "".join(unit if unit >= " " else " " for unit in cut).strip(" ")


class Search:
    """What a find tells of one presentation; `hits` has what was found, `counts` the sums per pair.

    `wanted` has the pairs, the locations, how much context is told, and whether all occurrences are counted."""

    def __init__(self, presentation, wanted):
        self._deck = presentation
        self._context = wanted.context
        self._locations = wanted.locations
        self._counts_all = wanted.counts
        self.hits = []
        self.counts = []
        for number, pair in enumerate(wanted.pairs, 1):
            self._pair = pair
            self._number = number
            counts = {}
            for location in (known for known in LOCATIONS if known in wanted.locations):
                self._location = location
                counts[location] = getattr(self, "_" + location.replace("-", "_"))()
            self.counts.append(counts)

    def _add(self, text, begin, end, at, length, **place):
        """A hit at `at` of a text, of which [begin, end) is the paragraph."""
        before = max(begin, at - self._context)
        after = min(end, at + length + self._context)
        # Never half a pair.
        before += texts.divides_pair(text, before)
        after -= texts.divides_pair(text, after)
        self.hits.append(Hit(self._location, self._number, position=at - begin + 1, length=length,
                             before=text[before:at], text=text[at:at + length], after=text[at + length:after],
                             cut_before=before > begin, cut_after=after < end, **place))

    def _search_shapes(self, part, kinds, **place):
        count = 0
        for number, shape in enumerate(self._deck.shapes(part), 1):
            if shape.kind not in kinds or not shape.has_text:
                continue
            body = shape.text()
            length = len(self._pair.find)
            for at in body.occurrences(self._pair):
                paragraph = bisect.bisect_right(body.starts, at) - 1
                last = bisect.bisect_right(body.starts, at + length) - 1
                end = body.starts[last] + len(body.paragraphs[last].text)
                self._add(body.text, body.starts[paragraph], end, at, length, paragraph=paragraph + 1, shape=number,
                          name=label(units(shape.name)), **place)
                count += 1
                if not self._counts_all:
                    break
        return count

    def _search_value(self, text, **place):
        """A plain value, of which occurrences don't overlap."""
        sought = self._pair.sought
        searched = text if self._pair.match_case else fold(text)
        length = len(sought)
        count = 0
        last_end = 0  # of the last hit
        at = searched.find(sought)
        while at != -1:
            if not self._pair.whole_word or self._is_whole_word(text, at, at + length, last_end):
                self._add(text, 0, len(text), at, length, **place)
                count += 1
                last_end = at + length
                # Whole words are all counted in any case.
                if not self._counts_all and not self._pair.whole_word:
                    break
            at = searched.find(sought, at + length)
        return count

    @staticmethod
    def _is_whole_word(text, begin, end, last_end):
        """Values know letters from A to Z alone. Of two hits in a row the first has been taken out when the second is
        looked at, so that it doesn't touch it; what counts then is what stood before the first."""
        def is_letter(unit):
            return unit.isascii() and unit.isalpha()
        if begin == last_end != 0:
            return not is_letter(text[end:end + 1])
        return not (is_letter(text[begin - 1:begin]) if begin else False) and not is_letter(text[end:end + 1])

    def _slides(self):
        return sum(self._search_shapes(slide, {PLACEHOLDER}, slide=number, title=self._deck.title(slide))
                   for number, slide in enumerate(self._deck.slides, 1))

    def _shapes(self):
        return sum(self._search_shapes(slide, {AUTO_SHAPE, TEXT_BOX}, slide=number, title=self._deck.title(slide))
                   for number, slide in enumerate(self._deck.slides, 1))

    def _notes(self):
        count = 0
        for number, slide in enumerate(self._deck.slides, 1):
            notes = self._deck.notes(slide)
            if notes is not None:
                count += self._search_shapes(notes, ALL_KINDS, slide=number, title=self._deck.title(slide))
        return count

    def _hyperlinks(self):
        count = 0
        for number, slide in enumerate(self._deck.slides, 1):
            for place, link in enumerate(self._deck.hyperlinks(slide), 1):
                count += self._search_value(link.address, slide=number, title=self._deck.title(slide),
                                            hyperlink=place)
        return count

    @staticmethod
    def _header():
        return 0

    def _footer(self):
        """The first footer that can be read ends the search, and its hits are not counted."""
        for number, slide in enumerate(self._deck.slides, 1):
            text = self._deck.header_or_footer(slide, "ftr")
            if text is None:
                continue
            first = len(self.hits)
            self._search_value(text, slide=number, title=self._deck.title(slide), part="footer")
            for hit in self.hits[first:]:
                hit.counted = False
            break
        return 0

    def _builtin_properties(self):
        """One that can't be read repeats the count of the one before."""
        total = last = 0
        for name, text in self._deck.built_in_properties():
            if text is not None:
                last = self._search_value(text, property=label(name))
            total += last
        return total

    def _custom_properties(self):
        return sum(self._search_value(text, property=label(name)) for name, text in self._deck.custom_properties())

    def _master_per_slide(self):
        count = 0
        # A first design without a name counts as met.
        met = {""}
        is_first = True
        for slide in self._deck.slides:
            master = self._deck.design_of(slide)
            name = self._deck.design_name(master)
            if name in met:
                continue
            if is_first:
                met.clear()
                is_first = False
            met.add(name)
            if master is not None:
                count += self._search_shapes(master, ALL_KINDS, design=label(name))
        return count

    def _master_per_presentation(self):
        return sum(self._search_shapes(master, ALL_KINDS, design=label(self._deck.design_name(master)))
                   for master in self._deck.masters)

    def _title_master(self):
        count = 0
        for master in self._deck.masters:
            layout = self._deck.title_layout(master)
            if layout is not None:
                count += self._search_shapes(layout, ALL_KINDS, design=label(self._deck.design_name(master)))
        return count

    def _notes_master(self):
        return self._search_master(self._deck.notes_master) + self._search_texts_of_notes_master()

    def _handout_master(self):
        """Header and footer are those of the notes master, left to its own location when that is searched too."""
        count = self._search_master(self._deck.handout_master)
        return count + (0 if "notes-master" in self._locations else self._search_texts_of_notes_master())

    def _search_master(self, master):
        return self._search_shapes(master, ALL_KINDS) if master is not None else 0

    def _search_texts_of_notes_master(self):
        count = 0
        for part, kind in (("header", "hdr"), ("footer", "ftr")):
            text = self._deck.header_or_footer(self._deck.notes_master, kind)
            count += self._search_value(text or "", part=part)
        return count

    def _links(self):
        count = 0
        for number, slide in enumerate(self._deck.slides, 1):
            for place, shape in enumerate(self._deck.shapes(slide), 1):
                if shape.kind == LINKED_OBJECT:
                    count += self._search_value(self._deck.link_source(slide, shape), slide=number,
                                                title=self._deck.title(slide), shape=place,
                                                name=label(units(shape.name)))
        return count
