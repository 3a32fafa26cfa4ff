#include "office/builtin/binary/ShapeTypes.h"

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

namespace
{

/// MSOSPT ([MS-ODRAW] 2.4.24): outlines that stand for more than an outline.
constexpr std::uint16_t notPrimitive = 0;
constexpr std::uint16_t line = 20;
constexpr std::uint16_t firstConnector = 32;
constexpr std::uint16_t lastConnector = 40;
constexpr std::uint16_t pictureFrame = 75;
constexpr std::uint16_t firstTextEffect = 136;
constexpr std::uint16_t lastTextEffect = 175;
constexpr std::uint16_t hostControl = 201;
constexpr std::uint16_t textBox = 202;

std::int32_t TypeOfFrame(const DrawnShape& shape, const ExternalObjects& objects)
{
    const auto kind = shape.externalObject ? objects.KindOf(*shape.externalObject) : std::nullopt;
    if (!kind)
        return shape.isLinkedPicture ? powerpoint::msoLinkedPicture : powerpoint::msoPicture;
    switch (*kind) {
        case ExternalObjectKind::Embedded:
            return powerpoint::msoEmbeddedOLEObject;
        case ExternalObjectKind::Linked:
            return powerpoint::msoLinkedOLEObject;
        case ExternalObjectKind::Control:
            return powerpoint::msoOLEControlObject;
        case ExternalObjectKind::Media:
            break;
    }
    return powerpoint::msoMedia;
}

bool IsLine(const DrawnShape& shape)
{
    return shape.form == line || (shape.form >= firstConnector && shape.form <= lastConnector);
}

std::int32_t TypeOf(const DrawnShape& shape, const ExternalObjects& objects)
{
    if (shape.placeholder != PlaceholderKind::None)
        return powerpoint::msoPlaceholder;
    if (shape.isGroup)
        return shape.isTable ? powerpoint::msoTable : powerpoint::msoGroup;
    if (shape.form == textBox)
        return powerpoint::msoTextBox;
    if (shape.form == pictureFrame)
        return TypeOfFrame(shape, objects);
    if (shape.form == hostControl)
        return powerpoint::msoOLEControlObject;
    if (IsLine(shape))
        return powerpoint::msoLine;
    if (shape.form == notPrimitive && shape.hasVertices)
        return powerpoint::msoFreeform;
    if (shape.form >= firstTextEffect && shape.form <= lastTextEffect)
        return powerpoint::msoTextEffect;
    return powerpoint::msoAutoShape;
}

}  // namespace

ShapeFacts FactsOf(const DrawnShape& shape, const ExternalObjects& objects)
{
    const bool isFrame = shape.form == pictureFrame || shape.form == hostControl || shape.isGroup || IsLine(shape);
    return {TypeOf(shape, objects),
            shape.text.has_value() || !(isFrame || shape.placeholder == PlaceholderKind::SlideImage)};
}

}  // namespace tessarine::builtin
