
#include <filesystem>
#include <set>

#include "DeckOnDisk.h"
#include "office/builtin/Provider.h"
#include "support/ErrorLogRecorder.h"
#include "support/Fixtures.h"
#include "support/OrdinaryUser.h"
#include "support/WarningRecorder.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tessarine::test
{
namespace
{

void ReplaceFirst(powerpoint::Presentation& presentation)
{
    ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso");
}

void PutTitle(powerpoint::Presentation& presentation)
{
    presentation.BuiltInDocumentProperties()->Item(1)->PutValue(String(u"Contoso"));
}

/// A deck with a second slide and properties, so that there is something to leave alone.
Deck FewParts()
{
    return Deck()
        .Slide(Title(u"Fabrikam"))
        .Slide(TextBox(Paragraph(TextRun(u"Fabrikam").Click(LinkTo(u"http://fabrikam.com/")))))
        .Core("dc:title", u"Fabrikam")
        .Custom(u"Client", "lpwstr", u"Fabrikam");
}

/// A time of long ago, to the second.
const std::filesystem::file_time_type longAgo =
    std::chrono::floor<std::chrono::seconds>(std::filesystem::file_time_type::clock::now()) -
    std::chrono::hours(24 * 999);

class EveryDeck : public testing::TestWithParam<fixtures::NamedDeck>
{
};

TEST_P(EveryDeck, WithoutEditsKeepsTheBytesAndDatesTheFile)
{
    const DeckOnDisk deck(GetParam().deck);
    const std::string before = deck.Bytes();
    std::filesystem::last_write_time(ToUtf8(deck.Path()), longAgo);

    deck.Change([](auto& presentation) { WalkEverything(presentation); });

    EXPECT_TRUE(SameBytes(PackageReader(before), deck.Package()));
    EXPECT_GT(std::filesystem::last_write_time(ToUtf8(deck.Path())), longAgo);
}

/// What lies between an untouched entry's local header and the next one: header, packed data, data descriptor, gap.
std::map<std::string, std::string> BlocksOf(const std::string& bytes)
{
    std::map<std::string, std::string> blocks;
    for (const EntryPlace& place : PlacesOf(bytes))
        blocks[place.name] = bytes.substr(place.localHeader, place.blockEnd - place.localHeader);
    return blocks;
}

/// Central records with the offset of the local header blanked, wherever it stands.
std::map<std::string, std::string> RecordsOf(const std::string& bytes)
{
    std::map<std::string, std::string> records;
    for (const EntryPlace& place : PlacesOf(bytes)) {
        const std::size_t size =
            46 + place.name.size() + IntegerAt(bytes, place.record + 30, 2) + IntegerAt(bytes, place.record + 32, 2);
        std::string& record = records[place.name] = bytes.substr(place.record, size);
        PutInteger(record, place.offsetField - place.record, place.offsetSize, 0);
    }
    return records;
}

TEST_P(EveryDeck, PutsATitleAndKeepsAllOtherBytes)
{
    const DeckOnDisk deck(GetParam().deck);
    const std::string before = deck.Bytes();
    const std::string fault = ConsistencyFault(deck.Path());  // that of a deck with two entries of one name

    deck.Change(PutTitle);

    const PackageReader after = deck.Package();
    EXPECT_EQ(CoreProperty(after, "dc:title"), u"Contoso");
    EXPECT_EQ(ConsistencyFault(deck.Path()), fault);
    std::set<std::string> touched{"docProps/core.xml", "docProps\\core.xml"};
    if (!PackageReader(before).Has("docProps/core.xml"))
        touched.insert({"[Content_Types].xml", "_rels/.rels", "_rels\\.rels"});
    const auto blocks = BlocksOf(deck.Bytes());
    const auto records = RecordsOf(deck.Bytes());
    for (const auto& [name, block] : BlocksOf(before)) {
        if (touched.contains(name) || name.starts_with("_xmlsignatures") ||
            (GetParam().name == "Signed" && (name == "[Content_Types].xml" || name == "_rels/.rels")))
            continue;
        ASSERT_TRUE(blocks.contains(name)) << name;
        EXPECT_TRUE(blocks.at(name) == block) << "local header and data of " << name;
        EXPECT_TRUE(records.at(name) == RecordsOf(before).at(name)) << "central record of " << name;
    }
    EXPECT_TRUE(RaisedBy([&] { WalkEverything(*deck.Open()); }).number == 0);
}

std::vector<fixtures::NamedDeck> DecksThatOpen()
{
    auto decks = fixtures::ReadableDecks();
    std::erase_if(decks, [](const auto& deck) { return deck.name == "ModifyPassword"; });
    return decks;
}

INSTANTIATE_TEST_SUITE_P(OfTheFixtures, EveryDeck, testing::ValuesIn(DecksThatOpen()),
                         [](const auto& tested) { return tested.param.name; });

TEST(Save, KeepsNamesOrderDatesAttributesFieldsAndComments)
{
    const DeckOnDisk deck(fixtures::StoredAndDated().Comment("the archive's comment"));
    const PackageReader before = deck.Package();

    deck.Change(ReplaceFirst);

    EXPECT_THAT(PackagingDifferences(before, deck.Package()), testing::IsEmpty());
    EXPECT_THAT(EntriesThatDiffer(before, deck.Package()), testing::ElementsAre(slide1));
    EXPECT_TRUE(deck.Bytes().ends_with("the archive's comment"));
    EXPECT_EQ(deck.Package().Entry(slide1).extraField, before.Entry(slide1).extraField);
}

TEST(Save, StoresAgainWhatWasStored)
{
    const DeckOnDisk deck(FewParts().Store(slide1));

    deck.Change(ReplaceFirst);

    EXPECT_EQ(deck.Package().Entry(slide1).method, 0);
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
}

TEST(Save, PutsSizesIntoARewrittenStreamedEntrysHeader)
{
    const DeckOnDisk deck(fixtures::StreamedPackage());

    deck.Change(ReplaceFirst);

    const std::string bytes = deck.Bytes();
    const EntryPlace slide = PlaceOf(bytes, slide1);
    EXPECT_EQ(IntegerAt(bytes, slide.localHeader + 6, 2) & 8, 0u);
    EXPECT_EQ(IntegerAt(bytes, slide.localHeader + 18, 4), IntegerAt(bytes, slide.record + 20, 4));
    EXPECT_EQ(IntegerAt(bytes, PlaceOf(bytes, "ppt/slides/slide2.xml").localHeader + 6, 2) & 8, 8u);
    EXPECT_EQ(ConsistencyFault(deck.Path()), "");
}

TEST(Save, OfAZip64PackageGivesOneThatOthersRead)
{
    const DeckOnDisk deck(fixtures::Zip64Package());

    deck.Change(ReplaceFirst);

    EXPECT_EQ(ConsistencyFault(deck.Path()), "");
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
    EXPECT_EQ(RaisedBy([&] { WalkEverything(*deck.Open()); }).number, 0);
}

TEST(Save, KeepsTheZip64FieldsOfAChangedEntry)
{
    for (const Deck& with : {FewParts().Zip64(), FewParts().Zip64().DataDescriptor(),
                             FewParts().Zip64().Extra(slide1, ExtraField(0x7777, "kept"))}) {
        const DeckOnDisk deck(with);
        const std::string before = deck.Bytes();

        deck.Change(ReplaceFirst);

        const std::string after = deck.Bytes();
        const EntryPlace was = PlaceOf(before, slide1);
        const EntryPlace is = PlaceOf(after, slide1);
        for (const std::size_t field : {20u, 24u, 42u})
            EXPECT_EQ(IntegerAt(after, is.record + field, 4), 0xFFFFFFFFu) << field;
        EXPECT_EQ(IntegerAt(after, is.record + 30, 2), IntegerAt(before, was.record + 30, 2)) << "extra fields";
        EXPECT_EQ(IntegerAt(after, is.localHeader + 28, 2), IntegerAt(before, was.localHeader + 28, 2));
        EXPECT_EQ(IntegerAt(after, after.size() - 22 + 16, 4), 0xFFFFFFFFu) << "the zip64 end record is referred to";
        EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
        EXPECT_EQ(ConsistencyFault(deck.Path()), "");
        EXPECT_EQ(RaisedBy([&] { WalkEverything(*deck.Open()); }).number, 0);
    }
}

TEST(Save, PutsAPartBackIntoItsEncoding)
{
    const DeckOnDisk utf16(fixtures::Utf16Slide());
    const DeckOnDisk mark(fixtures::ByteOrderMarks());
    const PackageReader before = utf16.Package();

    utf16.Change(ReplaceFirst);
    mark.Change(ReplaceFirst);

    EXPECT_TRUE(utf16.Package().Entry(slide1).bytes.starts_with("\xFF\xFE<"));
    EXPECT_TRUE(OnlyTheTextDiffers(before, utf16.Package(), {{u"Fabrikam", u"Contoso"}}));
    EXPECT_TRUE(mark.Package().Entry(slide1).bytes.starts_with("\xEF\xBB\xBF<?xml"));
}

TEST(Save, GivesAFirstPropertyItsPartTypeAndRelationship)
{
    const DeckOnDisk deck(fixtures::NoProperties());

    deck.Change(PutTitle);

    const PackageReader after = deck.Package();
    EXPECT_EQ(after.TargetOfType("", "core-properties"), "docProps/core.xml");
    EXPECT_NE(after.Entry("[Content_Types].xml")
                  .bytes.find("<Override PartName=\"/docProps/core.xml\" "
                              "ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/>"),
              std::string::npos);
    EXPECT_EQ(after.Names().front(), "[Content_Types].xml");
    EXPECT_THAT(ValidityFaults(after), testing::IsEmpty());
    EXPECT_EQ(ConsistencyFault(deck.Path()), "");
}

TEST(Save, AgainWritesTheSameAndTakesLaterEdits)
{
    const DeckOnDisk deck(fixtures::NoProperties());
    const auto presentation = deck.Open();
    ReplaceFirst(*presentation);
    PutTitle(*presentation);
    presentation->Save();
    const std::string first = deck.Bytes();

    presentation->Save();
    const std::string second = deck.Bytes();
    ReplaceInShape(*presentation, 1, 1, u"Contoso", u"Tailspin");
    presentation->BuiltInDocumentProperties()->Item(2)->PutValue(String(u"Subject"));
    presentation->Save();

    EXPECT_TRUE(first == second);
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Tailspin");
    EXPECT_EQ(CoreProperty(deck.Package(), "dc:title"), u"Contoso");
    EXPECT_EQ(CoreProperty(deck.Package(), "dc:subject"), u"Subject");
    EXPECT_THAT(ValidityFaults(deck.Package()), testing::IsEmpty());
    EXPECT_EQ(ConsistencyFault(deck.Path()), "");
}

TEST(Save, DropsSignaturesOfAChangedPackageAndWarns)
{
    const ErrorLogRecorder log;
    const DeckOnDisk deck(fixtures::Signed());

    deck.Change([](auto& presentation) {
        ReplaceFirst(presentation);
        presentation.Save();
    });

    const PackageReader after = deck.Package();
    for (const std::string& name : after.Names())
        EXPECT_FALSE(name.starts_with("_xmlsignatures")) << name;
    EXPECT_EQ(after.TargetOfType("", "origin"), "");
    EXPECT_EQ(after.Entry("[Content_Types].xml").bytes.find("_xmlsignatures"), std::string::npos);
    EXPECT_THAT(ValidityFaults(after), testing::IsEmpty());
    EXPECT_THAT(log.Lines(), testing::ElementsAre(ToUtf8(deck.Path()) +
                                                  ": its digital signatures were removed, as its content was changed"));
}

TEST(Save, LeavesASignedPackageAloneWhereTheTermsSaySo)
{
    const DeckOnDisk deck(fixtures::Signed());
    const auto provider = builtin::CreateProvider({.keepsSigned = true});
    const auto presentations = provider->CreateApplication()->Presentations();
    const auto presentation =
        presentations->Open(deck.Path(), powerpoint::msoFalse, powerpoint::msoFalse, powerpoint::msoFalse);
    ReplaceFirst(*presentation);

    const Raised raised = RaisedBy([&] { presentation->Save(); });

    EXPECT_EQ(raised.number, FailureNumber::PermissionDenied);
    EXPECT_EQ(deck.Bytes(), fixtures::Signed().Bytes());
}

TEST(Save, WarnsOfAChangedPackageThatIsMarkedAsFinal)
{
    const DeckOnDisk deck(FewParts().MarkAsFinal());
    const WarningRecorder warnings;

    deck.Change([](auto&) {});
    EXPECT_THAT(warnings.Warnings(), testing::IsEmpty());
    deck.Change(ReplaceFirst);

    EXPECT_THAT(warnings.Warnings(),
                testing::ElementsAre(
                    testing::Pair(deck.Path(), "is marked as final by its author, and was changed all the same")));
}

TEST(Save, WarnsOfAlternateContentThatKeepsTheOldText)
{
    const std::string understood = "http://schemas.microsoft.com/office/drawing/2010/main";
    const DeckOnDisk deck(Deck()
                              .Slide(Alternate("a14", understood, TextBox(u"Fabrikam"), TextBox(u"Fabrikam too")))
                              .Slide(Alternate("a14", understood, TextBox(u"Fabrikam"), TextBox(u"Fabrikam"))));
    const WarningRecorder warnings;

    deck.Change([](auto& presentation) {
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso");
        ReplaceInShape(presentation, 2, 1, u"Fabrikam", u"Contoso");
    });

    EXPECT_THAT(
        warnings.Warnings(),
        testing::ElementsAre(testing::Pair(
            deck.Path(), "slide 1: a changed shape has another form for older programs, which keeps the old text")));
}

TEST(Save, TellsWhetherItHadEditsToWrite)
{
    const DeckOnDisk deck(FewParts());
    const auto presentation = deck.Open();
    EXPECT_EQ(presentation->HasSavedChanges(), std::nullopt);

    presentation->Save();
    EXPECT_EQ(presentation->HasSavedChanges(), false);

    ReplaceFirst(*presentation);
    presentation->Save();
    EXPECT_EQ(presentation->HasSavedChanges(), true);
}

TEST(Save, WarnsOfAMarkAsFinalThatTheJobItselfReplaced)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"x")).MarkAsFinal());
    const WarningRecorder warnings;

    deck.Change([](auto& presentation) {
        PropertyOf(*presentation.CustomDocumentProperties(), u"_MarkAsFinal")->PutValue(String(u"Trzqe"));
    });

    EXPECT_THAT(warnings.Warnings(),
                testing::ElementsAre(
                    testing::Pair(deck.Path(), "is marked as final by its author, and was changed all the same")));
}

