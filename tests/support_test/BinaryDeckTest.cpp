#include "support/BinaryDeck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/BinaryEncryption.h"
#include "support/BinaryReader.h"
#include "support/BinaryRecords.h"
#include "support/CompoundReader.h"
#include "support/PackageReader.h"

namespace tessarine::test::ppt
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::string Slide(const BinaryDeck& deck, int number)
{
    return LiveObjects(deck.Bytes()).at(deck.SlideId(number));
}

std::string Document(const BinaryDeck& deck)
{
    return LiveObjects(deck.Bytes()).at(BinaryDeck::DocumentId);
}

TEST(BinaryDeck, IsADocumentWithOneMasterByDefault)
{
    const std::string file = BinaryDeck().Bytes();

    EXPECT_THAT(SlidesOf(file), IsEmpty());
    EXPECT_EQ(CountOfEdits(file), 1);
    const auto objects = LiveObjects(file);
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(RecordsOf(objects.at(1)).front().type, 1000U);
    EXPECT_EQ(RecordsOf(objects.at(2)).front().type, 1016U);
    EXPECT_EQ(EntriesOf(file).front().marks.classId[0], 0x10);
}

TEST(BinaryDeck, GivesTheSameBytesForTheSameCalls)
{
    const auto make = [] { return BinaryDeck().Slide(Title(u"Hello"), NotesPage(u"Hi"), LinkedOle(u"C:\\a.xls")); };

    EXPECT_EQ(make().Bytes(), make().Bytes());
}

TEST(BinaryDeck, HoldsTitlesAndBodiesInTheOutlineAndOtherTextsInTheirShapes)
{
    const BinaryDeck deck = BinaryDeck().Slide(Title(u"Hello"), TextBox(TextRun(u"Fab").Bold(), u"rikam"),
                                               Body(u"One\rTwo"), Title(u"Own").OwnText());

    EXPECT_THAT(TextsOf(deck.Bytes(), 1), ElementsAre(u"Hello", u"Fabrikam", u"One\rTwo", u"Own"));
    EXPECT_THAT(CharactersIn(Slide(deck, 1)), ElementsAre(u"Fabrikam", u"Own"));
    EXPECT_THAT(CharactersIn(Document(deck)), ElementsAre(u"Hello", u"One\rTwo"));
}

TEST(BinaryDeck, WritesBytesWhereTheyDoAndCharactersWhereTheyAreNeededOrAskedFor)
{
    const BinaryDeck deck =
        BinaryDeck().Slide(TextBox(u"Gr\u00FC\u00DFe"), TextBox(u"\u20AC"), TextBox(Text(u"abc").Wide()), TextBox(u""));
    const std::string slide = Slide(deck, 1);

    ASSERT_EQ(FindRecords(slide, 4008).size(), 1U);
    EXPECT_EQ(FirstRecord(slide, 4008),
              "Gr\xFC\xDF"
              "e");
    ASSERT_EQ(FindRecords(slide, 4000).size(), 2U);
    EXPECT_EQ(FirstRecord(slide, 4000), "\xAC\x20");
    EXPECT_EQ(FindRecords(slide, 3999).size(), 4U);
}

TEST(BinaryDeck, CountsRunsAndPlacesBesideTextsRight)
{
    const BinaryDeck deck = BinaryDeck().Slide(
        Body(Text(TextRun(u"a").Bold().Size(20), TextRun(u"bc\r").Italic(false).Color(0xC00000), u"d").Levels({0, 1})),
        TextBox(Text(u"x", Field(FieldKind::SlideNumber), Field(FieldKind::RtfDateTime),
                     TextRun(u"yz").Language(0x0407).Click(LinkTo(u"http://fabrikam.com/")).Hover(LinkToSlide(1)))
                    .MasterLevels()
                    .Bookmark(0, 2, 5)
                    .Range(0, 3, LinkToFile(u"a.doc"))),
        TextBox(Text().Styled()));

    EXPECT_THAT(TextFaults(Slide(deck, 1)), IsEmpty());
    EXPECT_THAT(TextFaults(Document(deck)), IsEmpty());
    EXPECT_EQ(FindRecords(Slide(deck, 1), 4063).size(), 3U);
    // One character and the size, then two that are not italic and red, then the plain one with the end.
    const std::string styles = FirstRecord(Document(deck), 4001);
    EXPECT_EQ(styles.substr(20), Long(1) + Long(0x20001) + Short(1) + Short(20) + Long(3) + Long(0x40002) + Short(0) +
                                     "\xC0" + std::string(2, '\0') + "\xFE" + Long(2) + Long(0));
}

