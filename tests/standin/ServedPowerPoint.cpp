#include "standin/ServedPowerPoint.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "office/windows/DocumentValues.h"
#include "standin/ServedMembers.h"

namespace tessarine::standin
{

namespace
{

/// What all objects of one application share.
struct Host {
    std::shared_ptr<CallWatch> watch;
    std::vector<std::shared_ptr<powerpoint::Presentation>> open{};
};

using HostReference = std::shared_ptr<Host>;

template <class Surface, class Serve>
Variant ValueOrNothing(const HostReference& host, const std::shared_ptr<Surface>& object, Serve serve)
{
    return ObjectValue(object ? serve(host, object) : Reference<IDispatch>());
}

/// A property that gives another object.
template <class Surface, class Part, class Serve>
Member ObjectMember(const HostReference& host, String name, const std::shared_ptr<Surface>& object,
                    std::shared_ptr<Part> (Surface::*part)(), Serve serve)
{
    return {std::move(name), [=](const Arguments&) { return ValueOrNothing(host, ((*object).*part)(), serve); }};
}

template <class Element, class Serve>
Reference<IDispatch> ServeCollection(const HostReference& host, std::string kind,
                                     const std::shared_ptr<powerpoint::Collection<Element>>& collection, Serve serve,
                                     std::vector<Member> members = {})
{
    return standin::Serve(host->watch, std::move(kind), std::move(members), [=]() -> Walk {
        const std::shared_ptr<powerpoint::Enumerator<Element>> walk = collection->NewEnum();
        return [=]() -> Variant {
            const auto element = walk->Next();
            return element ? ObjectValue(serve(host, element)) : Variant();
        };
    });
}

/// A text by itself: what Characters gives, and the title of a slide.
class FixedText final : public powerpoint::TextRange, public powerpoint::TextFrame, public powerpoint::Shape
{
public:
    explicit FixedText(String text) : text_(std::move(text)) {}

    std::shared_ptr<powerpoint::TextRange> Find(const String&, std::int32_t, powerpoint::TriState,
                                                powerpoint::TriState) override
    {
        return nullptr;
    }
    std::shared_ptr<powerpoint::TextRange> Replace(const String&, const String&, std::int32_t, powerpoint::TriState,
                                                   powerpoint::TriState) override
    {
        return nullptr;
    }
    std::int32_t Start() override { return 1; }
    std::optional<String> TextAt(std::int32_t, std::int32_t) override { return text_; }

    std::shared_ptr<powerpoint::TextRange> TextRange() override { return std::make_shared<FixedText>(text_); }

