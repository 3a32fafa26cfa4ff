#include <algorithm>
#include <utility>

#include "platform/CaseFolding.h"
#include "support/FakeSurface.h"

namespace tessarine
{

namespace
{

/// Units [first, first + length) of a text.
class FakeTextRange : public powerpoint::TextRange
{
public:
    FakeTextRange(FakeScript script, std::shared_ptr<String> text, std::size_t first, std::size_t length)
        : script_(std::move(script)), text_(std::move(text)), first_(first), length_(length)
    {
    }

    std::shared_ptr<powerpoint::TextRange> Find(const String& FindWhat, std::int32_t After,
                                                powerpoint::TriState MatchCase,
                                                powerpoint::TriState WholeWords) override
    {
        script_.Read("TextRange.Find");
        const std::size_t found = Position(FindWhat, After, MatchCase, WholeWords);
        return found == String::npos ? nullptr : Part(found, FindWhat.size());
    }

    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override
    {
        script_.Act("TextRange.Replace", FindWhat);
        const std::size_t found = Position(FindWhat, After, MatchCase, WholeWords);
        if (found == String::npos)
            return nullptr;
        text_->replace(found, FindWhat.size(), ReplaceWhat);
        length_ = length_ - FindWhat.size() + ReplaceWhat.size();
        return Part(found, ReplaceWhat.size());
    }

    std::int32_t Start() override
    {
        script_.Read("TextRange.Start");
        return static_cast<std::int32_t>(first_) + 1;
    }

    std::optional<String> TextAt(std::int32_t Start, std::int32_t Length) override
    {
        script_.Read("TextRange.TextAt");
        const auto from = static_cast<std::size_t>(std::max(Start, 1)) - 1;
        return text_->substr(std::min(from, text_->size()), static_cast<std::size_t>(std::max(Length, 0)));
    }

    bool IsKnownToHold(const String& text, powerpoint::TriState MatchCase, powerpoint::TriState WholeWords) override
    {
        return Position(text, 0, MatchCase, WholeWords) != String::npos;
    }

private:
    std::shared_ptr<powerpoint::TextRange> Part(std::size_t first, std::size_t length) const
    {
        return std::make_shared<FakeTextRange>(script_, text_, first, length);
    }

    /// Index of the first hit at or after the character following position `After` of the text.
    std::size_t Position(const String& findWhat, std::int32_t after, powerpoint::TriState matchCase,
                         powerpoint::TriState wholeWords) const
    {
        if (findWhat.empty())
            return String::npos;
        const String haystack = matchCase != 0 ? *text_ : FoldCase(*text_);
        const String needle = matchCase != 0 ? findWhat : FoldCase(findWhat);
        const std::size_t end = first_ + length_;
        const std::size_t from = std::max(first_, static_cast<std::size_t>(std::max(after, 0)));
        for (std::size_t at = haystack.find(needle, from); at != String::npos && at + needle.size() <= end;
             at = haystack.find(needle, at + 1)) {
            const bool free = !IsWordAt(at, -1) && !IsWordAt(at + needle.size(), 0);
            if (wholeWords == 0 || free)
                return at;
        }
        return String::npos;
    }

    bool IsWordAt(std::size_t index, int offset) const
    {
        if (offset < 0 && index == 0)
            return false;
        const std::size_t at = offset < 0 ? index - 1 : index;
        return at < text_->size() && IsWordCharacter((*text_)[at]);
    }

    FakeScript script_;
    std::shared_ptr<String> text_;
    std::size_t first_;
    std::size_t length_;
};

class FakeTextFrame : public powerpoint::TextFrame
{
public:
    FakeTextFrame(FakeScript script, std::shared_ptr<FakeShape> shape)
        : script_(std::move(script)), shape_(std::move(shape))
    {
    }

    std::shared_ptr<powerpoint::TextRange> TextRange() override
    {
        script_.Read("TextFrame.TextRange");
        return FakeTextRangeOver({shape_, &shape_->text}, script_);
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeShape> shape_;
};

class FakeLinkFormat : public powerpoint::LinkFormat
{
public:
    FakeLinkFormat(FakeScript script, std::shared_ptr<FakeShape> shape)
        : script_(std::move(script)), shape_(std::move(shape))
    {
    }

    String SourceFullName() override
    {
        script_.Read("LinkFormat.SourceFullName");
        return shape_->sourceFullName;
    }

    void PutSourceFullName(const String& value) override
    {
        script_.Act("LinkFormat.SourceFullName =", value);
        shape_->sourceFullName = value;
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeShape> shape_;
};

class FakeShapeObject : public powerpoint::Shape
{
public:
    FakeShapeObject(FakeScript script, std::shared_ptr<FakeShape> shape)
        : script_(std::move(script)), shape_(std::move(shape))
    {
    }