TEST(BinaryDeck, CanCountCharacterRunsAsTwoRealFilesDo)
{
    const BinaryDeck deck = BinaryDeck().Slide(TextBox(Text(u"abc").ShortStyles()));

    EXPECT_THAT(TextFaults(Slide(deck, 1)), ElementsAre("character runs of \"abc\""));
}

TEST(BinaryDeck, ListsSlidesInTheOrderAskedFor)
{
    const BinaryDeck deck =
        BinaryDeck().Slide(Title(u"1")).Slide(Title(u"2"), UnlistedSlide()).Slide(Title(u"3")).SlideOrder({3, 2, 1});

    EXPECT_EQ(SlidesOf(deck.Bytes()).size(), 2U);
    EXPECT_THAT(TextsOf(deck.Bytes(), 1), ElementsAre(u"3"));
    EXPECT_THAT(TextsOf(deck.Bytes(), 2), ElementsAre(u"1"));
    EXPECT_EQ(LiveObjects(deck.Bytes()).size(), 5U);
}

TEST(BinaryDeck, WritesALaterEditBehindTheEarlierOne)
{
    const BinaryDeck first = BinaryDeck().Slide(Title(u"Old")).Slide(TextBox(u"Same"));
    const BinaryDeck second = BinaryDeck().Slide(Title(u"New")).Slide(TextBox(u"Same")).After(first);
    const BinaryDeck third = BinaryDeck().Slide(Title(u"New")).Slide(TextBox(u"Other")).After(second);

    EXPECT_EQ(CountOfEdits(third.Bytes()), 3);
    EXPECT_THAT(TextsOf(third.Bytes(), 1), ElementsAre(u"New"));
    EXPECT_THAT(TextsOf(third.Bytes(), 2), ElementsAre(u"Other"));
    EXPECT_EQ(third.DocumentStream().rfind(second.DocumentStream(), 0), 0U);
    EXPECT_EQ(second.DocumentStream().rfind(first.DocumentStream(), 0), 0U);
    EXPECT_NE(third.DocumentStream().find("Same"), std::string::npos);
}

TEST(BinaryDeck, NumbersPersistObjectsWithGapsAndJunkBetween)
{
    const BinaryDeck deck = BinaryDeck()
                                .Master(MainMaster(u"A").TitleMaster(TextBox(u"title master")))
                                .Master(MainMaster(u"B"))
                                .HandoutMaster(TextBox(u"handout"))
                                .NotesMaster(TextBox(u"notes master"))
                                .Slide(Title(u"1"))
                                .Slide(Title(u"2"), NotesPage(u"notes"), EmbeddedOle())
                                .PersistStep(5)
                                .Junk("\x01\x02\x03");
    const auto objects = LiveObjects(deck.Bytes());

    EXPECT_THAT(CharactersIn(objects.at(deck.TitleMasterId())), ElementsAre(u"title master"));
    EXPECT_EQ(RecordsOf(objects.at(deck.MasterId(2))).front().type, 1016U);
    EXPECT_THAT(CharactersIn(objects.at(deck.HandoutMasterId())), ElementsAre(u"handout"));
    EXPECT_THAT(CharactersIn(objects.at(deck.NotesMasterId())), ElementsAre(u"notes master"));
    EXPECT_EQ(RecordsOf(objects.at(deck.SlideId(2))).front().type, 1006U);
    EXPECT_THAT(CharactersIn(objects.at(deck.NotesId(2))), ElementsAre(u"notes"));
    EXPECT_EQ(RecordsOf(objects.at(deck.StorageId(1))).front().type, 4113U);
    EXPECT_THAT(deck.SlideId(2), deck.SlideId(1) + 5);
    EXPECT_EQ(objects.size(), 10U);
}

