#include "office/sheets/WorkbookFile.h"

#include <algorithm>
#include <cctype>

#include "files/CompoundFile.h"
#include "office/sheets/BiffReader.h"
#include "office/sheets/BiffRecords.h"
#include "office/sheets/BiffWriter.h"
#include "office/sheets/Refusal.h"
#include "office/sheets/XlsxReader.h"

namespace tessarine::sheets
{

namespace
{

const std::string saveAsWorkbook = "; save it as an Excel workbook (.xlsx or .xls) first";

std::string WorkbookStream(std::string_view file)
{
    const CompoundFile compound(file);
    if (compound.IsEmpty())
        throw Damage("its compound file can't be read");
    // A file for both Excel 95 and 97 has both streams.
    for (const std::string name : {"Workbook", "Book"}) {
        if (!compound.Has(name))
            continue;
        if (auto stream = compound.Stream(name))
            return *std::move(stream);
        throw Damage("its stream " + name + " can't be read");
    }
    if (compound.Has("EncryptedPackage"))
        throw Refusal("The workbook is encrypted and needs a password to be opened");
    throw Refusal("The file is some other Office document, not a workbook");
}

bool IsZip(std::string_view file)
{
    return file.starts_with("PK\x03\x04");
}

/// OpenDocument files begin with an unpacked entry of this name and content.
bool IsOpenDocument(std::string_view file)
{
    constexpr std::size_t reach = 128;
    return IsZip(file) &&
           file.substr(0, reach).find("mimetypeapplication/vnd.oasis.opendocument") != std::string_view::npos;
}

/// Whether the bytes are a workbook's stream without a compound file around it.
bool IsBareStream(std::string_view file)
{
    // A Bof record: type and length, then the version.
    return file.size() >= 6 && file.starts_with("\x09\x08") && (file[5] == biff8 >> 8 || file[5] == biff5 >> 8);
}

bool IsOfExcel4OrEarlier(std::string_view file)
{
    using namespace std::string_view_literals;
    // The Bof records of Excel 2, 3 and 4, by type and length.
    return file.starts_with("\x09\x00\x04\x00"sv) || file.starts_with("\x09\x02\x06\x00"sv) ||
           file.starts_with("\x09\x04\x06\x00"sv);
}

Failure NotAWorkbook(std::string_view file)
{
    constexpr std::size_t telling = 4096;
    std::string head(file.substr(0, telling));
    std::ranges::transform(head, head.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto has = [&](std::string_view text) { return head.find(text) != std::string::npos; };
    const std::size_t first = head.find_first_not_of("\xef\xbb\xbf \t\r\n");

    if (head.empty())
        return Refusal("The file is empty");
    if (IsOfExcel4OrEarlier(file))
        return Refusal("The file is a workbook of Excel 4 or earlier" + saveAsWorkbook);
    if (has("urn:schemas-microsoft-com:office:spreadsheet") && has("<?xml"))
        return Refusal("The file is an XML spreadsheet" + saveAsWorkbook);
    if (first != std::string::npos && head[first] == '<')
        return Refusal((has("<html") || has("<!doctype html") || has("<table") ? "The file is a web page"
                                                                               : "The file is an XML file") +
                       saveAsWorkbook);
    // Text has no NUL, but for UTF-16, which has a mark.
    if (head.find('\0') == std::string::npos || head.starts_with("\xff\xfe") || head.starts_with("\xfe\xff"))
        return Refusal("The file is text, not a workbook; name it .csv or .tab if it is a table");
    return Refusal("The file is not a workbook");
}

}  // namespace

Sheet ReadWorkbook(std::string_view file, const Limits& limits)
{
    if (IsCompoundFile(file))
        return ReadBiff(WorkbookStream(file), limits);
    if (IsBareStream(file))
        return ReadBiff(file, limits);
    if (IsOpenDocument(file))
        throw Refusal("The file is an OpenDocument file" + saveAsWorkbook);
    if (IsZip(file))
        return ReadXlsx(file, limits);
    throw NotAWorkbook(file);
}

std::string WriteWorkbook(const Sheet& sheet)
{
    // Excel never writes a smaller stream; filled up with zeros, it does not get into the part of a compound file for
    // small streams, where some readers don't look for it.
    constexpr std::size_t smallestStream = 4096;
    std::string stream = WriteBiff(sheet);
    stream.resize(std::max(stream.size(), smallestStream), '\0');
    auto file = CompoundFileOf("Workbook", stream);
    if (!file)
        throw Refusal("The workbook is too large to be written");
    return *std::move(file);
}

bool IsCompoundOrZip(std::string_view file)
{
    return IsCompoundFile(file) || IsZip(file);
}

}  // namespace tessarine::sheets
