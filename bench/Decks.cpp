#include "Decks.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "BinaryDecks.h"
#include "SlideXml.h"
#include "ZipWriter.h"

namespace tessarine::bench
{

namespace
{

// Part of the folder's name: decks of an older shape are not taken for these.
constexpr std::string_view Shape = "shape-1";

constexpr int Layouts = 11;  // as in the themes that come with PowerPoint

constexpr std::string_view SlidePrefix = "ppt/slides/slide";
constexpr std::string_view NotesPrefix = "ppt/notesSlides/notesSlide";

const std::string Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
const std::string OfficeRelationship = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

/// The slide's number in an entry's name, 0 for other entries.
int NumberBehind(std::string_view prefix, std::string_view entryName)
{
    if (!entryName.starts_with(prefix) || !entryName.ends_with(".xml"))
        return 0;
    int number = 0;
    std::from_chars(entryName.data() + prefix.size(), entryName.data() + entryName.size(), number);
    return number;
}

class RelationshipsPart
{
public:
    RelationshipsPart& Add(const std::string& type, const std::string& target)
    {
        const std::string base = type.find("://") == std::string::npos ? OfficeRelationship : "";
        xml_ += "<Relationship Id=\"rId" + std::to_string(++count_) + "\" Type=\"" + base + type + "\" Target=\"" +
                target + "\"/>";
        return *this;
    }

