#pragma once

#include "files/RandomAccessFile.h"

namespace tessarine::builtin
{

/// What a file is by its content. Names and extensions don't count: people rename files, and programs save one kind
/// under another's name.
enum class FileKind {
    Package,             ///< A zip file; whether a presentation shows inside.
    EncryptedPackage,    ///< A compound file around an encrypted or rights-managed package.
    BinaryPresentation,  ///< PowerPoint 97 to 2003.
    OldPresentation,     ///< PowerPoint 95 and earlier.
    OtherCompound,       ///< Some other document in a compound file.
    FlatPackage,         ///< A package as one XML file.
    Empty,
    Other
};

/// Looks at the file's first bytes and, where these don't decide, at its end or its directory. Raises what reading the
/// file raises, and `FileCorrupt` for what begins as a compound file and can't be read as one.
FileKind FileKindOf(const RandomAccessBytes& bytes);

}  // namespace tessarine::builtin
