#include "support/BiffBook.h"

namespace tessarine::test::biff
{

std::string Record(std::uint16_t type, const std::string& data)
{
    return Short(type) + Short(static_cast<std::uint32_t>(data.size())) + data;
}

std::string At(std::uint32_t row, std::uint32_t column, std::uint32_t format)
{
    return Short(row) + Short(column) + Short(format);
}

std::string Bof(std::uint32_t version, std::uint32_t kind)
{
    return Record(0x0809, Short(version) + Short(kind) + Short(0x0DBB) + Short(0x07CC));
}

std::string Text(const std::string& latin1)
{
    return Short(static_cast<std::uint32_t>(latin1.size())) + Byte(0) + latin1;
}

std::string Sst(std::uint32_t count, const std::string& texts)
{
    return Record(0x00FC, Long(count) + Long(count) + texts);
}

BiffBook& BiffBook::Global(const std::string& record)
{
    globals_ += record;
    return *this;
}

BiffBook& BiffBook::Cells(const std::string& records)
{
    cells_ += records;
    return *this;
}

BiffBook& BiffBook::SheetKind(std::uint32_t kind)
{
    kind_ = kind;
    return *this;
}

std::string BiffBook::Stream() const
{
    const auto boundSheet = [&](std::size_t offset) {
        const std::string name = version_ == 0x0600 ? Byte(1) + Byte(0) + "S" : Byte(1) + "S";
        return Record(0x0085, Long(static_cast<std::uint32_t>(offset)) + Byte(0) + Byte(kind_) + name);
    };
    const std::string front = Bof(version_, 0x0005) + globals_;
    const std::size_t offset = front.size() + boundSheet(0).size() + Eof.size();
    return front + boundSheet(offset) + Eof + Bof(version_, 0x0010) + cells_ + Eof;
}

}  // namespace tessarine::test::biff
