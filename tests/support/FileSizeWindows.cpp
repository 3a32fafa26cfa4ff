#include <stdexcept>

#include "files/WindowsFiles.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "support/TemporaryFolder.h"

#include <winioctl.h>

namespace tessarine
{

// Not by std::filesystem, whose sizes end at 2 GiB here.
void SetSize(StringView path, std::uint64_t bytes)
{
    const FileDescriptor file = OpenExisting(NativePath(path), GENERIC_WRITE);
    if (!file.IsOpen())
        throw std::runtime_error("could not open " + ToUtf8(path));
    // A file with holes, else a disk would need as much room. Where that can't be had, setting the size will tell.
    DWORD written = 0;
    DeviceIoControl(file.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &written, nullptr);
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(bytes);
    if (!SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) || !SetEndOfFile(file.get()))
        throw std::runtime_error("could not set the size of " + ToUtf8(path));
}

}  // namespace tessarine
