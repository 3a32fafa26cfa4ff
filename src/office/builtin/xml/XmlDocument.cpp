#include "office/builtin/xml/XmlDocument.h"

#include <algorithm>
#include <array>
#include <limits>
#include <set>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/MarkupMarks.h"
#include "office/builtin/xml/XmlCharacters.h"
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

/// Characters of names (XML 1.0 2.3), where all beyond ASCII are taken for such.
constexpr auto isInNames = [] {
    std::array<bool, 256> is{};
    for (std::size_t c = 0; c < is.size(); ++c)
        is[c] = c >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                c == ':' || c == '-' || c == '.';
    return is;
}();

constexpr std::uint32_t noParent = std::numeric_limits<std::uint32_t>::max();

}  // namespace

/// The one pass over the bytes.
class XmlDocument::Indexer
{
public:
    Indexer(std::string_view bytes, std::string_view part, const Limits& limits, std::vector<Element>& elements)
        : bytes_(bytes),
          part_(part),
          limits_(limits),
          mostElements_(
              std::min<std::size_t>(limits.elements, limits.denseElements + bytes.size() / limits.bytesForElement)),
          elements_(elements),
          marks_(bytes)
    {
        // A large index that grows would take twice its memory at times.
        constexpr std::size_t large = 1u << 20;
        if (bytes.size() > large)
            elements.reserve(std::min(static_cast<std::size_t>(std::ranges::count(bytes, '<')), mostElements_));
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
        CheckAllCharacters();
    }

private:
    [[noreturn]] void Fail(std::string_view what, std::size_t at) const { throw Damage(part_, what, at); }

    /// The offset after the end of a comment, a CDATA section or an instruction.
    std::size_t OffsetAfter(std::string_view end, std::size_t at)
    {
        const std::size_t found = bytes_.find(end, at);
        if (found == std::string_view::npos)
            Fail("its markup does not end", at);
        // Most parts have nothing of the kind but the declaration, which holds no "&".
        if (bytes_.substr(at, found - at).find('&') != std::string_view::npos)
            literals_.push_back({at, found});
        return found + end.size();
    }

    void CheckAllCharacters() const
    {
        std::size_t at = 0;
        const auto check = [&](std::size_t to, Ampersands ampersands) {
            const CharacterCheck checked = CheckCharacters(bytes_, at, to, ampersands);
            if (checked.fault != nullptr)
                Fail(checked.fault, checked.end);
            at = checked.end;
        };
        for (const Literal& literal : literals_) {
            check(literal.begin, Ampersands::BeginReferences);
            check(literal.end, Ampersands::AreText);
        }
        check(bytes_.size(), Ampersands::BeginReferences);
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
        while (mark < bytes_.size() && bytes_[mark] != '<') {
            // XML 1.0 2.4
            if (bytes_[mark] == '>' && mark >= at + 2 && bytes_[mark - 1] == ']' && bytes_[mark - 2] == ']')
                Fail("its text holds the end of character data", mark);
            mark = marks_.Next();
        }
        return mark;
    }

    /// The ">" of a start tag whose name ends at `at`. Raises for attributes that are not well-formed.
    std::size_t TagEnd(std::size_t at)
    {
        const std::size_t start = at;
        std::uint32_t attributes = 0;
        attributes_.Clear();
        for (std::size_t mark = marks_.NextFrom(at);; mark = marks_.Next()) {
            if (mark == bytes_.size())
                Fail("a tag does not end", start);
            const char stop = bytes_[mark];
            if (stop == '>') {
                // All that may be left is white space, and the "/" of an empty-element tag.
                const std::size_t end = bytes_[mark - 1] == '/' && mark > at ? mark - 1 : mark;
                if (!IsBlank(at, end))
                    Fail("an attribute has no value", at);
                return mark;
            }
            if (stop == '<')
                Fail("a tag holds another", mark);
            if (++attributes > limits_.attributes)
                Fail("an element has too many attributes", start);
            ReadAttributeName(at, mark);
            std::size_t close = marks_.Next();
            while (close < bytes_.size() && bytes_[close] != stop) {
                if (bytes_[close] == '<')
                    Fail("an attribute holds a tag", close);
                close = marks_.Next();
            }
            if (close == bytes_.size())
                Fail("an attribute does not end", start);
            at = close + 1;
        }
    }

