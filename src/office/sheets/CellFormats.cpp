#include "office/sheets/CellFormats.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "office/sheets/Refusal.h"
#include "platform/Locale.h"

namespace tessarine::sheets
{

namespace
{

/// The formats that a workbook need not define (MS-XLS 2.4.126); those for East Asian dates included.
bool IsBuiltInDate(std::uint32_t id)
{
    return (id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) || (id >= 50 && id <= 58);
}

constexpr std::uint32_t firstCustomFormat = 164;

/// Year to second of a moment; the days of the week and of the year are left at 0.
std::tm CalendarTime(std::chrono::sys_seconds moment)
{
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss clock(moment - midnight);
    std::tm time{};
    time.tm_year = static_cast<int>(date.year()) - 1900;
    time.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    time.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    time.tm_hour = static_cast<int>(clock.hours().count());
    time.tm_min = static_cast<int>(clock.minutes().count());
    time.tm_sec = static_cast<int>(clock.seconds().count());
    return time;
}

}  // namespace

bool ShowsDate(StringView code)
{
    for (std::size_t i = 0; i < code.size(); ++i) {
        switch (code[i]) {
            case u';':
                // Only the first section counts: the others are for negative numbers, zero and texts.
                return false;
            case u'\\':
            case u'_':
            case u'*':
                // What follows is a character as it is, one for its width, or one to fill up with.
                ++i;
                break;
            case u'"':
            case u'[':
                // Texts, colours, conditions and locales. Time elapsed ([h]) is no date by itself.
                i = code.find(code[i] == u'[' ? u']' : u'"', i + 1);
                if (i == StringView::npos)
                    return false;
                break;
            default:
                if (StringView(u"dmyhsDMYHS").find(code[i]) != StringView::npos)
                    return true;
        }
    }
    return false;
}

std::optional<String> DateText(double number, bool countsFrom1904)
{
    constexpr double endOfTime = 2958466;  // the day after 31 December 9999
    constexpr double secondsOfDay = 86400;
    constexpr double daysUntil1970 = 25569;
    constexpr double daysFrom1900To1904 = 1462;
    constexpr double dayThatNeverWas = 60;  // 29 February 1900, which Excel counts
    if (countsFrom1904)
        number += daysFrom1900To1904;
    // Written so that NaN is refused, too.
    if (!(number >= 1) || !(number < endOfTime))
        return std::nullopt;
    if (number < dayThatNeverWas)
        number += 1;
    // To the nearest second, as most times are no exact fraction of a day.
    const std::chrono::seconds since1970(std::llround((number - daysUntil1970) * secondsOfDay));
    return DisplayDateTime(CalendarTime(std::chrono::sys_seconds(since1970)));
}

void CellFormats::AddNumberFormat(std::uint32_t id, StringView code)
{
    if (ofNumbers_.size() >= limits_.formats)
        throw Refusal("The workbook has more number formats than can be read");
    ofNumbers_[id] = ShowsDate(code);
}

void CellFormats::AddCellFormat(std::uint32_t numberFormat)
{
    if (ofCells_.size() >= limits_.formats)
        throw Refusal("The workbook has more cell formats than can be read");
    ofCells_.push_back(numberFormat);
}

bool CellFormats::IsDate(std::uint32_t cellFormat) const
{
    if (cellFormat >= ofCells_.size())
        return false;
    const std::uint32_t id = ofCells_[cellFormat];
    // Workbooks define built-in formats in the words of their country, where d and s may be letters of "Standard".
    if (id < firstCustomFormat)
        return IsBuiltInDate(id);
    const auto format = ofNumbers_.find(id);
    return format != ofNumbers_.end() && format->second;
}

}  // namespace tessarine::sheets
