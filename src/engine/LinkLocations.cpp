#include "engine/SearchFunctions.h"

#include "engine/SearchPlace.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"

namespace tessarine
{

std::int32_t SearchFunctions::olelinks()
{
    return RaiseOn(u"olelinks", u"olelinks", SearchPlace, [&] {
        std::int32_t total = 0;
        std::int32_t count = 0;
        const auto slides = NotNull(NotNull(xPresentation)->Slides())->NewEnum();
        // No Yield here, unlike in the other walks: linked objects are few, so the windows get their turn soon enough.
        std::int32_t slide = 0;
        while ((CurrentSlide = slides->Next())) {
            ++slide;
            const auto shapes = NotNull(CurrentSlide->Shapes())->NewEnum();
            std::int32_t number = 0;
            while ((CurrentShape = shapes->Next())) {
                ++number;
                if (CurrentShape->Type() != powerpoint::msoLinkedOLEObject)
                    continue;
                const auto link = NotNull(CurrentShape->LinkFormat());
                const String value = link->SourceFullName();
                const String source = FindandReplace(count, mItem, value, true);
                // Written back whether anything was found or not, so that a link that refuses the write is noticed.
                if (!mIsFindOnly)
                    link->PutSourceFullName(source);
                if (count != -1)
                    total = CheckedSum(total, count);
                TellValueHits(
                    value, source,
                    [&] {
                        return PlaceOfShape({u"slide", slide}, number);
                    },
                    [&] { return link->SourceFullName(); });
            }
        }
        if (total > 0 && !mIsFindOnly)
            xPresentation->UpdateLinks();
        CurrentSlide.reset();
        CurrentShape.reset();
        return total;
    });
}

}  // namespace tessarine
