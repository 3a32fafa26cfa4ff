#include <filesystem>

#include "support/TemporaryFolder.h"

namespace tessarine
{

void SetSize(StringView path, std::uint64_t bytes)
{
    std::filesystem::resize_file(ToUtf8(path), bytes);
}

}  // namespace tessarine
