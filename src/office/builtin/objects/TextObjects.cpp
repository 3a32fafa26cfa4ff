#include "office/builtin/objects/TextObjects.h"

#include <algorithm>

#include "platform/CheckedInteger.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

/// The range of a hit. It stays where it was found, whatever is edited later.
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
        auto hit = text_->Find(FindWhat, FromStart(After), MatchCase, WholeWords);
        return hit && hit->Start() < start_ + length_ ? hit : nullptr;
    }

    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override
    {
        if (!Find(FindWhat, After, MatchCase, WholeWords))
            return nullptr;
        return text_->Replace(FindWhat, ReplaceWhat, FromStart(After), MatchCase, WholeWords);
    }

    std::int32_t Start() override { return start_; }

private:
    std::int32_t FromStart(std::int32_t after) const
    {
        return CheckedSum<std::int32_t>(start_ - 1, std::max(after, 0));
    }

    std::shared_ptr<powerpoint::TextRange> text_;
    std::int32_t start_;
    std::int32_t length_;
};

Failure NoText()
{
    return {FailureNumber::InvalidRequest, u"Shape (unknown member) : This object has no text."};
}

/// A search may begin nowhere before the text.
std::size_t StartOfSearch(std::int32_t after)
{
    return static_cast<std::size_t>(std::max(after, 0));
}

}  // namespace

std::int32_t ShapeObject::Type()
{
    return Record().type;
}

powerpoint::TriState ShapeObject::HasTextFrame()
{
    return Record().hasTextFrame ? powerpoint::msoTrue : powerpoint::msoFalse;
}

std::shared_ptr<powerpoint::TextFrame> ShapeObject::TextFrame()
{
    if (!Record().hasTextFrame)
        throw NoText();
    return shared_from_this();
}

std::shared_ptr<powerpoint::LinkFormat> ShapeObject::LinkFormat()
{
    if (Record().type != powerpoint::msoLinkedOLEObject)
        throw Failure(FailureNumber::InvalidRequest, u"Shape (unknown member) : This object is not linked.");
    return shared_from_this();
}

std::shared_ptr<powerpoint::TextRange> ShapeObject::TextRange()
{
    return shared_from_this();
}

std::shared_ptr<powerpoint::TextRange> ShapeObject::Find(const String& FindWhat, std::int32_t After,
                                                         powerpoint::TriState MatchCase,
                                                         powerpoint::TriState WholeWords)
{
    const std::int32_t body = Record().body;
    if (body < 0)
        return nullptr;
    const TextPattern& pattern = file_->Pattern(FindWhat, MatchCase != 0, WholeWords != 0);
    const auto hit = part_.Body(body).Find(pattern, StartOfSearch(After));
    return hit ? std::make_shared<HitRange>(shared_from_this(), *hit, FindWhat.size()) : nullptr;
}

std::shared_ptr<powerpoint::TextRange> ShapeObject::Replace(const String& FindWhat, const String& ReplaceWhat,
                                                            std::int32_t After, powerpoint::TriState MatchCase,
                                                            powerpoint::TriState WholeWords)
{
    const ShapeRecord& record = Record();
    if (record.body < 0)
        return nullptr;
    const TextPattern& pattern = file_->Pattern(FindWhat, MatchCase != 0, WholeWords != 0);
    const auto hit = part_.Body(record.body).Find(pattern, StartOfSearch(After));
    if (!hit)
        return nullptr;
    const std::size_t length = part_.ReplaceText(index_, *hit, FindWhat.size(), ReplaceWhat);
    return std::make_shared<HitRange>(shared_from_this(), *hit, length);
}

String ShapeObject::SourceFullName()
{
    return part_.LinkSource(Record());
}

void ShapeObject::PutSourceFullName(const String& value)
{
    part_.PutLinkSource(index_, value);
}

}  // namespace tessarine::builtin
