#include "office/builtin/xml/XmlDocument.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/MarkupMarks.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

bool IsNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
           static_cast<unsigned char>(c) >= 0x80;
}

constexpr auto endsName = [] {
    std::array<bool, 256> ends{};
    for (const char c : {' ', '\t', '\r', '\n', '/', '>', '<', '=', '"', '\''})
        ends[static_cast<unsigned char>(c)] = true;
    return ends;
}();

constexpr std::uint32_t noParent = std::numeric_limits<std::uint32_t>::max();

}  // namespace

/// The one pass over the bytes.
class XmlDocument::Indexer
{
public:
    Indexer(std::string_view bytes, std::string_view part, std::size_t mostElements, std::vector<Element>& elements)
        : bytes_(bytes), part_(part), mostElements_(mostElements), elements_(elements), marks_(bytes)
    {
    }

    void Run()
    {
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        std::size_t at = bytes_.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
        while (true) {
            const std::size_t tag = NextTag(at);
            if (parent_ == noParent && !std::ranges::all_of(bytes_.substr(at, tag - at), IsSpace))
                Fail("there is text outside of the root element", at);
            if (tag == bytes_.size())
                break;
            at = ReadTag(tag);
        }
        if (parent_ != noParent)
            Fail("its markup ends too early", bytes_.size());
        if (elements_.empty())
            Fail("it has no content", bytes_.size());
    }

private:
    [[noreturn]] void Fail(std::string_view what, std::size_t at) const { throw Damage(part_, what, at); }

    std::size_t OffsetAfter(std::string_view end, std::size_t at) const
    {
        const std::size_t found = bytes_.find(end, at);
        if (found == std::string_view::npos)
            Fail("its markup does not end", at);
        return found + end.size();
    }

    /// Reads the markup at a "<" and gives the offset after it.
    std::size_t ReadTag(std::size_t at)
    {
        const char next = at + 1 < bytes_.size() ? bytes_[at + 1] : '\0';
        if (next == '/')
            return CloseElement(at);
        if (next == '?')
            return OffsetAfter("?>", at + 2);
        if (next == '!')
            return ReadDeclaration(at);
        if (!IsNameStart(next))
            Fail("a tag has no name", at);
        return OpenElement(at);
    }

    std::size_t ReadDeclaration(std::size_t at)
    {
        const std::string_view rest = bytes_.substr(at);
        if (rest.starts_with("<!--"))
            return OffsetAfter("-->", at + 4);
        if (rest.starts_with("<![CDATA[") && parent_ != noParent)
            return OffsetAfter("]]>", at + 9);
        Fail(rest.starts_with("<!DOCTYPE") ? "it declares a document type, which is not allowed"
                                           : "its markup is not valid",
             at);
    }

    std::size_t NameEnd(std::size_t at) const
    {
        while (at < bytes_.size() && !endsName[static_cast<unsigned char>(bytes_[at])])
            ++at;
        return at;
    }

    /// The next "<" at or after an offset, or the end; quotes and brackets in text are passed over.
    std::size_t NextTag(std::size_t at)
    {
        std::size_t mark = marks_.NextFrom(at);
        while (mark < bytes_.size() && bytes_[mark] != '<')
            mark = marks_.Next();
        return mark;
    }

    /// The ">" of a start tag; quotes are skipped, as they may hold one.
    std::size_t TagEnd(std::size_t at)
    {
        const std::size_t start = at;
        for (std::size_t mark = marks_.NextFrom(at);; mark = marks_.Next()) {
            if (mark == bytes_.size())
                Fail("a tag does not end", start);
            const char stop = bytes_[mark];
            if (stop == '>')
                return mark;
            if (stop == '<')
                Fail("a tag holds another", mark);
            if (!FollowsEqualsSign(mark))
                Fail("an attribute has no name", mark);
            std::size_t close = marks_.Next();
            while (close < bytes_.size() && bytes_[close] != stop)
                close = marks_.Next();
            if (close == bytes_.size())
                Fail("an attribute does not end", start);
        }
    }

    bool FollowsEqualsSign(std::size_t at) const
    {
        do
            --at;
        while (IsSpace(bytes_[at]));
        return bytes_[at] == '=';
    }

