#include "office/builtin/shapes/RelationshipUses.h"

#include <algorithm>
#include <utility>

namespace tessarine::builtin
{

std::string RelationshipUses::PutTarget(const std::string& id, std::size_t ownUses, std::string target)
{
    std::size_t& uses = Of(id);
    if (uses <= ownUses) {
        edits_.Links().PutTarget(id, std::move(target));
        return id;
    }
    // The other elements keep the relationship as it is.
    uses -= ownUses;
    std::string added(edits_.Links().AddLike(id, std::move(target)));
    Of(added) = ownUses;
    return added;
}

void RelationshipUses::Release(const std::string& id, std::size_t ownUses)
{
    std::size_t& uses = Of(id);
    uses -= std::min(uses, ownUses);
    if (uses == 0)
        edits_.Links().Remove(id);
}

std::size_t RelationshipUses::KeptBytes() const
{
    constexpr std::size_t forEach = 96;  // an element of the map, with a short name
    return counts_ ? counts_->size() * forEach : 0;
}

std::size_t& RelationshipUses::Of(const std::string& id)
{
    if (!counts_) {
        // Any attribute with a prefix may name a relationship, whatever vocabulary it is from: taking one for a use too
        // many costs a relationship, one too few another element's target. Attributes without one never do.
        auto& counts = counts_.emplace();
        edits_.VisitCurrent([&](const XmlDocument& document) {
            document.ForEachAttribute([&](std::string_view name, std::string_view value) {
                if (name.find(':') == std::string_view::npos || name.starts_with("xmlns:"))
                    return;
                if (edits_.Links().Find(value) != nullptr)
                    ++counts[std::string(value)];
                else
                    edits_.Links().Reserve(value);
            });
        });
    }
    return (*counts_)[id];
}

}  // namespace tessarine::builtin
