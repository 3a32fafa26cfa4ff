#pragma once

#include "files/FileDescriptor.h"
#include "files/FileState.h"
#include "platform/NativePath.h"

namespace tessarine
{

/// What a known file is opened for.
enum class KnownFileUse { Attributes, Times };

/// Opens the file whose mode or dates a run puts back after its save. Whoever can write the folder may have put a link
/// to somebody's file there meanwhile, so the path must lead to
/// - the file that was there before (`known`),
/// - or one that this process has locked, as it has the new content of a save (FileLock),
/// - or, where nothing can be locked, a file of this process's user with one name, and no link to it.
///
/// Raises `PermissionDenied` for any other file, and as ClassicFileFailure tells for one that can't be opened. `action`
/// goes into the text ("set the times of"). Times are set through a file that is open for writing, as those of a file
/// that can't be written stay.
FileDescriptor OpenKnownFile(const NativeString& path, const FileIdentity& known, KnownFileUse use, const char* action);

}  // namespace tessarine
