#pragma once

#include <cstdint>
#include <string>

#include "support/LittleEndian.h"

namespace tessarine::test::biff
{

using little::Byte;
using little::Double;
using little::Long;
using little::Short;
using little::Wide;

/// A record with its type and length in front.
std::string Record(std::uint16_t type, const std::string& data);

/// What each cell's record begins with; column A is 0.
std::string At(std::uint32_t row, std::uint32_t column, std::uint32_t format = 0);

/// The record that begins a stream or a sheet: 0x0600 for Excel 97 to 2003, and the kind of what follows.
std::string Bof(std::uint32_t version, std::uint32_t kind);
inline const std::string Eof = Record(0x000A, "");

/// A count, flags and characters of one byte, as texts stand in Excel 97 to 2003.
std::string Text(const std::string& latin1);

/// A shared text table of one record; `texts` come one after the other as Text makes them.
std::string Sst(std::uint32_t count, const std::string& texts);

/// A workbook's stream with one worksheet, from records that a test gives.
class BiffBook
{
public:
    explicit BiffBook(std::uint32_t version = 0x0600) : version_(version) {}

    BiffBook& Global(const std::string& record);  ///< In front of the list of sheets.
    BiffBook& Cells(const std::string& records);  ///< Of the one sheet.

    BiffBook& SheetKind(std::uint32_t kind);  ///< 0 worksheet, 1 macro sheet, 2 chart, 6 module.
    std::string Stream() const;               ///< What the compound file's "Workbook" holds.

private:
    std::uint32_t version_;
    std::uint32_t kind_ = 0;
    std::string globals_;
    std::string cells_;
};

}  // namespace tessarine::test::biff