    /// Names are short: a loop beats a call.
    bool IsSame(std::size_t left, std::size_t right, std::size_t length) const
    {
        const char* bytes = bytes_.data();
        for (std::size_t i = 0; i < length; ++i)
            if (bytes[left + i] != bytes[right + i])
                return false;
        return true;
    }

    std::size_t OpenElement(std::size_t at)
    {
        if (parent_ == noParent && !elements_.empty())
            Fail("it has a second root element", at);
        if (elements_.size() >= mostElements_)
            Fail("it has too many elements", at);
        const std::size_t nameEnd = NameEnd(at + 1);
        const std::size_t tagEnd = TagEnd(nameEnd);
        // A "/" that belongs to a value can't stand there: a value ends with its quote.
        const bool isEmpty = bytes_[tagEnd - 1] == '/';
        const auto index = static_cast<std::uint32_t>(elements_.size());
        const auto after = static_cast<std::uint32_t>(tagEnd + 1);
        elements_.push_back({static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(nameEnd), after, after, after,
                             parent_, index + 1});
        if (!isEmpty)
            parent_ = index;
        return after;
    }

    std::size_t CloseElement(std::size_t at)
    {
        if (parent_ == noParent)
            Fail("an end tag has no start tag", at);
        Element& element = elements_[parent_];
        const std::size_t nameLength = element.nameEnd - element.begin - 1;
        if (bytes_.size() - at - 2 < nameLength || !IsSame(at + 2, element.begin + 1, nameLength))
            Fail("an end tag does not fit its start tag", at);
        std::size_t end = at + 2 + nameLength;
        while (end < bytes_.size() && IsSpace(bytes_[end]))
            ++end;
        if (end == bytes_.size() || bytes_[end] != '>')
            Fail("an end tag does not fit its start tag", at);
        element.contentEnd = static_cast<std::uint32_t>(at);
        element.end = static_cast<std::uint32_t>(end + 1);
        element.subtreeEnd = static_cast<std::uint32_t>(elements_.size());
        parent_ = element.parent;
        return end + 1;
    }

    std::string_view bytes_;
    std::string_view part_;
    std::size_t mostElements_;
    std::vector<Element>& elements_;
    MarkupMarks marks_;
    std::uint32_t parent_ = noParent;
};

namespace
{

/// Memory of the last document on this thread, for the next one: a run reads one part after the other.
template <class Element>
std::vector<Element>& SpareIndex()
{
    static thread_local std::vector<Element> spare;
    return spare;
}

// In bytes. The index of a huge part is given back and not held for the rest of a run.
constexpr std::size_t keptIndexBytes = 1u << 20;

}  // namespace

XmlDocument::XmlDocument(std::string_view bytes, std::string_view part, const Limits& limits) : bytes_(bytes)
{
    // Offsets in the index have 32 bits.
    if (bytes.size() >= std::numeric_limits<std::uint32_t>::max())
        throw Damage(part, "it is too large");
    elements_ = std::exchange(SpareIndex<Element>(), {});
    elements_.clear();
    Indexer(bytes_, part, limits.documentBytes / sizeof(Element), elements_).Run();

    VisitAttributes(0, [&](std::string_view name, std::string_view value) {
        if (name == "xmlns")
            default_ = NamespaceOf(Decoded(value));
        else if (name.starts_with("xmlns:"))
            prefixes_[static_cast<std::size_t>(NamespaceOf(Decoded(value)))] = name.substr(6);
        return false;
    });
    ForgetReboundPrefixes();
}

XmlDocument::XmlDocument(const XmlDocument& other, std::string_view bytes)
    : bytes_(bytes), elements_(other.elements_), default_(other.default_)
{
    // Prefixes are views of the root's start tag. Decoded attribute values are made again when they are asked for.
    for (std::size_t ns = 0; ns < prefixes_.size(); ++ns)
        if (const std::string_view prefix = other.prefixes_[ns]; !prefix.empty())
            prefixes_[ns] = bytes.substr(static_cast<std::size_t>(prefix.data() - other.bytes_.data()), prefix.size());
}

