#include "office/sheets/SheetFile.h"

#include <new>
#include <span>

#include "files/RandomAccessFile.h"
#include "office/sheets/DelimitedText.h"
#include "office/sheets/Refusal.h"
#include "office/sheets/TextEncoding.h"
#include "office/sheets/WorkbookFile.h"
#include "office/sheets/XlsxWriter.h"
#include "platform/CaseFolding.h"
#include "saving/ReplacementFile.h"

namespace tessarine::sheets
{

namespace
{

// `extension` is in upper case.
bool EndsIn(const String& path, StringView extension)
{
    return path.size() >= extension.size() &&
           ToUpper(StringView(path).substr(path.size() - extension.size())) == extension;
}

std::string BytesOf(const String& path, const Limits& limits)
{
    const RandomAccessFile file(path);
    // Asked before memory of that size is taken.
    if (file.Size() > limits.fileBytes)
        throw Refusal("The file is too large to be a list");
    std::string bytes(file.Size(), '\0');
    file.Read(0, std::as_writable_bytes(std::span(bytes)));
    return bytes;
}

Sheet SheetOf(const String& path, const Limits& limits)
{
    const std::string bytes = BytesOf(path, limits);
    if (EndsIn(path, u".XLS") || EndsIn(path, u".XLSX") || IsCompoundOrZip(bytes))
        return ReadWorkbook(bytes, limits);
    return ReadDelimitedText(DecodeText(bytes), EndsIn(path, u".CSV") ? u',' : u'\t', limits);
}

std::string FileOf(const String& path, const Sheet& sheet)
{
    if (EndsIn(path, u".XLS"))
        return WriteWorkbook(sheet);
    if (EndsIn(path, u".XLSX"))
        return WriteXlsx(sheet);
    if (EndsIn(path, u".CSV"))
        return WriteCommaSeparated(sheet);
    throw Refusal("A sheet is saved as .xlsx, .xls or .csv");
}

/// The application has one number for all that fails.
template <class Action>
auto WithNumberOfApplication(const String& path, Action action)
{
    try {
        return action();
    } catch (const Failure& failure) {
        throw Failure(FailureNumber::ApplicationDefined, path + u": " + failure.description, failure.source);
    } catch (const std::bad_alloc&) {
        throw Failure(FailureNumber::ApplicationDefined, path + u": There is not enough memory");
    }
}

}  // namespace

Sheet OpenSheet(const String& path, const Limits& limits)
{
    return WithNumberOfApplication(path, [&] { return SheetOf(path, limits); });
}

void SaveSheet(const String& path, const Sheet& sheet)
{
    WithNumberOfApplication(path, [&] {
        // Before the file is touched: a sheet that can't be written leaves it as it was.
        const std::string bytes = FileOf(path, sheet);
        ReplacementFile file(path, ReplacementFile::Missing::IsMade, {.inPlaceWhereFolderIsClosed = true});
        file.Write(std::as_bytes(std::span(bytes)));
        file.Commit();
    });
}

}  // namespace tessarine::sheets
