#include "batch/FileIdentity.h"

#include "files/Files.h"
#include "files/WindowsFiles.h"
#include "log/Treatments.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/PathKey.h"
#include "platform/WindowsHeaders.h"

namespace tessarine::batch
{

namespace
{

/// The path by which the system knows what a path leads to; empty when nothing is there.
String FinalPath(const NativeString& path)
{
    const FileDescriptor file = OpenExisting(path, FILE_READ_ATTRIBUTES);
    return file.IsOpen() ? PathText(FinalPathOf(file.get())) : String();
}

std::string Key(StringView path)
{
    return ToUtf8(PathKey(path));
}

}  // namespace

std::string FileIdentity::Of(StringView path)
{
    const auto native = NativePathIfValid(path);
    if (!native)
        return ToUtf8(path);  // names no file, so it is like no other path
    // A link is the file that it leads to; one that leads nowhere is itself.
    if (HasAttribute(*native, FILE_ATTRIBUTE_REPARSE_POINT))
        if (const String target = FinalPath(*native); !target.empty())
            return Key(target);

    // The folder is resolved and the name is not: the file itself may be missing, as lost files of a restore are.
    String full(path);
    Skip([&] { full = FullPathOf(path); });
    const String folder(FolderOf(StringView(full)));
    const auto [entry, isNew] = folders_.try_emplace(ToUtf8(folder));
    if (isNew) {
        const String resolved = FinalPath(NativePath(folder));
        entry->second = Key(WithoutTrailingSeparator(resolved.empty() ? StringView(folder) : StringView(resolved)));
    }
    return entry->second + "\\" + Key(FileNameOf(StringView(full)));
}

}  // namespace tessarine::batch
