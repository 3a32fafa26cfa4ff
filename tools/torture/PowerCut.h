#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Files.h"
#include "Random.h"
#include "shim/Protocol.h"

namespace tessarine::torture
{

/// One thing that a run did to files, read back from its record.
struct Record {
    RecordHead head;
    std::string path;
    std::string otherPath;
    std::string bytes;
};
std::vector<Record> ReadRecords(const Path& record);

/// A disk that keeps for certain only what was flushed. What was done since may be there after a power cut, or part of
/// it: of each write any page of 4096 bytes, with zeros or the older bytes in place of those that are lost; of the
/// names made, changed and removed in a folder since it was flushed either the first few or, as some file systems have
/// it, any.
class Disk
{
public:
    /// All regular files below a folder are on the disk for certain.
    explicit Disk(const Path& folder);

    void Apply(const Record& record);

    /// What may lie there after a power cut now: contents by path.
    std::map<std::string, std::string> Surviving(Random& random) const;

private:
    using FileNumber = std::size_t;
    struct Change {
        std::uint64_t offset = 0;
        std::optional<std::string> bytes;  // none: the file is cut off at the offset
    };
    struct File {
        std::string certain;
        std::vector<Change> pending;
    };
    struct NameChange {
        std::string path;
        std::optional<FileNumber> file;  // none: the name is removed
        std::string alsoRemoved;         // the old name of a rename, gone in the same step
    };

    FileNumber NumberOf(const RecordHead& head);
    void Flush(const Record& record);
    void ChangeName(NameChange change);
    static void Put(std::map<std::string, FileNumber>& names, const NameChange& change);
    std::string ContentAfterCut(const File& file, Random& random) const;

    std::vector<File> files_;
    std::map<std::pair<std::uint64_t, std::uint64_t>, FileNumber> byIdentity_;
    std::map<std::string, FileNumber> names_;         // as the running system sees them
    std::map<std::string, FileNumber> certainNames_;  // as they are on the disk
    std::vector<NameChange> pendingNames_;
};

}  // namespace tessarine::torture
