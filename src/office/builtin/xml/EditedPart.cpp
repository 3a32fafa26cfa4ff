#include "office/builtin/xml/EditedPart.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "office/builtin/limits/Damage.h"

namespace tessarine::builtin
{

namespace
{

/// Where the edits and what stands between them lie in the bytes before and after.
class Offsets
{
public:
    /// The edits in the order of their places, none of them meeting another.
    explicit Offsets(const std::vector<ByteEdit>& edits) : edits_(edits)
    {
        std::size_t grown = 0;  // which may wrap below 0 and comes back
        for (const ByteEdit& edit : edits) {
            newBegins_.push_back(edit.begin + grown);
            grown += edit.text.size() - (edit.end - edit.begin);
        }
    }

    const std::vector<ByteEdit>& Edits() const { return edits_; }
    std::size_t NewBegin(std::size_t edit) const { return newBegins_[edit]; }
    std::size_t NewEnd(std::size_t edit) const { return newBegins_[edit] + edits_[edit].text.size(); }

    /// Where a "<" stands now; what was put in right at it stands in front. One inside of an edit has no place.
    std::size_t OfStart(std::size_t offset) const
    {
        const auto after = std::ranges::upper_bound(edits_, offset, {}, &ByteEdit::begin);
        return Moved(offset, static_cast<std::size_t>(after - edits_.begin()));
    }
    /// The same for the place after a ">"; what was put in right there stands after it.
    std::size_t OfEnd(std::size_t offset) const
    {
        const auto after = std::ranges::lower_bound(edits_, offset, {}, &ByteEdit::begin);
        return Moved(offset, static_cast<std::size_t>(after - edits_.begin()));
    }

private:
    /// `edit` is the number of edits that begin before.
    std::size_t Moved(std::size_t offset, std::size_t edit) const
    {
        return edit == 0 ? offset : NewEnd(edit - 1) + (offset - edits_[edit - 1].end);
    }

    const std::vector<ByteEdit>& edits_;
    std::vector<std::size_t> newBegins_;
};

/// Goes through the elements before and after side by side. Raises what is wrong as the text of a failure.
class Comparison
{
public:
    Comparison(const XmlDocument& before, const XmlDocument& after, const Offsets& offsets, std::string_view part)
        : before_(before), after_(after), offsets_(offsets), part_(part)
    {
    }

    void Run()
    {
        for (std::size_t edit = 0; edit < offsets_.Edits().size(); ++edit) {
            CompareUntil(offsets_.Edits()[edit].begin, offsets_.NewBegin(edit));
            PassEdit(edit);
        }
        CompareUntil(before_.Bytes().size(), after_.Bytes().size());
    }

private:
    [[noreturn]] void Fail(std::string_view what) const { throw FailedEdit(part_, what); }

    bool HasOldBefore(std::size_t end) const
    {
        return old_ < before_.ElementCount() && before_.RangeOf(old_).begin < end;
    }
    bool HasNewBefore(std::size_t end) const
    {
        return new_ < after_.ElementCount() && after_.RangeOf(new_).begin < end;
    }

    /// The elements in front of the next edit.
    void CompareUntil(std::size_t oldEnd, std::size_t newEnd)
    {
        for (; HasOldBefore(oldEnd); ++old_, ++new_) {
            if (!HasNewBefore(newEnd))
                Fail("an element would be lost");
            Compare(before_.RangeOf(old_), after_.RangeOf(new_));
        }
        if (HasNewBefore(newEnd))
            Fail("text would become an element");
    }

    void Compare(const ElementRange& before, const ElementRange& after) const
    {
        // Names need no look: they are the bytes that were there. With equal ends the one is in the same elements as
        // the other.
        if (offsets_.OfStart(before.begin) != after.begin || offsets_.OfEnd(before.end) != after.end)
            Fail("an element would begin or end elsewhere");
    }

    /// What went and what came with an edit.
    void PassEdit(std::size_t number)
    {
        const ByteEdit& edit = offsets_.Edits()[number];
        const std::size_t newEnd = offsets_.NewEnd(number);
        if (HasOldBefore(edit.end) && before_.RangeOf(old_).begin == edit.begin &&
            before_.RangeOf(old_).contentBegin == edit.end && !before_.RangeOf(old_).IsEmptyTag()) {
            PassStartTag(offsets_.NewBegin(number), newEnd);
            return;
        }
        for (; HasOldBefore(edit.end); ++old_)
            if (before_.RangeOf(old_).end > edit.end)
                Fail("half an element would be replaced");
        for (; HasNewBefore(newEnd); ++new_)
            if (after_.RangeOf(new_).end > newEnd)
                Fail("a new element would not end");
    }

