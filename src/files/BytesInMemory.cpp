#include "files/RandomAccessFile.h"

#include <cstring>

#include "platform/Failure.h"

namespace tessarine
{

namespace
{

class MemoryBytes final : public RandomAccessBytes
{
public:
    explicit MemoryBytes(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    void Read(std::uint64_t offset, std::span<std::byte> buffer) const override
    {
        // Subtracted, because the sum of an offset and a size from a damaged file may overflow.
        if (offset > bytes_.size() || buffer.size() > bytes_.size() - offset)
            throw Failure(FailureNumber::FileCorrupt, u"The bytes end too early");
        // No copy of nothing: memcpy forbids a null pointer even for a length of 0, and an empty span has one.
        if (!buffer.empty())
            std::memcpy(buffer.data(), bytes_.data() + offset, buffer.size());
    }

private:
    std::span<const std::byte> bytes_;
};

}  // namespace

std::unique_ptr<RandomAccessBytes> BytesInMemory(std::span<const std::byte> bytes)
{
    return std::make_unique<MemoryBytes>(bytes);
}

}  // namespace tessarine
