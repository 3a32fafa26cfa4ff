#include <memory>
#include <stdexcept>

#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "support/TemporaryFolder.h"

#include <winioctl.h>

namespace tessarine
{

// Not by std::filesystem, whose sizes end at 2 GiB here.
void SetSize(StringView path, std::uint64_t bytes)
{
    const HANDLE file =
        CreateFileW(NativePath(path).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        throw std::runtime_error("could not open " + ToUtf8(path));
    const std::unique_ptr<void, decltype(&CloseHandle)> owned(file, &CloseHandle);
    // A file with holes, else a disk would need as much room. Where that can't be had, setting the size will tell.
    DWORD written = 0;
    DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &written, nullptr);
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(bytes);
    if (!SetFilePointerEx(file, end, nullptr, FILE_BEGIN) || !SetEndOfFile(file))
        throw std::runtime_error("could not set the size of " + ToUtf8(path));
}

}  // namespace tessarine