TEST(Open, WarnsOfANameThatTwoEntriesHave)
{
    const DeckOnDisk deck(
        FewParts().DuplicateEntry("ppt/slides/slide1.xml", FewParts().EntryBytes("ppt/slides/slide1.xml")));
    const WarningRecorder warnings;

    deck.Open();

    EXPECT_THAT(warnings.Warnings(),
                testing::ElementsAre(testing::Pair(
                    deck.Path(),
                    "has several entries named \"ppt/slides/slide1.xml\" in its zip file; only the last one counts")));
}

TEST(Save, KeepsSignaturesOfAnUnchangedPackage)
{
    const ErrorLogRecorder log;
    const DeckOnDisk deck(fixtures::Signed());

    deck.Change([](auto& presentation) { WalkEverything(presentation); });

    EXPECT_EQ(deck.Bytes(), fixtures::Signed().Bytes());
    EXPECT_EQ(log.Bytes(), "");
}

TEST(Save, LeavesNoOtherFile)
{
    const DeckOnDisk deck(FewParts());

    deck.Change(ReplaceFirst);

    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(ToUtf8(deck.Folder().Path())), {}), 1);
}

TEST(SaveFailure, OfAFileThatWasRenamedSaysSo)
{
    const DeckOnDisk deck(FewParts());
    const auto presentation = deck.Open();
    ReplaceFirst(*presentation);
    std::filesystem::rename(ToUtf8(deck.Path()), ToUtf8(deck.Folder().PathOf(u"other.pptx")));

    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }),
                FailsWith(FailureNumber::SystemFileNotFound, ToUtf8(deck.Path())));
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

