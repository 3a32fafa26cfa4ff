#pragma once

#include <optional>
#include <string>

#include "platform/Failure.h"
#include "platform/NativePath.h"

namespace tessarine
{

/// What can be wrong with a file, whatever error says so. Each kind has a number in either family:
///
///                    classic               system
///     FileMissing    FileNotFound          SystemFileNotFound
///     FolderMissing  PathNotFound          SystemPathNotFound
///     NotPermitted   PermissionDenied      AccessDenied
///     InUse          PermissionDenied      SharingViolation
///     DiskFull       DiskFull              SystemDiskFull
///     OutOfMemory    OutOfMemory           SystemOutOfMemory
///     DeviceFault    DeviceIO              WriteFault
///
/// `NotPermitted` is for protected and write-protected files and for folders where a file is wanted. `InUse` is for
/// files that another program holds; the classic family has no number of its own for that. `DeviceFault` is all the
/// rest.
enum class FileTrouble { FileMissing, FolderMissing, NotPermitted, InUse, DiskFull, OutOfMemory, DeviceFault };

/// The kind that an error of the operating system (an errno value, see SystemErrors.h) is of. `path` is where it
/// happened: whether a file that wasn't found lacks only itself or its folder too, is looked up there.
FileTrouble FileTroubleOf(int error, const NativeString& path);

/// The kind that a failure with a number of either family is of. Nothing for other numbers, and for `PermissionDenied`,
/// which stands for two kinds.
std::optional<FileTrouble> FileTroubleOf(const Failure& failure);

/// The failure, in the classic family, of something that the run does to a file, such as a backup: "Permission denied:
/// could not open /folder/a.pptx". `action` is what was attempted ("open").
Failure ClassicFileFailure(int error, const char* action, const NativeString& path);

/// The failure, in the system's family, of opening or saving a presentation or a job: "Can't save "/folder/a.pptx":
/// Permission denied", with the system's own text for the error. `action` is what was attempted ("save").
Failure SystemFileFailure(int error, const char* action, const NativeString& path);

/// The same two for trouble that the system gives no error for, with the reason in our own words: "Can't save
/// "/folder/a.pptx": it is a link" and "Permission denied: could not write /folder/a.bak (it is a link)".
Failure ClassicFileFailure(FileTrouble trouble, const char* action, const NativeString& path,
                           const std::string& reason);
Failure SystemFileFailure(FileTrouble trouble, const char* action, const NativeString& path, const std::string& reason);

}  // namespace tessarine
