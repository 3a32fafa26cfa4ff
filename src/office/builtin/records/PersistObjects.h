#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessarine::builtin
{

/// The number by which records name a persist object ([MS-PPT] 2.2.21).
using PersistId = std::uint32_t;

/// The live objects of a document stream. Each save of an old PowerPoint may only append: what has changed, and at the
/// end a user edit with a directory of where the changed objects now are ([MS-PPT] 2.1.2). So the newest edit that
/// names an object has the last word, and the stream is never read from front to back.
class PersistObjects
{
public:
    /// Follows the edits from the newest, which the content of the stream `Current User` tells; where that is missing
    /// or of no use, from the last one in the document stream. Borrows the stream. Raises `FileCorrupt` for a stream
    /// without a user edit and one without a document, for objects that overlap, and for too many of them.
    PersistObjects(std::string_view stream, std::string_view currentUser);

    /// Whether the objects are encrypted: where they begin is all that can be told of them then.
    bool IsEncrypted() const { return encryptionSession_ != 0; }
    PersistId EncryptionSession() const { return encryptionSession_; }  ///< The object that tells how.

    /// A stream of the same objects, decrypted, as one that never was encrypted.
    std::string WithoutEncryption(std::string decrypted) const;

    /// Where the record of the document begins.
    std::size_t Document() const;

    /// Where the record of an object begins; nothing for one that there is not.
    std::optional<std::size_t> Find(PersistId id) const;

    /// The objects' numbers, ascending, with their offsets.
    const std::vector<std::pair<PersistId, std::size_t>>& All() const { return offsets_; }

    /// A stream of the live objects in their order, each as `append` adds it, and one user edit. An object is left out
    /// for which it gives false.
    using Append = std::function<bool(std::size_t offset, std::string& target)>;
    std::string Rewritten(const Append& append) const;

    /// The content of `Current User` for a rewritten stream.
    static std::string CurrentUserFor(std::string_view old, std::string_view rewrittenStream);

private:
    std::optional<std::size_t> NewestEdit(std::string_view currentUser) const;
    std::optional<std::size_t> LastEditBefore(std::size_t end) const;
    bool IsEditAt(std::size_t offset) const;
    void ReadDirectory(std::size_t offset);
    void KeepNewest();
    void CheckObjects() const;

    std::string_view stream_;
    std::size_t newestEdit_ = 0;  // offset of its record
    PersistId document_ = 0;
    PersistId encryptionSession_ = 0;
    std::size_t directoryBytes_ = 0;                          // read so far
    std::vector<std::pair<PersistId, std::size_t>> offsets_;  // ascending
};

}  // namespace tessarine::builtin
