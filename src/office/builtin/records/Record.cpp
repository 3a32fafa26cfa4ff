#include "office/builtin/records/Record.h"

#include <limits>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/RecordTypes.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

void RaiseRecordOutside(std::size_t offset)
{
    throw Damage(documentStream, "a record begins outside of what should hold it", offset);
}

void RaiseRecordTooLong(std::size_t offset)
{
    throw Damage(documentStream, "a record is longer than what holds it", offset);
}

std::string RecordOf(std::uint16_t type, std::uint16_t instance, std::uint8_t version, std::string_view content)
{
    if (content.size() > std::numeric_limits<std::uint32_t>::max())
        throw Failure(FailureNumber::BadFormat, u"The presentation would become too large");
    std::string bytes;
    bytes.reserve(Record::headerSize + content.size());
    AppendU16(bytes, static_cast<std::uint16_t>(version | instance << 4));
    AppendU16(bytes, type);
    AppendU32(bytes, static_cast<std::uint32_t>(content.size()));
    return bytes.append(content);
}

std::string RecordLike(const Record& old, std::string_view content)
{
    return RecordOf(old.type, old.instance, old.version, content);
}

std::u16string Utf16Content(std::string_view content)
{
    std::u16string text(content.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = U16At(content, 2 * i);
    return text;
}

std::string BytesOfUtf16(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (const char16_t unit : text)
        AppendU16(bytes, unit);
    return bytes;
}

std::string CStringOf(std::uint16_t instance, std::u16string_view text)
{
    return RecordOf(record::CString, instance, 0, BytesOfUtf16(text));
}

}  // namespace tessarine::builtin
