#include <optional>
#include <span>

#include "DeckOnDisk.h"
#include "office/builtin/objects/PresentationObject.h"
#include "office/builtin/presentation/PresentationFile.h"
#include "saving/ReplacementFile.h"
#include "support/Fixtures.h"

namespace tessarine::test
{
namespace
{

constexpr std::int32_t corrupt = FailureNumber::FileCorrupt;

std::shared_ptr<powerpoint::Presentation> OpenBytes(const std::string& bytes,
                                                    const builtin::Limits& limits = builtin::Limits::Default())
{
    auto memory = BytesInMemory(std::as_bytes(std::span(bytes)));
    return builtin::MakePresentation(std::make_shared<builtin::PresentationFile>(std::move(memory), limits), u"");
}

Raised Walked(const std::string& bytes, const builtin::Limits& limits = builtin::Limits::Default())
{
    return RaisedBy([&] { WalkEverything(*OpenBytes(bytes, limits)); });
}

Deck SmallDeck()
{
    return Deck().Slide(Title(u"Fabrikam"));
}

TEST(ZipContainer, OpensEveryReadableFixture)
{
    for (const auto& [name, deck] : fixtures::ReadableDecks()) {
        if (name == "ModifyPassword")
            continue;

        EXPECT_THAT(Walked(deck.Bytes()), FailsWith(0, "")) << name;
    }
}

TEST(ZipContainer, OpensAPackageAfterBytesThatOffsetsDontCount)
{
    const DeckOnDisk deck("#!/bin/sh\nexit 0\n" + SmallDeck().Bytes());

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_TRUE(deck.Bytes().starts_with("#!/bin/sh\nexit 0\n"));
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
}

TEST(ZipContainer, OpensAPackageAfterBytesThatOffsetsCount)
{
    const DeckOnDisk deck(fixtures::PrefixedPackage());

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_TRUE(deck.Bytes().starts_with("MZ bytes in front of the package"));
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
}

TEST(ZipContainer, KeepsACommentThatLooksLikeAnEndRecord)
{
    const std::string comment = "PK\x05\x06 is how an end record begins";
    const DeckOnDisk deck(SmallDeck().Comment(comment));

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_TRUE(deck.Bytes().ends_with(comment));
    const auto presentation = deck.Open();
    EXPECT_TRUE(ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange()->Find(u"Contoso", 0, 0, 0));
}

TEST(ZipContainer, KeepsBytesAfterTheEndRecord)
{
    const std::string trailer(100, '\0');
    const DeckOnDisk deck(SmallDeck().Bytes() + trailer);

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    const std::string bytes = deck.Bytes();
    ASSERT_TRUE(bytes.ends_with(trailer));
    EXPECT_EQ(TextOf(PackageReader(bytes.substr(0, bytes.size() - trailer.size())), 1, 1), u"Contoso");
}

/// A deck that holds another one, not packed, and has entries after it.
std::string DeckInADeck()
{
    return SmallDeck()
        .Entry("ppt/embeddings/inner.pptx", Deck().Slide(Title(u"inside")).Bytes())
        .Store("ppt/embeddings/inner.pptx")
        .Entry("ppt/media/image1.png", "no picture")
        .Bytes();
}

TEST(TruncatedPackage, IsNeverTakenForTheOneInsideOfIt)
{
    const std::string whole = DeckInADeck();
    const std::string inner = Deck().Slide(Title(u"inside")).Bytes();
    const std::size_t innerEnd = whole.find(inner) + inner.size();
    ASSERT_THAT(Walked(whole), FailsWith(0, ""));

    for (std::size_t size = innerEnd; size < whole.size(); ++size)
        ASSERT_THAT(Walked(whole.substr(0, size)),
                    FailsWith(FailureNumber::FileCorrupt, "the only end there is belongs to a file inside"))
            << size - innerEnd;
}

TEST(OtherFile, IsNeverTakenForThePackageInsideOfIt)
{
    EXPECT_THAT(Walked("%PDF-1.7\n" + SmallDeck().Bytes() + "\nendstream"),
                FailsWith(FailureNumber::FileCorrupt, "belongs to a file inside"));
}

TEST(ZipContainer, OpensAPackageWhoseZip64EndRecordIsNotNeeded)
{
    std::string bytes = SmallDeck().Zip64().Bytes();
    const std::size_t end = bytes.size() - 22;
    const std::size_t end64 = end - 20 - 56;
    PutInteger(bytes, end + 8, 2, IntegerAt(bytes, end64 + 24, 2));
    PutInteger(bytes, end + 10, 2, IntegerAt(bytes, end64 + 32, 2));
    PutInteger(bytes, end + 12, 4, IntegerAt(bytes, end64 + 40, 4));
    PutInteger(bytes, end + 16, 4, IntegerAt(bytes, end64 + 48, 4));
    const DeckOnDisk deck(bytes);

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
    EXPECT_EQ(ConsistencyFault(deck.Path()), "");
}

TEST(ZipContainer, OpensAPackageWithTheLongestComment)
{
    EXPECT_THAT(Walked(SmallDeck().Comment(std::string(0xFFFF, 'c')).Bytes()), FailsWith(0, ""));
}

TEST(ZipContainer, TakesTheLastOfTwoEntriesWithOneName)
{
    const DeckOnDisk deck(fixtures::DuplicateSlide());

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
    EXPECT_EQ(deck.Package().Entries().size(), PackageReader(fixtures::DuplicateSlide()).Entries().size());
}

struct Lie {
    const char* name;
    std::size_t field;  ///< Offset in the central record.
    std::size_t size;
    std::int64_t by;
    const char* text;
};

void PrintTo(const Lie& lie, std::ostream* out)
{
    *out << lie.name;
}

class LyingDirectory : public testing::TestWithParam<Lie>
{
};

TEST_P(LyingDirectory, IsAFailureThatNamesTheEntry)
{
    std::string bytes = SmallDeck().Bytes();
    const std::size_t at = PlaceOf(bytes, slide1).record + GetParam().field;
    const auto value = static_cast<std::int64_t>(IntegerAt(bytes, at, GetParam().size)) + GetParam().by;
    PutInteger(bytes, at, GetParam().size, static_cast<std::uint64_t>(value));

    EXPECT_THAT(Walked(bytes), FailsWith(corrupt, GetParam().text));
    EXPECT_THAT(Walked(bytes), FailsWith(corrupt, slide1));
}

INSTANTIATE_TEST_SUITE_P(Fields, LyingDirectory,
                         testing::Values(Lie{"Checksum", 16, 4, 1, "its checksum is wrong"},
                                         Lie{"PackedTooShort", 20, 4, -20, "its packed data is not valid"},
                                         Lie{"PackedBeyondTheFile", 20, 4, 1 << 24, "it lies outside of the file"},
                                         Lie{"SizeTooSmall", 24, 4, -1, "its packed data is not valid"},
                                         Lie{"SizeTooLarge", 24, 4, 1, "its packed data is not valid"},
                                         Lie{"SizeBeyondTheLimit", 24, 4, 1 << 30, "more than a part may"},
                                         Lie{"NoHeaderThere", 42, 4, 1, "its local header is missing"},
                                         Lie{"OffsetBeyondTheFile", 42, 4, 1 << 24, "it lies outside of the file"}),
                         [](const auto& tested) { return tested.param.name; });

TEST(ZipContainer, RefusesAStoredEntryWhoseSizesDiffer)
{
    std::string bytes = SmallDeck().Store(slide1).Bytes();
    const std::size_t at = PlaceOf(bytes, slide1).record + 24;
    PutInteger(bytes, at, 4, IntegerAt(bytes, at, 4) - 1);

    EXPECT_THAT(Walked(bytes), FailsWith(corrupt, slide1));
}

TEST(ZipContainer, RefusesToSaveWhatOverlaps)
{
    std::string bytes = SmallDeck().Bytes();
    const EntryPlace slide = PlaceOf(bytes, slide1);
    const EntryPlace theme = PlaceOf(bytes, "ppt/theme/theme1.xml");
    PutInteger(bytes, theme.record + 42, 4, slide.localHeader);
    const DeckOnDisk deck(bytes);
    const auto presentation = deck.Open();
    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");

    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }), FailsWith(corrupt, "it overlaps another entry"));

    EXPECT_EQ(deck.Bytes(), bytes);
}