/// An element below the root may bind one of the root's prefixes to another namespace. Then that prefix tells nothing,
/// and each name with it is resolved. Text that looks like a declaration does no harm.
void XmlDocument::ForgetReboundPrefixes()
{
    constexpr std::string_view declaration = "xmlns:";
    std::size_t at = bytes_.find(declaration, elements_[0].contentBegin);
    for (; at != std::string_view::npos; at = bytes_.find(declaration, at)) {
        at += declaration.size();
        const std::size_t nameEnd = std::min(bytes_.find_first_of("= \t\r\n", at), bytes_.size());
        const auto usual = std::ranges::find(prefixes_, bytes_.substr(at, nameEnd - at));
        const std::size_t open = usual == prefixes_.end() ? bytes_.npos : bytes_.find_first_of("\"'", nameEnd);
        if (open == std::string_view::npos)
            continue;
        const std::string_view uri = bytes_.substr(open + 1, bytes_.find(bytes_[open], open + 1) - open - 1);
        if (NamespaceOf(Decoded(uri)) != static_cast<Ns>(usual - prefixes_.begin()))
            *usual = {};
    }
}

XmlDocument::~XmlDocument()
{
    if (elements_.capacity() * sizeof(Element) <= keptIndexBytes)
        SpareIndex<Element>() = std::move(elements_);
}

/// Calls `visit` with name and raw value of each attribute until it gives true.
template <class Visit>
void XmlDocument::VisitAttributes(std::uint32_t index, Visit&& visit) const
{
    const Element& element = elements_[index];
    std::size_t at = element.nameEnd;
    const std::size_t end = element.contentBegin - 1;  // its ">"
    while (at < end) {
        while (at < end && (IsSpace(bytes_[at]) || bytes_[at] == '/'))
            ++at;
        const std::size_t nameBegin = at;
        while (at < end && !endsName[static_cast<unsigned char>(bytes_[at])])
            ++at;
        const std::size_t nameEnd = at;
        while (at < end && bytes_[at] != '"' && bytes_[at] != '\'')
            ++at;
        if (at >= end)
            return;
        const std::size_t valueEnd = bytes_.find(bytes_[at], at + 1);
        if (visit(bytes_.substr(nameBegin, nameEnd - nameBegin), bytes_.substr(at + 1, valueEnd - at - 1)))
            return;
        at = valueEnd + 1;
    }
}

bool XmlDocument::Is(Node node, Ns ns, std::string_view localName) const
{
    if (!node)
        return false;
    const std::string_view name = NameOf(node.index_);
    if (!name.ends_with(localName))
        return false;
    const std::string_view prefix = name.substr(0, name.size() - localName.size());  // with its colon
    const std::string_view usual = prefixes_[static_cast<std::size_t>(ns)];
    if (!usual.empty() && prefix.size() == usual.size() + 1 && prefix.ends_with(':') && prefix.starts_with(usual))
        return true;
    // Only the end of a longer name, as "Fill" is of "a:blipFill".
    if (!prefix.empty() && prefix.find(':') != prefix.size() - 1)
        return false;
    return ResolvePrefix(node, prefix.substr(0, prefix.empty() ? 0 : prefix.size() - 1)) == ns;
}

bool XmlDocument::HasNameBeginning(std::string_view start) const
{
    for (std::uint32_t index = 0; index < elements_.size(); ++index) {
        const Element& element = elements_[index];
        const std::size_t length = element.nameEnd - element.begin - 1;
        if (length >= start.size() && NameOf(index).substr(NameOf(index).find(':') + 1).starts_with(start))
            return true;
    }
    return false;
}

Node XmlDocument::Child(Node parent, Ns ns, std::string_view localName) const
{
    for (const Node child : parent.ChildElements())
        if (Is(child, ns, localName))
            return child;
    return {};
}

std::string_view XmlDocument::Attribute(Node node, std::string_view name) const
{
    std::string_view found;
    if (node)
        VisitAttributes(node.index_, [&](std::string_view attribute, std::string_view value) {
            if (attribute != name)
                return false;
            found = Decoded(value);
            return true;
        });
    return found;
}

