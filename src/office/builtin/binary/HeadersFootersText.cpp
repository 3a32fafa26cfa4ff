#include "office/builtin/binary/HeadersFootersText.h"

#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// Flags of HeadersFootersAtom ([MS-PPT] 2.4.15.1), behind two bytes for the format of the date.
constexpr std::uint16_t hasHeader = 1u << 4;
constexpr std::uint16_t hasFooter = 1u << 5;

/// Kinds of CString: the user's date is 0.
constexpr std::uint16_t InstanceOf(std::size_t kind)
{
    return static_cast<std::uint16_t>(kind + 1);
}

constexpr std::size_t IndexOf(HeaderFooterKind kind)
{
    return kind == HeaderFooterKind::Header ? 0 : 1;
}

}  // namespace

HeadersFootersText::HeadersFootersText(std::string_view bytes, const Record& container)
    : bytes_(bytes), container_(container)
{
    for (const Record& part : Records(bytes_, container_)) {
        const std::string_view content = part.Content(bytes_);
        if (part.type == record::HeadersFootersAtom && part.Holds(4)) {
            const std::uint16_t flags = U16At(content, 2);
            isShown_[0] = (flags & hasHeader) != 0;
            isShown_[1] = (flags & hasFooter) != 0;
        } else if (part.type == record::CString && (part.instance == 1 || part.instance == 2)) {
            texts_[part.instance - 1] = Utf16Content(content);
        }
    }
}

std::optional<String> HeadersFootersText::Text(HeaderFooterKind kind) const
{
    const std::size_t index = IndexOf(kind);
    return isShown_[index] ? std::optional(texts_[index].value_or(String())) : std::nullopt;
}

void HeadersFootersText::PutText(HeaderFooterKind kind, StringView text)
{
    texts_[IndexOf(kind)] = text;
    isChanged_ = true;
}

std::string HeadersFootersText::Bytes(std::uint16_t instance) const
{
    // The atom and the user's date in front, as they are; nothing else belongs in here.
    std::string content;
    for (const Record& part : Records(bytes_, container_))
        if (part.type != record::CString || part.instance == 0)
            content.append(bytes_, part.begin, part.end - part.begin);
    for (std::size_t kind = 0; kind < 2; ++kind)
        if (texts_[kind])
            content += CStringOf(InstanceOf(kind), *texts_[kind]);
    return RecordOf(container_.type, instance, container_.version, content);
}

void HeadersFootersText::Put(RecordEdits& target) const
{
    if (isChanged_)
        target.Replace(container_.begin, container_.end, Bytes(container_.instance));
}

void HeadersFootersText::PutCopy(std::size_t inFrontOf, RecordEdits& target) const
{
    if (isChanged_)
        target.Replace(inFrontOf, inFrontOf, Bytes(0));
}

}  // namespace tessarine::builtin
