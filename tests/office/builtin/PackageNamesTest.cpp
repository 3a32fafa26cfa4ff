#include <span>

#include "DeckOnDisk.h"
#include "office/builtin/package/ContentTypes.h"
#include "office/builtin/package/Package.h"
#include "office/builtin/package/PartName.h"
#include "office/builtin/package/Relationships.h"
#include "office/builtin/xml/XmlEdits.h"

namespace tessarine::builtin
{
namespace
{

using test::FailsWith;
using test::RaisedBy;
using testing::ElementsAre;

TEST(PartName, OfRelationshipsStandsInAFolderBesideThePart)
{
    EXPECT_EQ(RelationshipPartName(""), "_rels/.rels");
    EXPECT_EQ(RelationshipPartName("ppt/slides/slide1.xml"), "ppt/slides/_rels/slide1.xml.rels");
    EXPECT_EQ(RelationshipPartName("main.xml"), "_rels/main.xml.rels");
}

TEST(PartName, OfATargetStartsAtItsSourcesFolder)
{
    const auto fromSlide = [](std::string_view target) { return ResolveTarget("ppt/slides/slide1.xml", target); };

    EXPECT_EQ(fromSlide("slide2.xml"), "ppt/slides/slide2.xml");
    EXPECT_EQ(fromSlide("./slide2.xml"), "ppt/slides/slide2.xml");
    EXPECT_EQ(fromSlide("../slideLayouts/slideLayout1.xml"), "ppt/slideLayouts/slideLayout1.xml");
    EXPECT_EQ(fromSlide("/ppt/media/image1.png"), "ppt/media/image1.png");
    EXPECT_EQ(fromSlide("//ppt//media//image1.png"), "ppt/media/image1.png");
    EXPECT_EQ(fromSlide("..\\media\\image1.png"), "ppt/media/image1.png");
    EXPECT_EQ(fromSlide("\\ppt\\media\\image1.png"), "ppt/media/image1.png");
    EXPECT_EQ(fromSlide("../../../../etc/passwd"), "etc/passwd");
    EXPECT_EQ(fromSlide("../media/a%20b.png"), "ppt/media/a%20b.png");
    EXPECT_EQ(ResolveTarget("", "ppt/presentation.xml"), "ppt/presentation.xml");
}

TEST(PartName, KeepsWhatOnlyLooksLikeAPercentEscape)
{
    EXPECT_EQ(DecodePercent("a%20b%C3%A4"), "a b\u00E4");
    EXPECT_EQ(DecodePercent("100%"), "100%");
    EXPECT_EQ(DecodePercent("%2"), "%2");
    EXPECT_EQ(DecodePercent("%zz%41"), "%zzA");
}

std::string Zip(std::vector<std::string> names)
{
    test::ZipBuilder zip;
    for (std::size_t i = 0; i < names.size(); ++i)
        zip.entries.push_back({.name = names[i], .bytes = std::to_string(i)});
    return zip.Bytes();
}

/// The content of the entry that a name finds; "none" when it finds none.
std::string Found(const std::string& zip, std::string_view name)
{
    const Package package(BytesInMemory(std::as_bytes(std::span(zip))));
    const auto entry = package.Find(name);
    return entry ? package.Read(*entry) : "none";
}

TEST(PackageFind, PassesOverCaseSlashesAndEscapes)
{
    const std::string zip = Zip({"ppt\\Slides\\slide1.xml", "ppt/a b.xml", "/ppt/rooted.xml", "ppt/c%20d.xml"});

    EXPECT_EQ(Found(zip, "ppt/slides/slide1.xml"), "0");
    EXPECT_EQ(Found(zip, "/PPT/SLIDES/SLIDE1.XML"), "0");
    EXPECT_EQ(Found(zip, "ppt/a%20b.xml"), "1");
    EXPECT_EQ(Found(zip, "ppt/rooted.xml"), "2");
    EXPECT_EQ(Found(zip, "ppt/c%20d.xml"), "3");
    EXPECT_EQ(Found(zip, "ppt/slides/slide2.xml"), "none");
    EXPECT_EQ(Found(zip, "ppt/slides/NULL"), "none");
    EXPECT_EQ(Found(zip, ""), "none");
}

TEST(PackageFind, TakesTheLastOfSeveralEntriesWithOneName)
{
    EXPECT_EQ(Found(Zip({"a.xml", "A.xml", "b.xml"}), "a.xml"), "1");
}

TEST(PackageFollow, GivesNothingForAnExternalADanglingOrNoRelationship)
{
    const std::string zip = Zip({"ppt/slides/slide1.xml"});
    const Package package(BytesInMemory(std::as_bytes(std::span(zip))));
    Relationship relationship;
    relationship.target = "slides/slide1.xml";

    EXPECT_FALSE(package.Follow(std::nullopt, nullptr));
    EXPECT_FALSE(package.Follow(std::nullopt, &relationship));
    relationship.target = "/ppt/slides/slide1.xml";
    EXPECT_EQ(package.Follow(std::nullopt, &relationship), std::optional<Package::Entry>(0));
    relationship.external = true;
    EXPECT_FALSE(package.Follow(std::nullopt, &relationship));
}

constexpr const char* typesNamespace = "http://schemas.openxmlformats.org/package/2006/content-types";

ContentTypes Types(const std::string& elements)
{
    return {std::string("<Types xmlns=\"") + typesNamespace + "\">" + elements + "</Types>", Limits::Default()};
}

TEST(ContentTypesPart, PrefersAnOverrideAndPassesOverCase)
{
    const auto types = Types(
        "<Default Extension=\"XML\" ContentType=\"application/xml\"/>"
        "<Default Extension=\"png\" ContentType=\"image/PNG\"/>"
        "<Override PartName=\"/PPT/presentation.xml\" ContentType=\"Application/Main+XML; charset=utf-8\"/>"
        "<Override PartName=\"ppt/unrooted.xml\" ContentType=\"application/slide+xml\"/>");

    EXPECT_EQ(types.TypeOf("ppt/presentation.xml"), "application/main+xml");
    EXPECT_EQ(types.TypeOf("/ppt/unrooted.xml"), "application/slide+xml");
    EXPECT_EQ(types.TypeOf("ppt/other.xml"), "application/xml");
    EXPECT_EQ(types.TypeOf("ppt/media/LOGO.PNG"), "image/png");
    EXPECT_EQ(types.TypeOf("ppt/media/film.mp4"), "");
    EXPECT_EQ(types.TypeOf("ppt/noextension"), "");
}

TEST(ContentTypesPart, AddsAndRemovesOverridesAndNothingElse)
{
    auto types = Types("<Override PartName=\"/a.xml\" ContentType=\"t\"/> <!-- kept -->");

    types.AddOverride("docProps/core & more.xml", "application/core+xml");
    types.RemoveOverrides({"A.XML", "never/there.xml"});

    EXPECT_EQ(types.Bytes(), std::string("<Types xmlns=\"") + typesNamespace +
                                 "\"> <!-- kept --><Override PartName=\"/docProps/core &amp; more.xml\" "
                                 "ContentType=\"application/core+xml\"/></Types>");
}

TEST(ContentTypesPart, KeepsThePrefixOfItsRoot)
{
    ContentTypes types(std::string("<t:Types xmlns:t=\"") + typesNamespace + "\"></t:Types>", Limits::Default());

    types.AddOverride("a.xml", "t");

    EXPECT_EQ(types.Bytes(), std::string("<t:Types xmlns:t=\"") + typesNamespace +
                                 "\"><t:Override PartName=\"/a.xml\" ContentType=\"t\"/></t:Types>");
}

constexpr const char* relationshipsNamespace = "http://schemas.openxmlformats.org/package/2006/relationships";
const std::string base = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string Wrapped(const std::string& elements)
{
    return std::string("<Relationships xmlns=\"") + relationshipsNamespace + "\">" + elements + "</Relationships>";
}

Relationships Parsed(const std::string& elements)
{
    return {Wrapped(elements), "a.rels", Limits::Default()};
}

TEST(RelationshipsPart, TellsKindsByTheLastSegmentInBothFamilies)
{
    const auto parsed = Parsed(
        "<Relationship Id=\"a\" Type=\"http://purl.oclc.org/ooxml/officeDocument/relationships/extendedProperties\" "
        "Target=\"app.xml\"/>"
        "<Relationship Id=\"b\" Type=\"http://purl.oclc.org/ooxml/officeDocument/relationships/customProperties\" "
        "Target=\"custom.xml\"/>"
        "<Relationship Id=\"c\" "
        "Type=\"http://schemas.openxmlformats.org/officedocument/2006/relationships/metadata/core-properties\" "
        "Target=\"core.xml\"/>");

    EXPECT_EQ(parsed.FirstOf("extended-properties")->id, "a");
    EXPECT_EQ(parsed.FirstOf("custom-properties")->id, "b");
    EXPECT_EQ(parsed.FirstOf("core-properties")->id, "c");
    EXPECT_EQ(parsed.FirstOf("slide"), nullptr);
}

TEST(RelationshipsPart, ComparesIdsExactly)
{
    const auto parsed = Parsed("<Relationship Id=\"rId1\" Type=\"t/slide\" Target=\"x\"/>");

    EXPECT_NE(parsed.Find("rId1"), nullptr);
    EXPECT_EQ(parsed.Find("RID1"), nullptr);
    EXPECT_EQ(parsed.Find(""), nullptr);
}

TEST(RelationshipsPart, ChangesTheBytesOfATargetAlone)
{
    auto parsed = Parsed("<Relationship  Target = 'http://a?x&amp;y'  TargetMode=\"External\" Id='rId7' Type=\"" +
                         base + "hyperlink\" />\n<!-- kept -->");

    parsed.PutTarget("rId7", "http://b?\"x\"&y");

    EXPECT_EQ(parsed.Bytes(), Wrapped("<Relationship  Target = 'http://b?&quot;x&quot;&amp;y'  "
                                      "TargetMode=\"External\" Id='rId7' Type=\"" +
                                      base + "hyperlink\" />\n<!-- kept -->"));
}

TEST(RelationshipsPart, ReadTheSameHoweverTheyAreWritten)
{
    const std::string plain = "<Relationship Id=\"rId1\" Type=\"t/slide\" Target=\"a.xml\"/>";
    for (const std::string& elements :
         {plain, "\n " + plain + "\r\n", std::string("<Relationship Target=\"a.xml\" Id=\"rId1\" Type=\"t/slide\" />"),
          std::string("<Relationship Target='a.xml' Id='rId1' Type='t/slide'></Relationship>"),
          std::string("<Relationship\nTarget=\"a&#46;xml\"\nId=\"rId1\"\nType=\"t/slide\"/>"), "<!-- -->" + plain}) {
        const auto parsed = Parsed(elements);

        ASSERT_EQ(parsed.All().size(), 1u) << elements;
        EXPECT_EQ(parsed.All().front().id, "rId1") << elements;
        EXPECT_EQ(parsed.All().front().target, "a.xml") << elements;
        EXPECT_FALSE(parsed.All().front().external) << elements;
        EXPECT_EQ(parsed.FirstOf("slide"), &parsed.All().front()) << elements;
    }
}

TEST(RelationshipsPart, WithTwoAttributesOfOneNameIsNoXml)
{
    EXPECT_THROW(Parsed("<Relationship Id=\"a\" Type=\"t\" Target=\"x\" Target=\"y\"/>"), Failure);
}

TEST(RelationshipsPart, GivesNoTargetToOneWithout)
{
    auto parsed = Parsed("<Relationship Id=\"a\" Type=\"t\"/><Relationship Id='b' Type='t'/>");

    EXPECT_THROW(parsed.PutTarget("a", "x"), Failure);
    EXPECT_THROW(parsed.PutTarget("b", "x"), Failure);
}

TEST(RelationshipsPart, FindsOneAmongMany)
{
    std::string elements;
    for (int i = 0; i < 100; ++i)
        elements +=
            "<Relationship Id=\"rId" + std::to_string(i) + "\" Type=\"t\" Target=\"" + std::to_string(i) + "\"/>";
    auto parsed = Parsed(elements);
    parsed.Remove("rId7");
    const std::string added(parsed.AddLike("rId8", "new"));

    EXPECT_EQ(parsed.Find("rId99")->target, "99");
    EXPECT_EQ(parsed.Find("rId7"), nullptr);
    EXPECT_EQ(parsed.Find(added)->target, "new");
    EXPECT_EQ(parsed.Find("rId101"), nullptr);
}

TEST(RelationshipsPart, GivesNewOnesAnIdOfTheirOwn)
{
    auto parsed = Parsed(
        "<Relationship Id=\"rId999999999\" Type=\"t\" Target=\"x\"/>"
        "<Relationship Id=\"rId1000000000\" Type=\"t\" Target=\"y\"/>"
        "<Relationship Id=\"other\" Type=\"t\" Target=\"z\"/>");

    const std::string first(parsed.AddLike("other", "http://a"));
    const std::string second(parsed.AddLike("other", "http://b"));

    EXPECT_EQ(parsed.Find(first)->target, "http://a");
    EXPECT_EQ(parsed.Find(second)->target, "http://b");
    EXPECT_EQ(parsed.Find("rId1000000000")->target, "y");
}

TEST(RelationshipsPart, PutsNewOnesIntoAnEmptyOrAbsentPart)
{
    Relationships inEmptyRoot(std::string("<r:Relationships xmlns:r=\"") + relationshipsNamespace + "\"/>", "a.rels",
                              Limits::Default());
    Relationships inNoPart;

    inEmptyRoot.Add("t", "x.xml");
    inNoPart.Add("t", "x.xml");

    EXPECT_EQ(inEmptyRoot.Bytes(), std::string("<r:Relationships xmlns:r=\"") + relationshipsNamespace +
                                       "\"><r:Relationship Id=\"rId1\" Type=\"t\" Target=\"x.xml\"/>"
                                       "</r:Relationships>");
    EXPECT_TRUE(inNoPart.Bytes().ends_with("<Relationship Id=\"rId1\" Type=\"t\" Target=\"x.xml\"/></Relationships>"));
}

TEST(RelationshipsPart, TakesRemovedOnesOut)
{
    auto parsed = Parsed(
        "<Relationship Id=\"a\" Type=\"t\" Target=\"x\"></Relationship><Relationship Id=\"b\" "
        "Type=\"t\" Target=\"y\"/>");

    parsed.Remove("a");

    EXPECT_EQ(parsed.Find("a"), nullptr);
    EXPECT_EQ(parsed.Bytes(), Wrapped("<Relationship Id=\"b\" Type=\"t\" Target=\"y\"/>"));
}

TEST(ApplyEdits, TakesThemInAnyOrder)
{
    EXPECT_EQ(ApplyEdits("0123456789", {{8, 9, "eight"}, {0, 0, "<"}, {2, 4, ""}, {10, 10, ">"}, {0, 0, "["}}),
              "<[014567eight9>");
    EXPECT_EQ(ApplyEdits("same", {}), "same");
}

TEST(ApplyEdits, RefusesThoseThatMeetOrLieOutside)
{
    for (const std::vector<ByteEdit>& edits : {std::vector<ByteEdit>{{0, 3, "a"}, {2, 4, "b"}},
                                               std::vector<ByteEdit>{{3, 2, "a"}}, std::vector<ByteEdit>{{0, 5, "a"}}})
        EXPECT_THAT(RaisedBy([&] { ApplyEdits("1234", edits); }), FailsWith(FailureNumber::FileCorrupt, "two edits"));
}

}  // namespace
}  // namespace tessarine::builtin
