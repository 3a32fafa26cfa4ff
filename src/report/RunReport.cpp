#include "report/RunReport.h"

namespace tessarine
{

String StateWord(const FileReport& file, const RunFacts& facts, const ReportWords& words)
{
    switch (file.State()) {
        case ReportedState::Changed:
            return !facts.replaces ? words.found : facts.isDryRun ? words.wouldChange : words.changed;
        case ReportedState::CountedOnly:
            return words.countedOnly;
        case ReportedState::Unchanged:
            return facts.replaces ? words.unchanged : words.nothingFound;
        case ReportedState::Failed:
            break;
    }
    return words.failed;
}

String EarlyEndNote(const RunEnd& end, const ReportWords& words)
{
    switch (end.way) {
        case RunEnd::Way::Complete:
            break;
        case RunEnd::Way::Cancelled:
            return WithNumbers(words.cancelled, end.notReached);
        case RunEnd::Way::BrokenOff:
            return WithNumbers(words.brokenOff, end.notReached);
    }
    return {};
}

}  // namespace tessarine