    void PassStartTag(std::size_t newBegin, std::size_t newEnd)
    {
        const ElementRange before = before_.RangeOf(old_++);
        if (!HasNewBefore(newEnd))
            Fail("an element would be lost");
        const ElementRange after = after_.RangeOf(new_++);
        if (after.begin != newBegin || after.contentBegin != newEnd || after.name != before.name ||
            after.end != offsets_.OfEnd(before.end) || HasNewBefore(newEnd))
            Fail("a tag would not stay one tag");
    }

    const XmlDocument& before_;
    const XmlDocument& after_;
    const Offsets& offsets_;
    std::string_view part_;
    std::size_t old_ = 0;  // number of the next element
    std::size_t new_ = 0;
};

/// The new bytes as a document; a failure says that they came from a change.
XmlDocument ReadAgain(std::string_view bytes, std::string_view part, const Limits& limits)
try {
    return XmlDocument(bytes, part, limits);
} catch (const Failure& failure) {
    throw FailedEdit(part, ToUtf8(failure.description));
}

}  // namespace

EditedPart::EditedPart(const XmlDocument& before, std::vector<ByteEdit> edits, std::string_view part,
                       const Limits& limits)
    : bytes_(ApplyEdits(before.Bytes(), edits)), document_(ReadAgain(bytes_, part, limits))
{
    if (const auto fault = NamespaceFault(document_))
        throw NamespaceFault(before) ? Damage(part, *fault) : FailedEdit(part, *fault);
    std::ranges::stable_sort(edits, {}, &ByteEdit::begin);
    Comparison(before, document_, Offsets(edits), part).Run();
}

namespace
{

/// The namespaces that are declared at a place of a document, front to back.
class Declarations
{
public:
    /// An element begins: what it declares holds up to its end.
    void Enter(const XmlDocument& document, Node element)
    {
        LeaveUpTo(document.OffsetOf(element));
        Scope scope{document.RangeOf(element).end, {}};
        document.ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
            if (!name.starts_with("xmlns:"))
                return;
            const std::string_view prefix = name.substr(6);
            uris_[prefix].push_back(value);
            scope.prefixes.push_back(prefix);
        });
        if (!scope.prefixes.empty())
            scopes_.push_back(std::move(scope));
    }

    /// What a prefix stands for; "" for one that is not declared, which no declaration gives.
    std::string_view UriOf(std::string_view prefix) const
    {
        if (prefix == "xml")
            return "http://www.w3.org/XML/1998/namespace";
        const auto found = uris_.find(prefix);
        return found == uris_.end() || found->second.empty() ? std::string_view() : found->second.back();
    }

private:
    struct Scope {
        std::size_t end;  // of the element
        std::vector<std::string_view> prefixes;
    };

    void LeaveUpTo(std::size_t offset)
    {
        while (!scopes_.empty() && scopes_.back().end <= offset) {
            for (const std::string_view prefix : scopes_.back().prefixes)
                uris_[prefix].pop_back();
            scopes_.pop_back();
        }
    }

    std::vector<Scope> scopes_;
    std::unordered_map<std::string_view, std::vector<std::string_view>> uris_;  // the innermost last
};

std::string_view PrefixOf(std::string_view name)
{
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

/// An element or attribute with a prefix that `declarations` don't know, or an attribute that is there twice.
std::optional<std::string> FaultOfElement(const XmlDocument& document, Node element, const Declarations& declarations)
{
    std::optional<std::string> fault;
    const auto check = [&](std::string_view name) {
        const std::string_view prefix = PrefixOf(name);
        if (!prefix.empty() && declarations.UriOf(prefix).empty())
            fault = "the prefix of \"" + std::string(name) + "\" is not declared";
    };
    check(element.Name());
    std::set<std::pair<std::string_view, std::string_view>> names;
    document.ForEachAttribute(element, [&](std::string_view name, std::string_view) {
        if (name == "xmlns" || name.starts_with("xmlns:") || PrefixOf(name).empty())
            return;
        check(name);
        if (!names.emplace(declarations.UriOf(PrefixOf(name)), LocalName(name)).second)
            fault = "the attribute \"" + std::string(name) + "\" is there twice";
    });
    return fault;
}

}  // namespace

std::optional<std::string> NamespaceFault(const XmlDocument& document)
{
    Declarations declarations;
    std::string_view lastPrefix;  // of the last element, declared by the root
    for (std::size_t number = 0; number < document.ElementCount(); ++number) {
        const Node element = document.NodeAt(number);
        const bool isUsual = number > 0 && document.DeclaresInRootAlone();
        if (!isUsual)
            declarations.Enter(document, element);
        // Nearly all elements have the same prefix as the one in front, and attributes without any.
        const ElementRange range = document.RangeOf(element);
        const std::string_view prefix = PrefixOf(range.name);
        if (isUsual && prefix == lastPrefix && document.AttributesOf(range).find(':') == std::string_view::npos)
            continue;
        if (auto fault = FaultOfElement(document, element, declarations))
            return fault;
        lastPrefix = isUsual ? prefix : std::string_view();
    }
    return std::nullopt;
}

}  // namespace tessarine::builtin