    std::int32_t Type() override { return powerpoint::msoPlaceholder; }
    powerpoint::TriState HasTextFrame() override { return powerpoint::msoTrue; }
    std::shared_ptr<powerpoint::TextFrame> TextFrame() override { return std::make_shared<FixedText>(text_); }
    std::shared_ptr<powerpoint::LinkFormat> LinkFormat() override { return nullptr; }

private:
    String text_;
};

Reference<IDispatch> ServeTextRange(const HostReference& host, const std::shared_ptr<powerpoint::TextRange>& range)
{
    return Serve(host->watch, "TextRange",
                 {{u"Find",
                   [=](const Arguments& a) {
                       return ValueOrNothing(
                           host, range->Find(a[0].ToText(), a[1].ToInteger(), a[2].ToInteger(), a[3].ToInteger()),
                           ServeTextRange);
                   },
                   {},
                   4},
                  {u"Replace",
                   [=](const Arguments& a) {
                       return ValueOrNothing(host,
                                             range->Replace(a[0].ToText(), a[1].ToText(), a[2].ToInteger(),
                                                            a[3].ToInteger(), a[4].ToInteger()),
                                             ServeTextRange);
                   },
                   {},
                   5},
                  {u"Characters",
                   [=](const Arguments& a) {
                       const auto text = range->TextAt(a[0].ToInteger(), a[1].ToInteger());
                       return ObjectValue(ServeTextRange(host, std::make_shared<FixedText>(text.value_or(u""))));
                   },
                   {},
                   2},
                  // Asked of a FixedText alone.
                  {u"Text", [=](const Arguments&) { return Variant(range->TextAt(1, 0).value_or(u"")); }},
                  IntegerMember(u"Start", range, &powerpoint::TextRange::Start)});
}

Reference<IDispatch> ServeTextFrame(const HostReference& host, const std::shared_ptr<powerpoint::TextFrame>& frame)
{
    return Serve(host->watch, "TextFrame",
                 {ObjectMember(host, u"TextRange", frame, &powerpoint::TextFrame::TextRange, ServeTextRange)});
}

Reference<IDispatch> ServeLinkFormat(const HostReference& host, const std::shared_ptr<powerpoint::LinkFormat>& link)
{
    return Serve(host->watch, "LinkFormat",
                 {TextMember(u"SourceFullName", link, &powerpoint::LinkFormat::SourceFullName,
                             &powerpoint::LinkFormat::PutSourceFullName)});
}

Reference<IDispatch> ServeShape(const HostReference& host, const std::shared_ptr<powerpoint::Shape>& shape)
{
    return Serve(host->watch, "Shape",
                 {IntegerMember(u"Type", shape, &powerpoint::Shape::Type),
                  IntegerMember(u"HasTextFrame", shape, &powerpoint::Shape::HasTextFrame),
                  TextMember(u"Name", shape, &powerpoint::Shape::Name),
                  ObjectMember(host, u"TextFrame", shape, &powerpoint::Shape::TextFrame, ServeTextFrame),
                  ObjectMember(host, u"LinkFormat", shape, &powerpoint::Shape::LinkFormat, ServeLinkFormat)});
}

Reference<IDispatch> ServeShapes(const HostReference& host, const std::shared_ptr<powerpoint::Shapes>& shapes)
{
    return ServeCollection(host, "Shapes", shapes, ServeShape);
}

Reference<IDispatch> ServeHyperlink(const HostReference& host, const std::shared_ptr<powerpoint::Hyperlink>& link)
{
    return Serve(host->watch, "Hyperlink",
                 {TextMember(u"Address", link, &powerpoint::Hyperlink::Address, &powerpoint::Hyperlink::PutAddress)});
}

Reference<IDispatch> ServeHyperlinks(const HostReference& host, const std::shared_ptr<powerpoint::Hyperlinks>& links)
{
    return ServeCollection(host, "Hyperlinks", links, ServeHyperlink);
}

Reference<IDispatch> ServeHeaderFooter(const HostReference& host, const std::shared_ptr<powerpoint::HeaderFooter>& text)
{
    return Serve(host->watch, "HeaderFooter",
                 {TextMember(u"Text", text, &powerpoint::HeaderFooter::Text, &powerpoint::HeaderFooter::PutText)});
}

Reference<IDispatch> ServeHeadersFooters(const HostReference& host,
                                         const std::shared_ptr<powerpoint::HeadersFooters>& texts)
{
    return Serve(host->watch, "HeadersFooters",
                 {ObjectMember(host, u"Header", texts, &powerpoint::HeadersFooters::Header, ServeHeaderFooter),
                  ObjectMember(host, u"Footer", texts, &powerpoint::HeadersFooters::Footer, ServeHeaderFooter)});
}

Reference<IDispatch> ServeMaster(const HostReference& host, const std::shared_ptr<powerpoint::Master>& master)
{
    return Serve(
        host->watch, "Master",
        {ObjectMember(host, u"Shapes", master, &powerpoint::Master::Shapes, ServeShapes),
         ObjectMember(host, u"HeadersFooters", master, &powerpoint::Master::HeadersFooters, ServeHeadersFooters)});
}

Reference<IDispatch> ServeDesign(const HostReference& host, const std::shared_ptr<powerpoint::Design>& design)
{
    return Serve(host->watch, "Design",
                 {TextMember(u"Name", design, &powerpoint::Design::Name),
                  ObjectMember(host, u"SlideMaster", design, &powerpoint::Design::SlideMaster, ServeMaster),
                  IntegerMember(u"HasTitleMaster", design, &powerpoint::Design::HasTitleMaster),
                  ObjectMember(host, u"TitleMaster", design, &powerpoint::Design::TitleMaster, ServeMaster)});
}

Reference<IDispatch> ServeDesigns(const HostReference& host, const std::shared_ptr<powerpoint::Designs>& designs)
{
    return ServeCollection(host, "Designs", designs, ServeDesign);
}

Reference<IDispatch> ServeNotesPage(const HostReference& host, const std::shared_ptr<powerpoint::SlideRange>& page)
{
    return Serve(host->watch, "SlideRange",
                 {ObjectMember(host, u"Shapes", page, &powerpoint::SlideRange::Shapes, ServeShapes)});
}

/// Those of a slide, which tell its title.
Reference<IDispatch> ServeShapesOfSlide(const HostReference& host, const std::shared_ptr<powerpoint::Slide>& slide)
{
    const auto title = [=](const Arguments&) {
        return ObjectValue(ServeShape(host, std::make_shared<FixedText>(slide->Title())));
    };
    const auto hasTitle = [=](const Arguments&) {
        return Variant(slide->Title().empty() ? powerpoint::msoFalse : powerpoint::msoTrue);
    };
    return ServeCollection(host, "Shapes", slide->Shapes(), ServeShape, {{u"HasTitle", hasTitle}, {u"Title", title}});
}

Reference<IDispatch> ServeSlide(const HostReference& host, const std::shared_ptr<powerpoint::Slide>& slide)
{
    return Serve(host->watch, "Slide",
                 {{u"Shapes", [=](const Arguments&) { return ObjectValue(ServeShapesOfSlide(host, slide)); }},
                  ObjectMember(host, u"HeadersFooters", slide, &powerpoint::Slide::HeadersFooters, ServeHeadersFooters),
                  ObjectMember(host, u"Hyperlinks", slide, &powerpoint::Slide::Hyperlinks, ServeHyperlinks),
                  ObjectMember(host, u"NotesPage", slide, &powerpoint::Slide::NotesPage, ServeNotesPage),
                  ObjectMember(host, u"Design", slide, &powerpoint::Slide::Design, ServeDesign)});
}

Reference<IDispatch> ServeSlides(const HostReference& host, const std::shared_ptr<powerpoint::Slides>& slides)
{
    return ServeCollection(host, "Slides", slides, ServeSlide);
}

Reference<IDispatch> ServeProperty(const HostReference& host,
                                   const std::shared_ptr<powerpoint::DocumentProperty>& property)
{
    return Serve(host->watch, "DocumentProperty",
                 {TextMember(u"Name", property, &powerpoint::DocumentProperty::Name),
                  {u"Value", [=](const Arguments&) { return windows::VariantOf(property->Value()); },
                   [=](const Variant& value) { property->PutValue(windows::ValueOf(value)); }}});
}

Reference<IDispatch> ServeProperties(const HostReference& host,
                                     const std::shared_ptr<powerpoint::DocumentProperties>& properties)
{
    return Serve(
        host->watch, "DocumentProperties",
        {IntegerMember(u"Count", properties, &powerpoint::DocumentProperties::Count),
         {u"Item",
          [=](const Arguments& a) { return ValueOrNothing(host, properties->Item(a[0].ToInteger()), ServeProperty); },
          {},
          1}});
}

Reference<IDispatch> ServePresentation(const HostReference& host,
                                       const std::shared_ptr<powerpoint::Presentation>& presentation)
{
    using P = powerpoint::Presentation;
    return Serve(
        host->watch, "Presentation",
        {ObjectMember(host, u"Slides", presentation, &P::Slides, ServeSlides),
         ObjectMember(host, u"Designs", presentation, &P::Designs, ServeDesigns),
         ObjectMember(host, u"NotesMaster", presentation, &P::NotesMaster, ServeMaster),
         ObjectMember(host, u"HandoutMaster", presentation, &P::HandoutMaster, ServeMaster),
         ObjectMember(host, u"BuiltInDocumentProperties", presentation, &P::BuiltInDocumentProperties, ServeProperties),
         ObjectMember(host, u"CustomDocumentProperties", presentation, &P::CustomDocumentProperties, ServeProperties),
         Method(u"UpdateLinks", [=] { presentation->UpdateLinks(); }), Method(u"Save", [=] { presentation->Save(); }),
         Method(u"Close", [=] {
             presentation->Close();
             std::erase(host->open, presentation);
         })});
}

Reference<IDispatch> ServePresentations(const HostReference& host,
                                        const std::shared_ptr<powerpoint::Presentations>& presentations)
{
    return Serve(host->watch, "Presentations",
                 {{u"Open",
                   [=](const Arguments& a) {
                       const auto opened =
                           presentations->Open(a[0].ToText(), a[1].ToInteger(), a[2].ToInteger(), a[3].ToInteger());
                       if (opened)
                           host->open.push_back(opened);
                       return ValueOrNothing(host, opened, ServePresentation);
                   },
                   {},
                   4}});
}

}  // namespace

Reference<IDispatch> ServePowerPoint(std::shared_ptr<CallWatch> watch,
                                     std::shared_ptr<powerpoint::Application> application, std::function<void()> quit)
{
    using A = powerpoint::Application;
    const auto host = std::make_shared<Host>(Host{std::move(watch)});
    return Serve(
        host->watch, "Application",
        {ObjectMember(host, u"Presentations", application, &A::Presentations, ServePresentations),
         {u"DisplayAlerts", {}, [=](const Variant& value) { application->PutDisplayAlerts(value.ToInteger()); }},
         {u"AutomationSecurity",
          {},
          [=](const Variant& value) { application->PutAutomationSecurity(value.ToInteger()); }},
         Method(u"Quit", [=] {
             host->open.clear();
             application->Quit();
             quit();
         })});
}

}  // namespace tessarine::standin
