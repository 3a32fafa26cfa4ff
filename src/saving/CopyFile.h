#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "files/FileDescriptor.h"
#include "files/FileState.h"
#include "platform/String.h"
#include "saving/SaveTerms.h"

/// Copies of files, for backups and their way back. Where nothing else is said, failures are those of
/// ClassicFileFailure.
namespace tessarine
{

/// The content that CopyFile has copied.
struct CopiedContent {
    std::uint64_t size = 0;      ///< In bytes.
    std::uint32_t checksum = 0;  ///< Crc32 of the content.

    bool operator==(const CopiedContent&) const = default;
};

/// What an open file holds, read to its end; nothing when it can't be read, with the reason in errno.
std::optional<CopiedContent> ContentIn(NativeFile file);

/// What the file at a path holds. A folder, or another thing that is no file, is a failure.
CopiedContent ContentOfFile(StringView path);

using CopyComplete = std::function<void(const CopiedContent& content)>;

/// What a caller of CopyFile asks beyond a copy.
struct CopyTerms {
    /// Told what was copied as soon as the copy is complete, right before it takes the target's place. What it raises
    /// goes on, and the target stays as it was. May be empty.
    CopyComplete complete = {};

    /// The folder that the target's path has to lead to. Another one, which somebody has put under its name, fails.
    std::optional<FileIdentity> folder = {};

    bool mustBeNew = false;  ///< A target that is there already fails.
};

/// Copies a file to `target`, all or nothing: on failure or a power cut an older target stays as it was. The copy gets
/// the owner, group, mode, access list and extended attributes of the original as far as this process may set them,
/// and never lets in more people than the original (KeptAttributes). An older target is replaced even when it is
/// read-only; one that is a link or no file fails with `PermissionDenied`, and so does a source that another program
/// changes while it is copied.
void CopyFile(StringView source, StringView target, const CopyTerms& terms = {});

/// Raises what CopyFile would raise because no file can be made at `target`, and makes none.
void RehearseCopy(StringView target);

/// Puts a copy back over the document that it was made of, in the same way. The document keeps its owner, group and
/// extended attributes; mode and access list come from the copy. A document that is a link is followed like that of a
/// save, and the terms of a save hold for one whose attributes can't be kept (ReplacementFile, PutBack). `complete` as
/// in CopyTerms.
void CopyFileBack(StringView copy, StringView document, const SaveTerms& terms = {}, const CopyComplete& complete = {});

}  // namespace tessarine
