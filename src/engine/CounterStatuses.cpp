#include "engine/CounterStatuses.h"

#include "platform/Treatments.h"

namespace tessarine
{

namespace
{
constexpr StringView place = u"Class Module CounterStatuses";
}

std::shared_ptr<CounterStatus> CounterStatuses::Add(
    std::int32_t Slides_Replaced, std::int32_t HyperlinkAddresses_eplaced, std::int32_t ShapesAndTextboxes_Replaced,
    std::int32_t Header_Replaced, std::int32_t Footer_Replaced, std::int32_t BuiltinProperies_Replaced,
    std::int32_t CustomProperties_Replaced, std::int32_t Notes_Replaced, std::int32_t Links_Replaced,
    std::int32_t SlideMasterPerSlide_Replaced, std::int32_t SlideMasterPerPresentation_Replaced,
    std::int32_t TitleMaster_Replaced, std::int32_t HandoutMaster_Replaced, std::int32_t NotesMaster_Replaced,
    std::int32_t vFileStausAfterProcess, const String& FindWhat, const String& ReplaceWith, const String& sKey)
{
    return LogAndReturn({u"Add", place}, [&] {
        auto status = std::make_shared<CounterStatus>();
        status->PutSlides_Replaced(Slides_Replaced);
        status->PutHyperlinkAddresses_Replaced(HyperlinkAddresses_eplaced);
        status->PutShapesAndTextboxes_Replaced(ShapesAndTextboxes_Replaced);
        status->PutHeader_Replaced(Header_Replaced);
        status->PutFooter_Replaced(Footer_Replaced);
        status->PutBuiltinProperies_Replaced(BuiltinProperies_Replaced);
        status->PutCustomProperties_Replaced(CustomProperties_Replaced);
        status->PutNotes_Replaced(Notes_Replaced);
        status->PutLinks_Replaced(Links_Replaced);
        status->PutSlideMasterPerSlide_Replaced(SlideMasterPerSlide_Replaced);
        status->PutSlideMasterPerPresentation_Replaced(SlideMasterPerPresentation_Replaced);
        status->PutTitleMaster_Replaced(TitleMaster_Replaced);
        status->PutHandoutMaster_Replaced(HandoutMaster_Replaced);
        status->PutNotesMaster_Replaced(NotesMaster_Replaced);
        status->FileStausAfterProcess = vFileStausAfterProcess;  // after the counts: it overrides what they raised
        status->FindWhat = FindWhat;
        status->ReplaceWith = ReplaceWith;
        items_.Add(status, sKey);
        return status;
    });
}

std::shared_ptr<CounterStatus> CounterStatuses::Item(const IndexKey& vntIndexKey) const
{
    return LogAndReturn({u"Item", place}, [&] { return items_.Item(vntIndexKey); });
}

std::int32_t CounterStatuses::Count() const
{
    return LogAndReturn({u"Count", place}, [&] { return items_.Count(); });
}

void CounterStatuses::Remove(const IndexKey& vntIndexKey)
{
    LogAndReturn({u"Remove", place}, [&] { items_.Remove(vntIndexKey); });
}

std::vector<std::shared_ptr<CounterStatus>> CounterStatuses::NewEnum() const
{
    return LogAndReturn({u"NewEnum", place}, [&] { return items_.NewEnum(); });
}

}  // namespace tessarine