    bool IsBlank(std::size_t begin, std::size_t end) const
    {
        while (begin < end && IsSpace(bytes_[begin]))
            ++begin;
        return begin == end;
    }

    /// What stands between the tag so far and the quote of a value: white space, a name that is new to the tag, "=".
    void ReadAttributeName(std::size_t begin, std::size_t quote)
    {
        if (IsBlankAndName(begin, quote)) {
            if (!attributes_.Add(bytes_.substr(begin + 1, quote - begin - 2)))
                Fail("an attribute is there twice", begin + 1);
            return;
        }
        const auto skipSpaceBack = [&](std::size_t at) {
            while (at > begin && IsSpace(bytes_[at - 1]))
                --at;
            return at;
        };
        std::size_t end = skipSpaceBack(quote);
        if (end == begin || bytes_[end - 1] != '=')
            Fail("an attribute has no name", quote);
        end = skipSpaceBack(end - 1);
        std::size_t name = end;
        while (name > begin && isInNames[static_cast<unsigned char>(bytes_[name - 1])])
            --name;
        if (name == end || name == begin || !IsNameStart(bytes_[name]) || !IsBlank(begin, name))
            Fail("an attribute has no name", quote);
        if (!attributes_.Add(bytes_.substr(name, end - name)))
            Fail("an attribute is there twice", name);
    }

    /// The usual form: one blank, a name, "=".
    bool IsBlankAndName(std::size_t begin, std::size_t quote) const
    {
        const char* const bytes = bytes_.data();
        if (quote < begin + 3 || bytes[begin] != ' ' || bytes[quote - 1] != '=' || !IsNameStart(bytes[begin + 1]))
            return false;
        for (std::size_t at = begin + 2; at < quote - 1; ++at)
            if (!isInNames[static_cast<unsigned char>(bytes[at])])
                return false;
        return true;
    }

    /// The names of a tag's attributes.
    class AttributeNames
    {
    public:
        void Clear()
        {
            count_ = 0;
            if (!many_.empty())
                many_.clear();
        }

        /// False for a name that is there already.
        bool Add(std::string_view name)
        {
            // Most tags have one attribute, which is like no other.
            if (count_ == 0) {
                few_[0] = name;
                count_ = 1;
                return true;
            }
            if (count_ == 1)
                seen_ = KindOf(few_[0]);
            // Nearly always the first of its kind: one bit of this tells then, and no name need be compared.
            const std::uint64_t kind = KindOf(name);
            const bool isNewKind = (seen_ & kind) == 0;
            seen_ |= kind;
            if (count_ < std::ssize(few_)) {
                few_[static_cast<std::size_t>(count_++)] = name;
                return isNewKind ||
                       std::find(few_.begin(), few_.begin() + count_ - 1, name) == few_.begin() + count_ - 1;
            }
            // A tag may be made to hold as many as a part has room for.
            if (many_.empty())
                many_.insert(few_.begin(), few_.end());
            return many_.insert(name).second;
        }

    private:
        static std::uint64_t KindOf(std::string_view name)
        {
            const auto mixed = static_cast<std::size_t>(name.front()) + 3 * static_cast<std::size_t>(name.back());
            return std::uint64_t{1} << ((mixed + 7 * name.size()) & 63);
        }

        std::array<std::string_view, 16> few_;
        std::ptrdiff_t count_ = 0;
        std::set<std::string_view> many_;  // all of them, once there are more
        std::uint64_t seen_ = 0;           // a bit for each kind of name
    };

