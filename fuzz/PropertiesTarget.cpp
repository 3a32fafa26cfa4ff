// Document properties: core, extended and custom parts of a written-out package, read, put, saved and
// read again.
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>
#include <vector>

#include "office/builtin/properties/BuiltInProperties.h"
#include "office/builtin/properties/CustomPropertyPart.h"
#include "platform/Failure.h"
#include "Require.h"
#include "support/TemporaryFolder.h"
#include "WrittenPackage.h"

namespace tessarine::fuzz
{

namespace
{

using powerpoint::Value;

const String newText = u"<Contoso> & \"Fabrikam\"";

/// Puts the text into every property that takes it; tells which did.
template <class Properties>
std::vector<std::int32_t> PutAll(Properties& properties, std::int32_t count)
{
    std::vector<std::int32_t> put;
    for (std::int32_t i = 1; i <= count; ++i) {
        try {
            properties.NameOf(i);
            properties.Read(i);
            properties.Put(i, newText);
            if (powerpoint::TextOf(properties.Read(i)) == newText)
                put.push_back(i);
        } catch (const Failure&) {
        }  // read-only, or without a value
    }
    return put;
}

void PutAndReadAgain(std::string_view input)
{
    static const TemporaryFolder folder;
    static const String path = folder.PathOf(u"saved.pptx");

    const std::string zip = WrittenPackage(input).ZipBytes();
    builtin::Package package(BytesInMemory(std::as_bytes(std::span(zip))), builtin::Limits::Small());
    if (package.RelationshipsOf(std::nullopt).FirstOf("officeDocument") == nullptr)
        return;  // no presentation, which is refused before
    builtin::BuiltInProperties builtIn(package, 1);
    builtin::CustomPropertyPart custom(package);
    const std::int32_t count = custom.Count();
    builtIn.Flush();
    custom.Flush();
    Require(!package.IsChanged(), "looking changes nothing");

    const auto putBuiltIn = PutAll(builtIn, builtin::BuiltInProperties::count);
    const auto putCustom = PutAll(custom, count);
    builtIn.Flush();
    custom.Flush();
    std::ofstream(ToUtf8(path), std::ios::binary) << zip;
    package.Save(path);
    try {
        builtin::Package saved(std::make_unique<RandomAccessFile>(path));
        builtin::BuiltInProperties builtInAgain(saved, 1);
        for (const std::int32_t index : putBuiltIn)
            Require(powerpoint::TextOf(builtInAgain.Read(index)) == newText, "a built-in property reads back");
        builtin::CustomPropertyPart customAgain(saved);
        Require(customAgain.Count() == count, "the custom properties stay as many");
        for (const std::int32_t index : putCustom)
            Require(powerpoint::TextOf(customAgain.Read(index)) == newText, "a custom property reads back");
    } catch (const Failure& failure) {
        Require(false, failure.what());  // what was read and edited must stay readable
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::PutAndReadAgain({reinterpret_cast<const char*>(data), size});
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