    std::string Xml() const { return xml_ + "</Relationships>"; }

private:
    std::string xml_ =
        Declaration + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    int count_ = 0;
};

std::string ContentTypes(const DeckSet& set)
{
    std::string xml =
        Declaration +
        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default Extension=\"mp4\" "
        "ContentType=\"video/mp4\"/><Default Extension=\"rels\" "
        "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
        "ContentType=\"application/xml\"/>";
    const auto add = [&xml](const std::string& part, const std::string& type) {
        xml += "<Override PartName=\"/" + part + "\" ContentType=\"application/vnd.openxmlformats-" + type + "+xml\"/>";
    };
    const std::string presentationml = "officedocument.presentationml.";
    add("ppt/presentation.xml", presentationml + "presentation.main");
    add("ppt/slideMasters/slideMaster1.xml", presentationml + "slideMaster");
    for (int i = 1; i <= Layouts; ++i)
        add("ppt/slideLayouts/slideLayout" + std::to_string(i) + ".xml", presentationml + "slideLayout");
    for (int i = 1; i <= set.slides; ++i)
        add("ppt/slides/slide" + std::to_string(i) + ".xml", presentationml + "slide");
    add("ppt/notesMasters/notesMaster1.xml", presentationml + "notesMaster");
    for (int i = 1; i <= set.slides; ++i) {
        if (SlideHasNotes(i))
            add("ppt/notesSlides/notesSlide" + std::to_string(i) + ".xml", presentationml + "notesSlide");
    }
    add("ppt/theme/theme1.xml", "officedocument.theme");
    add("ppt/theme/theme2.xml", "officedocument.theme");
    add("docProps/core.xml", "package.core-properties");
    add("docProps/app.xml", "officedocument.extended-properties");
    return xml + "</Types>";
}

std::string PresentationPart(const DeckSet& set)
{
    std::string xml =
        Declaration +
        "<p:presentation xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
        "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
        "xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\" saveSubsetFonts=\"1\">"
        "<p:sldMasterIdLst><p:sldMasterId id=\"2147483648\" r:id=\"rId1\"/></p:sldMasterIdLst><p:notesMasterIdLst>"
        "<p:notesMasterId r:id=\"rId2\"/></p:notesMasterIdLst><p:sldIdLst>";
    for (int i = 1; i <= set.slides; ++i)
        xml += "<p:sldId id=\"" + std::to_string(255 + i) + "\" r:id=\"rId" + std::to_string(3 + i) + "\"/>";
    return xml +
           "</p:sldIdLst><p:sldSz cx=\"12192000\" cy=\"6858000\"/><p:notesSz cx=\"6858000\" cy=\"9144000\"/>"
           "</p:presentation>";
}

std::string PresentationRelationships(const DeckSet& set)
{
    RelationshipsPart relationships;
    relationships.Add("slideMaster", "slideMasters/slideMaster1.xml")
        .Add("notesMaster", "notesMasters/notesMaster1.xml")
        .Add("theme", "theme/theme1.xml");
    for (int i = 1; i <= set.slides; ++i)
        relationships.Add("slide", "slides/slide" + std::to_string(i) + ".xml");
    return relationships.Xml();
}

/// A slide turned into a part of another kind: what is in it does not matter here, only that it has a usual size.
std::string As(const std::string& element, const std::string& insideEnd, std::string slide)
{
    const auto replace = [&slide](const std::string& from, const std::string& to) {
        const std::size_t at = slide.rfind(from);
        slide.replace(at, from.size(), to);
    };
    replace("<p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sld>", insideEnd + "</p:" + element + ">");
    replace("<p:sld ", "<p:" + element + " ");
    return slide;
}

std::string Theme()
{
    std::string xml = Declaration +
                      "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" name=\"Office "
                      "Theme\"><a:themeElements><a:clrScheme name=\"Office\">";
    for (const char* color : {"dk1", "lt1", "dk2", "lt2", "accent1", "accent2", "accent3", "accent4", "accent5",
                              "accent6", "hlink", "folHlink"})
        xml += std::string("<a:") + color + "><a:srgbClr val=\"44546A\"/></a:" + color + ">";
    xml += "</a:clrScheme><a:fontScheme name=\"Office\">";
    for (const char* font : {"majorFont", "minorFont"})
        xml += std::string("<a:") + font +
               "><a:latin typeface=\"Calibri\"/><a:ea typeface=\"\"/><a:cs typeface=\"\"/></a:" + font + ">";
    xml += "</a:fontScheme><a:fmtScheme name=\"Office\">";
    const std::string fill = "<a:solidFill><a:schemeClr val=\"phClr\"/></a:solidFill>";
    xml += "<a:fillStyleLst>" + fill + fill + fill + "</a:fillStyleLst><a:lnStyleLst>";
    for (int i = 0; i < 3; ++i)
        xml += "<a:ln w=\"6350\">" + fill + "</a:ln>";
    xml += "</a:lnStyleLst><a:effectStyleLst>";
    for (int i = 0; i < 3; ++i)
        xml += "<a:effectStyle><a:effectLst/></a:effectStyle>";
    return xml + "</a:effectStyleLst><a:bgFillStyleLst>" + fill + fill + fill +
           "</a:bgFillStyleLst></a:fmtScheme></a:themeElements></a:theme>";
}

const std::string ColorMap =
    "<p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\" accent1=\"accent1\" accent2=\"accent2\" "
    "accent3=\"accent3\" accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" "
    "folHlink=\"folHlink\"/>";

void AddMasters(ZipWriter& zip, SlideXml& xml)
{
    std::string layoutIds = "<p:sldLayoutIdLst>";
    RelationshipsPart masterRelationships;
    for (int i = 1; i <= Layouts; ++i) {
        const std::string number = std::to_string(i);
        layoutIds += "<p:sldLayoutId id=\"" + std::to_string(2147483648u + static_cast<unsigned>(i)) + "\" r:id=\"rId" +
                     number + "\"/>";
        masterRelationships.Add("slideLayout", "../slideLayouts/slideLayout" + number + ".xml");
        zip.AddDeflated("ppt/slideLayouts/_rels/slideLayout" + number + ".xml.rels",
                        RelationshipsPart().Add("slideMaster", "../slideMasters/slideMaster1.xml").Xml());
        zip.AddDeflated("ppt/slideLayouts/slideLayout" + number + ".xml",
                        As("sldLayout", "<p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr>", xml.Slide(false)));
    }
    masterRelationships.Add("theme", "../theme/theme1.xml");
    zip.AddDeflated("ppt/slideMasters/_rels/slideMaster1.xml.rels", masterRelationships.Xml());
    zip.AddDeflated("ppt/slideMasters/slideMaster1.xml",
                    As("sldMaster", ColorMap + layoutIds + "</p:sldLayoutIdLst>", xml.Slide(false)));
    zip.AddDeflated("ppt/notesMasters/_rels/notesMaster1.xml.rels",
                    RelationshipsPart().Add("theme", "../theme/theme2.xml").Xml());
    zip.AddDeflated("ppt/notesMasters/notesMaster1.xml", As("notesMaster", ColorMap, xml.Slide(false)));
    zip.AddDeflated("ppt/theme/theme1.xml", Theme());
    zip.AddDeflated("ppt/theme/theme2.xml", Theme());
}

void AddProperties(ZipWriter& zip, const DeckSet& set)
{
    zip.AddDeflated("docProps/core.xml",
                    Declaration +
                        "<cp:coreProperties "
                        "xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
                        "xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:title>Quarterly report</dc:title>"
                        "</cp:coreProperties>");
    zip.AddDeflated("docProps/app.xml",
                    Declaration +
                        "<Properties "
                        "xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\"><Slides>" +
                        std::to_string(set.slides) + "</Slides></Properties>");
}

void AddSlides(ZipWriter& zip, const DeckSet& set, SlideXml& xml)
{
    for (int i = 1; i <= set.slides; ++i) {
        const std::string number = std::to_string(i);
        RelationshipsPart relationships;
        relationships.Add("slideLayout", "../slideLayouts/slideLayout" + std::to_string(1 + i % Layouts) + ".xml");
        if (SlideHasNotes(i))
            relationships.Add("notesSlide", "../notesSlides/notesSlide" + number + ".xml");
        zip.AddDeflated("ppt/slides/_rels/slide" + number + ".xml.rels", relationships.Xml());
        zip.AddDeflated(std::string(SlidePrefix) + number + ".xml", xml.Slide(SlideHasHits(i)));
        if (!SlideHasNotes(i))
            continue;
        zip.AddDeflated("ppt/notesSlides/_rels/notesSlide" + number + ".xml.rels",
                        RelationshipsPart()
                            .Add("notesMaster", "../notesMasters/notesMaster1.xml")
                            .Add("slide", "../slides/slide" + number + ".xml")
                            .Xml());
        zip.AddDeflated(std::string(NotesPrefix) + number + ".xml", xml.NotesPage(i, SlideHasHits(i)));
    }
}

std::string Noise(std::size_t size, std::uint64_t seed)
{
    std::string noise(size, '\0');
    std::uint64_t state = seed * 2 + 1;
    for (std::size_t at = 0; at + sizeof state <= size; at += sizeof state) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        std::memcpy(noise.data() + at, &state, sizeof state);
    }
    return noise;
}

void WriteDeck(const DeckSet& set, std::uint64_t seed, const std::filesystem::path& path)
{
    SlideXml xml(seed);
    ZipWriter zip(path);
    zip.AddDeflated("[Content_Types].xml", ContentTypes(set));
    zip.AddDeflated("_rels/.rels",
                    RelationshipsPart()
                        .Add("officeDocument", "ppt/presentation.xml")
                        .Add("http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
                             "docProps/core.xml")
                        .Add("extended-properties", "docProps/app.xml")
                        .Xml());
    zip.AddDeflated("ppt/_rels/presentation.xml.rels", PresentationRelationships(set));
    zip.AddDeflated("ppt/presentation.xml", PresentationPart(set));
    AddSlides(zip, set, xml);
    AddMasters(zip, xml);
    if (set.mediaBytes > 0)
        zip.AddStored("ppt/media/media1.mp4", Noise(set.mediaBytes, seed));
    AddProperties(zip, set);
    zip.Finish();
}

}  // namespace