TEST(BinaryDeck, GivesMastersTheirNamesAndSlidesTheirMasters)
{
    const BinaryDeck deck = BinaryDeck()
                                .Master(MainMaster(u"First").TitleMaster(CenterTitle(u"T")))
                                .Master(MainMaster(u"Second").Nameless())
                                .Slide(OnTitleMaster{1})
                                .Slide(OnMaster{2});
    const auto objects = LiveObjects(deck.Bytes());

    EXPECT_EQ(FirstRecord(objects.at(deck.MasterId(1)), 4026), Wide(u"First"));
    EXPECT_THAT(FindRecords(objects.at(deck.MasterId(2)), 4026), IsEmpty());
    EXPECT_EQ(FirstRecord(objects.at(deck.TitleMasterId(1)), 1007).substr(12, 4), Long(0x80000000));
    EXPECT_EQ(FirstRecord(objects.at(deck.SlideId(1)), 1007).substr(12, 4), Long(0x80000001));
    EXPECT_EQ(FirstRecord(objects.at(deck.SlideId(2)), 1007).substr(12, 4), Long(0x80000002));
}

TEST(BinaryDeck, MarksMastersThatAreCopiesForLayoutsAndAddsThemes)
{
    const BinaryDeck deck = BinaryDeck()
                                .Master(MainMaster(u"First").Original(7).Theme(u"Office Theme"))
                                .Master(MainMaster(u"1_First").CopyOf(7));
    const auto objects = LiveObjects(deck.Bytes());
    const std::string theme = FirstRecord(objects.at(deck.MasterId(1)), 1038);

    EXPECT_EQ(FirstRecord(objects.at(deck.MasterId(1)), 1052), Long(7));
    EXPECT_EQ(FirstRecord(objects.at(deck.MasterId(2)), 1053), Long(7));
    EXPECT_NE(PackageReader(theme).Entry("theme/theme/theme1.xml").bytes.find("name=\"Office Theme\""),
              std::string::npos);
}

TEST(BinaryDeck, NamesMoviesAndPicturesBesideTheFile)
{
    const BinaryDeck deck = BinaryDeck().Slide(Movie(u"a.avi"), LinkedPicture(u"b.png"));
    const auto frames = FindRecords(Slide(deck, 1), 0xF004);

    EXPECT_EQ(FindRecords(FirstRecord(Document(deck), 4102), 4026).at(0).data, Wide(u"a.avi"));
    EXPECT_EQ(FirstRecord(frames.at(1).data, 3009), FirstRecord(Document(deck), 4100).substr(0, 4));
    EXPECT_NE(FirstRecord(frames.at(2).data, 0xF00B).find(Wide(u"b.png")), std::string::npos);
}

TEST(BinaryDeck, TellsWhichCharactersAnEffectPlays)
{
    const BinaryDeck deck = BinaryDeck().Slide(TextBox(u"one\rtwo"), TextAnimation(4, 7));
    const std::string blob = FirstRecord(FirstRecord(Slide(deck, 1), 5002), 5003);

    EXPECT_EQ(FirstRecord(blob, 0x2AFB), Long(2) + Long(1) + Long(0) + Long(4) + Long(7));
}

TEST(BinaryDeck, WritesHeadersAndFootersWhereTheyAreAskedFor)
{
    const BinaryDeck deck = BinaryDeck()
                                .SlideFooters(HeadersFooters().Footer(u"all"))
                                .NotesFooters(HeadersFooters().Header(u"head").FooterWithoutText())
                                .Slide(HeadersFooters().Footer(u"own").Date(u"today"))
                                .Slide(HeadersFooters().Footer(u"gone").FooterNotShown(), FooterShape(u"shape"));
    const auto document = FindRecords(Document(deck), 4057);

    ASSERT_EQ(document.size(), 2U);
    EXPECT_EQ(document[0].instance, 3U);
    EXPECT_EQ(document[1].instance, 4U);
    EXPECT_EQ(FirstRecord(document[1].data, 4058), Short(0) + Short(0x30));
    EXPECT_EQ(FirstRecord(Slide(deck, 1), 4058), Short(0) + Short(0x25));
    EXPECT_EQ(FirstRecord(Slide(deck, 2), 4058), Short(0) + Short(0));
    EXPECT_EQ(FirstRecord(Slide(deck, 2), 1056), "\x09");
    EXPECT_EQ(FirstRecord(Slide(deck, 2), 3011), "\xFF\xFF\xFF\xFF\x09" + std::string(3, '\0'));
}

