// A whole presentation through the automation surface: every location read and edited, saved and opened again. The
// input is a written-out package.
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>

#include "EditEverything.h"
#include "log/ErrorLog.h"
#include "office/builtin/objects/PresentationObject.h"
#include "office/builtin/presentation/PresentationFile.h"
#include "platform/Failure.h"
#include "Require.h"
#include "support/TemporaryFolder.h"
#include "WrittenPackage.h"

namespace tessarine::fuzz
{

namespace
{

void EditAndSave(std::string_view input)
{
    static const TemporaryFolder folder;
    static const String path = folder.PathOf(u"saved.pptx");
    ApplicationDataFolder = folder.PathOf(u"none");  // there is no such folder, so that the error log does not grow

    const std::string zip = WrittenPackage(input).ZipBytes();
    const auto open = [&] {
        return std::make_shared<builtin::PresentationFile>(BytesInMemory(std::as_bytes(std::span(zip))),
                                                           builtin::Limits::Small());
    };
    const auto presentation = builtin::MakePresentation(open(), path);
    EditEverything(*presentation);
    std::ofstream(ToUtf8(path), std::ios::binary) << zip;
    presentation->Save();
    try {
        const builtin::PresentationFile again(std::make_unique<RandomAccessFile>(path));
    } catch (const Failure& failure) {
        Require(false, failure.what());  // what was opened and saved must open again
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::EditAndSave({reinterpret_cast<const char*>(data), size});
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