std::vector<std::filesystem::path> MakeDecks(const DeckSet& set, const std::filesystem::path& folder)
{
    const std::filesystem::path home = folder / Shape / set.name;
    std::filesystem::create_directories(home);

    const bool isBinary = set.form == DeckSet::Form::Binary;
    std::vector<std::filesystem::path> files;
    for (int i = 1; i <= set.decks; ++i) {
        files.push_back(home / ("deck" + std::to_string(i) + (isBinary ? ".ppt" : ".pptx")));
        if (std::filesystem::exists(files.back()))
            continue;
        const std::filesystem::path unfinished = files.back().string() + ".part";
        (isBinary ? WriteBinaryDeck : WriteDeck)(set, static_cast<std::uint64_t>(i), unfinished);
        std::filesystem::rename(unfinished, files.back());
    }
    return files;
}

bool IsSlideOrNotes(std::string_view entryName)
{
    return NumberBehind(SlidePrefix, entryName) > 0 || NumberBehind(NotesPrefix, entryName) > 0;
}

bool HoldsHit(std::string_view entryName)
{
    const int slide = std::max(NumberBehind(SlidePrefix, entryName), NumberBehind(NotesPrefix, entryName));
    return slide > 0 && SlideHasHits(slide);
}

}  // namespace tessarine::bench
