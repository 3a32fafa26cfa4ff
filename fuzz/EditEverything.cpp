#include "EditEverything.h"

#include <memory>

#include "platform/Failure.h"

namespace tessarine::fuzz
{

namespace
{

using namespace powerpoint;

/// A member may refuse; the walk goes on after it.
template <class Use>
void Try(Use&& use)
{
    try {
        use();
    } catch (const Failure&) {
    }
}

template <class Element, class Use>
void ForEach(const std::shared_ptr<Collection<Element>>& collection, Use&& use)
{
    Try([&] {
        const auto walk = collection->NewEnum();
        while (const auto element = walk->Next())
            Try([&] { use(*element); });
    });
}

void EditShapes(const std::shared_ptr<Collection<Shape>>& shapes)
{
    shapes->MayHoldText(u"fabrikam");
    ForEach(shapes, [](Shape& shape) {
        if (shape.Type() == msoLinkedOLEObject)
            Try([&] { shape.LinkFormat()->PutSourceFullName(shape.LinkFormat()->SourceFullName() + u"x"); });
        if (shape.HasTextFrame() == msoFalse)
            return;
        const auto text = shape.TextFrame()->TextRange();
        if (const auto hit = text->Find(u"a", 0, msoFalse, msoFalse))
            hit->Find(u"a", 0, msoTrue, msoTrue);
        text->Replace(u"Fabrikam", u"Contoso\rLtd", 0, msoFalse, msoTrue);
        text->Replace(u"e", u"", 2, msoTrue, msoFalse);
    });
}

void EditHeaderFooter(const std::shared_ptr<HeaderFooter>& headerFooter)
{
    Try([&] { headerFooter->PutText(headerFooter->Text() + u"\u00A9"); });
}

void EditMaster(Master& master)
{
    EditShapes(master.Shapes());
    EditHeaderFooter(master.HeadersFooters()->Header());
    EditHeaderFooter(master.HeadersFooters()->Footer());
}

void EditProperties(const std::shared_ptr<DocumentProperties>& properties)
{
    for (std::int32_t i = 1; i <= properties->Count(); ++i) {
        Try([&] {
            const auto property = properties->Item(i);
            property->Name();
            property->PutValue(TextOf(property->Value()) + u"1");
        });
    }
}

}  // namespace

void EditEverything(powerpoint::Presentation& presentation)
{
    ForEach(presentation.Slides(), [](Slide& slide) {
        EditShapes(slide.Shapes());
        Try([&] { EditShapes(slide.NotesPage()->Shapes()); });
        EditHeaderFooter(slide.HeadersFooters()->Footer());
        ForEach(slide.Hyperlinks(), [](Hyperlink& link) { link.PutAddress(link.Address() + u"y"); });
        slide.Design()->Name();
    });
    ForEach(presentation.Designs(), [](Design& design) {
        Try([&] { design.Name(); });
        Try([&] { EditMaster(*design.SlideMaster()); });
        Try([&] { EditMaster(*design.TitleMaster()); });
    });
    Try([&] { EditMaster(*presentation.NotesMaster()); });
    Try([&] { EditMaster(*presentation.HandoutMaster()); });
    Try([&] { EditProperties(presentation.BuiltInDocumentProperties()); });
    Try([&] { EditProperties(presentation.CustomDocumentProperties()); });
}

}  // namespace tessarine::fuzz
