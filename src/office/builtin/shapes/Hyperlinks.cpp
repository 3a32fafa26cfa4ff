#include "office/builtin/shapes/Hyperlinks.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/reader/Refusals.h"
#include "office/builtin/shapes/HyperlinkAddress.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view fileAction = "ppaction://hlinkfile";

/// Which link elements are members of Hyperlinks, by their action: plain links, files, other presentations and jumps to
/// a slide. Programs, macros, shows and the like are action settings.
bool IsMember(const LinkRecord& link)
{
    if (link.elements.empty())
        return false;
    const std::string_view action = link.target.action;
    if (action.empty())
        return !link.target.relationshipId.empty() || !link.target.invalidUrl.empty();
    return action.starts_with(fileAction) || action.starts_with("ppaction://hlinkpres") ||
           action.starts_with("ppaction://hlinksldjump");
}

/// A link that is gone keeps its index.
void Clear(LinkRecord& link)
{
    link.target = {};
    link.elements.clear();
}

}  // namespace

std::vector<std::size_t> Hyperlinks::Members()
{
    std::vector<std::size_t> members;
    const std::vector<LinkRecord>& links = All();
    for (std::size_t i = 0; i < links.size(); ++i)
        if (IsMember(links[i]))
            members.push_back(i);
    return members;
}

String Hyperlinks::Address(std::size_t index)
{
    const LinkTarget& target = At(index).target;
    if (target.relationshipId.empty())
        return FromUtf8(target.invalidUrl);
    const Relationship* relationship = edits_.Links().Find(target.relationshipId);
    if (relationship == nullptr || !relationship->external)
        return {};
    return ReadTarget(relationship->target, true).address;
}

void Hyperlinks::PutAddress(std::size_t index, const String& address)
{
    const String before = Address(index);
    if (address == before)
        return;
    LinkRecord& link = At(index);
    LinkTarget target = link.target;
    if (target.relationshipId.empty()) {
        if (address.empty()) {
            Remove(link);
            return;
        }
        CheckAddressLength(address, true);
        target.invalidUrl = ToUtf8(address);
        Retarget(link, target);
        return;
    }
    const Relationship* relationship = edits_.Links().Find(target.relationshipId);
    if (relationship == nullptr || !relationship->external)
        throw Failure(FailureNumber::InvalidRequest, u"A link to a place inside the presentation takes no address");
    if (address.empty() && ReadTarget(relationship->target, true).fragment.empty()) {
        Remove(link);
        return;
    }
    target.relationshipId =
        uses_.PutTarget(target.relationshipId, link.elements.size(), WriteTarget(relationship->target, address, true));
    // A link to a file says so by its action; PowerPoint goes by it.
    const bool isFile = !address.empty() && IsFileAddress(address);
    const bool wasFile = !before.empty() && IsFileAddress(before);
    if ((isFile && !wasFile && target.action.empty()) || (!isFile && wasFile && !target.action.empty()))
        target.action = isFile ? fileAction : "";
    Retarget(link, target);
}

void Hyperlinks::TextChanged(std::size_t body)
{
    // Looked at when the links are asked for: a text may be edited many times before.
    if (links_)
        changed_.insert(body);
}

namespace
{

/// The targets of all links, each once, as they read when they have been written.
std::set<std::array<std::string, 4>> TargetsOf(const std::vector<LinkRecord>& links)
{
    const auto asRead = [](const std::string& value) { return DecodeAttribute(EscapeAttribute(FromUtf8(value))); };
    std::set<std::array<std::string, 4>> targets;
    for (const LinkRecord& link : links)
        if (!link.elements.empty())
            targets.insert({asRead(link.target.relationshipId), asRead(link.target.action),
                            asRead(link.target.invalidUrl), asRead(link.target.tooltip)});
    return targets;
}

}  // namespace

void Hyperlinks::Update()
{
    if (links_)
        All();
}

void Hyperlinks::CheckReadAgain(const std::vector<LinkRecord>& readAgain)
{
    // Their number may differ: neighbours that were led to one place are one link now.
    if (links_ && TargetsOf(All()) != TargetsOf(readAgain))
        throw FailedEdit(edits_.PartName(), "a link would not lead where it was to lead");
}

