#include "office/builtin/objects/TextRanges.h"

#include <algorithm>

#include "platform/CheckedInteger.h"

namespace tessarine::builtin
{

namespace
{

class HitRange final : public powerpoint::TextRange
{
public:
    HitRange(std::shared_ptr<powerpoint::TextRange> text, std::size_t position, std::size_t length)
        : text_(std::move(text)),
          start_(Checked<std::int32_t>(static_cast<std::int64_t>(position) + 1)),
          length_(Checked<std::int32_t>(static_cast<std::int64_t>(length)))
    {
    }

    /// `After` counts from the range's first character; a hit must begin inside the range.
    std::shared_ptr<powerpoint::TextRange> Find(const String& FindWhat, std::int32_t After,
                                                powerpoint::TriState MatchCase,
                                                powerpoint::TriState WholeWords) override
    {
        // Searched in the whole text, so that a whole word is judged by its real neighbours.
        auto hit = text_->Find(FindWhat, FromStart(After), MatchCase, WholeWords);
        return hit && hit->Start() < start_ + length_ ? hit : nullptr;
    }

    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override
    {
        // The text's own Replace would take a hit beyond the range, too.
        if (!Find(FindWhat, After, MatchCase, WholeWords))
            return nullptr;
        return text_->Replace(FindWhat, ReplaceWhat, FromStart(After), MatchCase, WholeWords);
    }

    std::int32_t Start() override { return start_; }

    std::optional<String> TextAt(std::int32_t Start, std::int32_t Length) override
    {
        return text_->TextAt(Start, Length);
    }

private:
    std::int32_t FromStart(std::int32_t after) const
    {
        // Any `After` may be asked for; a sum beyond 32 bits raises `Overflow`.
        return CheckedSum<std::int32_t>(start_ - 1, std::max(after, 0));
    }

    std::shared_ptr<powerpoint::TextRange> text_;
    std::int32_t start_;  // UTF-16 units from 1
    std::int32_t length_;
};

}  // namespace

std::shared_ptr<powerpoint::TextRange> MakeHitRange(std::shared_ptr<powerpoint::TextRange> text, std::size_t position,
                                                    std::size_t length)
{
    return std::make_shared<HitRange>(std::move(text), position, length);
}

}  // namespace tessarine::builtin
