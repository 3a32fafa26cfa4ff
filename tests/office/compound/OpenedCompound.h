#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "office/builtin/compound/CompoundFile.h"
#include "office/builtin/compound/CompoundRewrite.h"
#include "support/CompoundReader.h"

namespace tessarine::test
{

/// A compound file in memory, read by the engine. Keeps the bytes.
class OpenedCompound
{
public:
    explicit OpenedCompound(std::string bytes, const builtin::Limits& limits = builtin::Limits::Default());

    const builtin::CompoundFile& operator*() const { return *file_; }
    const builtin::CompoundFile* operator->() const { return file_.get(); }

    /// The entry under a path such as "Storage/Stream"; the test fails and the root is given when there is none.
    std::size_t At(const std::string& path) const;
    bool Has(const std::string& path) const;
    std::string Stream(const std::string& path) const { return file_->Bytes(At(path)); }

    /// Paths of all entries but the root, in their order; those of storages end in "/".
    std::vector<std::string> Paths() const;

    /// The file with new bytes for streams, and without the entries named, as a save writes it.
    std::string With(const std::vector<std::pair<std::string, std::string>>& streams,
                     const std::vector<std::string>& removed = {}) const;

private:
    std::string bytes_;
    std::unique_ptr<RandomAccessBytes> memory_;
    std::unique_ptr<builtin::CompoundFile> file_;
};

/// The text of the `FileCorrupt` that `body` raises; "" when it raises nothing, and the number of any other failure.
std::string DamageFrom(const std::function<void()>& body);

/// As many bytes, each position with its own: a byte out of place is noticed.
std::string CountingBytes(std::size_t count);

}  // namespace tessarine::test
