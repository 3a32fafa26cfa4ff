#include "engine/SearchFunctions.h"

#include <algorithm>
#include <array>

#include "engine/SearchPlace.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"
#include "platform/GivingUp.h"
#include "platform/Messages.h"

namespace tessarine
{

namespace
{

struct Step {
    Location location;
    std::int32_t (SearchFunctions::*search)();
};

/// The order in which a pair is taken through the locations. It is not that of the location list: the notes master
/// comes before the handout master, and the links come last.
constexpr std::array<Step, SearchLocations.size()> steps{{
    {Location::Slides, &SearchFunctions::Slides},
    {Location::HyperlinkAddresses, &SearchFunctions::Hyperlinks},
    {Location::ShapesAndTextboxes, &SearchFunctions::ShapeAndTextboxes},
    {Location::Header, &SearchFunctions::Header},
    {Location::Footer, &SearchFunctions::Footer},
    {Location::BuiltinProperies, &SearchFunctions::BuiltinProperties},
    {Location::CustomProperties, &SearchFunctions::CustomProperties},
    {Location::Notes, &SearchFunctions::Notes},
    {Location::SlideMasterPerSlide, &SearchFunctions::SlidesMasterPerSlide},
    {Location::SlideMasterPerPresentation, &SearchFunctions::SlidesMasterPerPresentation},
    {Location::TitleMaster, &SearchFunctions::TitleMaster},
    {Location::NotesMaster, &SearchFunctions::NotesMaster},
    {Location::HandoutMaster, &SearchFunctions::HandoutMaster},
    {Location::Links, &SearchFunctions::olelinks},
}};

constexpr bool HasOneStep(const SearchLocation& row)
{
    return std::ranges::count(steps, row.location, &Step::location) == 1;
}
static_assert(std::ranges::all_of(SearchLocations, HasOneStep), "a location is searched never or twice");

bool IsOn(const OptionSetting& options, Location location)
{
    return options.*RowOf(location).isOn;
}

std::shared_ptr<CounterStatuses> UnsearchedResults(const FindAndReplaceItems& items,
                                                   std::shared_ptr<FindAndReplaceItem>& current)
{
    auto results = std::make_shared<CounterStatuses>();
    CounterStatus::LocationCounts notSearched;
    notSearched.fill(-1);
    for (const auto& item : items.NewEnum()) {
        current = NotNull(item);
        results->Add(notSearched, FileStatus::NothingCounted, current->FindWhat, current->ReplaceWith, {});
    }
    results->FileStausAfterProcess = FileStatus::NothingCounted;
    return results;
}

}  // namespace

std::shared_ptr<CounterStatuses> SearchFunctions::ProcessFile(const String& path, const String& /*vPassword*/,
                                                              const std::shared_ptr<OptionSetting>& /*vOptionSetting*/)
{
    return RaiseOn(u"ProcessFile", u"ProcessFile", SearchPlace, [&] {
        path_ = path;
        isHitLost_ = false;
        if (HitFound)
            Skip([&] { NotNull(xPresentation)->ExpectHits(); });
        const auto results = UnsearchedResults(*NotNull(mItems), mItem);
        std::int32_t itemIndex = 1;
        std::int32_t runningCount = 0;
        for (const auto& item : mItems->NewEnum()) {
            mItem = item;
            pairNumber_ = itemIndex;
            if (PairBegins)
                PairBegins(itemIndex, *item);
            const auto status = NotNull(results->Item(itemIndex));
            ProcessItem(*status, runningCount);
            if (status->FileStausAfterProcess == FileStatus::Counted)
                results->FileStausAfterProcess = FileStatus::Counted;
            itemIndex = CheckedSum(itemIndex, 1);
            DeliverPendingEvents();
            RaiseIfGivenUp();  // pairs that are found nowhere make no call that would
        }
        // A replace run saves every file, changed or not: a footer is replaced without being counted, and a revision
        // number was raised before, so the counts don't tell whether there is something to save.
        if (!mIsFindOnly) {
            mIsDryRun ? NotNull(xPresentation)->RehearseSave() : NotNull(xPresentation)->Save();
            results->HasNewContent = xPresentation->HasSavedChanges();
        }
        NotNull(xPresentation)->Close();
        return results;
    });
}

void SearchFunctions::ProcessItem(CounterStatus& status, std::int32_t& runningCount)
{
    const auto options = NotNull(mItem)->OptionSetting;
    if (!options)
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch: the find/replace item has no search options");
    MatchCaseFlag = options->MatchCase ? 1 : 0;
    WholeWordsFlag = options->MatchWholeWord ? 1 : 0;
    for (const Step& step : steps) {
        if (!IsOn(*options, step.location))
            continue;
        if (status.Count(step.location) == -1)
            status.PutCount(step.location, 0);
        location_ = step.location;
        if (!mItem->FindWhat.empty())
            runningCount = (this->*step.search)();
        // Without a find text the running count is still that of the location searched last, which may belong to the
        // pair before, and is reported here once more. Kept, because totals are compared with those of old logs.
        status.PutCount(step.location, CheckedSum(status.Count(step.location), runningCount));
    }
}

}  // namespace tessarine
