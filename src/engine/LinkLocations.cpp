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
        while ((CurrentSlide = slides->Next())) {
            const auto shapes = NotNull(CurrentSlide->Shapes())->NewEnum();
            while ((CurrentShape = shapes->Next())) {
                if (CurrentShape->Type() != powerpoint::msoLinkedOLEObject)
                    continue;
                const auto link = NotNull(CurrentShape->LinkFormat());
                const String source = FindandReplace(count, mItem, link->SourceFullName(), true);
                // Written back whether anything was found or not, so that a link that refuses the write is noticed.
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
