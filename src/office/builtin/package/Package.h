#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "files/RandomAccessFile.h"
#include "office/builtin/limits/Limits.h"
#include "office/builtin/package/ContentTypes.h"
#include "office/builtin/package/KeptParts.h"
#include "office/builtin/package/PartName.h"
#include "office/builtin/package/Relationships.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEncoding.h"
#include "office/builtin/zip/ZipDirectory.h"
#include "office/builtin/zip/ZipWriter.h"
#include "platform/Failure.h"
#include "saving/SaveTerms.h"

namespace tessarine::builtin
{

/// An Office Open XML package: parts in a zip file, their content types and relationships (ECMA-376 part 2).
///
/// Opening reads the zip directory and nothing else; a part is read when it is asked for. Edits are kept until Save. A
/// part is named by its entry, which stays the same for the package's life. All XML goes in and out as UTF-8, whatever
/// the encoding in the file.
class Package
{
public:
    using Entry = std::size_t;  ///< The number of an entry of the zip file, in the order of its directory.

    /// Raises `FileCorrupt` for a file that isn't a zip file or is damaged.
    explicit Package(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits = Limits::Default(),
                     const SaveTerms& terms = {});

    const Limits& limits() const { return limits_; }
    KeptParts& Kept() { return kept_; }  ///< What those who read parts keep of them.

    /// The entry of a part, by its name or by the name with its percent escapes decoded. When two entries have one
    /// name, the last one counts.
    std::optional<Entry> Find(std::string_view partName) const;
    std::optional<std::string_view> NameGivenTwice() const;  ///< The first that two entries have, if there is one.
    std::string_view NameOf(Entry entry) const;  ///< With slashes, without a leading one. Lives as long as the package.

    /// The parts that have this content type (in lower case), in ascending order.
    std::vector<Entry> PartsOfType(std::string_view type);

    /// Whether `test` says yes to an entry, given with its name and content type: its override as written, else the
    /// default of its extension in lower case, else "".
    bool HasPart(const std::function<bool(Entry, std::string_view name, std::string_view type)>& test);
    /// Unpacked, in bytes, as the zip file tells.
    std::uint64_t SizeOf(Entry entry) const { return directory_.Entries()[entry].size; }
    std::size_t EntryCount() const { return directory_.Entries().size(); }

    /// The part that a relationship of another part (of the package, without one) points to; nothing for no
    /// relationship, an external or a dangling one.
    std::optional<Entry> Follow(std::optional<Entry> source, const Relationship* relationship) const;

    /// A part's bytes, with edits. Raises `FileCorrupt` when it is damaged or larger than the limits allow,
    /// `Unspecified` when the entry is encrypted, `BadFormat` when it is packed in a way that packages don't use.
    std::string Read(Entry entry) const;

    /// As Read, decoded to UTF-8 (see XmlEncoding).
    std::string ReadXml(Entry entry) const;

    /// As ReadXml, for a part that is not kept: the text is good until the next call for another part, which uses the
    /// memory again.
    std::string_view ReadXmlOnce(Entry entry);

    /// The same text as a document, good for as long. Raises as ReadXml and XmlDocument do.
    const XmlDocument& ReadDocumentOnce(Entry entry);

    /// The new content, as UTF-8, of an XML part that was read; put back into the part's encoding.
    void ReplaceXml(Entry entry, std::string_view utf8);

    /// To be told of bytes that an edit of a part has added. Raises `BadFormat` beyond what the limits allow in all.
    void Grow(Entry entry, std::size_t bytes);

    /// Adds a part at the end of the zip file, or replaces one that was added before. Its content type and the
    /// relationship to it are the caller's to add, as they are to remove after Remove.
    void Add(std::string partName, std::string bytes);
    void Remove(Entry entry);

    /// The relationships of a part, or of the package when no entry is given. Parsed once; edits of them are saved.
    /// Raises as ReadXml does.
    Relationships& RelationshipsOf(std::optional<Entry> entry);
    ContentTypes& Types();  ///< Raises `FileCorrupt` when the package has none.

    /// To be told of an edit of a part that failed half-way, for a reason. The package is not saved any more: Save
    /// raises `FileCorrupt` with the first such reason.
    void GiveUp(Entry entry, StringView reason);

    /// True when a save would write something else than what is there.
    bool IsChanged() const;

    /// Replaces the file by one with the edits, all or nothing. Without edits only its modification time moves. `path`
    /// leads to the file that was opened, or to the result of the save before. Raises `SharingViolation` when it does
    /// not, or when others have changed that file since (ReplacementFile), and `FileCorrupt` when the edited
    /// relationships or content types would not read as they were meant.
    ///
    /// May be called again, but not after a save that wrote into the file itself (SaveTerms): the old parts are gone
    /// then, and reading and saving raise `WriteFault`.
    void Save(StringView path);

    /// Raises what Save would raise, as far as that shows without a new file (ReplacementFile::Effect). Nothing changes
    /// on the disk, and the package can still be saved.
    void RehearseSave(StringView path);

private:
    Relationships& Load(std::optional<Entry> entry);
    void PutEditedXml();
    std::string_view ReadInto(std::string& memory, Entry entry) const;
    bool NeedsDecoding(std::string_view bytes, Entry entry) const;

    void FailIfOverwritten() const;
    void FailIfNotToBeSaved() const;

    std::unique_ptr<RandomAccessBytes> bytes_;
    Limits limits_;
    SaveTerms terms_;
    bool isOverwritten_ = false;  // by a save in place
    ZipDirectory directory_;
    std::unordered_map<std::string_view, Entry, PartNameHash, PartNameEqual> byName_;
    std::optional<ContentTypes> types_;
    std::map<Entry, std::string> oddNames_;  // of entries that are not named as parts are
    std::unordered_map<Entry, Relationships> relationships_;
    std::optional<Relationships> rootRelationships_;
    ZipChanges changes_;
    std::optional<Failure> halfEdit_;  // why nothing is saved any more
    KeptParts kept_;
    mutable std::uint64_t inflated_ = 0;     // bytes of all parts that were read, each counted once
    mutable std::vector<bool> wasInflated_;  // by entry
    std::uint64_t grown_ = 0;
    mutable std::string packed_;                                // memory used again by every read
    mutable std::unordered_map<Entry, XmlEncoding> encodings_;  // of parts that are not in UTF-8
    std::string once_;                                          // never made smaller; holds onceContent_
    std::string_view onceContent_;
    std::optional<Entry> onceEntry_;           // whose content that is
    std::optional<XmlDocument> onceDocument_;  // of onceContent_, once it is asked for
};

}  // namespace tessarine::builtin