TEST(ZipContainer, EveryTruncationIsAFailure)
{
    const std::string bytes = SmallDeck().Bytes();

    for (std::size_t length = 0; length < bytes.size(); ++length)
        ASSERT_THAT(Walked(bytes.substr(0, length)), FailsWith(corrupt, "")) << "length " << length;
}

/// Offsets of all bytes that are not packed data: headers, names, directory, end record.
std::vector<std::size_t> HeaderBytes(const std::string& bytes)
{
    std::vector<std::size_t> offsets;
    std::size_t directory = bytes.size();
    for (const EntryPlace& place : PlacesOf(bytes)) {
        directory = std::min(directory, place.record);
        const std::size_t size =
            30 + IntegerAt(bytes, place.localHeader + 26, 2) + IntegerAt(bytes, place.localHeader + 28, 2);
        for (std::size_t at = place.localHeader; at < place.localHeader + size; ++at)
            offsets.push_back(at);
    }
    for (std::size_t at = directory; at < bytes.size(); ++at)
        offsets.push_back(at);
    return offsets;
}

/// Opens and walks the bytes. Whatever is no Failure passes through.
void OpenAndWalk(const std::string& bytes)
{
    Walked(bytes, builtin::Limits::Small());
}

/// Writes a copy with every second entry replaced, as far as the directory can be read. The old file stays.
void WriteOver(const String& target, const std::string& bytes)
{
    RaisedBy([&] {
        const auto source = BytesInMemory(std::as_bytes(std::span(bytes)));
        const builtin::ZipDirectory directory(*source, builtin::Limits::Small());
        builtin::ZipChanges changes;
        for (std::size_t i = 0; i < directory.Entries().size(); i += 2)
            changes.replaced[i] = "changed";
        ReplacementFile file(target);
        builtin::WriteZip(*source, directory, changes, file);
    });
}