    std::int32_t Type() override
    {
        script_.Read("Shape.Type");
        return shape_->type;
    }

    powerpoint::TriState HasTextFrame() override
    {
        script_.Read("Shape.HasTextFrame");
        return shape_->hasTextFrame;
    }

    std::shared_ptr<powerpoint::TextFrame> TextFrame() override
    {
        script_.Read("Shape.TextFrame");
        return std::make_shared<FakeTextFrame>(script_, shape_);
    }

    std::shared_ptr<powerpoint::LinkFormat> LinkFormat() override
    {
        script_.Read("Shape.LinkFormat");
        return std::make_shared<FakeLinkFormat>(script_, shape_);
    }

    String Name() override
    {
        script_.Read("Shape.Name");
        return shape_->name;
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeShape> shape_;
};

class FakeHeaderFooterObject : public powerpoint::HeaderFooter
{
public:
    FakeHeaderFooterObject(FakeScript script, std::shared_ptr<FakeHeaderFooter> text)
        : script_(std::move(script)), text_(std::move(text))
    {
    }

    String Text() override
    {
        script_.Read("HeaderFooter.Text");
        return Shown();
    }

    void PutText(const String& value) override
    {
        script_.Act("HeaderFooter.Text =", value);
        Shown() = value;
    }

private:
    String& Shown() const
    {
        if (!*text_)
            throw Failure(FailureNumber::InvalidRequest, u"HeaderFooter (unknown member) : Invalid request.");
        return **text_;
    }

    FakeScript script_;
    std::shared_ptr<FakeHeaderFooter> text_;
};

class FakeHeadersFooters : public powerpoint::HeadersFooters
{
public:
    FakeHeadersFooters(FakeScript script, std::shared_ptr<FakeHeaderFooter> header,
                       std::shared_ptr<FakeHeaderFooter> footer)
        : script_(std::move(script)), header_(std::move(header)), footer_(std::move(footer))
    {
    }

    std::shared_ptr<powerpoint::HeaderFooter> Header() override
    {
        script_.Read("HeadersFooters.Header");
        return std::make_shared<FakeHeaderFooterObject>(script_, header_);
    }

    std::shared_ptr<powerpoint::HeaderFooter> Footer() override
    {
        script_.Read("HeadersFooters.Footer");
        return std::make_shared<FakeHeaderFooterObject>(script_, footer_);
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeHeaderFooter> header_;
    std::shared_ptr<FakeHeaderFooter> footer_;
};

class FakeMasterObject : public powerpoint::Master
{
public:
    FakeMasterObject(FakeScript script, std::shared_ptr<FakeMaster> master)
        : script_(std::move(script)), master_(std::move(master))
    {
    }

    std::shared_ptr<powerpoint::Shapes> Shapes() override
    {
        script_.Read("Master.Shapes");
        return FakeShapesOf(script_, {master_, &master_->shapes});
    }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override
    {
        script_.Read("Master.HeadersFooters");
        return FakeHeadersFootersOf(script_, {master_, &master_->header}, {master_, &master_->footer});
    }

private:
    FakeScript script_;
    std::shared_ptr<FakeMaster> master_;
};

}  // namespace

std::shared_ptr<powerpoint::TextRange> FakeTextRangeOver(const std::shared_ptr<String>& text, const FakeScript& script)
{
    return std::make_shared<FakeTextRange>(script, text, 0, text->size());
}

std::shared_ptr<powerpoint::Shapes> FakeShapesOf(const FakeScript& script,
                                                 const std::shared_ptr<std::vector<FakeShape>>& shapes)
{
    return CollectionOf<powerpoint::Shape, FakeShape>("Shapes", script, shapes, *shapes, [script](auto shape) {
        return std::make_shared<FakeShapeObject>(script, std::move(shape));
    });
}

std::shared_ptr<powerpoint::Master> FakeMasterOf(const FakeScript& script, const std::shared_ptr<FakeMaster>& master)
{
    return std::make_shared<FakeMasterObject>(script, master);
}

std::shared_ptr<powerpoint::HeadersFooters> FakeHeadersFootersOf(const FakeScript& script,
                                                                 const std::shared_ptr<FakeHeaderFooter>& header,
                                                                 const std::shared_ptr<FakeHeaderFooter>& footer)
{
    return std::make_shared<FakeHeadersFooters>(script, header, footer);
}

}  // namespace tessarine
