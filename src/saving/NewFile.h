#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "files/FileDescriptor.h"
#include "files/FileState.h"
#include "files/HeldFolder.h"

namespace tessarine
{

/// A temporary file with a new content, in the folder of the file whose place it is to take (a rename does that in one
/// step only within one file system). Its name is ".tessarine-" and six letters or digits, and until it is given its
/// attributes nobody but this process's user may read it. It is locked for as long as it is open, so that others can
/// tell it from one that a killed process has left (Leftovers.h), and it is removed at its end unless it has taken the
/// place.
///
/// A member that gives false leaves the reason in errno.
class NewFile
{
public:
    /// Makes the file in a folder that stays open for as long as this object lives.
    explicit NewFile(const HeldFolder& folder);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool IsOpen() const { return file_.IsOpen(); }
    NativeFile Descriptor() const { return file_.get(); }
    const NativeString& Name() const { return name_; }

    bool Write(std::string_view bytes);

    /// All that was written is on the disk, whichever way the file system tells of a write that failed.
    bool FlushToDisk();

    /// Renames the file to `name` in its folder, where there must be no file of that name: else EEXIST.
    bool TakeFreePlace(const NativeString& name);

    /// Renames the file over the one of that name in its folder, in one step.
    bool TakePlace(const NativeString& name);

    /// Lets the file and the one of that name in its folder change their names, in one step: the old file then has the
    /// temporary name, and goes when this object does. A second call takes that back. EINVAL or ENOSYS where the file
    /// system can't do that.
    ///
    /// On Windows the system does it in two steps (ReplaceFileW), and hands creation time, access list and alternate
    /// streams over to the new file. A process that dies between the two leaves the old file under its temporary name,
    /// which is then its own name with the other behind it; RemoveLeftovers puts it back. The new file is closed for
    /// the call, and open again after it unless another program was faster.
    bool ChangePlaces(const NativeString& name);

    /// Removes what has the temporary name, be it the new file or, after ChangePlaces, the old one.
    void Remove();

    /// Leaves what has the temporary name where it is, and gives that name.
    const NativeString& Leave();

    /// The descriptor, with its lock; the file is no longer open here.
    FileDescriptor Release() { return std::move(file_); }

private:
    bool MakeFile();

    const HeldFolder& folder_;
    NativeString name_;
    FileDescriptor file_;
    std::size_t slot_;  // among the files that RemoveNewFilesNow removes
    bool isThere_ = false;
};

/// A name for a new file from six random bytes.
NativeString NewFileName(std::span<const unsigned char, 6> random);

}  // namespace tessarine
