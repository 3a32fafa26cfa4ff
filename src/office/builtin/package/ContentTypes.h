#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/package/PartName.h"
#include "office/builtin/xml/XmlEdits.h"

namespace tessarine::builtin
{

/// "[Content_Types].xml" (ECMA-376 part 2, 10.1.2): what kind of content each part holds, by the part's name (an
/// override) or by its extension (a default).
///
/// The part is read when it is first asked for a type. What is added or removed shows in Bytes and not in the answers.
class ContentTypes
{
public:
    struct Type {
        std::string_view name;  ///< Of the part or the extension, as written.
        std::string_view type;  ///< As written.
    };

    static constexpr std::string_view entryName = "[Content_Types].xml";

    /// `bytes` is the part as UTF-8. It is not looked at yet.
    ContentTypes(std::string bytes, const Limits& limits) : bytes_(std::move(bytes)), limits_(limits) {}

    ContentTypes(const ContentTypes&) = delete;
    ContentTypes& operator=(const ContentTypes&) = delete;

    /// The type of a part, in lower case, without parameters: its override, else the default of its extension, else "".
    /// Raises `FileCorrupt` when the part is damaged.
    std::string TypeOf(std::string_view partName) const;

    /// The names, as written, of the parts that an override gives this type (in lower case). Raises as TypeOf does.
    std::vector<std::string_view> PartsOfType(std::string_view type) const;

    /// The parts that have an override, in the file's order. Good until the object ends.
    const std::vector<Type>& Overrides() const;

    /// The type of the parts with an extension that have no override; "" for none. In lower case, without parameters.
    std::string DefaultOf(std::string_view extension) const;

    /// True when an extension stands for this type (in lower case), so that other parts may have it than those above.
    bool HasDefaultOf(std::string_view type) const;

    /// Gives a part a type of its own. The part must not have an override that stays.
    void AddOverride(std::string_view partName, std::string_view type);

    /// Removes every override of these parts from the file's bytes, in one pass; those that AddOverride added stay.
    void RemoveOverrides(const std::vector<std::string_view>& partNames);

    bool IsEdited() const { return !removals_.empty() || !added_.empty(); }
    std::string Bytes() const;  ///< The part with the edits made, in UTF-8. Raises as EditedPart does.

private:
    /// Fills overrides_ and defaults_. Raises `FileCorrupt`.
    void Read() const;

    std::string bytes_;
    mutable bool isRead_ = false;
    mutable std::vector<Type> overrides_;
    mutable std::vector<Type> defaults_;
    // Types of the same, by name.
    using TypeByName = std::unordered_map<std::string_view, std::string_view, PartNameHash, PartNameEqual>;
    mutable TypeByName overrideOf_;
    mutable TypeByName defaultOf_;
    mutable std::deque<std::string> texts_;  // that do not stand in the bytes as they read
    Limits limits_;
    std::vector<ByteEdit> removals_;
    std::string added_;  // overrides, as markup
};

}  // namespace tessarine::builtin