TEST(ZipContainer, EveryFlippedHeaderByteOpensOrIsAFailure)
{
    const TemporaryFolder folder;
    const String target = folder.Write(u"target", "old");
    for (const std::string& original :
         {SmallDeck().Bytes(), SmallDeck().DataDescriptor().Zip64().Comment("comment").Bytes()})
        for (const std::size_t at : HeaderBytes(original)) {
            std::string bytes = original;
            bytes[at] = static_cast<char>(bytes[at] ^ '\x01');
            EXPECT_NO_THROW(OpenAndWalk(bytes)) << "byte " << at;

            bytes[at] = static_cast<char>(~original[at]);
            EXPECT_NO_THROW(WriteOver(target, bytes)) << "byte " << at;
        }
    EXPECT_EQ(ContentOf(target), "old");
}

TEST(Limits, HoldForAPartToTheByte)
{
    const Deck deck = SmallDeck();
    std::uint64_t largest = 0;
    const PackageReader package(deck);
    for (const PackageEntry& entry : package.Entries())
        largest = std::max<std::uint64_t>(largest, entry.bytes.size());
    builtin::Limits limits;

    limits.partBytes = largest;
    EXPECT_THAT(Walked(deck.Bytes(), limits), FailsWith(0, ""));
    limits.partBytes = largest + 1;
    EXPECT_THAT(Walked(deck.Bytes(), limits), FailsWith(0, ""));
    limits.partBytes = largest - 1;
    EXPECT_THAT(Walked(deck.Bytes(), limits), FailsWith(corrupt, "more than a part may"));
}

TEST(Limits, HoldForTheDirectoryToTheByte)
{
    const std::string bytes = SmallDeck().Bytes();
    const std::size_t size = IntegerAt(bytes, bytes.size() - 22 + 12, 4);
    builtin::Limits limits;

    limits.directoryBytes = size;
    EXPECT_THAT(Walked(bytes, limits), FailsWith(0, ""));
    limits.directoryBytes = size + 1;
    EXPECT_THAT(Walked(bytes, limits), FailsWith(0, ""));
    limits.directoryBytes = size - 1;
    EXPECT_THAT(Walked(bytes, limits), FailsWith(corrupt, "the zip directory is too large"));
}

TEST(Limits, HoldForAllPartsTogetherToTheByte)
{
    const std::string bytes = SmallDeck().Bytes();
    const auto read = [&](std::uint64_t limit) {
        builtin::Limits limits;
        limits.packageXmlBytes = limit;
        const builtin::Package package(BytesInMemory(std::as_bytes(std::span(bytes))), limits);
        return RaisedBy([&] {
            for (std::size_t i = 0; i < PlacesOf(bytes).size(); ++i)
                package.Read(i);
        });
    };
    std::uint64_t total = 0;
    const PackageReader reader(bytes);
    for (const PackageEntry& entry : reader.Entries())
        total += entry.bytes.size();

    EXPECT_THAT(read(total), FailsWith(0, ""));
    EXPECT_THAT(read(total + 1), FailsWith(0, ""));
    EXPECT_THAT(read(total - 1), FailsWith(corrupt, "more memory than they may"));
}

TEST(Limits, HoldForNestedGroupsToTheLevel)
{
    const auto walk = [](std::uint32_t depth) {
        Shape shape = TextBox(Paragraph(TextRun(u"x").Click(LinkTo(u"http://fabrikam.com"))));
        for (std::uint32_t i = 0; i < depth; ++i)
            shape = GroupOf({shape});
        builtin::Limits limits;
        limits.nesting = 16;
        return Walked(Deck().Slide(shape).Bytes(), limits);
    };

    EXPECT_THAT(walk(15), FailsWith(0, ""));
    EXPECT_THAT(walk(16), FailsWith(0, ""));
    EXPECT_THAT(walk(17), FailsWith(corrupt, "groups are nested too deeply"));
}

TEST(Limits, RefuseASmallFileThatUnpacksToTooMuch)
{
    const builtin::Limits limits = builtin::Limits::Small();
    const std::string bytes = SmallDeck().Entry(slide1, std::string(limits.partBytes + 1, ' ')).Bytes();

    ASSERT_LT(bytes.size(), limits.partBytes / 50);
    EXPECT_THAT(Walked(bytes, limits), FailsWith(corrupt, "more than a part may"));
}

}  // namespace
}  // namespace tessarine::test
