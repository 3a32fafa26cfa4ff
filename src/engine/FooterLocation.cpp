#include "engine/SearchFunctions.h"

#include "engine/SearchPlace.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"

namespace tessarine
{

std::int32_t SearchFunctions::Footer()
{
    return RaiseOn(u"Footer", u"Footer ", SearchPlace, [&] {
        std::int32_t total = 0;
        std::int32_t count = 0;  // not cleared for each slide, so a footer that can't be read repeats the count before
        bool ignoresFailures = false;
        // A statement whose failure counts until the first footer has been taken, and is passed over from then on.
        const auto statement = [&ignoresFailures](auto&& body) {
            if (ignoresFailures)
                Skip(body);
            else
                body();
        };

        const auto walk = NotNull(NotNull(xPresentation)->Slides())->NewEnum();
        std::int32_t slide = 0;
        while (true) {
            CurrentSlide.reset();
            statement([&] { CurrentSlide = walk->Next(); });
            if (!CurrentSlide)
                return total;

            ++slide;
            std::shared_ptr<powerpoint::HeaderFooter> footer;
            statement([&] { footer = NotNull(CurrentSlide->HeadersFooters())->Footer(); });
            ignoresFailures = true;

            String value;
            String text;
            valueHits_.clear();
            const std::int32_t number = Skip([&] {
                value = NotNull(footer)->Text();
                text = FindandReplace(count, mItem, value, true);
                if (!mIsFindOnly)
                    footer->PutText(text);
            });
            const auto place = [&] {
                HitPlace here = PlaceOnSlide(slide);
                here.headerFooter = HitPlace::HeaderFooter::Footer;
                return here;
            };
            TellValueHits(
                value, text, place, [&] { return footer->Text(); }, false);
            // Only "shows no footer" goes on to the next slide. Any other number, and success too, ends the walk
            // without a count: the first footer that can be read is rewritten, and 0 comes back. So footers have always
            // been replaced and counted, and the help tells users.
            if (number != FailureNumber::InvalidRequest)
                return std::int32_t{0};

            footer.reset();
            if (count != -1)
                statement([&] { total = CheckedSum(total, count); });
            statement([] { DeliverPendingEvents(); });
        }
    });
}

}  // namespace tessarine