/// Saves an edited deck under circumstances of the test's making; the old bytes have to be there afterwards.
Raised FailedSave(const DeckOnDisk& deck, const std::function<void()>& spoil)
{
    const auto presentation = deck.Open();
    ReplaceFirst(*presentation);
    spoil();
    const OrdinaryUser user;
    return RaisedBy([&] { presentation->Save(); });
}

TEST(Save, KeepsThePermissions)
{
    const DeckOnDisk deck(FewParts());
    for (const mode_t mode : {0640u, 0666u, 0755u, 0600u}) {
        SetMode(deck.Path(), mode);

        deck.Change([&](auto& presentation) { PutTitle(presentation); });

        EXPECT_EQ(ModeOf(deck.Path()), mode);
    }
}

TEST(Save, ThroughASymbolicLinkReplacesItsTarget)
{
    const DeckOnDisk deck(FewParts());
    const String link = deck.Folder().MakeFolder(u"links") + u"/link.pptx";
    std::filesystem::create_symlink("../deck.pptx", ToUtf8(link));

    const auto presentation = deck.Open(link);
    ReplaceFirst(*presentation);
    presentation->Save();

    EXPECT_TRUE(std::filesystem::is_symlink(ToUtf8(link)));
    EXPECT_FALSE(std::filesystem::is_symlink(ToUtf8(deck.Path())));
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
}

