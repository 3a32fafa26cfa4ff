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

const String newText = u"<Contoso> & \"Fabrikam\"";

bool HoldsNewText(const builtin::BuiltInProperties& properties, builtin::BuiltInProperty property)
{
    const auto value = properties.Read(property);
    return value && powerpoint::TextOf(*value) == newText;
}

/// Puts the text into every property that takes it; tells which did.
std::vector<std::size_t> PutAll(builtin::BuiltInProperties& properties)
{
    std::vector<std::size_t> put;
    for (std::size_t i = 0; i < builtin::builtInPropertyCount; ++i) {
        const auto property = static_cast<builtin::BuiltInProperty>(i);
        try {
            properties.Put(property, newText);
        } catch (const Failure&) {
            continue;  // packages have no place for it
        }
        if (HoldsNewText(properties, property))
            put.push_back(i);  // not a number or a date
    }
    return put;
}

std::vector<std::size_t> PutAll(builtin::CustomPropertyPart& properties)
{
    std::vector<std::size_t> put;
    for (std::size_t i = 0; i < properties.Count(); ++i) {
        try {
            properties.NameOf(i);
            properties.Put(i, newText);
            if (powerpoint::TextOf(properties.Read(i)) == newText)
                put.push_back(i);
        } catch (const Failure&) {
        }  // a list, a blob and the like
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
    builtin::BuiltInProperties builtIn(package);
    builtin::CustomPropertyPart custom(package);
    const std::size_t count = custom.Count();
    builtIn.Flush();
    custom.Flush();
    Require(!package.IsChanged(), "looking changes nothing");

    const auto putBuiltIn = PutAll(builtIn);
    const auto putCustom = PutAll(custom);
    builtIn.Flush();
    custom.Flush();
    std::ofstream(ToUtf8(path), std::ios::binary) << zip;
    package.Save(path);
    try {
        builtin::Package saved(std::make_unique<RandomAccessFile>(path));
        builtin::BuiltInProperties builtInAgain(saved);
        for (const std::size_t index : putBuiltIn)
            Require(HoldsNewText(builtInAgain, static_cast<builtin::BuiltInProperty>(index)),
                    "a built-in property reads back");
        builtin::CustomPropertyPart customAgain(saved);
        Require(customAgain.Count() == count, "the custom properties stay as many");
        for (const std::size_t index : putCustom)
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