std::size_t Hyperlinks::KeptBytes() const
{
    return (links_ ? KeptBytesOf(*links_) : 0) + (removed_.size() + changed_.size()) * sizeof(std::size_t);
}

void Hyperlinks::LetGo()
{
    if (!links_)
        return;
    removed_.clear();
    for (std::size_t i = 0; i < links_->size(); ++i)
        if ((*links_)[i].elements.empty())
            removed_.push_back(i);
    links_.reset();
}

std::vector<LinkRecord>& Hyperlinks::All()
{
    if (!links_) {
        // Taken over: nobody else asks the tree for them.
        std::vector<LinkRecord> read = std::move(edits_.Tree().links);
        auto& links = links_.emplace();
        links.reserve(read.size() + removed_.size());
        auto removed = removed_.begin();
        for (LinkRecord& link : read) {
            for (; removed != removed_.end() && *removed == links.size(); ++removed)
                links.emplace_back();
            links.push_back(std::move(link));
        }
        links.resize(read.size() + removed_.size());
        changed_.clear();
        for (std::size_t body = 0; body < edits_.Tree().bodies.size(); ++body)
            if (edits_.Tree().bodies[body].Edited() != nullptr)
                changed_.insert(body);
    }
    if (!changed_.empty())
        ReadChanged();
    return *links_;
}

LinkRecord& Hyperlinks::At(std::size_t index)
{
    // An edit of the text may have taken the link with it.
    if (index >= All().size() || All()[index].elements.empty())
        throw NoHyperlink();
    return All()[index];
}

void Hyperlinks::ReadChanged()
{
    std::unordered_map<std::size_t, std::size_t> lastOf;  // index of a text's last link
    for (std::size_t i = 0; i < links_->size(); ++i)
        if (const auto& body = (*links_)[i].body)
            lastOf[*body] = i;

    const auto isThere = [](const LinkRecord& link) { return !link.elements.empty(); };
    std::vector<LinkRecord> links;
    links.reserve(links_->size());
    for (std::size_t i = 0; i < links_->size();) {
        const std::optional<std::size_t> body = (*links_)[i].body;
        if (!body || !changed_.contains(*body)) {
            links.push_back(std::move((*links_)[i++]));
            continue;
        }
        // An edit brings no links where there were none, so that no other texts need be looked at.
        const auto first = links_->begin() + static_cast<std::ptrdiff_t>(i);
        const auto last = links_->begin() + static_cast<std::ptrdiff_t>(lastOf[*body]) + 1;
        std::vector<LinkRecord> now = edits_.OpenText(*body).Links(*body);
        const bool someWent = now.size() < static_cast<std::size_t>(std::count_if(first, last, isThere));
        auto next = now.begin();
        for (auto link = first; link != last; ++link) {
            if (!isThere(*link))
                continue;
            // A link that has gone keeps its index.
            if (next != now.end() && (!someWent || next->target == link->target))
                *link = std::move(*next++);
            else
                Clear(*link);
        }
        std::move(first, last, std::back_inserter(links));
        std::move(next, now.end(), std::back_inserter(links));  // parts of divided ones
        i = lastOf[*body] + 1;
    }
    *links_ = std::move(links);
    changed_.clear();
}

void Hyperlinks::Retarget(LinkRecord& link, const LinkTarget& target)
{
    if (target == link.target)
        return;
    for (const std::size_t element : link.elements) {
        if (link.body) {
            edits_.OpenText(*link.body).Retarget(element, target);
            continue;
        }
        const XmlDocument& document = edits_.Document();
        const std::string_view idName =
            document.AttributeName(document.ElementAt(element), Ns::DocumentRelationships, "id");
        edits_.ChangeTag(element, [&](std::string& tag) { builtin::Retarget(tag, idName, link.target, target); });
    }
    link.target = target;
}

void Hyperlinks::Remove(LinkRecord& link)
{
    if (!link.target.relationshipId.empty())
        uses_.Release(link.target.relationshipId, link.elements.size());
    for (const std::size_t element : link.elements) {
        if (link.body)
            edits_.OpenText(*link.body).RemoveLink(element);
        else
            edits_.RemoveElement(element);
    }
    Clear(link);
}

}  // namespace tessarine::builtin
