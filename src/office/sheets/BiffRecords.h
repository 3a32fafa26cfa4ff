#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/String.h"

/// The records that make up a binary workbook's stream (MS-XLS 2.1.4): a type, a length and so many bytes, at most
/// 8224. What needs more goes on in Continue records.
namespace tessarine::sheets
{

/// What a sheet of such a workbook can hold. `Sheet` itself holds more.
inline constexpr std::uint32_t maxBiffRows = 65536;
inline constexpr std::uint32_t maxBiffColumns = 256;

/// The types of records that are read or written (MS-XLS 2.3). All others are passed over.
namespace BiffType
{
inline constexpr std::uint16_t Formula = 0x0006;   ///< A cell with a formula and its last result.
inline constexpr std::uint16_t Eof = 0x000A;       ///< The end of the globals, of a sheet or of a chart in it.
inline constexpr std::uint16_t Date1904 = 0x0022;  ///< Whether days count from 1904.
inline constexpr std::uint16_t FilePass = 0x002F;  ///< The workbook is encrypted.
inline constexpr std::uint16_t Font = 0x0031;
inline constexpr std::uint16_t Continue = 0x003C;    ///< More data of the record in front.
inline constexpr std::uint16_t Window1 = 0x003D;     ///< The window of the workbook.
inline constexpr std::uint16_t CodePage = 0x0042;    ///< Of the texts before Excel 97.
inline constexpr std::uint16_t BoundSheet = 0x0085;  ///< Where a sheet begins, and of what kind it is.
inline constexpr std::uint16_t MulRk = 0x00BD;       ///< Several numbers of a row.
inline constexpr std::uint16_t RString = 0x00D6;     ///< A text with formatting (Excel 95).
inline constexpr std::uint16_t Xf = 0x00E0;          ///< The format of cells, or a style.
inline constexpr std::uint16_t Sst = 0x00FC;         ///< The shared texts.
inline constexpr std::uint16_t LabelSst = 0x00FD;    ///< A cell with a shared text.
inline constexpr std::uint16_t Dimensions = 0x0200;  ///< The used range, as the program that wrote the file states it.
inline constexpr std::uint16_t Number = 0x0203;
inline constexpr std::uint16_t Label = 0x0204;    ///< A cell with a text of its own.
inline constexpr std::uint16_t BoolErr = 0x0205;  ///< A boolean or an error.
inline constexpr std::uint16_t String = 0x0207;   ///< The text that the formula in front gives.
inline constexpr std::uint16_t Window2 = 0x023E;  ///< How a sheet shows in it.
inline constexpr std::uint16_t Rk = 0x027E;       ///< A number in 30 bits.
inline constexpr std::uint16_t Style = 0x0293;
inline constexpr std::uint16_t Format = 0x041E;  ///< The code of a number format.
inline constexpr std::uint16_t Bof = 0x0809;     ///< The beginning of the globals, of a sheet or of a chart in it.
}  // namespace BiffType

inline constexpr std::size_t maxRecordBytes = 8224;

/// What a Bof record of Excel 97 to 2003, and of Excel 5 and 95, gives as version.
inline constexpr std::uint16_t biff8 = 0x0600;
inline constexpr std::uint16_t biff5 = 0x0500;

/// A record, its data borrowed from the stream.
struct BiffRecord {
    std::uint16_t type = 0;
    std::string_view data;

    /// Little-endian values at a place in the data. Raise `ApplicationDefined` beyond its end.
    std::uint8_t Byte(std::size_t at) const;
    std::uint16_t Short(std::size_t at) const;
    std::uint32_t Long(std::size_t at) const;
    std::uint64_t Quad(std::size_t at) const;
};

/// Walks over the records of a stream. Borrows it.
class BiffStream
{
public:
    /// From a byte offset on; raises `ApplicationDefined` when it lies beyond the stream's end.
    explicit BiffStream(std::string_view stream, std::size_t offset = 0);

    /// The next record, or nothing at the stream's end. Raises `ApplicationDefined` when a record goes beyond it.
    std::optional<BiffRecord> Next();

    /// The next record if it is of this type; otherwise nothing, and the place stays.
    std::optional<BiffRecord> NextOf(std::uint16_t type);

private:
    std::string_view stream_;
    std::size_t at_ = 0;
};

/// The bytes of a record and of the Continue records after it, read from front to back. All members raise
/// `ApplicationDefined` when they end too early.
class RecordBody
{
public:
    /// Begins `skipped` bytes into the record's data. Takes Continue records from the stream as it needs them.
    RecordBody(BiffStream& stream, const BiffRecord& record, std::size_t skipped = 0);

    std::uint8_t Byte();
    std::uint16_t Short();
    std::uint32_t Long();
    void Skip(std::size_t bytes);               ///< Over records, as far as it has to.
    std::string_view Bytes(std::size_t count);  ///< Within one record.

    /// Appends so many characters, of two bytes each or of one. Where they go on in another record, its first byte
    /// tells anew how many bytes a character has (MS-XLS 2.5.293).
    void AppendCharacters(std::size_t count, bool isWide, String& text);

private:
    /// Leaves what is left of this record, and goes on in the Continue record that must follow.
    void NextRecord();

    BiffStream& stream_;
    std::string_view rest_;  // of the record at hand
};

/// A text of Excel 97 to 2003 with a 16-bit count: characters, then formatting runs and phonetics, which are passed
/// over (MS-XLS 2.5.293 XLUnicodeRichExtendedString). Takes the place of `text`.
void ReadText(RecordBody& body, String& text);

/// The same, for a text whose count has been read already.
void ReadText(RecordBody& body, std::size_t count, String& text);

}  // namespace tessarine::sheets
