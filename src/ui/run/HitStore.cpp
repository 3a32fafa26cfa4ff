#include "ui/run/HitStore.h"

#include <utility>

#include <QTemporaryFile>

#include "platform/CheckedInteger.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace
{

std::unique_ptr<QIODevice> TemporaryDevice()
{
    auto file = std::make_unique<QTemporaryFile>();
    // Through the base, where the way to open it is public. Unbuffered, so that a full disk shows at the write.
    if (!static_cast<QIODevice&>(*file).open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return nullptr;
    return file;
}

std::size_t UnitsOf(const Hit& hit)
{
    return hit.before.size() + hit.text.size() + hit.after.size() + (hit.becomes ? hit.becomes->size() : 0);
}

}  // namespace

HitStore::HitStore() : HitStore(TemporaryDevice()) {}

HitStore::HitStore(std::unique_ptr<QIODevice> device, std::int64_t mostBytes)
    : device_(std::move(device)), mostBytes_(mostBytes), takesMore_(device_ != nullptr)
{
}

HitStore::~HitStore() = default;

void HitStore::BeginRun(KindOfRun run)
{
    Forget();
    run_ = run;
    firstOfRun_ = FileCount();
}

void HitStore::Take(const Hit& hit)
{
    const HitGroup group{NotNull(hit.place)->pair, hit.place->location};
    groups_.insert(group);
    const std::size_t units = UnitsOf(hit);
    if (!TakesMore() || units > MostUnits - units_) {
        ++leftOut_[group];
        return;
    }
    units_ += units;
    hits_.push_back(hit);
}

bool HitStore::TakesMore() const
{
    // Those that are kept are the first ones, so that one left out ends them.
    return takesMore_ && end_ < mostBytes_ && hits_.size() < MostHits && leftOut_.empty();
}

void HitStore::Forget()
{
    hits_.clear();
    units_ = 0;
    groups_.clear();
    leftOut_.clear();
}

StoredHits HitStore::Add(FileReport report)
{
    if (report.status == FileStatus::NotProcessed)
        // As its counts, they say nothing of what stands in the file.
        Forget();
    StoredFile file{std::move(report), {}, run_};
    file.report.hits = std::exchange(hits_, {});
    if (!Write(Finished(file))) {
        for (const Hit& hit : std::exchange(file.report.hits, {}))
            ++leftOut_[{hit.place->pair, hit.place->location}];
        const QByteArray block = Finished(file);
        blocks_.push_back({0, Checked<std::uint32_t>(block.size())});
        inMemory_.emplace(FileCount() - 1, block);
    }
    StoredHits stored{FileCount() - 1, std::exchange(groups_, {})};
    Forget();
    return stored;
}

QByteArray HitStore::Finished(StoredFile& file)
{
    file.leftOut.clear();
    file.report.hitsLeftOut = 0;
    for (const auto& [group, count] : leftOut_) {
        file.leftOut.push_back({group.first, group.second, count});
        file.report.hitsLeftOut += count;
    }
    return BlockOf(file, texts_);
}

bool HitStore::Write(const QByteArray& block)
{
    // Once it has failed, a device is only read: on a full disk each file would try in vain.
    takesMore_ = takesMore_ && device_->seek(end_) && device_->write(block) == block.size();
    if (!takesMore_)
        return false;
    blocks_.push_back({end_, Checked<std::uint32_t>(block.size())});
    end_ += block.size();
    return true;
}

StoredFile HitStore::File(FileNumber file) const
{
    if (const auto block = inMemory_.find(file); block != inMemory_.end())
        return FromBlock(block->second, texts_);
    const auto& [offset, size] = blocks_[file];
    if (!device_->seek(offset))
        throw CannotReadBack();
    return FromBlock(device_->read(size), texts_);
}

void HitStore::ForEachOfRun(const std::function<void(const FileReport& file)>& visit) const
{
    for (FileNumber file = firstOfRun_; file < FileCount(); ++file)
        visit(File(file).report);
}

}  // namespace tessarine
