// Project files. The input is a file as it is, and once more with magic, version, length and checksum put right,
// because no fuzzer guesses a checksum.
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "model/Project.h"
#include "model/PropertyBag.h"
#include "platform/Crc32.h"
#include "platform/Failure.h"
#include "Require.h"
#include "support/TemporaryFolder.h"

namespace
{

using namespace tessarine;

constexpr std::size_t header = PropertyBag::HeaderLength;
constexpr std::size_t checksum = 4;

std::span<const std::byte> Bytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

void PutNumber(std::string& bytes, std::size_t at, std::uint64_t value, std::size_t length)
{
    for (std::size_t byte = 0; byte < length; ++byte)
        bytes[at + byte] = static_cast<char>(value >> 8 * byte & 0xFF);
}

std::string PutRight(std::string bytes)
{
    std::memcpy(bytes.data(), "\x89TSQ\r\n\x1A\n", 8);
    PutNumber(bytes, 8, 1, 4);
    PutNumber(bytes, 12, bytes.size(), 8);
    PutNumber(bytes, bytes.size() - checksum, Crc32(Bytes(bytes).first(bytes.size() - checksum)), checksum);
    return bytes;
}

/// True when the bytes are a bag whose project is worth a load: thousands of empty items show nothing new.
bool ReadBag(const std::string& bytes)
{
    constexpr std::int32_t mostItems = 100;
    PropertyBag bag;
    try {
        bag.PutContents(Bytes(bytes));
    } catch (const Failure&) {
        return false;  // refusing is a good answer; all else is a find
    }
    const std::string block = bag.Contents();
    fuzz::Require(bytes.starts_with(block), "a bag that is read gives the bytes that it was read from");
    const auto items = bag.ReadProperty(u"FindReplaceItemsCount").value_or(0);
    const auto* count = std::get_if<std::int32_t>(&items);
    return count == nullptr || *count <= mostItems;
}

/// What a save of the project gives as a new file.
std::string SavedBytes(Project& project, const TemporaryFolder& folder)
{
    String path = folder.PathOf(u"saved.tsq");
    project.SaveAsProject(path, true);
    const std::string bytes = ContentOf(path);
    unlink(ToUtf8(path).c_str());
    return bytes;
}

void LoadProject(const std::string& bytes)
{
    static const TemporaryFolder folder;
    const String path = folder.Write(u"job.tsq", bytes);
    const ProjectOwner project;
    std::int32_t error = 0;
    const bool isLoaded = project->LoadProject(path, error);
    fuzz::Require(error == 0, "a file that is there and has the extension has no error number");
    fuzz::Require(isLoaded != project->FileFailure.has_value(), "a load succeeds or tells why not");
    if (!isLoaded)
        return;

    const std::string saved = SavedBytes(*project, folder);
    const ProjectOwner again;
    fuzz::Require(again->LoadProject(folder.Write(u"again.tsq", saved), error), "what was saved can be loaded");
    fuzz::Require(SavedBytes(*again, folder) == saved, "a project saved, loaded and saved is the same file");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    if (ReadBag(input))
        LoadProject(input);
    if (size < header + checksum)
        return 0;
    const std::string right = PutRight(input);
    if (ReadBag(right))
        LoadProject(right);
    return 0;
}
