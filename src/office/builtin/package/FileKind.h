#pragma once

#include "platform/RandomAccessFile.h"

namespace tessarine::builtin
{

/// What a file is, by its content; names lie.
enum class FileKind {
    Package,             ///< A zip file; whether a presentation shows inside.
    EncryptedPackage,    ///< A compound file around an encrypted or rights-managed package.
    BinaryPresentation,  ///< PowerPoint 97 to 2003.
    OldPresentation,     ///< PowerPoint 95 and earlier.
    OtherCompound,       ///< Some other document in a compound file.
    DamagedCompound,     ///< Begins as a compound file and can't be read as one.
    FlatPackage,         ///< A package as one XML file.
    Empty,
    Other
};

FileKind FileKindOf(const RandomAccessBytes& bytes);

}  // namespace tessarine::builtin
