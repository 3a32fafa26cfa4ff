#include <gmock/gmock.h>

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/presentation/PresentationFile.h"
#include "platform/Failure.h"
#include "support/Deck.h"
#include "support/PackageReader.h"
#include "support/PartWriter.h"

namespace tessarine::test
{
namespace
{

using builtin::Limits;

/// A limit, a deck that reaches it and goes no further, and one that goes one further.
struct LimitCase {
    std::string name;
    std::function<void(Limits&)> set;
    std::function<Deck()> at;
    std::function<Deck()> beyond;
};

void PrintTo(const LimitCase& limit, std::ostream* out)
{
    *out << limit.name;
}

Deck WithSlide(const std::string& shapes, const std::string& attributes = {})
{
    return Deck()
        .Slide(TextBox(u"a"))
        .Entry("ppt/slides/slide1.xml", "<p:sld" + RootNamespaces() + attributes + "><p:cSld><p:spTree>" + shapes +
                                            "</p:spTree></p:cSld></p:sld>");
}

std::string Times(std::size_t count, const std::string& text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string Text(const std::string& runs)
{
    return "<p:sp><p:txBody><a:p>" + runs + "</a:p></p:txBody></p:sp>";
}

constexpr auto linkedRun = "<a:r><a:rPr><a:hlinkClick r:id=\"\"/></a:rPr><a:t>a</a:t></a:r><a:r/>";

std::size_t EntriesOf(const Deck& deck)
{
    return PackageReader(deck).Entries().size();
}

/// Opens a deck and reads its slides.
void Read(const Deck& deck, const Limits& limits)
{
    const std::string zip = deck.Bytes();
    builtin::PresentationFile file(BytesInMemory(std::as_bytes(std::span(zip))), limits);
    for (std::size_t slide = 0; slide < file.SlideCount(); ++slide)
        file.Slide(slide).ShapeCount();
}

/// As the end of its zip file tells.
std::size_t DirectoryBytesOf(const Deck& deck)
{
    const std::string zip = deck.Bytes();
    constexpr std::size_t endSize = 22;
    constexpr std::size_t sizeInEnd = 12;
    std::size_t size = 0;
    for (std::size_t i = 4; i-- > 0;)
        size = size << 8 | static_cast<unsigned char>(zip[zip.size() - endSize + sizeInEnd + i]);
    return size;
}

/// Of all parts that Read inflates, each once.
std::size_t BytesReadOf(const Deck& deck)
{
    std::size_t sum = 0;
    for (const char* const name : {"[Content_Types].xml", "_rels/.rels", "ppt/presentation.xml",
                                   "ppt/_rels/presentation.xml.rels", "ppt/slides/slide1.xml"})
        sum += deck.EntryBytes(name).size();
    return sum;
}

const std::vector<LimitCase> limitCases{
    {"DirectoryBytes",
     [](Limits& limits) { limits.directoryBytes = DirectoryBytesOf(Deck().Slide(TextBox(u"a")).Entry("x", "")); },
     [] { return Deck().Slide(TextBox(u"a")).Entry("x", ""); },
     [] { return Deck().Slide(TextBox(u"a")).Entry("xy", ""); }},
    {"PackageXmlBytes", [](Limits& limits) { limits.packageXmlBytes = BytesReadOf(WithSlide("<p:x/>")); },
     [] { return WithSlide("<p:x/>"); }, [] { return WithSlide("<p:x />"); }},
    {"Parts", [](Limits& limits) { limits.parts = static_cast<std::uint32_t>(EntriesOf(Deck().Slide(TextBox(u"a")))); },
     [] { return Deck().Slide(TextBox(u"a")); }, [] { return Deck().Slide(TextBox(u"a")).Entry("x", ""); }},
    {"PartBytes", [](Limits& limits) { limits.partBytes = 20'000; },
     [] {
         return Deck().Slide().Entry(
             "ppt/slides/slide1.xml",
             WithSlide("").EntryBytes("ppt/slides/slide1.xml") +
                 std::string(20'000 - WithSlide("").EntryBytes("ppt/slides/slide1.xml").size(), ' '));
     },
     [] {
         return Deck().Slide().Entry(
             "ppt/slides/slide1.xml",
             WithSlide("").EntryBytes("ppt/slides/slide1.xml") +
                 std::string(20'001 - WithSlide("").EntryBytes("ppt/slides/slide1.xml").size(), ' '));
     }},
    {"Elements", [](Limits& limits) { limits.elements = 100; }, [] { return WithSlide(Times(97, "<p:x/>")); },
     [] { return WithSlide(Times(98, "<p:x/>")); }},
    {"DenseElements", [](Limits& limits) { limits.denseElements = 60, limits.bytesForElement = 1'000'000; },
     [] { return WithSlide(Times(57, "<p:x/>")); }, [] { return WithSlide(Times(58, "<p:x/>")); }},
    {"Depth", [](Limits& limits) { limits.depth = 20; },
     [] { return WithSlide(Times(17, "<p:x>") + Times(17, "</p:x>")); },
     [] { return WithSlide(Times(18, "<p:x>") + Times(18, "</p:x>")); }},
    {"Attributes", [](Limits& limits) { limits.attributes = 12; },
     [] { return WithSlide("<p:x a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l=''/>"); },
     [] { return WithSlide("<p:x a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' m=''/>"); }},
    {"Nesting", [](Limits& limits) { limits.nesting = 3; },
     [] { return WithSlide(Times(3, "<p:grpSp>") + Text(linkedRun) + Times(3, "</p:grpSp>")); },
     [] { return WithSlide(Times(4, "<p:grpSp>") + Text(linkedRun) + Times(4, "</p:grpSp>")); }},
    {"Slides", [](Limits& limits) { limits.slides = 2; }, [] { return Deck().Slide().Slide(); },
     [] { return Deck().Slide().Slide().Slide(); }},
    {"Shapes", [](Limits& limits) { limits.shapes = 3; }, [] { return WithSlide(Times(3, Text(""))); },
     [] { return WithSlide(Times(4, Text(""))); }},
    {"Links", [](Limits& limits) { limits.links = 3; }, [] { return WithSlide(Text(Times(3, linkedRun))); },
     [] { return WithSlide(Text(Times(4, linkedRun))); }},
    {"TextUnits", [](Limits& limits) { limits.textUnits = 5; },
     [] { return WithSlide(Text("<a:r><a:t>12345</a:t></a:r>")); },
     [] { return WithSlide(Text("<a:r><a:t>123456</a:t></a:r>")); }},
    {"Ratio", [](Limits& limits) { limits.alwaysUnpacked = 50'000, limits.ratio = 20; },
     [] { return WithSlide(std::string(40'000, ' ')); }, [] { return WithSlide(std::string(60'000, ' ')); }},
};

class LimitOf : public testing::TestWithParam<LimitCase>
{
};

TEST_P(LimitOf, LetsThroughWhatReachesIt)
{
    Limits limits;
    GetParam().set(limits);

    EXPECT_NO_THROW(Read(GetParam().at(), limits));
}

TEST_P(LimitOf, RefusesOneMore)
{
    Limits limits;
    GetParam().set(limits);

    try {
        Read(GetParam().beyond(), limits);
        ADD_FAILURE() << "nothing was raised";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::FileCorrupt) << ToUtf8(failure.description);
    }
}

INSTANTIATE_TEST_SUITE_P(Engine, LimitOf, testing::ValuesIn(limitCases),
                         [](const auto& limit) { return limit.param.name; });

/// What opening a deck and reading a kind of its properties raises; 0 for nothing.
template <class Read>
std::int32_t RaisedByProperties(const Deck& deck, const Limits& limits, Read&& read)
{
    const std::string zip = deck.Bytes();
    builtin::PresentationFile file(BytesInMemory(std::as_bytes(std::span(zip))), limits);
    try {
        read(file);
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

TEST(TextsOfProperties, AreRefusedBeyondTheirLimit)
{
    Limits limits;
    limits.textUnits = 200;
    const auto builtIn = [](builtin::PresentationFile& file) { file.BuiltIn(); };
    const auto custom = [](builtin::PresentationFile& file) { file.Custom(); };
    const auto titled = [](std::size_t size) { return Deck().Core("dc:title", String(size, u'a')).Slide(); };
    const auto named = [](std::size_t size) { return Deck().Custom(u"x", "lpwstr", String(size, u'a')).Slide(); };

    EXPECT_EQ(RaisedByProperties(titled(200), limits, builtIn), 0);
    EXPECT_EQ(RaisedByProperties(titled(201), limits, builtIn), FailureNumber::FileCorrupt);
    EXPECT_EQ(RaisedByProperties(named(200), limits, custom), 0);
    EXPECT_EQ(RaisedByProperties(named(201), limits, custom), FailureNumber::FileCorrupt);
}

TEST(ANotesPageOfManySlides, IsRefusedBeyondItsLimit)
{
    Deck deck;
    for (int slide = 0; slide < 3; ++slide)
        deck.Slide(TextBox(u"a"), NotesPage(u"a"));
    deck.Edit("ppt/slides/_rels/slide2.xml.rels", "notesSlide2.xml", "notesSlide1.xml");
    deck.Edit("ppt/slides/_rels/slide3.xml.rels", "notesSlide3.xml", "notesSlide1.xml");
    const auto walk = [&](const Limits& limits) {
        const std::string zip = deck.Bytes();
        builtin::PresentationFile file(BytesInMemory(std::as_bytes(std::span(zip))), limits);
        for (int pass = 0; pass < 3; ++pass)
            for (std::size_t slide = 0; slide < file.SlideCount(); ++slide)
                file.NotesPage(slide)->ShapeCount();
    };
    Limits limits;
    limits.sharedPageBytes = 2 * deck.EntryBytes("ppt/notesSlides/notesSlide1.xml").size();

    EXPECT_NO_THROW(walk(limits));
    --limits.sharedPageBytes;
    EXPECT_THROW(walk(limits), Failure);
}

TEST(ATitleMasterOfManyDesigns, IsRefusedBeyondItsLimit)
{
    SlideMaster master(u"Theme");
    master.Add(Layout("title", TextBox(u"a")));
    Deck deck;
    deck.Master(master).Master(master).Master(master);
    for (const std::string number : {"2", "3"})
        deck.Edit("ppt/slideMasters/_rels/slideMaster" + number + ".xml.rels", "slideLayout" + number + ".xml",
                  "slideLayout1.xml");
    const auto walk = [&](const Limits& limits) {
        const std::string zip = deck.Bytes();
        builtin::PresentationFile file(BytesInMemory(std::as_bytes(std::span(zip))), limits);
        for (int pass = 0; pass < 3; ++pass)
            for (std::size_t design = 0; design < file.DesignCount(); ++design)
                file.TitleMaster(design)->ShapeCount();
    };
    Limits limits;
    limits.sharedPageBytes = 2 * deck.EntryBytes("ppt/slideLayouts/slideLayout1.xml").size();

    EXPECT_NO_THROW(walk(limits));
    --limits.sharedPageBytes;
    EXPECT_THROW(walk(limits), Failure);
}

TEST(GrowthByEdits, IsRefusedBeyondItsLimitAndNothingIsSaved)
{
    Limits limits;
    limits.grownBytes = 3;
    const std::string zip = Deck().Slide(TextBox(u"a")).Bytes();
    builtin::PresentationFile file(BytesInMemory(std::as_bytes(std::span(zip))), limits);
    builtin::PageReader& slide = file.Slide(0);

    EXPECT_EQ(slide.ReplaceText(0, 0, 1, u"123"), 3u);
    EXPECT_THROW(slide.ReplaceText(0, 0, 3, u"4567"), Failure);
    EXPECT_THROW(file.Save(u"/nowhere/at/all.pptx"), Failure);
}

TEST(ASlideNamedTwice, IsRefused)
{
    const std::string main = Deck().Slide(TextBox(u"a")).EntryBytes("ppt/presentation.xml");
    const std::size_t item = main.find("<p:sldId ");
    const std::string named = main.substr(item, main.find("/>", item) + 2 - item);

    EXPECT_THROW(Read(Deck().Slide(TextBox(u"a")).Edit("ppt/presentation.xml", named, named + named), Limits()),
                 Failure);
}

}  // namespace
}  // namespace tessarine::test
