#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/propertysets/PropertySetStream.h"
#include "office/builtin/propertysets/SummaryProperties.h"
#include "office/builtin/propertysets/UserProperties.h"
#include "office/builtin/reader/ListedTitles.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The streams of a binary presentation that hold its document properties; each may be missing.
inline constexpr StringView summaryStream = u"\5SummaryInformation";
inline constexpr StringView documentSummaryStream = u"\5DocumentSummaryInformation";

/// The document properties of a binary presentation: its two streams, the properties in them, and what edits make of
/// them. A stream that can't be read is a remark; it counts as missing and keeps its bytes.
class BinaryProperties
{
public:
    /// The bytes of the two streams; nothing for one that the file doesn't have. Bad bytes raise nothing.
    BinaryProperties(std::optional<std::string> summary, std::optional<std::string> documentSummary,
                     const Limits& limits = Limits::Default());
    BinaryProperties(const BinaryProperties&) = delete;
    BinaryProperties& operator=(const BinaryProperties&) = delete;

    BuiltInPropertiesReader& BuiltIn() { return builtIn_; }
    CustomPropertiesReader& Custom() { return custom_; }

    /// Lets the list of titles in the document summary follow the slides, see FollowListedTitles. Nothing for a file
    /// without a list. Raises `FileCorrupt` for a list with a title beyond the limits.
    void FollowTitles(const std::vector<ChangedTitle>& changed, std::size_t slideCount);

    /// Takes all links off the list of links that old versions kept beside the slides, for a file in which the address
    /// of one was changed: the list would still have the old one. Nothing for a file without the list.
    void EmptyLinkList();

    bool IsEdited() const;

    /// The new bytes of a stream; nothing for one that no edit has changed. May be asked again after further edits.
    /// Raises `FileCorrupt` when they would not read as they were put.
    std::optional<std::string> NewSummary() const;
    std::optional<std::string> NewDocumentSummary() const;

    /// What a user should know of the streams as they were read, a sentence each.
    const std::vector<String>& Remarks() const { return remarks_; }

private:
    std::optional<PropertySetStream> Opened(std::optional<std::string> bytes, std::string_view name);

    const Limits limits_;
    std::vector<String> remarks_;  // before the streams, which add to them
    std::optional<PropertySetStream> summary_;
    std::optional<PropertySetStream> documentSummary_;
    SummaryProperties builtIn_;
    UserProperties custom_;
};

}  // namespace tessarine::builtin
