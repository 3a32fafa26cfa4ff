#include "TextBoxOnDisk.h"

#include <stdexcept>

#include "engine/SearchFunctions.h"
#include "model/Project.h"

namespace tessarine::test
{
namespace
{

const std::string slidePart = "ppt/slides/slide1.xml";
constexpr std::string_view bodyStart = "<a:lstStyle/>";
constexpr std::string_view bodyEnd = "</p:txBody>";

Deck DeckWith(const std::string& placeholder, const std::string& paragraphs)
{
    return Deck().Slide(RawShape(R"(<p:sp><p:nvSpPr><p:cNvPr id="2" name="Text"/><p:cNvSpPr/><p:nvPr>)" + placeholder +
                                 "</p:nvPr></p:nvSpPr><p:spPr/><p:txBody><a:bodyPr/><a:lstStyle/>" + paragraphs +
                                 "</p:txBody></p:sp>"));
}

std::shared_ptr<powerpoint::TextRange> TextOfFirstShape(powerpoint::Presentation& presentation)
{
    return ShapeOf(presentation, 1, 1)->TextFrame()->TextRange();
}

}  // namespace

std::string P(std::string_view content)
{
    return "<a:p>" + std::string(content) + "</a:p>";
}

std::string R(std::string_view textXml, std::string_view properties)
{
    const std::string rPr = properties.empty() ? "" : "<a:rPr " + std::string(properties) + "/>";
    return "<a:r>" + rPr + "<a:t>" + std::string(textXml) + "</a:t></a:r>";
}

TextBoxOnDisk::TextBoxOnDisk(const std::string& paragraphs)
    : original_(DeckWith("", paragraphs)), file_(original_.Bytes())
{
    const std::string& slide = original_.Entry(slidePart).bytes;
    const std::size_t begin = slide.find(bodyStart) + bodyStart.size();
    before_ = slide.substr(0, begin);
    behind_ = slide.substr(slide.rfind(bodyEnd));
    if (before_ + paragraphs + behind_ != slide)
        throw std::logic_error("the paragraphs are not where they are looked for");
}

std::int32_t TextBoxOnDisk::Find(const String& what, How how) const
{
    const auto hit = TextOfFirstShape(*file_.Open())->Find(what, how.after, how.matchCase, how.wholeWords);
    return hit ? hit->Start() : 0;
}

std::int32_t TextBoxOnDisk::Replace(const String& what, const String& with, How how) const
{
    std::int32_t start = 0;
    file_.Change([&](powerpoint::Presentation& presentation) {
        const auto hit = TextOfFirstShape(presentation)->Replace(what, with, how.after, how.matchCase, how.wholeWords);
        start = hit ? hit->Start() : 0;
    });
    return start;
}

std::int32_t TextBoxOnDisk::ReplaceAll(const String& what, const String& with) const
{
    return Run(what, with, false);
}

std::int32_t TextBoxOnDisk::CountAll(const String& what) const
{
    return Run(what, u"", true);
}

std::int32_t TextBoxOnDisk::Run(const String& what, const String& with, bool findOnly) const
{
    const ProjectOwner project;
    const auto item = project->FindAndReplaceList->Add(what, with, nullptr, project.get());
    item->OptionSetting = std::make_shared<OptionSetting>();
    item->OptionSetting->InShapesAndTextboxes = true;
    SearchFunctions engine;
    engine.mItem = item;
    engine.MatchCaseFlag = 1;
    engine.mIsFindOnly = findOnly;
    engine.IsRequiredCount = true;
    engine.xPresentation = file_.Open();
    const std::int32_t count = engine.ShapeAndTextboxes();
    if (!findOnly)
        engine.xPresentation->Save();
    engine.xPresentation->Close();
    return count;
}

std::string TextBoxOnDisk::Paragraphs() const
{
    const PackageReader now = file_.Package();
    for (const std::string& entry : EntriesThatDiffer(original_, now))
        if (entry != slidePart)
            throw std::runtime_error("an edit of the slide's text changed " + entry);
    if (!PackagingDifferences(original_, now).empty())
        throw std::runtime_error("an edit of the slide's text changed the packaging");
    if (const auto faults = ValidityFaults(now); !faults.empty())
        throw std::runtime_error("the edited package is not valid: " + faults.front());
    const std::string& slide = now.Entry(slidePart).bytes;
    if (slide.size() < before_.size() + behind_.size() || !slide.starts_with(before_) || !slide.ends_with(behind_))
        throw std::runtime_error("bytes around the paragraphs changed: " + slide);
    return slide.substr(before_.size(), slide.size() - before_.size() - behind_.size());
}

String TextBoxOnDisk::Text() const
{
    return TextOf(file_.Package(), 1, 1);
}

std::string Replaced(const std::string& paragraphs, const String& what, const String& with, How how)
{
    const TextBoxOnDisk box(paragraphs);
    if (box.Replace(what, with, how) == 0)
        return "<no hit>";
    return box.Paragraphs();
}

String TextReadFrom(const std::string& paragraphs)
{
    const DeckOnDisk file(DeckWith(R"(<p:ph type="ftr"/>)", paragraphs));
    return SlideOf(*file.Open(), 1)->HeadersFooters()->Footer()->Text();
}

}  // namespace tessarine::test