/// True when the qualified name of a node's attribute is this one. Attributes without a prefix have no namespace.
bool XmlDocument::IsAttribute(Node node, std::string_view name, Ns ns, std::string_view localName) const
{
    const std::size_t colon = name.find(':');
    return colon != std::string_view::npos && name.substr(colon + 1) == localName &&
           ResolvePrefix(node, name.substr(0, colon)) == ns;
}

std::optional<std::string_view> XmlDocument::Attribute(Node node, Ns ns, std::string_view localName) const
{
    std::optional<std::string_view> found;
    if (node)
        VisitAttributes(node.index_, [&](std::string_view attribute, std::string_view value) {
            if (!IsAttribute(node, attribute, ns, localName))
                return false;
            found = Decoded(value);
            return true;
        });
    return found;
}

std::string_view XmlDocument::AttributeName(Node node, Ns ns, std::string_view localName) const
{
    std::string_view found;
    if (node)
        VisitAttributes(node.index_, [&](std::string_view attribute, std::string_view) {
            if (!IsAttribute(node, attribute, ns, localName))
                return false;
            found = attribute;
            return true;
        });
    return found;
}

void XmlDocument::ForEachAttribute(Node node, const AttributeVisitor& visit) const
{
    VisitAttributes(node.index_, [&](std::string_view name, std::string_view value) {
        visit(name, Decoded(value));
        return false;
    });
}

void XmlDocument::ForEachAttribute(const AttributeVisitor& visit) const
{
    for (std::uint32_t index = 0; index < elements_.size(); ++index)
        ForEachAttribute({this, index}, visit);
}

bool XmlDocument::BooleanAttribute(Node node, std::string_view name, bool absent) const
{
    const std::string_view value = Attribute(node, name);
    return value.empty() ? absent : value == "1" || value == "true" || value == "on";
}

Ns XmlDocument::ResolvePrefix(Node node, std::string_view prefix) const
{
    if (!node)
        return Ns::None;
    for (std::uint32_t index = node.index_; index != noParent; index = elements_[index].parent) {
        if (index == 0 && prefix.empty())
            return default_;
        std::optional<Ns> found;
        VisitAttributes(index, [&](std::string_view name, std::string_view value) {
            if (!name.starts_with("xmlns"))
                return false;
            name.remove_prefix(5);
            if (name.empty() ? !prefix.empty() : name[0] != ':' || name.substr(1) != prefix)
                return false;
            found = NamespaceOf(Decoded(value));
            return true;
        });
        if (found)
            return *found;
    }
    return Ns::None;
}

std::optional<std::string_view> XmlDocument::DeclarationAt(Node node, std::string_view attribute) const
{
    std::optional<std::string_view> found;
    for (std::uint32_t index = node.index_; index != noParent && !found; index = elements_[index].parent)
        VisitAttributes(index, [&](std::string_view name, std::string_view value) {
            if (name == attribute)
                found = Decoded(value);
            return found.has_value();
        });
    return found;
}

/// An attribute value as it reads: references decoded, white space as blanks (XML 1.0 3.3.3).
std::string_view XmlDocument::Decoded(std::string_view value) const
{
    const auto reads = [](char c) { return c != '&' && !(c >= '\t' && c <= '\r'); };
    if (std::ranges::all_of(value, reads))
        return value;
    return decoded_.emplace_back(DecodeAttribute(value));
}

ElementRange XmlDocument::RangeOf(Node node) const
{
    const Element& element = elements_[node.index_];
    return {element.begin, element.contentBegin, element.contentEnd, element.end, NameOf(node.index_)};
}

Node XmlDocument::ElementAt(std::size_t offset) const
{
    const auto found = std::ranges::lower_bound(elements_, offset, {}, &Element::begin);
    if (found == elements_.end() || found->begin != offset)
        return {};
    return {this, static_cast<std::uint32_t>(found - elements_.begin())};
}

void XmlDocument::AppendTextOf(Node node, String& text) const
{
    if (!node)
        return;
    const Element& element = elements_[node.index_];
    AppendContent(bytes_.substr(element.contentBegin, element.contentEnd - element.contentBegin), text,
                  InnerElements::Skipped);
}

String XmlDocument::TextOf(Node node) const
{
    String text;
    AppendTextOf(node, text);
    return text;
}

}  // namespace tessarine::builtin
