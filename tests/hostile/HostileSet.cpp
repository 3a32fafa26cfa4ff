#include "HostileSet.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "support/Deck.h"
#include "WrittenPackage.h"

namespace tessarine::test
{

namespace
{

const std::string slideName = "ppt/slides/slide1.xml";
const std::string slideLinks = "ppt/slides/_rels/slide1.xml.rels";
const std::string relationshipTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string Times(std::size_t count, const std::function<std::string(std::size_t)>& text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text(i);
    return all;
}

std::string Times(std::size_t count, const std::string& text)
{
    return Times(count, [&](std::size_t) { return text; });
}

std::string Number(std::size_t number)
{
    return std::to_string(number);
}

std::string SlideXml(const std::string& shapes, const std::string& attributes = {}, const std::string& after = {})
{
    return XmlDeclaration() + "<p:sld" + RootNamespaces() + attributes +
           "><p:cSld><p:spTree><p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>"
           "<p:grpSpPr/>" +
           shapes + "</p:spTree>" + after + "</p:cSld></p:sld>";
}

std::string ShapeXml(const std::string& paragraphs, const std::string& name = "p")
{
    return "<" + name + ":sp><" + name + ":nvSpPr><" + name + ":cNvPr id=\"2\" name=\"x\"/><" + name +
           ":cNvSpPr txBox=\"1\"/><" + name + ":nvPr/></" + name + ":nvSpPr><" + name + ":spPr/><" + name +
           ":txBody><a:bodyPr/>" + paragraphs + "</" + name + ":txBody></" + name + ":sp>";
}

std::string Run(const std::string& content)
{
    return "<a:r><a:t>" + content + "</a:t></a:r>";
}

std::string P(const std::string& pieces)
{
    return "<a:p>" + pieces + "</a:p>";
}

/// Relationships of the slide: its layout, and what is given.
std::string LinksXml(const std::string& more)
{
    return XmlDeclaration() + "<Relationships xmlns=\"" + std::string(Uri::PackageRelationships) +
           "\"><Relationship Id=\"rLayout\" Type=\"" + relationshipTypes +
           "slideLayout\" Target=\"../slideLayouts/slideLayout1.xml\"/>" + more + "</Relationships>";
}

std::string ExternalLink(const std::string& id, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" + relationshipTypes + "hyperlink\" Target=\"" + target +
           "\" TargetMode=\"External\"/>";
}

std::string DeckOf(const std::string& slideXml)
{
    return Deck().Slide(TextBox(u"a")).Entry(slideName, slideXml).Bytes();
}

std::string LinkedRun(const std::string& id, const std::string& text, const std::string& tooltip = {})
{
    return "<a:r><a:rPr><a:hlinkClick r:id=\"" + id + "\" tooltip=\"" + tooltip + "\"/></a:rPr><a:t>" + text +
           "</a:t></a:r>";
}

/// What a paragraph holds, by number of repetitions: each a text of one shape that is costly when hits, pieces or
/// characters are looked at again for each other.
std::map<std::string, std::function<std::string(std::size_t)>> Paragraphs()
{
    using namespace std::string_literals;
    return {
        {"Runs", [](std::size_t n) { return P(Times(n, Run("a"))); }},
        {"HitsInOneRun", [](std::size_t n) { return P(Run(Times(n, "a b "))); }},
        {"OneLetterInOneRun", [](std::size_t n) { return P(Run(std::string(n, 'a'))); }},
        {"Paragraphs", [](std::size_t n) { return Times(n, P(Run("a"))); }},
        {"EmptyParagraphs", [](std::size_t n) { return Times(n, "<a:p/>") + P(Run("a")); }},
        {"DateFields",
         [](std::size_t n) { return P(Times(n, "<a:fld type=\"datetime1\"><a:t>a</a:t></a:fld>") + Run("a")); }},
        {"DateFieldsAmongHits",
         [](std::size_t n) { return P(Times(n, "<a:fld type=\"slidenum\"><a:t>1</a:t></a:fld>" + Run("a"))); }},
        {"OtherFields", [](std::size_t n) { return P(Times(n, "<a:fld type=\"x\"><a:t>a</a:t></a:fld>")); }},
        {"Escapes", [](std::size_t n) { return P(Run(Times(n, "_x000B_") + "a")); }},
        {"EscapesAmongHits", [](std::size_t n) { return P(Run(Times(n, "_x000B_a"))); }},
        {"EscapedUnderscores", [](std::size_t n) { return P(Run(Times(n, "_x005F_x000B_a"))); }},
        {"EscapesThatComeAbout", [](std::size_t n) { return P(Run(Times(n, "_x00a0B_"))); }},
        {"Breaks", [](std::size_t n) { return P(Times(n, "<a:br/>") + Run("a")); }},
        {"BreaksAmongHits", [](std::size_t n) { return P(Times(n, "<a:br/>" + Run("a"))); }},
        {"Equations", [](std::size_t n) { return P(Times(n, "<a:m/>") + Times(n, Run("a"))); }},
        {"EquationsAmongHits", [](std::size_t n) { return P(Times(n, "<a:m/>" + Run("a"))); }},
        {"CDataSections", [](std::size_t n) { return P(Run(Times(n, "<![CDATA[a]]>"))); }},
        {"HitsInOneCDataSection", [](std::size_t n) { return P(Run("<![CDATA[" + Times(n, "a<") + "]]>")); }},
        {"EscapesOverCDataEnds", [](std::size_t n) { return P(Run(Times(n, "a_x00<![CDATA[0B_]]>"))); }},
        {"Comments", [](std::size_t n) { return P(Run(Times(n, "a<!-- a -->"))); }},
        {"References", [](std::size_t n) { return P(Run(Times(n, "&#97;&lt;"))); }},
        {"EndMarksThatComeAbout", [](std::size_t n) { return P(Run(Times(n, "]]a> "))); }},
        {"ElementsInTexts", [](std::size_t n) { return P(Run(Times(n, "a<a:x/>"))); }},
        {"TextsInTexts", [](std::size_t n) { return P(Run(Times(n / 100 + 1, "<a:t>a<b>a</b></a:t>a"))); }},
        {"Pairs", [](std::size_t n) { return P(Run(Times(n, "\xF0\x9F\x98\x80"s + "a"))); }},
        {"BytesThatAreNoUtf8", [](std::size_t n) { return P(Run(Times(n, "\xFF"s + "a"))); }},
        {"CarriageReturns", [](std::size_t n) { return P(Run(Times(n, "a\r"))); }},
        {"Ampersands", [](std::size_t n) { return P(Run(Times(n, "a&"))); }},
        {"EmptyRuns", [](std::size_t n) { return P(Times(n, Run("")) + Run("a") + Times(n, Run("")) + Run("a")); }},
        {"WhiteSpace", [](std::size_t n) { return P(Times(n, Run("a") + "\n")); }},
        {"EndProperties", [](std::size_t n) { return P(Run("a") + Times(n, "<a:endParaRPr/>")) + P(Run("a")); }},
        {"EndPropertiesAmongHits", [](std::size_t n) { return P(Times(n, Run("a") + "<a:endParaRPr/>")); }},
        {"Properties", [](std::size_t n) { return P(Times(n, "<a:pPr/>") + Times(n, Run("a"))); }},
        {"LargeProperties",
         [](std::size_t n) { return P("<a:pPr x=\"" + std::string(n, 'x') + "\"/>" + Run(Times(n / 8, "a "))); }},
        {"LargeRunProperties",
         [](std::size_t n) {
             return P("<a:r><a:rPr x=\"" + std::string(n, 'x') + "\"/><a:t>" + Times(n / 8, "a ") + "</a:t></a:r>");
         }},
        {"RunsWithNamespaces",
         [](std::size_t n) {
             return P(Times(n, [](std::size_t i) {
                 return "<a:r xmlns:n" + Number(i) + "=\"urn:" + Number(i) + "\"><a:t>a</a:t></a:r>";
             }));
         }},
        {"ParagraphsWithNamespaces",
         [](std::size_t n) {
             return Times(n, [](std::size_t i) {
                 return "<a:p xmlns:n" + Number(i) + "=\"urn:" + Number(i) + "\">" + Run("a") + "</a:p>";
             });
         }},
        {"PrefixesBoundAgain",
         [](std::size_t n) {
             return Times(n, "<a:p xmlns:q=\"urn:q\"><a:r xmlns:a=\"" + std::string(Uri::Drawing) +
                                 "\"><a:t>a</a:t></a:r></a:p>");
         }},
        {"DeclarationsInText", [](std::size_t n) { return P(Run(Times(n, "xmlns:a xmlns:p=\"a\" "))); }},
        {"DeclarationsWithoutEnd", [](std::size_t n) { return P(Run(Times(n, "xmlns:a"))); }},
        {"LinksToNothing", [](std::size_t n) { return P(Times(n, LinkedRun("rNone", "a"))); }},
        {"InvalidLinks",
         [](std::size_t n) {
             return P(Times(n, [](std::size_t i) {
                 return "<a:r><a:rPr><a:hlinkClick r:id=\"\" invalidUrl=\"a" + Number(i) +
                        "\"/></a:rPr><a:t>a</a:t></a:r>";
             }));
         }},
        {"DenseElements", [](std::size_t n) { return P(Times(n, "<a:x/>") + Run("a")); }},
        {"OverlappingWords", [](std::size_t n) { return P(Run(Times(n, "aXb"))) + P(Run(std::string(n, 'A'))); }},
    };
}

/// Whole slides, by number of repetitions.
std::map<std::string, std::function<std::string(std::size_t)>> Slides()
{
    return {
        {"Shapes", [](std::size_t n) { return SlideXml(Times(n, ShapeXml(P(Run("a"))))); }},
        {"EmptyShapes", [](std::size_t n) { return SlideXml(Times(n, "<p:sp/>")); }},
        {"Groups",
         [](std::size_t n) {
             return SlideXml(Times(n, "<p:grpSp>") + ShapeXml(P(Run("a"))) + Times(n, "</p:grpSp>"));
         }},
        {"GroupsSideBySide", [](std::size_t n) { return SlideXml(Times(n, "<p:grpSp/>") + ShapeXml(P(Run("a")))); }},
        {"Controls",
         [](std::size_t n) {
             return SlideXml(Times(n,
                                   "<p:graphicFrame><a:graphic><a:graphicData uri=\"x/ole\"><p:oleObj r:id=\"rX\"/>"
                                   "</a:graphicData></a:graphic></p:graphicFrame>"),
                             {}, "<p:controls>" + Times(n, "<p:control r:id=\"rY\"/>") + "</p:controls>");
         }},
        {"AlternateContent",
         [](std::size_t n) {
             return SlideXml(Times(n, "<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) +
                                          "\"><mc:Choice Requires=\"x\"/><mc:Fallback>" + ShapeXml(P(Run("a"))) +
                                          "</mc:Fallback></mc:AlternateContent>"));
         }},
        {"AlternateContentInItself",
         [](std::size_t n) {
             return SlideXml("<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) + "\">" +
                             Times(n, "<mc:Fallback><mc:AlternateContent>") + ShapeXml(P(Run("a"))) +
                             Times(n, "</mc:AlternateContent></mc:Fallback>") + "</mc:AlternateContent>");
         }},
        {"Twins",
         [](std::size_t n) {
             const std::string shape = ShapeXml(P(Run(Times(n, "a "))));
             return SlideXml("<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) +
                             "\"><mc:Choice xmlns:p14=\"http://schemas.microsoft.com/office/powerpoint/2010/main\" "
                             "Requires=\"p14\">" +
                             shape + "</mc:Choice><mc:Fallback>" + shape + "</mc:Fallback></mc:AlternateContent>");
         }},
        {"RequiredNamespaces",
         [](std::size_t n) {
             return SlideXml("<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) +
                             "\"><mc:Choice Requires=\"" + Times(n, "p ") + "\"/></mc:AlternateContent>" +
                             ShapeXml(P(Run("a"))));
         }},
        {"DeepElements",
         [](std::size_t n) {
             return SlideXml(ShapeXml(P(Run("a"))) + Times(n, "<p:x>") + ShapeXml(P(Run("a"))) + Times(n, "</p:x>"));
         }},
        {"Attributes",
         [](std::size_t n) {
             return SlideXml(ShapeXml(P(Run("a"))), Times(n, [](std::size_t i) { return " a" + Number(i) + "=\"\""; }));
         }},
        {"AttributesOfManyElements",
         [](std::size_t n) {
             const std::string attributes = Times(200, [](std::size_t i) { return " a" + Number(i) + "=\"\""; });
             return SlideXml("<p:sp" + attributes + "/>" + Times(n, "<q:sp/>") + ShapeXml(P(Run("a"))), attributes);
         }},
        {"Entities",
         [](std::size_t n) { return SlideXml(ShapeXml(P(Run("a"))), " x=\"" + Times(n, "&#97;&lt;") + "\""); }},
        {"NamespaceInEntities",
         [](std::size_t n) {
             return SlideXml(Times(n, "<q:sp q:id=\"\"/>") + ShapeXml(P(Run("a"))),
                             " xmlns:q=\"" + Times(n, "&#97;") + "\"");
         }},
        {"UnclosedElements", [](std::size_t n) { return SlideXml(Times(n, "<p:sp>")); }},
        {"UnclosedComments", [](std::size_t n) { return SlideXml(Times(n, "<!-- ")); }},
        {"Comments", [](std::size_t n) { return SlideXml(ShapeXml(P(Run("a"))) + Times(n, "<!-- a -->")); }},
        {"DocumentType",
         [](std::size_t n) {
             return "<!DOCTYPE x [" + Times(n / 100, "<!ENTITY a \"aaaaaaaaaa\">") + "]>" + SlideXml("");
         }},
        {"Tables",
         [](std::size_t n) {
             return SlideXml("<p:graphicFrame><a:graphic><a:graphicData uri=\"x/table\"><a:tbl><a:tr>" +
                             Times(n, "<a:tc><p:txBody>" + P(LinkedRun("rX", "a")) + "</p:txBody></a:tc>") +
                             "</a:tr></a:tbl></a:graphicData></a:graphic></p:graphicFrame>");
         }},
        {"Spaces", [](std::size_t n) { return SlideXml(std::string(n, ' ') + ShapeXml(P(Run("a")))); }},
    };
}

std::string Bomb(std::size_t size)
{
    return DeckOf(SlideXml(ShapeXml(P(Run(std::string(size, 'a'))))));
}

/// Decks that need more than a slide.
std::map<std::string, std::function<std::string(std::size_t)>> Decks()
{
    return {
        {"Links",
         [](std::size_t n) {
             const auto id = [](std::size_t i) { return "rId" + Number(i); };
             return Deck()
                 .Slide(TextBox(u"a"))
                 .Entry(slideName,
                        SlideXml(ShapeXml(P(Times(n, [&](std::size_t i) { return LinkedRun(id(i), "a"); })))))
                 .Entry(slideLinks,
                        LinksXml(Times(n, [&](std::size_t i) { return ExternalLink(id(i), "http://a/" + Number(i)); })))
                 .Bytes();
         }},
        {"LinksThatShareATarget",
         [](std::size_t n) {
             return Deck()
                 .Slide(TextBox(u"a"))
                 .Entry(slideName,
                        SlideXml(ShapeXml(P(Times(n, [](std::size_t i) { return LinkedRun("rX", "a", Number(i)); })))))
                 .Entry(slideLinks, LinksXml(ExternalLink("rX", "http://a/b")))
                 .Bytes();
         }},
        {"LinksOfManyShapes",
         [](std::size_t n) {
             return Deck()
                 .Slide(TextBox(u"a"))
                 .Entry(slideName,
                        SlideXml(Times(n, [](std::size_t i) { return ShapeXml(P(LinkedRun("rX", "a", Number(i)))); })))
                 .Entry(slideLinks, LinksXml(ExternalLink("rX", "a")))
                 .Bytes();
         }},
        {"LongLink",
         [](std::size_t n) {
             return Deck()
                 .Slide(TextBox(u"a"))
                 .Entry(slideName, SlideXml(ShapeXml(P(LinkedRun("rX", "a")))))
                 .Entry(slideLinks, LinksXml(ExternalLink("rX", "http://x/" + Times(n, "%61a"))))
                 .Bytes();
         }},
        {"Relationships",
         [](std::size_t n) {
             return Deck().Slide(TextBox(u"a")).Entry(slideLinks, LinksXml(Times(n, ExternalLink("rX", "a")))).Bytes();
         }},
        {"RelationshipsWrittenOddly",
         [](std::size_t n) {
             return Deck()
                 .Slide(TextBox(u"a"))
                 .Entry(slideLinks,
                        LinksXml(Times(n, "<Relationship  Id='r&#88;' Type='x' Target='a'></Relationship>")))
                 .Bytes();
         }},
        {"ManySlides",
         [](std::size_t n) {
             Deck deck;
             for (std::size_t i = 0; i < n / 64; ++i)
                 deck.Slide(TextBox(u"a"), NotesPage(u"a"));
             return deck.Bytes();
         }},
        {"OneNotesPageOfManySlides",
         [](std::size_t n) {
             const std::string notes = "notesSlide";
             Deck deck;
             deck.Slide(TextBox(u"a"), NotesPage(String(n * 48, u'a')));
             for (std::size_t i = 2; i <= n / 64; ++i) {
                 deck.Slide(TextBox(u"a"), NotesPage(u"a"));
                 deck.Edit("ppt/slides/_rels/slide" + Number(i) + ".xml.rels", notes + Number(i) + ".xml",
                           notes + "1.xml");
             }
             return deck.Bytes();
         }},
        {"OneSlideNamedOften",
         [](std::size_t n) {
             const Deck plain = Deck().Slide(TextBox(u"a"));
             const std::string main = plain.EntryBytes("ppt/presentation.xml");
             const std::size_t item = main.find("<p:sldId ");
             const std::string named = main.substr(item, main.find("/>", item) + 2 - item);
             return Deck().Slide(TextBox(u"a")).Edit("ppt/presentation.xml", named, Times(n, named)).Bytes();
         }},
        {"OneLayoutNamedOften",
         [](std::size_t n) {
             const std::string name = "ppt/slideMasters/slideMaster1.xml";
             const std::string master = Deck().Slide(TextBox(u"a")).EntryBytes(name);
             const std::size_t item = master.find("<p:sldLayoutId ");
             const std::string named = master.substr(item, master.find("/>", item) + 2 - item);
             return Deck().Slide(TextBox(u"a")).Edit(name, named, Times(n, named)).Bytes();
         }},
        {"LongTitle", [](std::size_t n) { return Deck().Core("dc:title", String(n, u'a')).Slide().Bytes(); }},
        {"LongProperty",
         [](std::size_t n) { return Deck().Custom(u"x", "lpwstr", String(n * 8, u'a')).Slide().Bytes(); }},
        {"Properties",
         [](std::size_t n) {
             Deck deck;
             for (std::size_t i = 0; i < n / 8; ++i)
                 deck.Custom(u"x" + FromUtf8(Number(i)), "lpwstr", u"a");
             return deck.Slide().Bytes();
         }},
        {"LongDesignName",
         [](std::size_t n) {
             return Deck().Master(SlideMaster(String(n, u'a'))).Slide(TextBox(u"a")).Slide(TextBox(u"a")).Bytes();
         }},
        {"ContentTypes",
         [](std::size_t n) {
             const std::string name = "[Content_Types].xml";
             return Deck()
                 .Slide(TextBox(u"a"), NotesPage(u"a"))
                 .Edit(name, "</Types>",
                       Times(n,
                             [](std::size_t i) {
                                 return "<Override PartName=\"/x" + Number(i) + ".xml\" ContentType=\"x/y\"/>";
                             }) +
                           "<Default Extension=\"abc\" ContentType=\"application/"
                           "vnd.openxmlformats-officedocument.presentationml.notesSlide+xml\"/></Types>")
                 .Bytes();
         }},
        {"Entries",
         [](std::size_t n) {
             Deck deck;
             deck.Slide(TextBox(u"a"));
             for (std::size_t i = 0; i < n; ++i)
                 deck.Entry("x" + Number(i), "");
             return deck.Bytes();
         }},
        {"SignaturesNamedOften",
         [](std::size_t n) {
             const std::string name = "_xmlsignatures/_rels/origin.sigs.rels";
             const std::string links = Deck().Slide(TextBox(u"a")).Signed().EntryBytes(name);
             const std::size_t item = links.find("<Relationship ");
             const std::string named = links.substr(item, links.find("/>", item) + 2 - item);
             return Deck().Slide(TextBox(u"a")).Signed().Edit(name, named, Times(n / 64 + 1, named)).Bytes();
         }},
        {"SlideInUtf16",
         [](std::size_t n) {
             return Deck()
                 .Slide(TextBox(u"a"))
                 .Entry(slideName, SlideXml(ShapeXml(P(Run(Times(n, "a "))))))
                 .Utf16(slideName)
                 .Bytes();
         }},
        {"Footer", [](std::size_t n) { return Deck().Slide(Footer(String(n, u'a'))).Bytes(); }},
        {"NotesText", [](std::size_t n) { return Deck().Slide(TextBox(u"x"), NotesPage(String(n, u'a'))).Bytes(); }},
        {"LinkedObjects",
         [](std::size_t n) {
             Deck deck;
             SlideContent slide;
             for (std::size_t i = 0; i < n / 64; ++i)
                 slide.Add(LinkedOle(u"file:///C:\\a" + FromUtf8(Number(i)) + u".xlsx!A1"));
             return deck.Slide(slide).Bytes();
         }},
    };
}

/// A slide many times over: what is kept of each adds up.
std::string DeckOfMany(std::size_t count, const std::string& slideXml, const std::string& links)
{
    Deck deck;
    for (std::size_t i = 1; i <= count; ++i) {
        deck.Slide(TextBox(u"a")).Entry("ppt/slides/slide" + Number(i) + ".xml", slideXml);
        if (!links.empty())
            deck.Entry("ppt/slides/_rels/slide" + Number(i) + ".xml.rels", LinksXml(links));
    }
    return deck.Bytes();
}

/// Decks of many large slides, of which one alone would do no harm.
std::vector<HostileFile> ManyLargeSlides()
{
    const auto text = [](const std::string& words) { return ShapeXml(P(Run(words + std::string(500'000, 'x')))); };
    const auto id = [](std::size_t i) { return "r" + Number(i); };
    struct Case {
        std::string name;
        std::size_t slides;
        std::string shapes;
        std::string links = {};
        bool isChanged = true;
    };
    const std::vector<Case> cases{
        {"Texts", 10, text("a b "), {}},
        {"TextsWithoutHits", 10, text(""), {}, false},
        {"Shapes", 8, Times(30'000, "<p:sp/>") + ShapeXml(P(Run("a"))), {}},
        {"ShapesWithTexts", 12, Times(3'000, ShapeXml(P(Run("a b "))))},
        {"Runs", 20, ShapeXml(P(Times(10'000, Run("x")) + Run("a")))},
        {"Fields", 20, ShapeXml(P(Times(5'000, "<a:fld type=\"datetime1\"><a:t>1</a:t></a:fld>") + Run("a b")))},
        {"InvalidLinks", 12,
         ShapeXml(P(Times(3'000,
                          [](std::size_t i) {
                              return "<a:r><a:rPr><a:hlinkClick r:id=\"\" invalidUrl=\"a" + Number(i) +
                                     "\"/></a:rPr><a:t>x</a:t></a:r>";
                          })))},
        {"Links", 12, ShapeXml(P(Times(2'000, [&](std::size_t i) { return LinkedRun(id(i), "x"); }))),
         Times(2'000, [&](std::size_t i) { return ExternalLink(id(i), "http://a/" + Number(i)); }), false},
        {"Relationships", 20, ShapeXml(P(Run("x"))),
         Times(5'000, [&](std::size_t i) { return ExternalLink(id(i), "http://a/" + Number(i)); }), false},
    };
    std::vector<HostileFile> files;
    for (const Case& each : cases) {
        const std::string xml = SlideXml(each.shapes);
        files.push_back({.name = "ManyLargeSlidesOf" + each.name,
                         .make = [=] { return DeckOfMany(each.slides, xml, each.links); },
                         .alsoFind = {"b", "sought in vain"},
                         .changedBytes = each.isChanged ? each.slides * xml.size() : 0});
    }
    return files;
}

std::string File(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string InCamelCase(std::string text)
{
    std::string name;
    bool begins = true;
    for (const char c : text) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isPlain)
            name += begins && c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
        begins = !isPlain;
    }
    return name;
}

}  // namespace

std::size_t LargestEntry(const std::string& zip)
{
    std::size_t largest = 0;
    const auto number = [&](std::size_t at) {
        std::size_t value = 0;
        for (std::size_t i = 4; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(zip[at + i]);
        return value;
    };
    constexpr std::size_t recordSize = 46;
    constexpr std::size_t sizeInRecord = 24;
    for (std::size_t at = zip.find("PK\x01\x02"); at != std::string::npos && at + recordSize <= zip.size();
         at = zip.find("PK\x01\x02", at + 4))
        largest = std::max(largest, number(at + sizeInRecord));
    return largest;
}

std::vector<HostileFile> HostileSet(const std::string& findsFolder)
{
    std::vector<HostileFile> set;
    constexpr std::size_t few = 1'000;
    constexpr std::size_t many = 16'000;
    for (const std::size_t count : {few, many}) {
        for (const auto& [name, make] : Paragraphs()) {
            const auto deck = [make = make, count] { return DeckOf(SlideXml(ShapeXml(make(count)))); };
            set.push_back({.name = name + Number(count), .make = deck});
            // Line ends in the new text divide paragraphs; what is taken away may join them.
            set.push_back({.name = name + "IntoLines" + Number(count), .make = deck, .with = "b\nc"});
        }
        for (const auto& [name, make] : Slides())
            set.push_back({.name = name + Number(count) + "OnASlide",
                           .make = [make = make, count] { return DeckOf(make(count)); }});
        for (const auto& [name, make] : Decks())
            set.push_back(
                {.name = name + Number(count) + "InADeck", .make = [make = make, count] { return make(count); }});
    }
    for (const auto& [name, make] : Paragraphs())
        set.push_back({.name = name + "TakenAway",
                       .make = [make = make] { return DeckOf(SlideXml(ShapeXml(make(many)))); },
                       .with = ""});

    std::ranges::move(ManyLargeSlides(), std::back_inserter(set));

    const std::string plain = Deck().Slide(TextBox(u"Fabrikam a a a")).Bytes();
    for (std::size_t eighth = 0; eighth < 8; ++eighth)
        set.push_back({.name = "CutAfterEighths" + Number(eighth),
                       .make = [=] { return plain.substr(0, plain.size() * eighth / 8); },
                       .largestPart = plain.size()});
    set.push_back({.name = "BombOf60Megabytes", .make = [] { return Bomb(60u << 20); }, .largestPart = 1});
    set.push_back({.name = "BombOf5Megabytes", .make = [] { return Bomb(5u << 20); }});
    // Seven characters of the part for each of the text: what keeps them all shows here.
    set.push_back({.name = "FiveMegabytesOfEscapes",
                   .make = [] { return DeckOf(SlideXml(ShapeXml(P(Run(Times(700'000, "_x000B_") + "a"))))); }});
    set.push_back({.name = "BombOfElements",
                   .make = [] { return DeckOf(SlideXml(Times(5u << 20, "<p:x/>"))); },
                   .largestPart = 1});
    set.push_back({.name = "SeventyThousandEntries", .make = [] {
                       ZipBuilder zip;
                       for (std::size_t i = 0; i < 70'000; ++i)
                           zip.entries.push_back({.name = Number(i), .stored = true});
                       zip.zip64End = true;
                       return zip.Bytes();
                   }});

    for (const auto& find : std::filesystem::recursive_directory_iterator(findsFolder)) {
        if (!find.is_regular_file())
            continue;
        const std::string target = find.path().parent_path().filename().string();
        set.push_back(
            {.name = "Find" + InCamelCase(target + "-" + find.path().stem().string()), .make = [path = find.path()] {
                 // Packages as they are written out for fuzzing, or parts and texts alone.
                 const std::string bytes = File(path);
                 if (bytes.starts_with("@@"))
                     return fuzz::WrittenPackage(bytes).ZipBytes();
                 return Deck().Slide(TextBox(u"a")).Entry(slideName, bytes).Bytes();
             }});
    }
    return set;
}

}  // namespace tessarine::test
