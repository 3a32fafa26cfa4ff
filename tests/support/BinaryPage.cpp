#include "support/BinaryPage.h"

#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t DrawingContainer = 1036;

std::string Patriarch(std::uint32_t id)
{
    return Container(0xF004, Record(1, 0, 0xF009, std::string(16, '\0')) + Record(2, 0, 0xF00A, Long(id) + Long(5)));
}

std::string Background(std::uint32_t id)
{
    constexpr std::uint32_t FillColor = 0x181;
    return Container(0xF004, Record(2, 1, 0xF00A, Long(id) + Long(0xC00)) +
                                 Record(3, 1, 0xF00B, Short(FillColor) + Long(0x08000000)) + Container(0xF011, ""));
}

}  // namespace

std::string BinaryPage::Drawing(const std::vector<Shape>& shapes)
{
    parts_.BeginDrawing();
    const std::string patriarch = Patriarch(parts_.NextShapeId());
    const std::string background = Background(parts_.NextShapeId());
    std::string group = patriarch;
    for (const auto& shape : shapes)
        group += shape.Records(*this);
    const std::string counts =
        Record(0, parts_.Drawing(), 0xF008, Long(parts_.ShapesOfDrawing()) + Long(parts_.LastShapeId()));
    return Container(DrawingContainer, Container(0xF002, counts + Container(0xF003, group) + background));
}

std::uint32_t BinaryPage::AddToOutline(const Text& text, int textType)
{
    const auto number = static_cast<std::uint32_t>(outline_.size());
    outline_.push_back(text.Records(parts_, textType, number));
    return number;
}

std::vector<int> BinaryPage::NextPlace()
{
    const int top = 200 + 500 * (places_++ % 8);
    return {400, top, 5300, top + 450};
}

}  // namespace tessarine::test::ppt
