#include <functional>

#include "engine/SearchFunctions.h"
#include "engine/TextHits.h"
#include "log/Treatments.h"

namespace tessarine
{

HitPlace SearchFunctions::PlaceOfPair() const
{
    HitPlace place;
    place.location = location_;
    place.pair = pairNumber_;
    return place;
}

HitPlace SearchFunctions::PlaceOnSlide(std::int32_t slide) const
{
    HitPlace place = PlaceOfPair();
    place.slide = slide;
    Skip([&] { place.slideTitle = HitLabel(NotNull(CurrentSlide)->Title()); });
    return place;
}

HitPlace SearchFunctions::PlaceOfShape(Page page, std::int32_t shape) const
{
    HitPlace place = page.slide > 0 ? PlaceOnSlide(page.slide) : PlaceOfPair();
    place.design = HitLabel(page.design);
    place.shape = shape;
    Skip([&] { place.shapeName = HitLabel(NotNull(CurrentShape)->Name()); });
    return place;
}

String SearchFunctions::NameForHits(powerpoint::Design& design) const
{
    String name;
    if (HitFound)
        Skip([&] { name = design.Name(); });
    return name;
}

void SearchFunctions::TellHitsInValue(const String& value, const String& put, const std::function<HitPlace()>& place,
                                      const std::function<String()>& read, bool isCounted)
{
    Hit hit;
    hit.place = std::make_shared<const HitPlace>(place());
    hit.isCounted = isCounted;
    if (!mIsFindOnly) {
        // What refuses a change keeps its text, with a warning or without. What can't be read any more has changed.
        String now = put;
        Skip([&] { now = read(); });
        if (now == put)
            hit.becomes = valueReplacement_;
    }
    const auto context = static_cast<std::size_t>(std::max(HitContext, 0));
    for (const std::size_t at : valueHits_) {
        hit.position = static_cast<std::int32_t>(at) + 1;
        hit.length = static_cast<std::int32_t>(valueHitLength_);
        PutContext(hit, value, at, valueHitLength_, context);
        Skip([&] { HitFound(hit); });
    }
}

}  // namespace tessarine
