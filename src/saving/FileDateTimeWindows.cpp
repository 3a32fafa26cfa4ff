#include "saving/FileDateTime.h"

#include <cerrno>

#include "files/FileFailure.h"
#include "files/KnownFile.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "log/Treatments.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "saving/LocalFileTime.h"

namespace tessarine
{

namespace
{

constexpr std::int64_t ticksTo1970 = 116'444'736'000'000'000;
constexpr std::int64_t ticksPerSecond = 10'000'000;
constexpr std::int64_t nanosecondsPerTick = 100;

constexpr unsigned long sharedForReadingAndWriting = FILE_SHARE_READ | FILE_SHARE_WRITE;

std::int64_t Ticks(const FILETIME& time)
{
    return static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | std::uint64_t{time.dwLowDateTime});
}

FILETIME FileTimeOf(std::int64_t ticks)
{
    const auto bits = static_cast<std::uint64_t>(ticks);
    return {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
}

/// Opened as for setting times, so that times which can't be put back are not kept. A protected file is looked at all
/// the same: a run reads its times before it takes the protection away, because the journal is to hold both by then.
FileDescriptor OpenToReadTimes(const NativeString& path)
{
    FileDescriptor file = OpenExisting(path, GENERIC_WRITE, sharedForReadingAndWriting);
    if (file.IsOpen() || errno != EACCES)
        return file;
    if (!HasAttribute(path, FILE_ATTRIBUTE_READONLY))
        return {};
    return OpenExisting(path, FILE_READ_ATTRIBUTES, sharedForReadingAndWriting);
}

}  // namespace

timespec MomentFrom(std::int64_t ticks)
{
    std::int64_t seconds = (ticks - ticksTo1970) / ticksPerSecond;
    std::int64_t rest = (ticks - ticksTo1970) % ticksPerSecond;
    // Before 1970 the fraction counts forward, too.
    if (rest < 0) {
        --seconds;
        rest += ticksPerSecond;
    }
    timespec moment{};
    moment.tv_sec = seconds;
    moment.tv_nsec = static_cast<decltype(moment.tv_nsec)>(rest * nanosecondsPerTick);
    return moment;
}

std::int64_t TicksFromMoment(const timespec& moment)
{
    return moment.tv_sec * ticksPerSecond + moment.tv_nsec / nanosecondsPerTick + ticksTo1970;
}

timespec LocalTimeFrom(std::int64_t ticks)
{
    const FILETIME moment = FileTimeOf(ticks);
    FILETIME local{};
    SYSTEMTIME fields{};
    if (!FileTimeToLocalFileTime(&moment, &local) || !FileTimeToSystemTime(&local, &fields) ||
        !SystemTimeToFileTime(&fields, &local))
        return {};
    return MomentFrom(Ticks(local));
}

std::int64_t TicksFromLocalTime(const timespec& time)
{
    const FILETIME given = FileTimeOf(TicksFromMoment(time));
    SYSTEMTIME fields{};
    FILETIME local{};
    FILETIME moment{};
    if (!FileTimeToSystemTime(&given, &fields) || !SystemTimeToFileTime(&fields, &local) ||
        !LocalFileTimeToFileTime(&local, &moment))
        return 0;
    return Ticks(moment);
}

FileTimes GetFileDateTime(StringView path)
{
    FileTimes times;
    // Passed over: times that can't be read are not valid, and SetFileDateTime leaves the file's own alone.
    Skip([&] {
        const FileDescriptor file = OpenToReadTimes(NativePath(path));
        FILETIME creation{};
        FILETIME lastAccess{};
        FILETIME lastWrite{};
        const auto status = file.IsOpen() ? StatusOf(file.get()) : std::nullopt;
        if (status && GetFileTime(file.get(), &creation, &lastAccess, &lastWrite))
            times = {LocalTimeFrom(Ticks(lastAccess)), LocalTimeFrom(Ticks(lastWrite)), true, status->state.identity,
                     LocalTimeFrom(Ticks(creation))};
    });
    return times;
}

bool SetFileDateTime(StringView path, const FileTimes& times)
{
    return LogAndReturn({u"SetFileDateTime", u"Module modFileDateTime at time"}, [&] {
        if (!times.valid)
            return false;
        const NativeString native = NativePath(path);
        if (!OpenExisting(native, GENERIC_WRITE, sharedForReadingAndWriting).IsOpen())
            return false;
        const FileDescriptor file = OpenKnownFile(native, times.file, KnownFileUse::Times, "set the times of");
        const FILETIME creation = FileTimeOf(TicksFromLocalTime(times.creation));
        const FILETIME lastAccess = FileTimeOf(TicksFromLocalTime(times.lastAccess));
        const FILETIME lastWrite = FileTimeOf(TicksFromLocalTime(times.lastWrite));
        if (!SetFileTime(file.get(), &creation, &lastAccess, &lastWrite)) {
            LeaveErrorInErrno();
            throw ClassicFileFailure(errno, "set the times of", native);
        }
        return true;
    });
}

}  // namespace tessarine
