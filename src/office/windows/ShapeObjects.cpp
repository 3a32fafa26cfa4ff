#include "office/windows/ShapeObjects.h"

namespace tessarine::windows
{

namespace
{

class TextRangeObject final : public AutomatedObject<powerpoint::TextRange>
{
public:
    static constexpr const char16_t* Kind = u"TextRange";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::TextRange> Find(const String& FindWhat, std::int32_t After,
                                                powerpoint::TriState MatchCase,
                                                powerpoint::TriState WholeWords) override
    {
        return Fetch<TextRangeObject>(object_, u"Find", FindWhat, After, MatchCase, WholeWords);
    }

    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override
    {
        return Fetch<TextRangeObject>(object_, u"Replace", FindWhat, ReplaceWhat, After, MatchCase, WholeWords);
    }

    std::int32_t Start() override { return object_.Integer(u"Start"); }

    std::optional<String> TextAt(std::int32_t Start, std::int32_t Length) override
    {
        return object_.Object(u"Characters", Kind, Start, Length).Text(u"Text");
    }
};

class TextFrameObject final : public AutomatedObject<powerpoint::TextFrame>
{
public:
    static constexpr const char16_t* Kind = u"TextFrame";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<powerpoint::TextRange> TextRange() override
    {
        return Fetch<TextRangeObject>(object_, u"TextRange");
    }
};

class LinkFormatObject final : public AutomatedObject<powerpoint::LinkFormat>
{
public:
    static constexpr const char16_t* Kind = u"LinkFormat";

    using AutomatedObject::AutomatedObject;

    String SourceFullName() override { return object_.Text(u"SourceFullName"); }
    void PutSourceFullName(const String& value) override { object_.Put(u"SourceFullName", Variant(value)); }
};

}  // namespace

String ShapeObject::Name()
{
    return object_.SessionOf().asksForNames ? object_.Text(u"Name") : String();
}

std::shared_ptr<powerpoint::TextFrame> ShapeObject::TextFrame()
{
    return Fetch<TextFrameObject>(object_, u"TextFrame");
}

std::shared_ptr<powerpoint::LinkFormat> ShapeObject::LinkFormat()
{
    return Fetch<LinkFormatObject>(object_, u"LinkFormat");
}

}  // namespace tessarine::windows
