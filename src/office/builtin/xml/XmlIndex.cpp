#include "office/builtin/xml/XmlDocument.h"

#include <algorithm>
#include <array>
#include <limits>
#include <set>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/MarkupMarks.h"
#include "office/builtin/xml/XmlCharacters.h"
#include "office/builtin/xml/XmlScanner.h"

// The part of XmlDocument that reads the bytes and proves them well-formed.

namespace tessarine::builtin
{

namespace
{

bool IsNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
           static_cast<unsigned char>(c) >= 0x80;
}

/// Characters of names (XML 1.0 2.3), where all beyond ASCII are taken for such.
constexpr auto isInNames = [] {
    std::array<bool, 256> is{};
    for (std::size_t c = 0; c < is.size(); ++c)
        is[c] = c >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                c == ':' || c == '-' || c == '.';
    return is;
}();

constexpr std::uint32_t noParent = std::numeric_limits<std::uint32_t>::max();

/// The one pass over the bytes. `Element` is the document's own.
template <class Element>
class Indexer
{
public:
    Indexer(std::string_view bytes, std::string_view part, const Limits& limits, std::vector<Element>& elements,
            std::vector<std::uint32_t>& declaring)
        : bytes_(bytes),
          part_(part),
          limits_(limits),
          mostElements_(
              std::min<std::size_t>(limits.elements, limits.denseElements + bytes.size() / limits.bytesForElement)),
          elements_(elements),
          declaring_(declaring),
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
        while (at < bytes_.size() && !EndsName(bytes_[at]))
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
        // A name ends in front of every mark, so that none is passed over.
        for (std::size_t mark = marks_.Next();; mark = marks_.Next()) {
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
        const std::string_view name = IsBlankAndName(begin, quote)
                                          ? std::string_view(bytes_.data() + begin + 1, quote - begin - 2)
                                          : NameInSpace(begin, quote);
        if (name.starts_with("xmlns")) [[unlikely]]
            NoteDeclaration();
        if (!attributes_.Add(name))
            Fail("an attribute is there twice", static_cast<std::size_t>(name.data() - bytes_.data()));
    }

    /// The element whose tag is read declares a namespace.
    void NoteDeclaration()
    {
        const auto index = static_cast<std::uint32_t>(elements_.size());
        if (declaring_.empty() || declaring_.back() != index)
            declaring_.push_back(index);
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

    /// The name in any other form.
    std::string_view NameInSpace(std::size_t begin, std::size_t quote) const
    {
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
        return bytes_.substr(name, end - name);
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
            if (count_ < std::ssize(few_)) [[likely]] {
                few_[static_cast<std::size_t>(count_++)] = name;
                return isNewKind ||
                       std::find(few_.begin(), few_.begin() + count_ - 1, name) == few_.begin() + count_ - 1;
            }
            return AddToMany(name);
        }

    private:
        bool AddToMany(std::string_view name)
        {
            // A tag may be made to hold as many as a part has room for.
            if (many_.empty())
                many_.insert(few_.begin(), few_.end());
            return many_.insert(name).second;
        }

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
        // Most tags have no attributes.
        const std::string_view rest = bytes_.substr(nameEnd, 2);
        const std::size_t tagEnd = rest.starts_with('>') || rest == "/>" ? marks_.Next() : TagEnd(nameEnd);
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
    std::vector<std::uint32_t>& declaring_;
    MarkupMarks marks_;
    std::uint32_t parent_ = noParent;
    std::uint32_t depth_ = 0;
    AttributeNames attributes_;  // of the tag that is read
    std::vector<Literal> literals_;
};

}  // namespace

void XmlDocument::MakeIndex(std::string_view part, const Limits& limits)
{
    Indexer(bytes_, part, limits, elements_, declaring_).Run();
}

}  // namespace tessarine::builtin
