// Telling files apart by their content, compound files included.
#include <cstdint>

#include "NoLeakCheck.h"
#include "office/builtin/FileKind.h"
#include "platform/Failure.h"
#include "Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    try {
        const auto bytes = BytesInMemory({reinterpret_cast<const std::byte*>(data), size});
        const builtin::FileKind kind = builtin::FileKindOf(*bytes);
        fuzz::Require((kind == builtin::FileKind::Empty) == (size == 0), "an empty file is one without bytes");
    } catch (const Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
