// Slides: shapes, texts, hyperlinks and linked objects, read, edited and read again.
//
// The input is a written-out package. The parts are the slide and its relationships; the entries "find" and "with" hold
// the text to look for and what takes its place.
#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "office/builtin/shapes/ShapeTreePart.h"
#include "office/builtin/text/TextTree.h"
#include "platform/Failure.h"
#include "Require.h"
#include "UndeclaredPrefix.h"
#include "WrittenPackage.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::Package;
using builtin::ShapeTreePart;
using builtin::SoughtText;
using builtin::TextPattern;

constexpr std::string_view slideName = "ppt/slides/slide1.xml";

std::vector<String> TextsOf(const builtin::ShapeTree& tree)
{
    std::vector<String> texts;
    for (const builtin::TextBody& body : tree.bodies)
        texts.push_back(body.Text());
    return texts;
}

String SwapCase(String text)
{
    for (char16_t& unit : text)
        if ((unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z'))
            unit ^= 0x20;
    return text;
}

/// What is found in a body may not be denied by the filter in front of the part.
void CheckFilter(ShapeTreePart& part, builtin::TextBody& body)
{
    const String text = body.Text();
    for (const std::size_t length : {1u, 3u, 8u}) {
        for (const std::size_t begin : {std::size_t{0}, text.size() / 2, text.size() - std::min(text.size(), length)}) {
            for (const String& sought : {text.substr(begin, length), SwapCase(text.substr(begin, length))}) {
                const SoughtText prepared(sought);
                const auto hit = body.Find(TextPattern(prepared, false, false), 0);
                Require(!hit || part.Filter().MayHold(prepared), "a text that is found is not denied before");
                Require(!hit || *hit + sought.size() <= text.size(), "a hit lies in the text");
            }
        }
    }
}

/// A text taken apart for editing is the text that was read, and the same bytes put together.
void CheckTextTree(const builtin::TextBody& body, const builtin::XmlDocument& document)
{
    const builtin::TextTree tree(document, document.ElementAt(body.Offset()), body.Text());
    Require(
        tree.Begin() <= tree.End() && tree.Bytes() == document.Bytes().substr(tree.Begin(), tree.End() - tree.Begin()),
        "a text body taken apart and put together is the same bytes");
    Require(tree.Text() == body.Text(), "a text body taken apart holds the text that was read");
}

void ReplaceIn(ShapeTreePart& part, std::size_t shape, const TextPattern& pattern, StringView with)
{
    builtin::TextBody& body = *part.TextOf(shape);
    const auto hit = body.Find(pattern, 0);
    if (!hit)
        return;
    const std::size_t length = pattern.Units().size();
    const String before = body.Text();
    const std::size_t count = part.ReplaceText(shape, *hit, length, with);
    const String after = part.TextOf(shape)->Text();
    Require(StringView(after).substr(0, *hit) == StringView(before).substr(0, *hit), "text in front of a hit stays");
    Require(after.size() >= *hit + count &&
                StringView(after).substr(*hit + count) == StringView(before).substr(*hit + length),
            "text after a hit stays");
}

void EditLinks(ShapeTreePart& part)
{
    const String newAddress = u"https://contoso.example/new?a=1&b=2";
    std::vector<String> addresses;
    const std::vector<std::size_t> links = part.HyperlinkIndices();
    for (const std::size_t link : links)
        addresses.push_back(part.HyperlinkAddress(link));
    if (links.empty())
        return;
    part.PutHyperlinkAddress(links.front(), newAddress);
    Require(part.HyperlinkAddress(links.front()) == newAddress, "a link has the address that it was given");
    for (std::size_t i = 1; i < links.size(); ++i)
        Require(part.HyperlinkAddress(links[i]) == addresses[i], "the other links keep their addresses");
    part.PutHyperlinkAddress(links.back(), {});
}

void EditLinkedObjects(ShapeTreePart& part)
{
    const String newSource = u"C:\\Sales\\Contoso.xlsx!Sheet1!R1C1";
    for (std::size_t shape = 0; shape < part.Shapes().size(); ++shape) {
        if (part.Shapes()[shape].linkId.empty())
            continue;
        part.PutLinkSource(shape, newSource);
        Require(part.LinkSource(shape) == newSource, "a linked object has the source that it was given");
    }
}

void WalkAndEdit(std::string_view input)
{
    const WrittenPackage written(input);
    const String find = FromUtf8(written.Entry("find"));
    const String with = FromUtf8(written.Entry("with"));
    const std::string zip = written.ZipBytes();
    Package package(BytesInMemory(std::as_bytes(std::span(zip))), builtin::Limits::Small());
    const auto entry = package.Find(slideName);
    if (!entry)
        return;
    ShapeTreePart part(package, *entry);
    part.Links();  // refused now when they are damaged
    const std::string xml = package.ReadXml(*entry);
    const builtin::XmlDocument document(xml, slideName, builtin::Limits::Small());
    for (std::size_t i = 0; i < part.Read().bodies.size(); ++i) {
        builtin::TextBody& body = part.Body(i);
        CheckFilter(part, body);
        CheckTextTree(body, document);
    }
    part.Flush();
    Require(!package.IsChanged(), "looking changes nothing");

    const SoughtText sought(find);
    const TextPattern pattern(sought, false, false);
    for (std::size_t shape = 0; shape < part.Shapes().size(); ++shape)
        if (part.TextOf(shape) != nullptr)
            ReplaceIn(part, shape, pattern, with.substr(0, 100));
    for (std::size_t i = 0; i < part.Read().bodies.size(); ++i)
        CheckFilter(part, part.Body(i));
    const std::vector<String> texts = TextsOf(part.Read());
    try {
        part.Flush();
        ShapeTreePart again(package, *entry);
        Require(TextsOf(again.Read()) == texts, "edited texts read back");
    } catch (const Failure& failure) {
        RequireUndeclaredPrefix(xml, failure);
        throw;
    }
    EditLinkedObjects(part);
    EditLinks(part);
    try {
        part.Flush();
        ShapeTreePart again(package, *entry);
        Require(TextsOf(again.Read()) == texts, "texts stay when links change");
    } catch (const Failure& failure) {
        RequireUndeclaredPrefix(xml, failure);
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::WalkAndEdit({reinterpret_cast<const char*>(data), size});
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
