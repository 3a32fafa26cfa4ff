#include "batch/ListFiles.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <span>

#include <fmt/format.h>

#include "batch/BatchCall.h"
#include "batch/EndlessPairs.h"
#include "batch/FilePair.h"
#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/PairFiles.h"
#include "batch/Refusal.h"
#include "files/Files.h"
#include "model/ListColumns.h"
#include "model/ListFault.h"
#include "model/Project.h"
#include "platform/NativePath.h"
#include "report/WithoutPath.h"
#include "run/JobInputs.h"

namespace tessarine::batch
{

namespace
{

String NumberText(std::int64_t number)
{
    return FromUtf8(std::to_string(number));
}

String FaultText(const ListFault& fault, const String& path)
{
    switch (fault.kind) {
        case ListFault::Kind::ColumnCount:
            return u"it has " + FromUtf8(Counted(fault.columns, "column")) + u", and a list of pairs has " +
                   NumberText(ListColumnCount);
        case ListFault::Kind::Header:
            return u"its column " + NumberText(fault.column) + u" is headed " + InQuotes(fault.found) + u", not " +
                   InQuotes(fault.wanted);
        case ListFault::Kind::OtherExtension:
            return u"its name does not end in .xlsx, .xls, .csv or .tab";
        case ListFault::Kind::TooManyRows:
            return u"it has more than 32767 rows";
        case ListFault::Kind::ErrorInRow:
            return u"row " + NumberText(fault.row) + u" holds an error (such as #N/A) in place of a text";
        case ListFault::Kind::File:
            // The line that this goes into has named the file already.
            return WithoutPath(fault.failure->Reason(), path);
        case ListFault::Kind::FileMissing:
            break;
    }
    return u"there is no such file";
}

bool AreSame(const FindAndReplaceItem& left, const FindAndReplaceItem& right)
{
    return left.FindWhat == right.FindWhat && left.ReplaceWith == right.ReplaceWith &&
           std::ranges::all_of(std::span(OptionKeys).first<ListSwitchCount>(), [&](const OptionKey& key) {
               return (*left.OptionSetting).*key.field == (*right.OptionSetting).*key.field;
           });
}

/// Reads a written list again. Nothing when that can't be done, and then `reason` tells why.
std::shared_ptr<FindAndReplaceItems> ReadBack(const String& path, String& reason)
{
    if (IsPlainPairsName(path)) {
        try {
            return LoadPairs(path, Command::ListConvert);
        } catch (const Failure& failure) {
            reason = failure.description;
            return nullptr;
        }
    }
    auto read = std::make_shared<FindAndReplaceItems>();
    read->TakesXlsx = true;
    if (read->ImportList(path) && !read->FileFailure)
        return read;
    reason = ImportReason(*read, path);
    return nullptr;
}

/// What a written list loses when it is read again; nothing when it is the same.
std::string LossIn(const String& path, const FindAndReplaceItems& written)
{
    // Only reading it again tells: a format leaves out what it can't hold without any failure.
    String reason;
    const auto read = ReadBack(path, reason);
    if (!read)
        return ToUtf8(u"it can't be read back: " + reason);
    const auto before = written.NewEnum();
    const auto after = read->NewEnum();
    const auto [first, other] = std::ranges::mismatch(
        before, after, [](const auto& left, const auto& right) { return AreSame(*left, *right); });
    if (first != before.end())
        return fmt::format("pair {} ({}) reads back otherwise", std::distance(before.begin(), first) + 1,
                           Quoted((*first)->FindWhat));
    return other == after.end() ? "" : "it reads back with more pairs";
}

}  // namespace

bool IsListName(StringView path)
{
    // The windows take the others alone.
    return HasExtension(path, PairListExtensions) || HasExtension(path, u".XLSX");
}

String ImportReason(const FindAndReplaceItems& list, const String& path)
{
    const auto fault = FaultOf(list);
    return fault ? FaultText(*fault, path) : String();
}

namespace
{

/// The list of a file, be it read to its end or not.
std::shared_ptr<FindAndReplaceItems> ImportedFrom(const String& path)
{
    // Asked here, because the import would show a message of its own.
    if (!FileExists(path))
        Refuse(u"there is no list " + InQuotes(path));
    auto list = std::make_shared<FindAndReplaceItems>();
    list->TakesXlsx = true;
    list->ImportList(path);
    return list;
}

/// The same list, unless it was refused or failed.
std::shared_ptr<FindAndReplaceItems> Complete(std::shared_ptr<FindAndReplaceItems> list, const String& path)
{
    if (list->ImportRefusal || list->FileFailure)
        Refuse(u"can't take the list " + InQuotes(path) + u": " + ImportReason(*list, path));
    return list;
}

/// The pairs of any file that holds some: a list of 18 columns, or plain pairs.
std::shared_ptr<FindAndReplaceItems> LoadAnyPairs(const String& path)
{
    if (IsPlainPairsName(path))
        return LoadPairs(path, Command::ListConvert);
    auto list = ImportedFrom(path);
    // Other programs know nothing of lists, and write two columns into a file of the same kind.
    const bool mayBePlain = list->ImportRefusal && list->ImportRefusal->reason == ListRefusal::Reason::ColumnCount &&
                            list->ImportRefusal->columns > 1 && list->ImportRefusal->columns <= mostPairColumns;
    return mayBePlain ? LoadPairs(path, Command::ListConvert) : Complete(std::move(list), path);
}

}  // namespace

std::shared_ptr<FindAndReplaceItems> LoadList(const String& path)
{
    return Complete(ImportedFrom(path), path);
}

std::vector<std::string> TakeListPairs(Project& project, const BatchCall& call)
{
    const auto list = call.pairFile ? LoadPairs(*call.pairFile, call.command) : LoadList(*call.list);
    std::int64_t withoutText = 0;
    std::int64_t withoutPlace = 0;
    for (const auto& item : list->NewEnum()) {
        if (item->FindWhat.empty()) {
            ++withoutText;
            continue;
        }
        // A copy for each pair, so that the switches of the call do not change the list.
        const OptionSetting& own = *item->OptionSetting;
        const auto setting = std::make_shared<OptionSetting>(HasLocation(call.setting) ? call.setting : own);
        setting->MatchCase = own.MatchCase || call.setting.MatchCase;
        setting->MatchWholeWord = own.MatchWholeWord || call.setting.MatchWholeWord;
        withoutPlace += HasLocation(*setting) ? 0 : 1;
        const String with = call.command == Command::Find ? String() : item->ReplaceWith;
        CheckEnds(item->FindWhat, with, *setting);
        project.FindAndReplaceList->Add(item->FindWhat, with, setting, project.shared_from_this());
    }
    if (project.FindAndReplaceList->Count() == 0)
        Refuse(call.pairFile == u"-" ? u"standard input has no pair to look for"
                                     : u"the list " + InQuotes(call.pairFile.value_or(call.list.value_or(String()))) +
                                           u" has no pair to look for");

    std::vector<std::string> notes;
    if (withoutText > 0)
        notes.push_back(fmt::format("{} of the list {} left out: no text to look for", Counted(withoutText, "row"),
                                    OneOrMore(withoutText, "is", "are")));
    if (withoutPlace > 0)
        notes.push_back(
            fmt::format("{} of the list {} looked for nowhere: columns 3 to 16 hold no TRUE (--in names places)",
                        Counted(withoutPlace, "pair"), OneOrMore(withoutPlace, "is", "are")));
    return notes;
}

ConvertedList ConvertList(const String& from, const String& to)
{
    const auto list = LoadAnyPairs(from);
    // The export asks for the folder of the path, and a name alone has none.
    const std::filesystem::path full = std::filesystem::absolute(NativePath(to));
    const String folder = PathText(full.parent_path().native());
    // The export would show a message, write nothing and not fail.
    if (!FolderExists(folder))
        Refuse(u"there is no folder " + InQuotes(folder));
    const String target = PathText(full.native());
    if (FolderExists(target))
        Refuse(InQuotes(to) + u" is a folder");

    const auto refuse = [&](const String& reason) { Refuse(u"can't write the list " + InQuotes(to) + u": " + reason); };
    if (IsPlainPairsName(target)) {
        try {
            SavePairs(target, *list);
        } catch (const Failure& failure) {
            refuse(WithoutPath(failure.Reason(), target));
        }
    } else {
        list->ExportsList(target);
        if (list->FileFailure)
            refuse(ImportReason(*list, target));
    }
    return {list->Count(), LossIn(target, *list)};
}

}  // namespace tessarine::batch
