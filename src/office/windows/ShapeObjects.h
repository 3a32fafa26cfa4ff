#pragma once

#include "model/PowerPoint.h"
#include "office/windows/CollectionObject.h"

namespace tessarine::windows
{

/// A shape, with its text and the source of a linked object.
class ShapeObject final : public AutomatedObject<powerpoint::Shape>
{
public:
    static constexpr const char16_t* Kind = u"Shape";
    static constexpr const char16_t* KindOfAll = u"Shapes";

    using AutomatedObject::AutomatedObject;

    std::int32_t Type() override { return object_.Integer(u"Type"); }
    powerpoint::TriState HasTextFrame() override { return object_.Integer(u"HasTextFrame"); }
    std::shared_ptr<powerpoint::TextFrame> TextFrame() override;
    std::shared_ptr<powerpoint::LinkFormat> LinkFormat() override;
    String Name() override;  ///< Empty unless hits are expected (Presentation::ExpectHits).
};

using ShapesObject = CollectionObject<powerpoint::Shape, ShapeObject>;

}  // namespace tessarine::windows
