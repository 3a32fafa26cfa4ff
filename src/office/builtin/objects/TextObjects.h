#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/presentation/PresentationFile.h"

namespace tessarine::builtin
{

/// A shape of a part with a shape tree, by its index. Its own text frame and text range as well, since there is one of
/// each per shape and a walk asks for all three.
class ShapeObject final : public powerpoint::Shape,
                          public powerpoint::TextFrame,
                          public powerpoint::TextRange,
                          public powerpoint::LinkFormat,
                          public std::enable_shared_from_this<ShapeObject>
{
public:
    ShapeObject(std::shared_ptr<PresentationFile> file, ShapeTreePart& part, std::size_t index)
        : file_(std::move(file)), part_(part), index_(index)
    {
    }

    std::int32_t Type() override;
    powerpoint::TriState HasTextFrame() override;
    std::shared_ptr<powerpoint::TextFrame> TextFrame() override;
    std::shared_ptr<powerpoint::LinkFormat> LinkFormat() override;

    std::shared_ptr<powerpoint::TextRange> TextRange() override;

    std::shared_ptr<powerpoint::TextRange> Find(const String& FindWhat, std::int32_t After,
                                                powerpoint::TriState MatchCase,
                                                powerpoint::TriState WholeWords) override;
    std::shared_ptr<powerpoint::TextRange> Replace(const String& FindWhat, const String& ReplaceWhat,
                                                   std::int32_t After, powerpoint::TriState MatchCase,
                                                   powerpoint::TriState WholeWords) override;
    std::int32_t Start() override { return 1; }

    String SourceFullName() override;
    void PutSourceFullName(const String& value) override;

private:
    const ShapeRecord& Record() { return part_.Shapes()[index_]; }

    std::shared_ptr<PresentationFile> file_;
    ShapeTreePart& part_;
    std::size_t index_;
};

}  // namespace tessarine::builtin