TEST(BinaryDeck, KeepsLinksOnceWhereTheyAreShared)
{
    const BinaryDeck deck = BinaryDeck()
                                .Slide(Title(u"Start"), TextBox(u"a").Click(LinkTo(u"http://a/").Shared()),
                                       TextBox(TextRun(u"b").Click(LinkTo(u"http://a/").Shared())))
                                .Slide(TextBox(u"c").Hover(LinkToSlide(1)), TextBox(u"d").Click(JumpTo(1)),
                                       TextBox(u"e").Click(LinkWithoutAddress()));
    const auto links = FindRecords(Document(deck), 4055);

    ASSERT_EQ(links.size(), 3U);
    EXPECT_EQ(FindRecords(links[0].data, 4026).at(1).data, Wide(u"http://a/"));
    EXPECT_EQ(FindRecords(links[1].data, 4026).at(0).data, Wide(u"256,1,Start"));
    EXPECT_EQ(FindRecords(links[1].data, 4026).at(0).instance, 3U);
    const auto infos = FindRecords(Slide(deck, 2), 4082);
    ASSERT_EQ(infos.size(), 3U);
    EXPECT_EQ(infos[0].instance, 1U);
    EXPECT_EQ(FirstRecord(infos[0].data, 4083).substr(4, 4), Long(2));
    EXPECT_EQ(FirstRecord(infos[1].data, 4083).substr(8, 5), std::string("\x03\x00\x01\x00\x00", 5));
}

TEST(BinaryDeck, NestsGroupsAndMarksTables)
{
    const BinaryDeck deck = BinaryDeck().Slide(Group(TextBox(u"a"), Group(TextBox(u"b")), Line()),
                                               Table({{Text(u"c"), Text(u"d")}, {Text(u"e"), Text(u"f")}}));
    const std::string slide = Slide(deck, 1);

    EXPECT_THAT(TextsOf(deck.Bytes(), 1), ElementsAre(u"a", u"b", u"c", u"d", u"e", u"f"));
    EXPECT_EQ(FindRecords(slide, 0xF003).size(), 4U);
    EXPECT_EQ(FirstRecord(slide, 0xF122).substr(0, 6), Short(0x39F) + Long(1));
}

TEST(BinaryDeck, NumbersShapesOfLargeDrawingsOnce)
{
    std::vector<Shape> many;
    for (int i = 0; i < 1500; ++i)
        many.push_back(Line());
    const BinaryDeck deck = BinaryDeck().Slide(GroupOf(many)).Slide(Line());
    std::vector<std::string> ids;
    for (const int number : {1, 2})
        for (const auto& record : FindRecords(Slide(deck, number), 0xF00A))
            ids.push_back(record.data.substr(0, 4));
    const auto count = ids.size();
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());

    EXPECT_EQ(count, 1503U + 3U);
    EXPECT_EQ(ids.size(), count);
    EXPECT_EQ(FirstRecord(Document(deck), 0xF006).substr(4, 4), Long(5));
}

TEST(BinaryDeck, PacksTheStorageOfALinkedObject)
{
    const BinaryDeck deck = BinaryDeck().Slide(LinkedOle(u"C:\\Book.xls", u"Sheet1!R1C1")).UnpackedObjects();
    const std::string document = Document(deck);
    const std::string storage = FirstRecord(LiveObjects(deck.Bytes()).at(deck.StorageId(1)), 4113);
    const std::string stream = StreamOf(storage, "\x01Ole");

    EXPECT_EQ(FirstRecord(document, 4035).substr(16, 4), Long(deck.StorageId(1)));
    EXPECT_EQ(FindRecords(document, 4046).size(), 1U);
    EXPECT_NE(stream.find("C:\\Book.xls"), std::string::npos);
    EXPECT_NE(stream.find(Wide(u"C:\\Book.xls")), std::string::npos);
    EXPECT_NE(stream.find("Sheet1!R1C1"), std::string::npos);
    EXPECT_EQ(stream.size(), 24 + At(stream, 24) + 52);
}

TEST(BinaryDeck, BreaksWhatTheDoorsAreToldTo)
{
    const BinaryDeck deck = BinaryDeck()
                                .Slide(Title(u"x"))
                                .ChangeObject(BinaryDeck::DocumentId, [](std::string& bytes) { bytes[2] = 'D'; })
                                .ChangeEdit([](UserEdit& edit) { edit.lastEdit = 4; })
                                .ChangeDirectory([](std::string& data) { data += "more"; })
                                .ChangeCurrentUser([](std::string& bytes) { bytes += "tail"; })
                                .ChangeFile([](CompoundBuilder& file) { file.Stream("Added", "a"); });
    const std::string file = deck.Bytes();
    const std::string stream = StreamOf(file, "PowerPoint Document");

    EXPECT_EQ(stream[2], 'D');
    EXPECT_EQ(At(stream, stream.size() - 28 + 8), 4U);
    EXPECT_EQ(stream.substr(stream.size() - 40, 4), "more");
    EXPECT_EQ(StreamOf(file, "Added"), "a");
    EXPECT_THAT(StreamOf(file, "Current User"), testing::EndsWith("tail"));
}

