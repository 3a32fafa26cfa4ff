#include "files/OpenedFile.h"

#include <algorithm>
#include <span>
#include <vector>

#include "files/ReadAt.h"
#include "platform/Crc32.h"

namespace tessarine
{

namespace
{

constexpr std::int64_t second = 1'000'000'000;

/// No file beyond this is ever saved (a zip file without its 64-bit form ends here), and a sparse one may be endless.
constexpr std::uint64_t largestChecked = std::uint64_t{1} << 32;

/// How much the times of a file may lie in the past and still be those of a later change.
std::int64_t GrainOf(const FileState& state)
{
    static const std::int64_t tick = OpenedFile::ClockStep();
    // Some file systems keep whole or even seconds only. Elsewhere both times are whole seconds once in a blue moon.
    const bool isCoarse = state.lastWrite % second == 0 && state.lastChange % second == 0;
    return isCoarse ? 2 * second : tick;
}

bool IsRacyAt(const FileState& state, std::int64_t clock)
{
    return std::max(state.lastWrite, state.lastChange) >= clock - GrainOf(state);
}

}  // namespace

OpenedFile::OpenedFile(NativeFile file, const FileState& state, std::int64_t clock)
    : file_(file), state_(state), expected_(state), isRacy_(IsRacyAt(state, clock))
{
    if (isRacy_)
        checksum_ = ChecksumNow();
}

// A state that the system doesn't give is that of no file, which no file will have later either.
OpenedFile::OpenedFile(NativeFile file) : OpenedFile(file, FileStateOf(file).value_or(FileState()), Clock()) {}

bool OpenedFile::IsUnchanged() const
{
    return FileStateOf(file_, state_.identity) == state_ && HasSameContent();
}

void OpenedFile::NoteOwnSave(const FileState& saved)
{
    expected_ = saved;
    // The old file has lost a name, which is a change as well. What else happens to it in this moment is of no
    // interest: its path leads to the new one.
    if (const auto now = FileStateOf(file_, state_.identity))
        state_ = *now;
    // Written this very moment.
    isRacy_ = isRacy_ || saved.identity == state_.identity;
    if (isRacy_)
        checksum_ = ChecksumNow();
}

std::optional<std::uint32_t> OpenedFile::ChecksumNow() const
{
    if (state_.size > largestChecked)
        return std::nullopt;
    std::vector<std::byte> buffer(1 << 16);
    std::uint32_t checksum = 0;
    for (std::uint64_t offset = 0;;) {
        const auto count = ReadSome(file_, offset, buffer);
        if (!count)
            return std::nullopt;
        if (*count == 0)
            return checksum;
        checksum = Crc32(std::span<const std::byte>(buffer).first(*count), checksum);
        offset += *count;
    }
}

}  // namespace tessarine
