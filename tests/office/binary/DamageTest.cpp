#include <gmock/gmock.h>

#include <random>

#include "BinaryOnDisk.h"
#include "support/BinaryReader.h"
#include "support/BinaryRecords.h"

/// Binary presentations that are damaged, or made to do harm: a clear failure or the texts that can be read, within
/// bounds of time and memory, and never a crash.
namespace tessarine::test::ppt
{
namespace
{

using testing::AnyOf;
using testing::Contains;
using testing::HasSubstr;

/// One slide with all that an edit has to do with, of "a" or another cat; records at its end.
BinaryDeck OneSlide(const String& which, const std::string& further = {})
{
    return BinaryDeck().Slide(
        Title(Text(TextRun(which + u" cat").Language(0x409)).Styled()),
        TextBox(Text(TextRun(which + u" cat and ").Size(18).Language(0x409), Field(FieldKind::SlideNumber), u" cats")
                    .Range(2, 5, LinkTo(u"http://one.example/"))),
        HeadersFooters().Footer(u"a cat"), NotesPage(u"cat notes"), SlideRecords{further});
}

BinaryDeck OfTwoEdits()
{
    return OneSlide(u"a").After(OneSlide(u"an older"));
}

BinaryDeck Ordinary()
{
    return OfTwoEdits().Summary(2, TextValue("a cat")).Custom("Client", TextValue("a cat"));
}

/// A run over a file: which failure there was, if any.
Raised Try(const BinaryOnDisk& deck)
{
    return RaisedBy([&] {
        WalkEverything(*deck.Open());
        deck.Change([](powerpoint::Presentation& presentation) {
            for (const auto& slide : All(presentation.Slides())) {
                for (const auto& shape : All(slide->Shapes()))
                    if (shape->HasTextFrame() != powerpoint::msoFalse)
                        shape->TextFrame()->TextRange()->Replace(u"cat", u"elephant", 0, 0, 0);
                for (const auto& link : All(slide->Hyperlinks()))
                    link->PutAddress(u"http://other.example/");
            }
        });
        WalkEverything(*deck.Open());
    });
}

Raised Try(const BinaryDeck& deck)
{
    return Try(BinaryOnDisk(deck));
}

Raised Try(const std::string& bytes)
{
    return Try(BinaryOnDisk(bytes));
}

/// A number in the first record of a type, from its header on.
std::function<void(std::string&)> PutInRecord(std::uint32_t type, std::size_t offset, std::uint32_t number)
{
    return [=](std::string& bytes) { PutLong(bytes, PlaceOfRecord(bytes, type) + offset, number); };
}

/// Where the list of slides names a slide by its persist object.
std::size_t PlaceOfEntry(const std::string& document, std::uint32_t persistId)
{
    return document.find(Short(1011) + Long(20) + Long(persistId)) + 2 + 4;
}

/// Whether a run ended as any run may end.
void ExpectOrderly(const Raised& raised, const std::string& what)
{
    using namespace FailureNumber;
    EXPECT_THAT(raised.number, AnyOf(0, FileCorrupt, BadFormat, Unspecified, InvalidRequest, BadArgument, Overflow))
        << what << ": " << raised.text;
}

/// A file around another document stream.
std::string FileWith(const std::string& stream, const std::string& currentUser = {})
{
    CompoundBuilder file;
    file.Stream("PowerPoint Document", stream);
    if (!currentUser.empty())
        file.Stream("Current User", currentUser);
    return file.Bytes();
}

TEST(BinaryDamage, OfTheChainOfEditsIsPassedOver)
{
    std::string stream = Ordinary().DocumentStream();
    const std::size_t newest = stream.rfind(Short(4085)) - 2;
    // To itself, forward, outside, and into a text.
    for (const std::size_t last : {newest, newest + 20, std::size_t{0x7FFF'FFFF}, stream.find("older cat")}) {
        PutLong(stream, newest + 8 + 8, static_cast<std::uint32_t>(last));
        EXPECT_THAT(BinaryOnDisk(FileWith(stream)).Texts(), Contains("slide 1 shape 1 (14): a cat"));
    }
}

TEST(BinaryDamage, OfTheCurrentUserIsPassedOver)
{
    const std::string stream = Ordinary().DocumentStream();
    for (const std::string& user :
         {std::string("x"), std::string(4096, '\0'), Atom(4086, Long(0x14) + Long(0) + Long(12))})
        EXPECT_THAT(BinaryOnDisk(FileWith(stream, user)).Texts(), Contains("slide 1 shape 1 (14): a cat"));
}

TEST(BinaryDamage, OfTheDirectoryOfObjectsIsTold)
{
    const BinaryDeck outside = Ordinary().ChangeDirectory([](std::string& data) { PutLong(data, 4, 0x7FFF'FFF0); });
    const BinaryDeck many = Ordinary().ChangeDirectory([](std::string& data) { PutLong(data, 0, 0xFFF0'0001); });
    const BinaryDeck none =
        Ordinary().ChangeDocument([](std::string& stream) { PutShort(stream, stream.rfind(Short(6002)), 0x1234); });

    for (const BinaryDeck& deck : {outside, many, none})
        EXPECT_THAT(Try(deck), FailsWith(FailureNumber::FileCorrupt, "damaged"));
}

TEST(BinaryDamage, OfLengthsBeyondTheirContainersIsTold)
{
    const std::uint32_t slide = Ordinary().SlideId(1);
    const std::vector<std::pair<std::uint32_t, std::vector<std::uint32_t>>> rows{
        {BinaryDeck::DocumentId, {0x03E8, 0x0FF0, 0x0FA8}},
        {slide, {0x03EE, 0x040C, 0xF002, 0xF003, 0xF004, 0xF00D, 0x0FA8}}};
    for (const auto& [object, types] : rows)
        for (const std::uint32_t type : types)
            EXPECT_THAT(Try(Ordinary().ChangeObject(object, PutInRecord(type, 4, 0x0FFF'FFFF))),
                        FailsWith(FailureNumber::FileCorrupt, "damaged"))
                << type;
}

TEST(BinaryDamage, OfAPageThatIsMissingIsTold)
{
    const std::uint32_t slide = Ordinary().SlideId(1);
    const BinaryDeck content = Ordinary().ChangeObject(
        BinaryDeck::DocumentId, [=](std::string& document) { PutLong(document, PlaceOfEntry(document, slide), 999); });

    EXPECT_THAT(Try(content), FailsWith(FailureNumber::FileCorrupt, "missing"));
}

TEST(BinaryDamage, OfAPageThatIsListedTwiceIsTold)
{
    BinaryDeck content = Ordinary().Slide(Title(u"a cat"));
    const std::uint32_t first = content.SlideId(1);
    const std::uint32_t second = content.SlideId(2);
    content.ChangeObject(BinaryDeck::DocumentId,
                         [=](std::string& document) { PutLong(document, PlaceOfEntry(document, second), first); });

    EXPECT_THAT(Try(content), FailsWith(FailureNumber::FileCorrupt, "twice"));
}

TEST(BinaryDamage, OfFormatsThatMakeNoSenseFailsTheSaveAlone)
{
    // All fields of the first paragraph, of which the bytes are not there.
    const BinaryOnDisk deck(Ordinary().ChangeObject(Ordinary().SlideId(1), PutInRecord(4001, 8 + 6, 0x003F'FFFF)));
    const std::string before = deck.Bytes();

    EXPECT_THAT(deck.Texts(), Contains(HasSubstr("a cat")));
    EXPECT_THAT(Try(deck), FailsWith(FailureNumber::FileCorrupt, "was not saved"));
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryDamage, OfPropertiesIsNoReasonToLoseTexts)
{
    const BinaryOnDisk deck(OfTwoEdits().ChangeFile(
        [](CompoundBuilder& file) { file.Stream("\x05SummaryInformation", "no property set"); }));

    EXPECT_EQ(deck.Replace(Location::Slides, u"cat", u"dog"), 1);

    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a dog"));
    const auto properties = deck.Open()->BuiltInDocumentProperties();
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*properties, u"Title")->Value()), u"");
}

TEST(BinaryDamage, OfPropertySetsIsToldWithinBounds)
{
    // A text of four billion bytes, a vector of as many texts, a text of as many characters, and a kind that nobody
    // knows.
    for (const std::string& value :
         {Long(0x1E) + Long(0xFFFF'FFFF) + std::string("abc\0", 4), Long(0x101E) + Long(0xFFFF'FFFF) + Long(1),
          Long(0x1F) + Long(0xFFFF'FFFF), Long(0x7777) + "abcd"})
        ExpectOrderly(Try(OfTwoEdits().Summary(2, value).Custom("Client", TextValue("a cat"))), "property");
}

TEST(BinaryDamage, DeepNestingIsTold)
{
    std::string nested = Container(0xF004, Record(2, 1, 0xF00A, std::string(8, '\0')));
    for (int depth = 0; depth < 20'000; ++depth)
        nested = Container(0xF003, nested);
    const BinaryDeck content = OneSlide(u"a", Container(1036, Container(0xF002, nested)));

    EXPECT_THAT(Try(content), FailsWith(FailureNumber::FileCorrupt, "nested too deeply"));
}

TEST(BinaryDamage, ManyEditsOverOneDirectoryAreCheap)
{
    // Each edit names the same directory, whose entries would be read over and over.
    std::string stream = Ordinary().DocumentStream();
    const std::size_t first = stream.rfind(Short(4085)) - 2;
    const std::string edit = stream.substr(first);
    constexpr std::uint32_t entries = 200'000;
    const std::size_t directory = stream.size();
    std::string table;
    for (std::uint32_t i = 0; i < entries / 4000; ++i) {
        table += Long((i * 4000 + 1000) | 4000u << 20);
        table.append(4000 * 4, '\0');
    }
    stream += Atom(6002, table);
    std::size_t last = first;
    for (int i = 0; i < 20'000; ++i) {
        std::string next = edit;
        PutLong(next, 8 + 8, static_cast<std::uint32_t>(last));
        PutLong(next, 8 + 12, static_cast<std::uint32_t>(directory));
        last = stream.size();
        stream += next;
    }

    EXPECT_THAT(Try(FileWith(stream)), FailsWith(FailureNumber::FileCorrupt, "damaged"));
}

TEST(BinaryDamage, OfAnyByteEndsOrderly)
{
    const std::string whole = Ordinary().Bytes();
    std::mt19937 random(21);
    for (int round = 0; round < 400; ++round) {
        std::string bytes = whole;
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int change = 0; change < changes; ++change)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
        ExpectOrderly(Try(bytes), "round " + std::to_string(round));
    }
}

TEST(BinaryDamage, OfAnyFieldOfTheStreamEndsOrderly)
{
    const std::string whole = Ordinary().DocumentStream();
    std::mt19937 random(22);
    for (int round = 0; round < 400; ++round) {
        std::string stream = whole;
        const std::vector<std::uint32_t> numbers{
            0, 1, 0x7F, 0xFFFF, 0x7FFF'FFFF, 0xFFFF'FFFF, static_cast<std::uint32_t>(stream.size())};
        const std::size_t place = random() % (stream.size() - 4);
        PutLong(stream, place, numbers[random() % 7]);
        ExpectOrderly(Try(FileWith(stream)), "round " + std::to_string(round));
    }
}

TEST(BinaryDamage, OfACutFileEndsOrderly)
{
    const std::string whole = Ordinary().Bytes();
    for (std::size_t size = 512; size < whole.size(); size += 300)
        ExpectOrderly(Try(whole.substr(0, size)), "cut at " + std::to_string(size));
}

}  // namespace
}  // namespace tessarine::test::ppt
