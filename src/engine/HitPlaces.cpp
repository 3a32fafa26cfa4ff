#include <algorithm>
#include <functional>
#include <utility>

#include "engine/SearchFunctions.h"
#include "engine/TextHits.h"
#include "log/Treatments.h"
#include "log/Warnings.h"

namespace tessarine
{

namespace
{

/// `value` with each of the hits replaced.
String WithReplaced(const String& value, const std::vector<std::size_t>& hits, std::size_t length, StringView with)
{
    String replaced;
    std::size_t read = 0;
    for (const std::size_t hit : hits) {
        replaced.append(value, read, hit - read);
        replaced += with;
        read = hit + length;
    }
    return replaced.append(value, read);
}

/// What stands in the place of each hit now, when `value` became `now`: a file may hold what was asked for in a form of
/// its own, as a blank in an address becomes "%20". `asked` where that can't be told.
String WrittenFor(const String& asked, const String& value, const String& now, const std::vector<std::size_t>& hits,
                  std::size_t length)
{
    const std::size_t kept = value.size() - hits.size() * length;
    if (now.size() < kept || (now.size() - kept) % hits.size() != 0)
        return asked;
    const String written = now.substr(hits.front(), (now.size() - kept) / hits.size());
    return WithReplaced(value, hits, length, written) == now ? written : asked;
}

}  // namespace

void SearchFunctions::TellHit(const Hit& hit)
{
    try {
        HitFound(hit);
    } catch (...) {
        // The run is what matters: its replacements and counts don't depend on who looks on.
        if (!std::exchange(isHitLost_, true))
            Warn(path_, u"not all of its hits can be shown: " + CurrentFailure().Reason());
    }
}

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
    hit.isCounted = isCounted;
    if (!IsNextHitWhole()) {
        hit.place = std::make_shared<const HitPlace>(PlaceOfPair());
        for (std::size_t told = 0; told < valueHits_.size(); ++told)
            TellHit(hit);
        return;
    }
    hit.place = std::make_shared<const HitPlace>(place());
    if (!mIsFindOnly) {
        // What refuses a change keeps its text, with a warning or without. What can't be read any more has changed.
        String now = put;
        Skip([&] { now = read(); });
        if (now != value || put == value)
            hit.becomes = WrittenFor(valueReplacement_, value, now, valueHits_, valueHitLength_);
    }
    const auto context = static_cast<std::size_t>(std::max(HitContext, 0));
    for (const std::size_t at : valueHits_) {
        hit.position = static_cast<std::int32_t>(at) + 1;
        hit.length = static_cast<std::int32_t>(valueHitLength_);
        PutContext(hit, value, at, valueHitLength_, context);
        TellHit(hit);
    }
}

}  // namespace tessarine
