// The document properties of a binary presentation: a stream of property sets, taken for both of its streams; read,
// put, and read again.
#include <cstdint>
#include <string>
#include <vector>

#include "office/builtin/propertysets/BinaryProperties.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::BinaryProperties;
using builtin::BuiltInProperty;

/// Some code pages can hold it, and others can't.
const String newText = u"Contoso & \u0141\u00F3d\u017A";

template <class Read>
bool ReadsAsNewText(Read&& read)
{
    try {
        return read() == newText;
    } catch (const Failure&) {
        return false;  // beyond the limits
    }
}

bool HoldsNewText(BinaryProperties& properties, BuiltInProperty property)
{
    return ReadsAsNewText([&] {
        const auto value = properties.BuiltIn().Read(property);
        return value ? powerpoint::TextOf(*value) : String();
    });
}

bool HoldsNewText(BinaryProperties& properties, std::size_t custom)
{
    return ReadsAsNewText([&] { return powerpoint::TextOf(properties.Custom().Read(custom)); });
}

/// What was put, and reads as it was put.
struct Puts {
    std::vector<BuiltInProperty> builtIn;
    std::vector<std::size_t> custom;
};

template <class Put>
void PutOrRefuse(Put&& put)
{
    try {
        put();
    } catch (const Failure&) {
    }  // a blob, bytes that two properties share, a set that isn't there
}

Puts PutAll(BinaryProperties& properties)
{
    Puts puts;
    for (std::size_t i = 0; i < builtin::builtInPropertyCount; ++i) {
        const auto property = static_cast<BuiltInProperty>(i);
        PutOrRefuse([&] { properties.BuiltIn().Put(property, newText); });
        if (HoldsNewText(properties, property))
            puts.builtIn.push_back(property);  // not a number or a date
    }
    for (std::size_t i = 0; i < properties.Custom().Count(); ++i) {
        PutOrRefuse([&] { properties.Custom().Put(i, 4.5); });  // a number first, in whatever kind
        PutOrRefuse([&] { properties.Custom().Put(i, newText); });
        if (HoldsNewText(properties, i))
            puts.custom.push_back(i);
    }
    PutOrRefuse([&] { properties.EmptyLinkList(); });
    PutOrRefuse([&] { properties.FollowTitles({{0, u"Fabrikam", newText}}, 1); });
    return puts;
}

void PutAndReadAgain(const std::string& input)
{
    const builtin::PropertySetStream stream(input, "input");
    Require(stream.Bytes() == input, "a stream without edits has the bytes that it was read from");

    BinaryProperties properties(input, input, builtin::Limits::Small());
    for (std::size_t i = 0; i < builtin::builtInPropertyCount; ++i)
        PutOrRefuse([&] { properties.BuiltIn().Read(static_cast<BuiltInProperty>(i)); });
    Require(!properties.IsEdited(), "looking changes nothing");

    const std::size_t count = properties.Custom().Count();
    const Puts puts = PutAll(properties);
    // Bytes that would not read as they were put are refused here.
    const auto summary = properties.NewSummary();
    const auto documentSummary = properties.NewDocumentSummary();

    BinaryProperties again(summary.value_or(input), documentSummary.value_or(input), builtin::Limits::Small());
    if (input.size() < builtin::Limits::Small().partBytes / 2)
        Require(again.Remarks().empty(), "what was edited can be read");
    Require(again.Custom().Count() == count, "the custom properties stay as many");
    for (const BuiltInProperty property : puts.builtIn)
        Require(HoldsNewText(again, property), "a built-in property reads back");
    for (const std::size_t custom : puts.custom)
        Require(HoldsNewText(again, custom), "a custom property reads back");
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
