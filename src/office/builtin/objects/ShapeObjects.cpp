#include "office/builtin/objects/ShapeObjects.h"

#include <algorithm>

#include "log/Warnings.h"
#include "office/builtin/objects/ListObject.h"
#include "office/builtin/objects/TextRanges.h"
#include "office/builtin/objects/TooLong.h"
#include "platform/Failure.h"
#include "platform/GivingUp.h"
#include "platform/ParagraphBreaks.h"

namespace tessarine::builtin
{

namespace
{

/// A number of units. A negative one is taken for 0.
std::size_t Units(std::int32_t count)
{
    return static_cast<std::size_t>(std::max(count, 0));
}

/// A shape of a page. It is its own text frame, text range and link format as well, since there is one of each per
/// shape and a walk asks for all of them.
class ShapeObject final : public powerpoint::Shape,
                          public powerpoint::TextFrame,
                          public powerpoint::TextRange,
                          public powerpoint::LinkFormat,
                          public std::enable_shared_from_this<ShapeObject>
{
public:
    ShapeObject(OpenFileReference file, PageReader& page, std::size_t slide, std::size_t shape)
        : file_(std::move(file)), page_(page), slide_(slide), shape_(shape)
    {
    }

    std::int32_t Type() override { return page_.Shape(shape_).type; }

    powerpoint::TriState HasTextFrame() override
    {
        return page_.Shape(shape_).hasTextFrame ? powerpoint::msoTrue : powerpoint::msoFalse;
    }

    std::shared_ptr<powerpoint::TextFrame> TextFrame() override
    {
        if (!page_.Shape(shape_).hasTextFrame)
            throw Failure(FailureNumber::InvalidRequest, u"The shape holds no text");
        return shared_from_this();
    }

    std::shared_ptr<powerpoint::LinkFormat> LinkFormat() override
    {
        if (Type() != powerpoint::msoLinkedOLEObject)
            throw Failure(FailureNumber::InvalidRequest, u"The shape is no linked object");
        return shared_from_this();
    }

    String Name() override { return page_.ShapeName(shape_); }

    // The whole text, whatever has been edited since it was asked for.
    std::shared_ptr<powerpoint::TextRange> TextRange() override { return shared_from_this(); }

    std::shared_ptr<powerpoint::TextRange> Find(const String& FindWhat, std::int32_t After,
                                                powerpoint::TriState MatchCase,
                                                powerpoint::TriState WholeWords) override
    {
        DeliverEventsInCall();
        // Any TriState but msoFalse is true; msoTrue itself is -1.
        const TextPattern pattern(file_->Sought(FindWhat), MatchCase != 0, WholeWords != 0);
        const auto hit = page_.FindText(shape_, pattern, Units(After));
        return hit ? MakeHitRange(shared_from_this(), *hit, FindWhat.size()) : nullptr;
    }

    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override
    {
        DeliverEventsInCall();
        const TextPattern pattern(file_->Sought(FindWhat), MatchCase != 0, WholeWords != 0);
        const auto hit = page_.FindText(shape_, pattern, Units(After));
        if (!hit)
            return nullptr;
        // Line ends become one unit each, so that what was put in may be shorter than what was asked for.
        const std::size_t length = page_.ReplaceText(shape_, *hit, FindWhat.size(), WithParagraphBreaks(ReplaceWhat));
        return MakeHitRange(shared_from_this(), *hit, length);
    }

    std::int32_t Start() override { return 1; }

    std::optional<String> TextAt(std::int32_t Start, std::int32_t Length) override
    {
        return page_.TextAt(shape_, Units(Start) - (Start > 0 ? 1 : 0), Units(Length));
    }

    bool IsKnownToHold(const String& text, powerpoint::TriState MatchCase, powerpoint::TriState WholeWords) override
    {
        return Find(text, 0, MatchCase, WholeWords) != nullptr;
    }

    String SourceFullName() override { return page_.LinkSource(shape_); }

    void PutSourceFullName(const String& value) override
    {
        // Putting what is there is no edit.
        if (page_.LinkSource(shape_) != value)
            PutUnlessTooLong(
                *file_, [&] { return Place(); }, [&] { page_.PutLinkSource(shape_, value); });
    }

private:
    /// For warnings: "slide 2, shape 3 "Object 1"".
    String Place()
    {
        const String page = slide_ == 0 ? String() : u"slide " + NumeralOf(slide_) + u", ";
        return page + u"shape " + NumeralOf(shape_ + 1) + u' ' + QuotedName(Name());
    }

    OpenFileReference file_;
    PageReader& page_;
    std::size_t slide_;  // its number, from 1
    std::size_t shape_;
};

class ShapesObject final : public ListObject<powerpoint::Shape>
{
public:
    ShapesObject(OpenFileReference file, PageReader& page, std::size_t slide)
        : file_(std::move(file)), page_(page), slide_(slide)
    {
    }

    bool MayHoldText(const String& text) override { return page_.MayHold(file_->Sought(text)); }

protected:
    std::vector<std::shared_ptr<powerpoint::Shape>> MakeElements() override
    {
        std::vector<std::shared_ptr<powerpoint::Shape>> shapes;
        const std::size_t count = page_.ShapeCount();
        shapes.reserve(count);
        for (std::size_t shape = 0; shape < count; ++shape)
            // By index alone: nothing of a shape is kept here, so that edits show at once.
            shapes.push_back(std::make_shared<ShapeObject>(file_, page_, slide_, shape));
        return shapes;
    }

    // By index alone, so that there is no telling new ones from those of the walk before.
    bool MayKeep(std::size_t count) override { return file_->MayKeepShapes(count); }

private:
    OpenFileReference file_;
    PageReader& page_;
    std::size_t slide_;
};

}  // namespace

std::shared_ptr<powerpoint::Shapes> MakeShapes(OpenFileReference file, PageReader& page, std::size_t slide)
{
    return std::make_shared<ShapesObject>(std::move(file), page, slide);
}

}  // namespace tessarine::builtin
