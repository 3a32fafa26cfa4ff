// A binary presentation through the automation surface: every location read and edited, saved and opened again. The
// input is the document stream, which a compound file is put around, and changes as RecordMutation tells.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>

#include "EditEverything.h"
#include "log/ErrorLog.h"
#include "office/builtin/binary/BinaryPresentation.h"
#include "office/builtin/objects/PresentationObject.h"
#include "platform/Failure.h"
#include "RecordMutation.h"
#include "Require.h"
#include "support/CompoundBuilder.h"
#include "support/TemporaryFolder.h"

namespace tessarine::fuzz
{

namespace
{

/// How many shapes each slide has; nothing for one that can't be read.
std::vector<std::optional<std::size_t>> ShapeCounts(builtin::BinaryPresentation& presentation)
{
    std::vector<std::optional<std::size_t>> counts;
    for (std::size_t slide = 0; slide < presentation.SlideCount(); ++slide) {
        try {
            counts.emplace_back(presentation.Slide(slide).ShapeCount());
        } catch (const Failure&) {
            counts.emplace_back();
        }
    }
    return counts;
}

void EditAndSave(const std::string& stream)
{
    static const TemporaryFolder folder;
    static const String path = folder.PathOf(u"saved.ppt");
    ApplicationDataFolder = folder.PathOf(u"none");  // there is no such folder, so that the error log does not grow

    const std::string file = test::CompoundBuilder().Stream("PowerPoint Document", stream).Bytes();
    const auto reader = std::make_shared<builtin::BinaryPresentation>(BytesInMemory(std::as_bytes(std::span(file))),
                                                                      builtin::Limits::Small());
    const auto counts = ShapeCounts(*reader);
    const auto presentation = builtin::MakePresentation(reader, path);
    EditEverything(*presentation);
    std::ofstream(ToUtf8(path), std::ios::binary) << file;
    presentation->Save();
    try {
        builtin::BinaryPresentation again(std::make_unique<RandomAccessFile>(path));
        Require(ShapeCounts(again) == counts, "the shapes stay");
    } catch (const Failure& failure) {
        Require(false, failure.what());  // what was opened and saved must open again
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
{
    const std::string changed = tessarine::fuzz::RecordMutation(seed).Of({reinterpret_cast<const char*>(data), size});
    if (changed.size() > maxSize)
        return size;
    std::ranges::copy(changed, data);
    return changed.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::EditAndSave({reinterpret_cast<const char*>(data), size});
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
