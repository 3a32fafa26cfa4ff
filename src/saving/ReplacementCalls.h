#pragma once

#include <cstdint>

#include "files/FileDescriptor.h"
#include "files/HeldFolder.h"
#include "platform/NativePath.h"

/// The calls of the system that ReplacementFile and TouchFile are made of. What fails leaves its reason in errno.
namespace tessarine
{

/// Whether this process may write a file, by the rights that it acts with. On Windows also whether others let it.
bool MayWrite(const HeldFolder& folder, const NativeString& name);

/// Whether this process may take the protection away that lets MayWrite say no: on Linux from its own files, on Windows
/// from those with the attribute "read-only".
bool MayUnprotect(const HeldFolder& folder, const NativeString& name);

/// Whether this process may make files in a folder. On Windows true: nothing but making one tells it.
bool MayMakeFiles(const HeldFolder& folder);

/// The file of a name in a folder, not through a link: for its attributes (one that can't be read is opened for them
/// alone), for writing into it, and for the date of its last write.
FileDescriptor OpenForAttributes(const HeldFolder& folder, const NativeString& name);
FileDescriptor OpenForWriting(const HeldFolder& folder, const NativeString& name);
FileDescriptor OpenForDate(const HeldFolder& folder, const NativeString& name);

/// Whether the system can copy from file to file by itself.
#ifdef _WIN32
inline constexpr bool CanCopyRanges = false;
#else
inline constexpr bool CanCopyRanges = true;
#endif

/// Copies to where the second file stands, without the way through this process. Gives how many bytes were copied:
/// fewer where that can't be done between these files, or at a fault that reading and writing will report.
std::uint64_t CopyRange(NativeFile from, std::uint64_t offset, NativeFile to, std::uint64_t length);

/// Gives a copy what the original holds beside its content, as far as that can be done: on Windows alternate streams.
void CopyStreams(NativeFile original, NativeFile copy);

/// Makes a file again this user's alone, as far as that can be done.
void MakeOwnAlone(NativeFile file);

/// Whether a file that takes another one's place gets attributes from that.
#ifdef _WIN32
inline constexpr bool TakingPlaceChangesAttributes = true;
#else
inline constexpr bool TakingPlaceChangesAttributes = false;
#endif

/// Whether a WriteBarrier does anything.
#ifdef _WIN32
inline constexpr bool WriteBarriersHold = true;
#else
inline constexpr bool WriteBarriersHold = false;
#endif

/// Keeps everybody from writing into a file until the end of the scope, where the system can do that: on Windows, where
/// it fails while somebody has the file open for writing.
class WriteBarrier
{
public:
    WriteBarrier() = default;  ///< On no file.
    static WriteBarrier On(const HeldFolder& folder, const NativeString& name);

    explicit operator bool() const { return isUp_; }

private:
    FileDescriptor file_;
    bool isUp_ = true;
};

/// Whether anybody has a file open for writing, as far as the system tells this process. What is written into the old
/// file after another one has taken its place would be lost. False on Windows, where a WriteBarrier sees to that.
bool IsOpenForWriting(const HeldFolder& folder, const NativeString& name);

/// Flushes a folder to the disk, so that the names in it last. True where the file system has no such thing.
bool FlushFolder(const HeldFolder& folder);

}  // namespace tessarine
