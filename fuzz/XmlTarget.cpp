// XML parts: the index of elements, and the scanner that edits go by. Both must see the same elements.
#include <cstdint>
#include <string>
#include <vector>

#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEncoding.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::ElementRange;
using builtin::Node;

struct Visit {
    Node node;
    ElementRange parent;
};

void CheckAttributes(const builtin::XmlDocument& document, Node node, std::string_view xml)
{
    const std::size_t at = document.OffsetOf(node);
    document.ForEachAttribute(node, [&](std::string_view name, std::string_view value) {
        const builtin::AttributeRange range = builtin::FindAttribute(xml, at, name);
        Require(range.found && range.valueBegin <= range.valueEnd && range.valueEnd < xml.size(),
                "the scanner finds each attribute of the document");
        const std::string_view raw = xml.substr(range.valueBegin, range.valueEnd - range.valueBegin);
        const bool isFirst = document.Attribute(node, name) == value;  // of several of one name, which XML forbids
        Require(!isFirst || builtin::DecodeAttribute(raw) == value, "document and scanner read the same value");
    });
}

void WalkDocument(std::string_view input)
{
    const std::string xml = builtin::DecodeXml(input, builtin::EncodingOf(input, "part"), "part");
    const builtin::XmlDocument document(xml, "part", builtin::Limits::Small());
    std::vector<Visit> open{{document.Root(), {.contentEnd = xml.size(), .end = xml.size(), .name = {}}}};
    std::size_t visited = 0;
    constexpr std::size_t enough = 4000;  // scanning an element again for each of its ancestors is quadratic
    while (!open.empty() && ++visited < enough) {
        const auto [node, parent] = open.back();
        open.pop_back();
        const std::size_t at = document.OffsetOf(node);
        Require(at < xml.size() && xml[at] == '<', "an element begins with its bracket");
        const ElementRange range = builtin::ScanElement(xml, at);
        Require(range.name == node.Name(), "document and scanner read the same name");
        Require(parent.contentBegin <= range.begin && range.end <= parent.contentEnd, "an element lies in its parent");
        Require(
            range.begin < range.contentBegin && range.contentBegin <= range.contentEnd && range.contentEnd <= range.end,
            "an element's parts follow one another");
        CheckAttributes(document, node, xml);
        try {
            document.TextOf(node);
        } catch (const Failure&) {
        }

        std::size_t next = builtin::NextChild(xml, range.contentBegin, range.contentEnd);
        for (const Node child : node.ChildElements()) {
            Require(next == document.OffsetOf(child), "document and scanner see the same children");
            next = builtin::NextChild(xml, builtin::ScanElement(xml, next).end, range.contentEnd);
            open.push_back({child, range});
        }
        Require(next == range.contentEnd, "the scanner sees no child that the document does not");
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::WalkDocument({reinterpret_cast<const char*>(data), size});
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
