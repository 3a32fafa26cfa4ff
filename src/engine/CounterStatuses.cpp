#include "engine/CounterStatuses.h"

#include "log/Treatments.h"

namespace tessarine
{

namespace
{
constexpr StringView statusesPlace = u"Class Module CounterStatuses";
}

std::shared_ptr<CounterStatus> CounterStatuses::Add(const CounterStatus::LocationCounts& counts,
                                                    std::int32_t vFileStausAfterProcess, const String& FindWhat,
                                                    const String& ReplaceWith, const String& sKey)
{
    return LogAndReturn({u"Add", statusesPlace}, [&] {
        auto status = std::make_shared<CounterStatus>();
        for (const SearchLocation& row : SearchLocations)
            status->PutCount(row.location, counts[static_cast<std::size_t>(row.location)]);
        // After the counts, because PutCount sets the status as well: the caller's value is the one that holds.
        status->FileStausAfterProcess = vFileStausAfterProcess;
        status->FindWhat = FindWhat;
        status->ReplaceWith = ReplaceWith;
        items_.Add(status, sKey);
        return status;
    });
}

std::shared_ptr<CounterStatus> CounterStatuses::Add(
    std::int32_t Slides_Replaced, std::int32_t HyperlinkAddresses_eplaced, std::int32_t ShapesAndTextboxes_Replaced,
    std::int32_t Header_Replaced, std::int32_t Footer_Replaced, std::int32_t BuiltinProperies_Replaced,
    std::int32_t CustomProperties_Replaced, std::int32_t Notes_Replaced, std::int32_t Links_Replaced,
    std::int32_t SlideMasterPerSlide_Replaced, std::int32_t SlideMasterPerPresentation_Replaced,
    std::int32_t TitleMaster_Replaced, std::int32_t HandoutMaster_Replaced, std::int32_t NotesMaster_Replaced,
    std::int32_t vFileStausAfterProcess, const String& FindWhat, const String& ReplaceWith, const String& sKey)
{
    CounterStatus::LocationCounts counts;
    counts.fill(-1);
    const auto put = [&](Location location, std::int32_t count) { counts[static_cast<std::size_t>(location)] = count; };
    put(Location::Slides, Slides_Replaced);
    put(Location::HyperlinkAddresses, HyperlinkAddresses_eplaced);
    put(Location::ShapesAndTextboxes, ShapesAndTextboxes_Replaced);
    put(Location::Header, Header_Replaced);
    put(Location::Footer, Footer_Replaced);
    put(Location::BuiltinProperies, BuiltinProperies_Replaced);
    put(Location::CustomProperties, CustomProperties_Replaced);
    put(Location::Notes, Notes_Replaced);
    put(Location::Links, Links_Replaced);
    put(Location::SlideMasterPerSlide, SlideMasterPerSlide_Replaced);
    put(Location::SlideMasterPerPresentation, SlideMasterPerPresentation_Replaced);
    put(Location::TitleMaster, TitleMaster_Replaced);
    put(Location::HandoutMaster, HandoutMaster_Replaced);
    put(Location::NotesMaster, NotesMaster_Replaced);
    return Add(counts, vFileStausAfterProcess, FindWhat, ReplaceWith, sKey);
}

std::shared_ptr<CounterStatus> CounterStatuses::Item(const IndexKey& vntIndexKey) const
{
    return LogAndReturn({u"Item", statusesPlace}, [&] { return items_.Item(vntIndexKey); });
}

std::int32_t CounterStatuses::Count() const
{
    return LogAndReturn({u"Count", statusesPlace}, [&] { return items_.Count(); });
}

void CounterStatuses::Remove(const IndexKey& vntIndexKey)
{
    LogAndReturn({u"Remove", statusesPlace}, [&] { items_.Remove(vntIndexKey); });
}

std::vector<std::shared_ptr<CounterStatus>> CounterStatuses::NewEnum() const
{
    return LogAndReturn({u"NewEnum", statusesPlace}, [&] { return items_.NewEnum(); });
}

}  // namespace tessarine
