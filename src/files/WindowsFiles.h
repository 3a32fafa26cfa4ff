#pragma once

#include <cstdint>
#include <string>

#include "files/FileDescriptor.h"
#include "platform/NativePath.h"

/// How Windows opens files, for files that end in "Windows.cpp". Numbers are those of CreateFile.
namespace tessarine
{

/// Others may read, write, rename and delete the file meanwhile.
inline constexpr unsigned long SharedWithAll = 7;

/// The same, but nobody may write into it.
inline constexpr unsigned long SharedWithReaders = 5;

/// Opens a file or folder that is there, links followed. Not open on failure, with the reason in errno.
FileDescriptor OpenExisting(const NativeString& path, unsigned long access, unsigned long share = SharedWithAll);

/// The same of what stands under the path itself, be it a link.
FileDescriptor OpenItself(const NativeString& path, unsigned long access, unsigned long share = SharedWithAll);

/// Opens a file that is there, but nothing through a link.
FileDescriptor OpenNoLink(const NativeString& path, unsigned long access, unsigned long share = SharedWithAll);

/// Opens a file that is there, links followed, to look at its attributes and its owner and to change the attributes.
FileDescriptor OpenForAttributeChange(const NativeString& path);

/// True when something stands under the path itself, be it a link that leads nowhere.
bool IsThere(const NativeString& path);

/// True when something stands under the path itself and has an attribute (FILE_ATTRIBUTE_…).
bool HasAttribute(const NativeString& path, unsigned long attribute);

/// Deletes a file, also one that is write-protected. False with the reason in errno: then it is protected again.
bool DeleteEvenIfProtected(const NativeString& path);

/// True when something stands under the path itself and has an attribute (FILE_ATTRIBUTE_READONLY and so on).
bool HasAttribute(const NativeString& path, unsigned long attribute);

/// Deletes a file, be it write-protected. False with the reason in errno; then it has the protection that it had.
bool DeleteEvenIfProtected(const NativeString& path);

/// Of a file's attributes those that programs may set, in the form that setting them asks for.
unsigned long SettableAttributes(unsigned long attributes);

/// The path by which the system itself knows an open file, without links. Empty on failure, with the reason in errno.
NativeString FinalPathOf(NativeFile file);

/// A time of the system (tenths of microseconds since 1601) in nanoseconds since 1970, and back.
std::int64_t NanosecondsFrom(std::int64_t ticks);
std::int64_t TicksFrom(std::int64_t nanoseconds);

/// The text of a security identifier (a PSID); empty on failure.
std::string TextOfIdentifier(void* identifier);

}  // namespace tessarine
