#include "engine/SearchFunctions.h"

#include "engine/SearchPlace.h"
#include "platform/CheckedInteger.h"
#include "platform/Treatments.h"

namespace tessarine
{

std::int32_t SearchFunctions::olelinks()
{
    return RaiseOn(u"olelinks", u"olelinks", SearchPlace, [&] {
        std::int32_t total = 0;
        std::int32_t count = 0;
        const auto slides = NotNull(NotNull(xPresentation)->Slides())->NewEnum();
        // No Yield and no delivery of events in this walk. This is intended.
        while ((CurrentSlide = slides->Next())) {
            const auto shapes = NotNull(CurrentSlide->Shapes())->NewEnum();
            while ((CurrentShape = shapes->Next())) {
                if (CurrentShape->Type() != powerpoint::msoLinkedOLEObject)
                    continue;
                const auto link = NotNull(CurrentShape->LinkFormat());
                const String source = FindandReplace(count, mItem, link->SourceFullName(), true);
                // Written back whether anything was found or not. This is intended.
                if (!mIsFindOnly)
                    link->PutSourceFullName(source);
                if (count != -1)
                    total = CheckedSum(total, count);
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
