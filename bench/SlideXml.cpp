#include "SlideXml.h"

#include <algorithm>
#include <array>

namespace tessarine::bench
{

namespace
{

constexpr const char* xmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
constexpr const char* Namespaces =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\">";
constexpr const char* TreeStart =
    "<p:cSld><p:spTree><p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr>"
    "<a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/><a:chOff x=\"0\" y=\"0\"/><a:chExt cx=\"0\" cy=\"0\"/>"
    "</a:xfrm></p:grpSpPr>";
constexpr const char* TreeEnd = "</p:spTree></p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr>";

// Deciles of the paragraphs below the title.
constexpr std::array<std::uint64_t, 10> ParagraphDeciles{1, 2, 4, 6, 8, 9, 11, 13, 22, 44};

std::vector<std::string> MakeVocabulary(std::mt19937_64& random)
{
    constexpr std::array<const char*, 24> syllables{"re", "con", "pro", "mar", "ti",  "on",   "ment", "al",
                                                    "er", "in",  "ta",  "le",  "ver", "sion", "qua",  "li",
                                                    "ty", "bud", "get", "ri",  "sk",  "pla",  "n",    "ing"};
    std::vector<std::string> vocabulary(1500);
    for (std::string& word : vocabulary) {
        const std::uint64_t count = 1 + random() % 4;
        for (std::uint64_t i = 0; i < count; ++i)
            word += syllables[random() % syllables.size()];
    }
    return vocabulary;
}

}  // namespace

SlideXml::SlideXml(std::uint64_t seed) : random_(seed), vocabulary_(MakeVocabulary(random_)) {}

std::string SlideXml::Words(std::uint64_t count)
{
    std::string text;
    for (std::uint64_t i = 0; i < count; ++i) {
        if (i > 0)
            text += ' ';
        // Short words are the frequent ones: two draws, the lower one counts.
        text += vocabulary_[std::min(Below(vocabulary_.size()), Below(vocabulary_.size()))];
        if (Below(40) == 0)
            text += " &amp; more";
        if (Below(60) == 0)
            text +=
                " \xE2\x80\x93 \xC3\x9C"
                "bersicht";
    }
    return text;
}

void SlideXml::AppendRun(std::string& xml, const std::string& runProperties, const std::string& text)
{
    xml += "<a:r>" + runProperties + "<a:t>" + text + "</a:t></a:r>";
}

void SlideXml::AppendHit(std::string& xml, const std::string& runProperties)
{
    if (Below(10) < 3) {
        AppendRun(xml, runProperties, Words(1) + " Fab");
        AppendRun(xml, "<a:rPr lang=\"en-US\" dirty=\"0\" err=\"1\"/>", "rikam");
    } else {
        AppendRun(xml, runProperties, Words(1) + " Fabrikam");
    }
}

void SlideXml::AppendParagraph(std::string& xml, const std::string& properties, const std::string& runProperties,
                               bool withHit)
{
    xml += "<a:p>" + properties;
    if (withHit)
        AppendHit(xml, runProperties);
    const std::uint64_t runs = Below(100) < 24 ? 2 + Below(6) : 1;
    for (std::uint64_t i = 0; i < runs; ++i)
        AppendRun(xml, runProperties, " " + Words(runs == 1 ? 2 + Below(7) : 1 + Below(2)));
    if (Below(3) == 0)
        xml += "<a:endParaRPr lang=\"en-US\" dirty=\"0\"/>";
    xml += "</a:p>";
}

void SlideXml::AppendShape(std::string& xml, const std::string& name, const std::string& placeholder,
                           std::uint64_t paragraphs, std::uint64_t hits)
{
    const std::string id = std::to_string(nextShapeId_++);
    xml += "<p:sp><p:nvSpPr><p:cNvPr id=\"" + id + "\" name=\"" + name + " " + id +
           "\"><a:extLst><a:ext uri=\"{FF2B5EF4-FFF2-40B4-BE49-F238E27FC236}\"><a16:creationId "
           "xmlns:a16=\"http://schemas.microsoft.com/office/drawing/2014/main\" id=\"{" +
           std::to_string(Below(1u << 31)) + "-1BD9-5545-A120-" + std::to_string(Below(1u << 31)) +
           "}\"/></a:ext></a:extLst></p:cNvPr>";
    if (placeholder.empty())
        xml += "<p:cNvSpPr txBox=\"1\"/><p:nvPr/></p:nvSpPr>";
    else
        xml += "<p:cNvSpPr><a:spLocks noGrp=\"1\"/></p:cNvSpPr><p:nvPr>" + placeholder + "</p:nvPr></p:nvSpPr>";
    xml += "<p:spPr><a:xfrm><a:off x=\"" + std::to_string(Below(9000000)) + "\" y=\"" + std::to_string(Below(6000000)) +
           "\"/><a:ext cx=\"" + std::to_string(Below(9000000)) + "\" cy=\"" + std::to_string(Below(6000000)) +
           "\"/></a:xfrm>";
    if (placeholder.empty())
        xml += "<a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom><a:noFill/>";
    xml += "</p:spPr><p:txBody><a:bodyPr><a:normAutofit/></a:bodyPr><a:lstStyle/>";

    static const std::array<std::string, 3> paragraphProperties{
        std::string("<a:pPr marL=\"342900\" indent=\"-342900\"><a:spcBef><a:spcPts val=\"200\"/></a:spcBef><a:buFont "
                    "typeface=\"Wingdings\" pitchFamily=\"2\" charset=\"2\"/><a:buChar char=\"\xC2\xA7\"/></a:pPr>"),
        std::string("<a:pPr marL=\"800100\" lvl=\"1\" indent=\"-342900\"><a:lnSpc><a:spcPct val=\"90000\"/></a:lnSpc>"
                    "</a:pPr>"),
        std::string(),
    };
    static const std::array<std::string, 3> runProperties{
        std::string("<a:rPr lang=\"en-US\" sz=\"2400\" dirty=\"0\"><a:latin typeface=\"Calibri\" "
                    "panose=\"020F0502020204030204\" pitchFamily=\"34\" charset=\"0\"/><a:cs typeface=\"Calibri\" "
                    "panose=\"020F0502020204030204\" pitchFamily=\"34\" charset=\"0\"/></a:rPr>"),
        std::string("<a:rPr lang=\"en-US\" sz=\"2000\" b=\"1\" dirty=\"0\"><a:solidFill><a:schemeClr val=\"tx1\"/>"
                    "</a:solidFill></a:rPr>"),
        std::string("<a:rPr lang=\"en-US\" dirty=\"0\"/>"),
    };
    for (std::uint64_t i = 0; i < paragraphs; ++i)
        AppendParagraph(xml, paragraphProperties[Below(3)], runProperties[Below(3)], i < hits);
    xml += "</p:txBody></p:sp>";
}

std::string SlideXml::Slide(bool withHits)
{
    nextShapeId_ = 2;
    const std::uint64_t paragraphs = ParagraphDeciles[Below(ParagraphDeciles.size())];

    std::string xml = std::string(xmlDeclaration) + "<p:sld" + Namespaces + TreeStart;
    AppendShape(xml, "Title", "<p:ph type=\"title\"/>", 1, withHits ? 1 : 0);
    if (paragraphs <= 13) {
        AppendShape(xml, "Content Placeholder", "<p:ph idx=\"1\"/>", paragraphs, withHits && paragraphs > 4 ? 1 : 0);
    } else {
        // The crowded slides are drawings: many text boxes with a few paragraphs each.
        for (std::uint64_t left = paragraphs; left > 0;) {
            const std::uint64_t here = std::min<std::uint64_t>(left, 1 + Below(4));
            AppendShape(xml, "TextBox", "", here, withHits && left == paragraphs ? 1 : 0);
            left -= here;
        }
    }
    return xml + TreeEnd + "</p:sld>";
}

std::string SlideXml::NotesPage(int slide, bool withHits)
{
    nextShapeId_ = 3;
    std::string xml = std::string(xmlDeclaration) + "<p:notes" + Namespaces + TreeStart;
    xml +=
        "<p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"Slide Image Placeholder 1\"/><p:cNvSpPr><a:spLocks noGrp=\"1\" "
        "noRot=\"1\" noChangeAspect=\"1\"/></p:cNvSpPr><p:nvPr><p:ph type=\"sldImg\"/></p:nvPr></p:nvSpPr><p:spPr/>"
        "</p:sp>";
    AppendShape(xml, "Notes Placeholder", "<p:ph type=\"body\" idx=\"1\"/>", 1 + Below(4), withHits ? 1 : 0);
    xml +=
        "<p:sp><p:nvSpPr><p:cNvPr id=\"4\" name=\"Slide Number Placeholder 3\"/><p:cNvSpPr><a:spLocks noGrp=\"1\"/>"
        "</p:cNvSpPr><p:nvPr><p:ph type=\"sldNum\" sz=\"quarter\" idx=\"5\"/></p:nvPr></p:nvSpPr><p:spPr/><p:txBody>"
        "<a:bodyPr/><a:lstStyle/><a:p><a:fld id=\"{7912CC81-90BB-4CBB-9111-7C2B54453FE6}\" type=\"slidenum\"><a:rPr "
        "lang=\"en-US\"/><a:t>" +
        std::to_string(slide) + "</a:t></a:fld><a:endParaRPr lang=\"en-US\"/></a:p></p:txBody></p:sp>";
    return xml + TreeEnd + "</p:notes>";
}

}  // namespace tessarine::bench