TEST(SaveFailure, OfAReadOnlyFolderLeavesTheFile)
{
    const DeckOnDisk deck(FewParts());
    const std::string before = deck.Bytes();
    SetMode(deck.Path(), 0666);

    const Raised raised = FailedSave(deck, [&] { SetMode(deck.Folder().Path(), 0555); });

    EXPECT_THAT(raised, FailsWith(FailureNumber::AccessDenied, ToUtf8(deck.Path())));
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(SaveFailure, OfAReadOnlyFileLeavesIt)
{
    const DeckOnDisk deck(FewParts());
    const std::string before = deck.Bytes();
    SetMode(deck.Folder().Path(), 0777);

    const Raised raised = FailedSave(deck, [&] { SetMode(deck.Path(), 0444); });

    EXPECT_THAT(raised, FailsWith(FailureNumber::AccessDenied, ToUtf8(deck.Path())));
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(SaveFailure, OfAReadOnlyFileIsOneWithoutEditsToo)
{
    const DeckOnDisk deck(FewParts());
    const auto presentation = deck.Open();
    SetMode(deck.Path(), 0444);
    const OrdinaryUser user;

    EXPECT_THAT(RaisedBy([&] { presentation->Save(); }), FailsWith(FailureNumber::AccessDenied, ToUtf8(deck.Path())));
}

TEST(Save, SucceedsOnceTheObstacleIsGone)
{
    const DeckOnDisk deck(FewParts());
    const auto presentation = deck.Open();
    ReplaceFirst(*presentation);
    const std::string folder = ToUtf8(deck.Folder().Path());
    std::filesystem::rename(folder, folder + ".hidden");
    EXPECT_NE(RaisedBy([&] { presentation->Save(); }).number, 0);
    std::filesystem::rename(folder + ".hidden", folder);

    presentation->Save();

    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
}

TEST(Save, WithoutEditsNeedsNoMoreThanPermissionToWrite)
{
    const DeckOnDisk deck(FewParts());
    SetMode(deck.Path(), 0666);
    std::filesystem::last_write_time(ToUtf8(deck.Path()), longAgo);
    const auto presentation = deck.Open();
    const OrdinaryUser user;

    presentation->Save();

    EXPECT_GT(std::filesystem::last_write_time(ToUtf8(deck.Path())), longAgo);
}

#endif

}  // namespace tessarine::test
