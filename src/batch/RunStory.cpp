#include "batch/RunStory.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace tessarine::batch
{

void RunStory::Add(const FileReport& file)
{
    if (file.status == FileStatus::NotProcessed && failures_.size() < mostOfAKind)
        failures_.push_back({file.path, file.error});
    for (std::size_t at = 0; at < file.pairs.size(); ++at) {
        const PairReport& pair = file.pairs[at];
        if (at == totals_.size())
            totals_.push_back({pair.find, pair.replace});
        totals_[at].occurrences += pair.Occurrences();
        totals_[at].files += pair.Occurrences() > 0 ? 1 : 0;
    }
}

std::vector<RunStory::Total> RunStory::FoundPairs() const
{
    std::vector<Total> found;
    std::ranges::copy_if(totals_, std::back_inserter(found), [](const Total& total) { return total.occurrences > 0; });
    std::ranges::stable_sort(found, std::ranges::greater(), &Total::occurrences);
    return found;
}

std::vector<String> RunStory::TextsFoundNowhere() const
{
    std::vector<String> texts;
    for (const Total& total : totals_)
        if (total.occurrences == 0)
            texts.push_back(total.find);
    return texts;
}

}  // namespace tessarine::batch
