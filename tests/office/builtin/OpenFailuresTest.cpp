
#include <filesystem>

#include "DeckOnDisk.h"
#include "support/CompoundFile.h"
#include "support/Fixtures.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProcess.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace tessarine::test
{
namespace
{

Deck OneSlide()
{
    return Deck().Slide(Title(u"Fabrikam"));
}

/// The entry marked as encrypted the old way of zip, in both headers.
std::string ZipEncrypted(std::string bytes, std::string_view name)
{
    const EntryPlace place = PlaceOf(bytes, name);
    PutInteger(bytes, place.record + 8, 2, IntegerAt(bytes, place.record + 8, 2) | 1);
    PutInteger(bytes, place.localHeader + 6, 2, IntegerAt(bytes, place.localHeader + 6, 2) | 1);
    return bytes;
}

std::string WithMethod(std::string bytes, std::string_view name, std::uint64_t method)
{
    const EntryPlace place = PlaceOf(bytes, name);
    PutInteger(bytes, place.record + 10, 2, method);
    PutInteger(bytes, place.localHeader + 8, 2, method);
    return bytes;
}

std::string OpenDocument()
{
    ZipBuilder zip;
    zip.entries.push_back(
        {.name = "mimetype", .bytes = "application/vnd.oasis.opendocument.presentation", .stored = true});
    zip.entries.push_back({.name = "content.xml", .bytes = "<office:document-content/>"});
    return zip.Bytes();
}

std::string PlainZip()
{
    ZipBuilder zip;
    zip.entries.push_back({.name = "holiday.jpg", .bytes = "not a part"});
    return zip.Bytes();
}

struct Case {
    const char* name;
    std::string bytes;
    std::int32_t number;
    const char* text;
};

void PrintTo(const Case& item, std::ostream* out)
{
    *out << item.name;
}

class OpenFailures : public testing::TestWithParam<Case>
{
};

TEST_P(OpenFailures, NameTheFileAndTheReason)
{
    const DeckOnDisk deck(GetParam().bytes);

    const Raised raised = RaisedBy([&] { deck.Open(); });

    EXPECT_THAT(raised, FailsWith(GetParam().number, GetParam().text));
    EXPECT_THAT(raised, FailsWith(GetParam().number, ToUtf8(deck.Path())));
    EXPECT_EQ(deck.Bytes(), GetParam().bytes);
}

constexpr std::int32_t corrupt = FailureNumber::FileCorrupt;
constexpr std::int32_t otherFormat = FailureNumber::BadFormat;
constexpr std::int32_t needsPassword = FailureNumber::Unspecified;

INSTANTIATE_TEST_SUITE_P(
    OfContent, OpenFailures,
    testing::Values(
        Case{"TruncatedZip", fixtures::TruncatedPackage(), corrupt, "the end of the zip file is missing"},
        Case{"MainPartOfBrokenXml",
             OneSlide().Edit("ppt/presentation.xml", "</p:presentation>", "</p:presentatio>").Bytes(), corrupt,
             "ppt/presentation.xml"},
        Case{"MainPartWithAnotherRoot", OneSlide().Entry("ppt/presentation.xml", "<presentation/>").Bytes(), corrupt,
             "ppt/presentation.xml: it is not a presentation part"},
        Case{"ContentTypesOfBrokenXml", OneSlide().Entry("[Content_Types].xml", "<Types>").Bytes(), corrupt,
             "[Content_Types].xml"},
        Case{"RelationshipsOfBrokenXml", OneSlide().Entry("_rels/.rels", "<Relationships>").Bytes(), corrupt,
             "_rels/.rels"},
        Case{"MissingMainPart", fixtures::PackageWithoutMainPart(), corrupt, "ppt/presentation.xml: it is missing"},
        Case{"MissingRootRelationships", OneSlide().Without("_rels/.rels").Bytes(), corrupt,
             "_rels/.rels: it names no main document"},
        Case{"MissingSlide", fixtures::PackageWithMissingSlide(), corrupt,
             "sldId names a part that is missing: slides/slide2.xml"},
        Case{"MissingMaster", OneSlide().Without("ppt/slideMasters/slideMaster1.xml").Bytes(), corrupt,
             "sldMasterId names a part that is missing"},
        Case{"MissingContentTypes", fixtures::PackageWithoutContentTypes(), corrupt,
             "[Content_Types].xml: it is missing"},
        Case{"PlainZip", PlainZip(), corrupt, "[Content_Types].xml: it is missing"},
        Case{"EmptyZip", ZipBuilder().Bytes(), corrupt, "[Content_Types].xml: it is missing"},
        Case{"Workbook", fixtures::Workbook(), otherFormat, "spreadsheetml.sheet.main+xml"},
        Case{"OpenDocument", OpenDocument(), otherFormat, "not an Office Open XML presentation"},
        Case{"Text", fixtures::TextFile(), otherFormat, "The file is not a presentation"},
        Case{"Empty", fixtures::EmptyFile(), corrupt, "it is empty"},
        Case{"FlatPackage",
             "<?xml version=\"1.0\"?><?mso-application progid=\"PowerPoint.Show\"?><pkg:package "
             "xmlns:pkg=\"http://schemas.microsoft.com/office/2006/xmlPackage\"/>",
             otherFormat, "save it as .pptx first"},
        Case{"BinaryWithoutContent", fixtures::LegacyPresentation(), corrupt, "PowerPoint Document"},
        Case{"BinaryInADoubleFile", CompoundFile({{"PP97_DUALSTORAGE/PowerPoint Document", "x"}, {"PP40", "y"}}),
             corrupt, "it holds no user edit"},
        Case{"PowerPoint95", CompoundFile({{"PP40", "y"}}), otherFormat, "PowerPoint 95"},
        Case{"OtherCompoundFile", fixtures::OtherCompoundFile(), otherFormat, "some other Office document"},
        Case{"DamagedCompoundFile", fixtures::LegacyPresentation().substr(0, 100), corrupt, "compound file"},
        Case{"EncryptedAgile", fixtures::EncryptedAgile(), needsPassword, "needs a password to be opened"},
        Case{"EncryptedStandard", fixtures::EncryptedStandard(), needsPassword, "needs a password to be opened"},
        Case{"RightsManaged",
             CompoundFile({{"\x06"
                            "DataSpaces/Version",
                            "v"},
                           {"\x09"
                            "DRMContent",
                            "x"}}),
             needsPassword, "needs a password to be opened"},
        Case{"ZipEncryptedMainPart", ZipEncrypted(OneSlide().Bytes(), "ppt/presentation.xml"), needsPassword,
             "ppt/presentation.xml is protected by a password"},
        Case{"ModifyPassword", fixtures::ModifyPassword().Bytes(), needsPassword, "needs a password to be changed"},
        Case{"StrangePacking", WithMethod(OneSlide().Bytes(), "ppt/presentation.xml", 12), otherFormat,
             "ppt/presentation.xml is packed by method 12"}),
    [](const auto& tested) { return tested.param.name; });

struct LaterCase {
    const char* name;
    std::string bytes;
    std::int32_t number;
    const char* text;
};

void PrintTo(const LaterCase& item, std::ostream* out)
{
    *out << item.name;
}

/// A slide is read when it is first walked: a deck with a damaged one opens.
class DamagedSlides : public testing::TestWithParam<LaterCase>
{
};

TEST_P(DamagedSlides, FailWhenTheyAreWalked)
{
    const DeckOnDisk deck(GetParam().bytes);
    const auto presentation = deck.Open();

    const Raised raised = RaisedBy([&] { All(SlideOf(*presentation, 1)->Shapes()); });

    EXPECT_THAT(raised, FailsWith(GetParam().number, GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    OfContent, DamagedSlides,
    testing::Values(LaterCase{"BrokenXml", fixtures::PackageWithBrokenXml(), corrupt, "ppt/slides/slide1.xml"},
                    LaterCase{"WrongChecksum", fixtures::PackageWithWrongCrc(), corrupt,
                              "ppt/slides/slide1.xml: its checksum is wrong"},
                    LaterCase{"DocumentTypeDeclaration", fixtures::PackageWithEntityDeclaration(), corrupt,
                              "ppt/slides/slide1.xml"},
                    LaterCase{"ZipEncrypted", ZipEncrypted(OneSlide().Bytes(), "ppt/slides/slide1.xml"), needsPassword,
                              "ppt/slides/slide1.xml is protected by a password"}),
    [](const auto& tested) { return tested.param.name; });

TEST(Open, OfAnAbsentFileSaysThatTheFileIsMissing)
{
    const DeckOnDisk deck(OneSlide());

    EXPECT_THAT(RaisedBy([&] { deck.Open(deck.Folder().PathOf(u"none.pptx")); }),
                FailsWith(FailureNumber::SystemFileNotFound, "none.pptx"));
}

TEST(Open, SaysThatAFolderIsMissing)
{
    const DeckOnDisk deck(OneSlide());

    const String path = deck.Folder().PathOf(u"none/deck.pptx");
    EXPECT_THAT(RaisedBy([&] { deck.Open(path); }), FailsWith(FailureNumber::SystemPathNotFound, ToUtf8(path)));
    EXPECT_THAT(RaisedBy([&] { deck.Open(deck.Path() + u"/deck.pptx"); }),
                FailsWith(FailureNumber::SystemPathNotFound, "deck.pptx/deck.pptx"));
}

TEST(Open, RefusesAPathWithANul)
{
    const DeckOnDisk deck(OneSlide());

    EXPECT_THAT(RaisedBy([&] { deck.Open(deck.Path() + u'\0' + u".pptx"); }),
                FailsWith(FailureNumber::FileNotFound, "NUL"));
}

TEST(Open, OfASavedAndStillOpenPresentationIsASharingViolation)
{
    const DeckOnDisk deck(OneSlide());
    const auto open = deck.Open();
    ReplaceInShape(*open, 1, 1, u"Fabrikam", u"Contoso");
    open->Save();

    EXPECT_THAT(RaisedBy([&] { deck.Open(); }),
                FailsWith(FailureNumber::SharingViolation, "The presentation is open already"));
}

TEST(Open, OfAClosedPresentationSucceedsAgain)
{
    const DeckOnDisk deck(OneSlide());
    deck.Open()->Close();

    EXPECT_TRUE(deck.Open());
}

TEST(Open, GoesByTheContentWhateverTheExtension)
{
    for (const DeckKind kind : {DeckKind::Pptx, DeckKind::Pptm, DeckKind::Potx, DeckKind::Potm, DeckKind::Ppsx,
                                DeckKind::Ppsm, DeckKind::Ppam})
        EXPECT_TRUE(DeckOnDisk(OneSlide().Kind(kind), u"renamed.ppt").Open());
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST(Open, OfAFolderOrPipeIsRefusedAtOnce)
{
    const DeckOnDisk deck(OneSlide());
    const String folder = deck.Folder().MakeFolder(u"folder.pptx");
    const String pipe = deck.Folder().PathOf(u"pipe.pptx");
    ASSERT_EQ(mkfifo(ToUtf8(pipe).c_str(), 0666), 0);

    EXPECT_THAT(RaisedBy([&] { deck.Open(folder); }), FailsWith(FailureNumber::AccessDenied, "folder.pptx"));
    EXPECT_THAT(RaisedBy([&] { deck.Open(pipe); }), FailsWith(FailureNumber::AccessDenied, "it is not a file"));
}

TEST(Open, WithoutPermissionSaysSo)
{
    const DeckOnDisk deck(OneSlide());
    SetMode(deck.Path(), 0000);
    const OrdinaryUser user;

    EXPECT_THAT(RaisedBy([&] { deck.Open(); }), FailsWith(FailureNumber::AccessDenied, "Permission denied"));
}

TEST(Open, OfALockedFileIsASharingViolation)
{
    const DeckOnDisk deck(OneSlide());
    for (const auto kind : {LockedByAnother::Kind::Record, LockedByAnother::Kind::WholeFile}) {
        const LockedByAnother lock(deck.Path(), kind);

        EXPECT_THAT(RaisedBy([&] { deck.Open(); }),
                    FailsWith(FailureNumber::SharingViolation, "another program has locked it"));
    }
    EXPECT_TRUE(deck.Open());
}

TEST(Open, OfAnOpenFileIsASharingViolationUnderAnyName)
{
    const DeckOnDisk deck(OneSlide());
    const String link = deck.Folder().PathOf(u"link.pptx");
    const String hardLink = deck.Folder().PathOf(u"hard.pptx");
    std::filesystem::create_symlink(ToUtf8(deck.Path()), ToUtf8(link));
    std::filesystem::create_hard_link(ToUtf8(deck.Path()), ToUtf8(hardLink));
    const auto open = deck.Open();

    for (const String& path : {deck.Path(), link, hardLink})
        EXPECT_THAT(RaisedBy([&] { deck.Open(path); }),
                    FailsWith(FailureNumber::SharingViolation, "The presentation is open already"));
}

#endif

}  // namespace tessarine::test
