#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "files/FileDescriptor.h"
#include "files/FileState.h"

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
    explicit NewFile(int folder);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool IsOpen() const { return file_.IsOpen(); }
    int Descriptor() const { return file_.get(); }
    const std::string& Name() const { return name_; }

    bool Write(std::string_view bytes);

    /// All that was written is on the disk, whichever way the file system tells of a write that failed.
    bool FlushToDisk();

    /// Renames the file to `name` in its folder, where there must be no file of that name: else EEXIST.
    bool TakeFreePlace(const std::string& name);

    /// Renames the file over the one of that name in its folder, in one step.
    bool TakePlace(const std::string& name);

    /// Lets the file and the one of that name in its folder change their names, in one step: the old file then has the
    /// temporary name, and goes when this object does. A second call takes that back. EINVAL or ENOSYS where the file
    /// system can't do that.
    bool ChangePlaces(const std::string& name);

    /// Removes what has the temporary name, be it the new file or, after ChangePlaces, the old one.
    void Remove();

    /// Leaves what has the temporary name where it is, and gives that name.
    const std::string& Leave();

    /// The descriptor, with its lock; the file is no longer open here.
    FileDescriptor Release() { return std::move(file_); }

private:
    bool MakeFile();

    int folder_;
    std::string name_;
    FileDescriptor file_{-1};
    std::size_t slot_;  // among the files that RemoveNewFilesNow removes
    bool isThere_ = false;
};

}  // namespace tessarine
