#include "office/builtin/objects/EmptyPage.h"

#include "office/builtin/reader/Refusals.h"

namespace tessarine::builtin
{

namespace
{

/// No object names a shape or a link of this page, because it has none.
Failure NothingThere()
{
    return {FailureNumber::InvalidRequest, u"The file has no such page, and so no shapes and no links of it"};
}

}  // namespace

ShapeFacts EmptyPage::Shape(std::size_t)
{
    throw NothingThere();
}

std::optional<std::size_t> EmptyPage::FindText(std::size_t, const TextPattern&, std::size_t)
{
    throw NothingThere();
}

std::size_t EmptyPage::ReplaceText(std::size_t, std::size_t, std::size_t, StringView)
{
    throw NothingThere();
}

String EmptyPage::TextAt(std::size_t, std::size_t, std::size_t)
{
    throw NothingThere();
}

String EmptyPage::LinkSource(std::size_t)
{
    throw NothingThere();
}

void EmptyPage::PutLinkSource(std::size_t, const String&)
{
    throw NothingThere();
}

std::optional<String> EmptyPage::HeaderFooter(HeaderFooterKind)
{
    // Empty and not absent, as on the default page that PowerPoint shows.
    return String();
}

void EmptyPage::PutHeaderFooter(HeaderFooterKind, StringView)
{
    throw NoHeaderFooter();
}

String EmptyPage::HyperlinkAddress(std::size_t)
{
    throw NothingThere();
}

void EmptyPage::PutHyperlinkAddress(std::size_t, const String&)
{
    throw NothingThere();
}

}  // namespace tessarine::builtin