TEST(BinaryDeck, HidesInTheSecondStorageOfDualFiles)
{
    const BinaryDeck deck = BinaryDeck().Slide(Title(u"x"));
    const std::string file = BinaryDeck(deck).DualStorage().Bytes();

    EXPECT_EQ(StreamOf(file, "PP97_DUALSTORAGE/PowerPoint Document"), deck.DocumentStream());
    EXPECT_NE(StreamOf(file, "PowerPoint Document"), deck.DocumentStream());
}

TEST(BinaryDeck, EncryptsPersistObjectsAndNamesTheSession)
{
    const BinaryDeck plain = BinaryDeck().Slide(Title(u"Secret"));
    const std::string file = BinaryDeck(plain).Encrypted(u"password").Bytes();
    const std::string stream = StreamOf(file, "PowerPoint Document");

    EXPECT_EQ(StreamOf(file, "Current User").substr(12, 4), Long(0xF3D1C4DF));
    EXPECT_EQ(At(stream, stream.size() - 36), 0x20U);
    EXPECT_EQ(At(stream, stream.size() - 4), plain.SlideId(1) + 1);
    EXPECT_EQ(stream.find("Secret"), std::string::npos);
    // RC4 gives back what it is given twice.
    const std::size_t document = FirstRecord(plain.DocumentStream(), 1000).size() + 8;
    EXPECT_EQ(Encrypt(u"password", BinaryDeck::DocumentId, stream.substr(0, document)),
              plain.DocumentStream().substr(0, document));
}

TEST(BinaryDeck, VerifiesAPassword)
{
    const std::string session = RecordsOf(CryptSession(SilentPassword)).front().data;
    const std::size_t verifier = 12 + At(session, 8) + 4;

    EXPECT_EQ(session.substr(verifier, 16), "salt of the deck");
    EXPECT_EQ(Encrypt(SilentPassword, 0, session.substr(verifier + 16, 16)), "verifies the key");
    EXPECT_NE(Encrypt(u"other", 0, session.substr(verifier + 16, 16)), "verifies the key");
}

TEST(BinaryDeck, WritesPropertiesIntoTwoStreams)
{
    const std::string file = BinaryDeck()
                                 .Summary(2, TextValue("Title"))
                                 .DocumentSummary(15, WideValue(u"Company"))
                                 .Custom("Client", NumberValue(-3))
                                 .CustomCodePage(1251)
                                 .Bytes();
    const std::string summary = StreamOf(file, "\x05SummaryInformation");
    const std::string document = StreamOf(file,
                                          "\x05"
                                          "DocumentSummaryInformation");

    // One section at 48: its size, two properties, the code page, the title.
    EXPECT_EQ(At(summary, 44), 48U);
    EXPECT_EQ(summary.substr(48), Long(48) + Long(2) + Long(1) + Long(24) + Long(2) + Long(32) + Long(2) + Long(1252) +
                                      Long(30) + Long(6) + std::string("Title\0\0\0", 8));
    EXPECT_EQ(At(document, 24), 2U);
    const std::uint32_t custom = At(document, 64);
    EXPECT_EQ(document.substr(custom, 8), Long(static_cast<std::uint32_t>(document.size()) - custom) + Long(3));
    EXPECT_EQ(document.substr(custom + 32, 20), Long(1) + Long(2) + Long(7) + std::string("Client\0\0", 8));
}

TEST(BinaryDeck, ListsLinksAsOldVersionsReadThem)
{
    const std::string value = LinksValue({{u"mailto:a@b", u""}});

    EXPECT_EQ(value.substr(0, 12), Long(0x41) + Long(80) + Long(6));
    EXPECT_EQ(value.substr(12, 32), Long(3) + Long(7) + Long(3) + Long(6) + Long(3) + Long(0) + Long(3) + Long(7));
    EXPECT_EQ(value.substr(44), WideValue(u"mailto:a@b") + WideValue(u""));
}

}  // namespace
}  // namespace tessarine::test::ppt
