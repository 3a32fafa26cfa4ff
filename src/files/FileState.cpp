#include "files/FileState.h"

#include "files/HeldFolder.h"

namespace tessarine
{

namespace
{

std::optional<FileState> StateIn(const std::optional<FileFacts>& status)
{
    return status ? std::optional(status->state) : std::nullopt;
}

}  // namespace

std::optional<FileState> FileStateOf(NativeFile file)
{
    return StateIn(StatusOf(file));
}

std::optional<FileState> FileStateOf(StringView path)
{
    const auto native = NativePathIfValid(path);
    return native ? StateIn(StatusAt(*native)) : std::nullopt;
}

std::optional<FileState> FileStateIn(const HeldFolder& folder, const NativeString& name)
{
    return StateIn(StatusIn(folder, name));
}

}  // namespace tessarine
