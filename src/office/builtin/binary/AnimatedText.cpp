#include "office/builtin/binary/AnimatedText.h"

#include <string>

#include "log/Treatments.h"
#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// Fields of VisualShapeAtom.
constexpr std::size_t kindAt = 0;
constexpr std::size_t shapeAt = 8;
constexpr std::size_t beginAt = 12;
constexpr std::size_t endAt = 16;
constexpr std::size_t atomSize = 20;
constexpr std::uint32_t textRange = 2;

}  // namespace

void MoveAnimatedRanges(std::string_view bytes, const Record& page, const EditedShapes& shapes, RecordEdits& target)
{
    const auto move = [&](const Record& record) {
        if (record.type != record::VisualShapeAtom || !record.Holds(atomSize))
            return;
        const std::string_view content = record.Content(bytes);
        const auto shape = shapes.find(U32At(content, shapeAt));
        if (U32At(content, kindAt) != textRange || shape == shapes.end())
            return;
        const TextEdits& edits = *shape->second;
        std::string range;
        AppendU32(range, static_cast<std::uint32_t>(edits.PositionOf(U32At(content, beginAt))));
        AppendU32(range, static_cast<std::uint32_t>(edits.PositionOf(U32At(content, endAt))));
        target.Overwrite(record.ContentBegin() + beginAt, std::move(range));
    };
    ForEachRecord(bytes, page, [&](const Record& tag) {
        if (tag.type != record::BinaryTagData)
            return;
        // By its header no container, though it holds records.
        Record holder = tag;
        holder.version = 0xF;
        Skip([&] { ForEachRecord(bytes, holder, move); });
    });
}

}  // namespace tessarine::builtin
