// Document properties: core, extended and custom parts of a written-out package, read, put and read again.
#include <cstdint>
#include <span>
#include <vector>

#include "office/builtin/BuiltInProperties.h"
#include "office/builtin/CustomPropertyPart.h"
#include "platform/Failure.h"
#include "Require.h"
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
    const std::string zip = WrittenPackage(input).ZipBytes();
    builtin::Package package(BytesInMemory(std::as_bytes(std::span(zip))), builtin::Limits::Small());
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
    try {
        builtin::BuiltInProperties builtInAgain(package, 1);
        for (const std::int32_t index : putBuiltIn)
            Require(powerpoint::TextOf(builtInAgain.Read(index)) == newText, "a built-in property reads back");
        builtin::CustomPropertyPart customAgain(package);
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
