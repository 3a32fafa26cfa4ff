#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ui/run/HitBlock.h"

class QIODevice;

namespace tessarine
{

/// One pair in one location: its position in the run's list, from 1, and the location.
using HitGroup = std::pair<std::int32_t, Location>;

/// A file that a HitStore has taken.
struct StoredHits {
    std::uint32_t file = 0;     ///< Its number in the store, from 0.
    std::set<HitGroup> groups;  ///< Where its hits were, whether they are kept and counted or not.
};

/// Keeps what runs told of their files, with the hits in context, in a temporary file: in memory a file takes 16 bytes,
/// whatever was found in it.
///
/// The hits of a file are bounded, and so is the temporary file. What goes beyond is counted and left out; a disk
/// without room does the same. The run notices nothing of it, and all else that is known of a file is kept.
///
/// Calls for one file: Take for each hit, then Add, or Forget when the run has no result for it.
class HitStore
{
public:
    using FileNumber = std::uint32_t;

    static constexpr std::size_t MostHits = 1000;                    ///< Kept of a file.
    static constexpr std::size_t MostUnits = 4 * 1024 * 1024;        ///< UTF-16 units of a file's hits.
    static constexpr std::int64_t MostBytes = 1024LL * 1024 * 1024;  ///< Of the temporary file.

    /// Keeps the hits in a temporary file of its own, which goes with the store. Never raises.
    HitStore();

    /// The same on an open device that is moved in, written and read; null for none.
    explicit HitStore(std::unique_ptr<QIODevice> device, std::int64_t mostBytes = MostBytes);
    ~HitStore();
    HitStore(const HitStore&) = delete;
    HitStore& operator=(const HitStore&) = delete;

    /// The files from here on belong to a new run; those of earlier runs stay.
    void BeginRun(KindOfRun run);

    void Take(const Hit& hit);  ///< A hit of the file that the run is at.
    /// Whether a hit more of that file would be kept; of others pair and location are all that is needed.
    bool TakesMore() const;
    void Forget();  ///< The hits taken since the last Add are those of a file without a result.

    /// Takes a file that the run is done with. The hits taken for it become those of the report, unless it failed.
    StoredHits Add(FileReport report);

    const KindOfRun& Run() const { return run_; }  ///< The run begun last.

    FileNumber FileCount() const { return static_cast<FileNumber>(blocks_.size()); }  ///< Of all runs.
    FileNumber FirstOfRun() const { return firstOfRun_; }  ///< The first file of the run begun last.

    /// A file as it was added, below FileCount. Raises `DeviceIO` when the temporary file can't be read.
    StoredFile File(FileNumber file) const;

    /// Visits the files of the run begun last, in order, one at a time. Raises what File does.
    void ForEachOfRun(const std::function<void(const FileReport& file)>& visit) const;

private:
    /// Where a file's block is on the device, unless inMemory_ has it.
    struct Block {
        std::int64_t offset;
        std::uint32_t size;
    };

    QByteArray Finished(StoredFile& file);  // its block, with what leftOut_ holds by now
    bool Write(const QByteArray& block);    // as the next file's; false when the device does not take it

    const std::unique_ptr<QIODevice> device_;  // null where none could be opened
    const std::int64_t mostBytes_;
    bool takesMore_;        // until the first write that fails
    std::int64_t end_ = 0;  // of what was written
    std::vector<Block> blocks_;
    std::unordered_map<FileNumber, QByteArray> inMemory_;  // blocks without hits that the device did not take
    SharedTexts texts_;                                    // of the pairs
    FileNumber firstOfRun_ = 0;
    KindOfRun run_;

    // Of the file that the run is at.
    std::vector<Hit> hits_;
    std::size_t units_ = 0;                     // of hits_
    std::set<HitGroup> groups_;                 // of all that were told
    std::map<HitGroup, std::int64_t> leftOut_;  // those that hits_ does not hold
};

}  // namespace tessarine
