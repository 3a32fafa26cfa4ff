#include "office/builtin/propertysets/BinaryProperties.h"

#include "office/builtin/limits/Damage.h"
#include "office/builtin/propertysets/PropertyNames.h"
#include "office/builtin/propertysets/TypedValue.h"

namespace tessarine::builtin
{

namespace
{

std::optional<std::string> NewBytes(const std::optional<PropertySetStream>& stream)
{
    return stream && stream->IsEdited() ? std::optional(stream->Bytes()) : std::nullopt;
}

}  // namespace

BinaryProperties::BinaryProperties(std::optional<std::string> summary, std::optional<std::string> documentSummary,
                                   const Limits& limits)
    : limits_(limits),
      summary_(Opened(std::move(summary), "SummaryInformation")),
      documentSummary_(Opened(std::move(documentSummary), "DocumentSummaryInformation")),
      builtIn_(summary_, documentSummary_, limits),
      custom_(documentSummary_, limits)
{
}

std::optional<PropertySetStream> BinaryProperties::Opened(std::optional<std::string> bytes, std::string_view name)
{
    if (!bytes)
        return std::nullopt;
    try {
        if (bytes->size() > limits_.partBytes)
            throw Damage(name, "it is too large");
        return PropertySetStream(std::move(*bytes), name);
    } catch (const Failure& failure) {
        remarks_.push_back(u"has document properties that can't be read; they stay as they are. " + failure.Reason());
        return std::nullopt;
    }
}

void BinaryProperties::FollowTitles(const std::vector<ChangedTitle>& changed, std::size_t slideCount)
{
    constexpr std::uint32_t documentParts = 13;
    const auto* const section = documentSummary_ ? documentSummary_->Find(documentSummaryFormat) : nullptr;
    const auto old = section == nullptr ? std::nullopt : documentSummary_->Value(*section, documentParts);
    if (!old)
        return;
    std::vector<String> titles = ReadTextList(*old, section->codePage, limits_.textUnits);
    if (FollowListedTitles(titles, changed, slideCount).empty())
        return;
    documentSummary_->Put(*section, documentParts, TypedTextList(*old, titles, section->codePage), LengthOf(*old));
}

void BinaryProperties::EmptyLinkList()
{
    // A count of 0 ([MS-OSHARED] 2.3.3.1.20).
    const std::string noLinks(4, '\0');
    const auto* const section = documentSummary_ ? documentSummary_->Find(userDefinedFormat) : nullptr;
    if (section == nullptr)
        return;
    for (const auto& [id, name] : NamesIn(*documentSummary_, *section)) {
        const auto list = name == linkListName ? documentSummary_->Value(*section, id) : std::nullopt;
        if (list && TypeOf(*list) == ValueType::Blob)
            documentSummary_->Put(*section, id, TypedBlob(noLinks), LengthOf(*list));
    }
}

bool BinaryProperties::IsEdited() const
{
    return (summary_ && summary_->IsEdited()) || (documentSummary_ && documentSummary_->IsEdited());
}

std::optional<std::string> BinaryProperties::NewSummary() const
{
    return NewBytes(summary_);
}

std::optional<std::string> BinaryProperties::NewDocumentSummary() const
{
    return NewBytes(documentSummary_);
}

}  // namespace tessarine::builtin
