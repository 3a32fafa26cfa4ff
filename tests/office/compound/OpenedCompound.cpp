#include "OpenedCompound.h"

#include <gtest/gtest.h>

#include <optional>
#include <span>

#include "platform/Failure.h"

namespace tessarine::test
{
namespace
{

using builtin::CompoundEntry;

std::optional<std::size_t> EntryUnder(const builtin::CompoundFile& file, const std::string& path)
{
    std::optional<std::size_t> entry = builtin::CompoundFile::root;
    for (std::size_t begin = 0; entry && begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        entry = file.Find(*entry, FromUtf8(path.substr(begin, end - begin)));
        begin = end + 1;
    }
    return entry;
}

}  // namespace

OpenedCompound::OpenedCompound(std::string bytes, const builtin::Limits& limits)
    : bytes_(std::move(bytes)),
      memory_(BytesInMemory(std::as_bytes(std::span(bytes_)))),
      file_(std::make_unique<builtin::CompoundFile>(*memory_, limits))
{
}

std::size_t OpenedCompound::At(const std::string& path) const
{
    const auto entry = EntryUnder(*file_, path);
    EXPECT_TRUE(entry) << path;
    return entry.value_or(builtin::CompoundFile::root);
}

bool OpenedCompound::Has(const std::string& path) const
{
    return EntryUnder(*file_, path).has_value();
}

std::vector<std::string> OpenedCompound::Paths() const
{
    const auto& entries = file_->Entries();
    std::vector<std::string> paths;
    for (std::size_t i = 1; i < entries.size(); ++i) {
        std::string path = entries[i].kind == CompoundEntry::Kind::Storage ? "/" : "";
        for (std::size_t at = i; at != builtin::CompoundFile::root; at = entries[at].parent)
            path.insert(0, ToUtf8(entries[at].name) + (at == i ? "" : "/"));
        paths.push_back(path);
    }
    return paths;
}

std::string OpenedCompound::With(const std::vector<std::pair<std::string, std::string>>& streams,
                                 const std::vector<std::string>& removed) const
{
    builtin::CompoundChanges changes;
    for (const auto& [path, bytes] : streams)
        changes.streams[At(path)] = bytes;
    for (const std::string& path : removed)
        changes.removed.insert(At(path));
    return RewrittenCompoundFile(*file_, changes);
}

std::string DamageFrom(const std::function<void()>& body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return failure.number == FailureNumber::FileCorrupt ? ToUtf8(failure.description)
                                                            : "number " + std::to_string(failure.number);
    }
    return {};
}

std::string CountingBytes(std::size_t count)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>((i * 2654435761u) >> 13);
    return bytes;
}

}  // namespace tessarine::test