    /// Where an "&" is text.
    struct Literal {
        std::size_t begin;
        std::size_t end;
    };

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
        if (!isEmpty) {
            parent_ = index;
            if (++depth_ > limits_.depth)
                Fail("its elements are nested too deeply", at);
        }
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
        --depth_;
        return end + 1;
    }

    std::string_view bytes_;
    std::string_view part_;
    const Limits& limits_;
    std::size_t mostElements_;
    std::vector<Element>& elements_;
    MarkupMarks marks_;
    std::uint32_t parent_ = noParent;
    std::uint32_t depth_ = 0;
    AttributeNames attributes_;  // of the tag that is read
    std::vector<Literal> literals_;
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
    Indexer(bytes_, part, limits, elements_).Run();

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
    : bytes_(bytes),
      elements_(other.elements_),
      default_(other.default_),
      declaresInRootAlone_(other.declaresInRootAlone_),
      bindsDefaultOnce_(other.bindsDefaultOnce_)
{
    // Prefixes are views of the root's start tag. Decoded attribute values are made again when they are asked for.
    for (std::size_t ns = 0; ns < prefixes_.size(); ++ns)
        if (const std::string_view prefix = other.prefixes_[ns]; !prefix.empty())
            prefixes_[ns] = bytes.substr(static_cast<std::size_t>(prefix.data() - other.bytes_.data()), prefix.size());
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

template <class Visit>
void XmlDocument::VisitDeclaring(std::uint32_t from, Visit&& visit) const
{
    // Both go front to back: the word in the bytes, and the element that begins last in front of it.
    std::uint32_t index = from;
    for (std::size_t at = elements_[from].begin; (at = bytes_.find("xmlns", at)) != std::string_view::npos;) {
        while (index + 1 < elements_.size() && elements_[index + 1].begin < at)
            ++index;
        const std::size_t tagEnd = elements_[index].contentBegin;
        if (at < tagEnd)
            visit(index);
        // In text the word means nothing.
        at = std::max(tagEnd, at + 1);
    }
}

/// An element below the root may bind one of the root's prefixes to another namespace. Then that prefix tells nothing,
/// and each name with it is resolved.
void XmlDocument::ForgetReboundPrefixes()
{
    if (elements_.size() == 1)
        return;
    VisitDeclaring(1, [&](std::uint32_t index) {
        VisitAttributes(index, [&](std::string_view name, std::string_view value) {
            bindsDefaultOnce_ = bindsDefaultOnce_ && name != "xmlns";
            declaresInRootAlone_ = declaresInRootAlone_ && !name.starts_with("xmlns");
            if (!name.starts_with("xmlns:"))
                return false;
            const auto usual = std::ranges::find(prefixes_, name.substr(6));
            if (usual != prefixes_.end() && NamespaceOf(value) != static_cast<Ns>(usual - prefixes_.begin()))
                *usual = {};
            return false;
        });
    });
}

/// A declaration of a namespace, and the elements that it holds for.
struct XmlDocument::Declaration {
    std::string_view name;   // "xmlns" or "xmlns:x"
    std::string_view value;  // decoded
    std::uint32_t element;   // index; it holds for this one
    std::uint32_t end;       // and up to this one
};

/// What each name means where: for each name the places in the document at which its meaning changes, so that no
/// question costs a walk over the elements around.
class XmlDocument::Declarations
{
public:
    explicit Declarations(const XmlDocument& document)
    {
        document.VisitDeclaring(0, [&](std::uint32_t index) {
            document.VisitAttributes(index, [&](std::string_view name, std::string_view value) {
                if (name == "xmlns" || name.starts_with("xmlns:"))
                    declarations_.push_back(
                        {name, document.Decoded(value), index, document.elements_[index].subtreeEnd});
                return false;
            });
        });
        std::ranges::stable_sort(declarations_, {}, &Declaration::name);
        changes_.reserve(declarations_.size() * 2);
        std::vector<std::uint32_t> around;  // declarations of one name that hold at a place, the innermost last
        for (std::uint32_t i = 0; i < declarations_.size(); ++i) {
            const Declaration& declaration = declarations_[i];
            const bool isNewName = i == 0 || declarations_[i - 1].name != declaration.name;
            CloseUpTo(isNewName ? atEnd : declaration.element, around);
            // Of two in one element the first counts.
            if (!isNewName && declarations_[i - 1].element == declaration.element)
                continue;
            around.push_back(i);
            Put({declaration.element, i, declaration.name});
        }
        CloseUpTo(atEnd, around);
    }

    /// The innermost one of a name at an element, or null.
    const Declaration* Find(std::string_view name, std::uint32_t element) const
    {
        const auto isAfter = [](const std::pair<std::string_view, std::uint32_t>& place, const Change& change) {
            return place.first != change.name ? place.first < change.name : place.second < change.from;
        };
        const auto next = std::upper_bound(changes_.begin(), changes_.end(), std::pair(name, element), isAfter);
        if (next == changes_.begin())
            return nullptr;
        const Change& last = *std::prev(next);
        return last.name == name && last.declaration != nothing ? &declarations_[last.declaration] : nullptr;
    }

private:
    static constexpr std::uint32_t nothing = std::numeric_limits<std::uint32_t>::max();
    static constexpr std::uint32_t atEnd = std::numeric_limits<std::uint32_t>::max();

    struct Change {
        std::uint32_t from;         // element
        std::uint32_t declaration;  // index of what holds from there on
        std::string_view name;
    };

    void Put(const Change& change)
    {
        if (!changes_.empty() && changes_.back().name == change.name && changes_.back().from == change.from)
            changes_.pop_back();
        changes_.push_back(change);
    }

    void CloseUpTo(std::uint32_t element, std::vector<std::uint32_t>& around)
    {
        while (!around.empty() && declarations_[around.back()].end <= element) {
            const Declaration& closed = declarations_[around.back()];
            around.pop_back();
            Put({closed.end, around.empty() ? nothing : around.back(), closed.name});
        }
    }

    std::vector<Declaration> declarations_;  // by name, those of one name in document order
    std::vector<Change> changes_;            // by name and place
};

const XmlDocument::Declaration* XmlDocument::FindDeclaration(Node node, std::string_view attribute) const
{
    if (!declarations_)
        declarations_ = std::make_unique<Declarations>(*this);
    return declarations_->Find(attribute, node.index_);
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
    if (prefix.empty()) {
        if (bindsDefaultOnce_)
            return default_;
        const Declaration* const found = FindDeclaration(node, "xmlns");
        return found == nullptr ? Ns::None : NamespaceOf(found->value);
    }
    // What the root binds once needs no search.
    if (const auto usual = std::ranges::find(prefixes_, prefix); usual != prefixes_.end())
        return static_cast<Ns>(usual - prefixes_.begin());
    const Declaration* const found = FindDeclaration(node, "xmlns:" + std::string(prefix));
    return found == nullptr ? Ns::None : NamespaceOf(found->value);
}

std::optional<std::string_view> XmlDocument::DeclarationAt(Node node, std::string_view attribute) const
{
    const Declaration* const found = FindDeclaration(node, attribute);
    return found == nullptr ? std::nullopt : std::optional(found->value);
}

/// An attribute value as it reads: references decoded, white space as blanks (XML 1.0 3.3.3).
std::string_view XmlDocument::Decoded(std::string_view value) const
{
    // Most values are a few characters; those of declarations, of which each part has some, are long.
    constexpr std::size_t few = 16;
    constexpr std::string_view special = "&\t\n\r";
    const auto isSpecial = [&](char c) { return c == '&' || (c >= '\t' && c <= '\r'); };
    const auto holds = [&](char c) { return value.find(c) != std::string_view::npos; };
    if (value.size() <= few ? std::ranges::none_of(value, isSpecial) : std::ranges::none_of(special, holds))
        return value;
    return decoded_.emplace_back(DecodeAttribute(value));
}

ElementRange XmlDocument::RangeOf(Node node) const
{
    const Element& element = elements_[node.index_];
    return {element.begin, element.contentBegin, element.contentEnd, element.end, NameOf(node.index_)};
}

Node XmlDocument::ParentOf(Node node) const
{
    const std::uint32_t parent = elements_[node.index_].parent;
    return parent == noParent ? Node() : NodeAt(parent);
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
