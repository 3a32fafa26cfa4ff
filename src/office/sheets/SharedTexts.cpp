#include "office/sheets/SharedTexts.h"

#include <algorithm>

#include "office/sheets/BiffBytes.h"
#include "office/sheets/BiffRecords.h"

namespace tessarine::sheets
{

namespace
{

/// Fills records to the brim and goes on in Continue records.
class ContinuedRecord
{
public:
    explicit ContinuedRecord(std::uint16_t type) : type_(type) {}

    std::size_t Room() const { return maxRecordBytes - data_.bytes().size(); }
    BiffBytes& Data() { return data_; }

    void Continue()
    {
        records_ += data_.Record(type_);
        data_ = {};
        type_ = BiffType::Continue;
    }

    std::string Finish()
    {
        Continue();
        return std::move(records_);
    }

private:
    std::uint16_t type_;
    BiffBytes data_;
    std::string records_;
};

void AppendText(ContinuedRecord& record, StringView text)
{
    // One width for the whole text, though a seam may change it.
    const bool isWide = std::ranges::any_of(text, [](char16_t unit) { return unit > 0xFF; });
    const std::size_t width = isWide ? 2 : 1;
    // Count and flags stand in one record, together with the first character.
    constexpr std::size_t head = 3;
    if (record.Room() < head + width)
        record.Continue();
    record.Data().Short(static_cast<std::uint32_t>(text.size())).Byte(isWide);
    for (;;) {
        // Whole characters: with two bytes each, the last byte of a record may stay free.
        const StringView here = text.substr(0, record.Room() / width);
        record.Data().Characters(here, isWide);
        text.remove_prefix(here.size());
        if (text.empty())
            return;
        record.Continue();
        record.Data().Byte(isWide);
    }
}

}  // namespace

std::uint32_t SharedTexts::Add(StringView text)
{
    // The table's head tells how many cells have texts as well as how many texts there are.
    ++cells_;
    const auto [place, isNew] = positions_.try_emplace(text, static_cast<std::uint32_t>(texts_.size()));
    if (isNew)
        texts_.push_back(text);
    return place->second;
}

std::string SharedTexts::Records() const
{
    ContinuedRecord record(BiffType::Sst);
    record.Data().Long(cells_).Long(static_cast<std::uint32_t>(texts_.size()));
    for (const StringView text : texts_)
        AppendText(record, text);
    return record.Finish();
}

}  // namespace tessarine::sheets
