#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

std::string Record(std::uint32_t version, std::uint32_t instance, std::uint32_t type, const std::string& data)
{
    return Short(version | instance << 4) + Short(type) + Long(static_cast<std::uint32_t>(data.size())) + data;
}

std::string Container(std::uint32_t type, const std::string& records, std::uint32_t instance)
{
    return Record(0xF, instance, type, records);
}

std::string Atom(std::uint32_t type, const std::string& data, std::uint32_t instance)
{
    return Record(0, instance, type, data);
}

std::string CString(std::u16string_view text, std::uint32_t instance)
{
    return Atom(4026, Wide(text), instance);
}

}  // namespace tessarine::test::ppt
