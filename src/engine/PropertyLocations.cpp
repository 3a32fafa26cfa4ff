#include "engine/SearchFunctions.h"

#include "engine/SearchPlace.h"
#include "engine/TextHits.h"
#include "log/Treatments.h"
#include "model/Project.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"

namespace tessarine
{

HitPlace SearchFunctions::PlaceOfProperty(powerpoint::DocumentProperty& property) const
{
    HitPlace place = PlaceOfPair();
    Skip([&] { place.property = HitLabel(property.Name()); });
    return place;
}

std::int32_t SearchFunctions::BuiltinProperties()
{
    return RaiseOn(u"BuiltinProperties", u"BuiltinProperties ", SearchPlace, [&] {
        std::int32_t total = 0;
        std::int32_t count = 0;
        const auto bound = Checked<std::int16_t>(NotNull(NotNull(xPresentation)->BuiltInDocumentProperties())->Count());
        for (std::int32_t index = 1; index <= bound; ++index) {
            std::shared_ptr<powerpoint::DocumentProperty> property;
            const auto fetch = [&] { property = NotNull(xPresentation->BuiltInDocumentProperties())->Item(index); };
            // Only the first property's failure counts; from there on failures are passed over.
            if (index == 1)
                fetch();
            else
                Skip(fetch);

            // One statement: when the value can't be read, `count` keeps what the property before gave, and that is
            // added once more. Kept, because totals are compared with those of old logs.
            String value;
            String text;
            valueHits_.clear();
            Skip([&] {
                value = TextOf(NotNull(property)->Value());
                text = FindandReplace(count, mItem, value, true);
                if (!mIsFindOnly)
                    property->PutValue(text);
            });
            if (count != -1)
                Skip([&] { total = CheckedSum(total, count); });
            TellValueHits(
                value, text, [&] { return PlaceOfProperty(*property); }, [&] { return TextOf(property->Value()); });
            Skip([] { DeliverPendingEvents(); });
        }
        return total;
    });
}

std::int32_t SearchFunctions::CustomProperties()
{
    return RaiseOn(u"CustomProperties", u"CustomProperties ", SearchPlace, [&] {
        std::int32_t total = 0;
        std::int32_t count = 0;
        const auto bound = Checked<std::int16_t>(NotNull(NotNull(xPresentation)->CustomDocumentProperties())->Count());
        for (std::int32_t index = 1; index <= bound; ++index) {
            const auto property = NotNull(NotNull(xPresentation->CustomDocumentProperties())->Item(index));
            // The mode comes from the pair's project, not from mIsFindOnly, which is a copy from the start of the run.
            const bool isFindOnly = NotNull(NotNull(NotNull(mItem)->Project)->options)->IsFindOnly;
            const String value = TextOf(property->Value());
            const String text = FindandReplace(count, mItem, value, true);
            if (!isFindOnly && count >= 1)
                property->PutValue(text);
            if (count != -1)
                total = CheckedSum(total, count);
            TellValueHits(
                value, text, [&] { return PlaceOfProperty(*property); }, [&] { return TextOf(property->Value()); });
            DeliverPendingEvents();
        }
        return total;
    });
}

}  // namespace tessarine
