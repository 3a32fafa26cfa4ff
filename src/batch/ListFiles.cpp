#include "batch/ListFiles.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <span>

#include <fmt/format.h>

#include "batch/BatchCall.h"
#include "batch/EndlessPairs.h"
#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/Refusal.h"
#include "files/Files.h"
#include "model/ListColumns.h"
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

String RefusalReason(const ListRefusal& refusal)
{
    switch (refusal.reason) {
        case ListRefusal::Reason::ColumnCount:
            return u"it has " + FromUtf8(Counted(refusal.columns, "column")) + u", and a list of pairs has " +
                   NumberText(ListColumnCount);
        case ListRefusal::Reason::Header:
            return u"its column " + NumberText(refusal.column) + u" is headed " + InQuotes(refusal.header) + u", not " +
                   InQuotes(ListHeaders[static_cast<std::size_t>(refusal.column) - 1]);
        case ListRefusal::Reason::OtherExtension:
            return u"its name does not end in .xls, .csv or .tab";
        case ListRefusal::Reason::FileMissing:
            break;
    }
    return u"there is no such file";
}

String FailureText(const FindAndReplaceItems& list, const String& path)
{
    constexpr std::int32_t firstRow = 2;  // below the headers
    if (list.FileFailure->number == FailureNumber::Overflow)
        return u"it has more than 32767 rows";
    if (list.FileFailure->number == FailureNumber::TypeMismatch)
        return u"row " + NumberText(list.Count() + firstRow) + u" holds an error (such as #N/A) in place of a text";
    // The line that this goes into has named the file already.
    return WithoutPath(list.FileFailure->Reason(), path);
}

bool AreSame(const FindAndReplaceItem& left, const FindAndReplaceItem& right)
{
    return left.FindWhat == right.FindWhat && left.ReplaceWith == right.ReplaceWith &&
           std::ranges::all_of(std::span(OptionKeys).first<ListSwitchCount>(), [&](const OptionKey& key) {
               return (*left.OptionSetting).*key.field == (*right.OptionSetting).*key.field;
           });
}

/// What a written list loses when it is read again; nothing when it is the same.
std::string LossIn(const String& path, const FindAndReplaceItems& written)
{
    // Only reading it again tells: a format leaves out what it can't hold without any failure.
    FindAndReplaceItems read;
    if (!read.ImportList(path) || read.FileFailure)
        return ToUtf8(u"it can't be read back: " + ImportReason(read, path));
    const auto before = written.NewEnum();
    const auto after = read.NewEnum();
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
    return HasExtension(path, PairListExtensions);
}

String ImportReason(const FindAndReplaceItems& list, const String& path)
{
    if (list.FileFailure)
        return FailureText(list, path);
    return list.ImportRefusal ? RefusalReason(*list.ImportRefusal) : String();
}

std::shared_ptr<FindAndReplaceItems> LoadList(const String& path)
{
    // Asked here, because the import would show a message of its own.
    if (!FileExists(path))
        Refuse(u"there is no list " + InQuotes(path));
    auto list = std::make_shared<FindAndReplaceItems>();
    if (!list->ImportList(path) || list->FileFailure)
        Refuse(u"can't take the list " + InQuotes(path) + u": " + ImportReason(*list, path));
    return list;
}

std::vector<std::string> TakeListPairs(Project& project, const BatchCall& call)
{
    const auto list = LoadList(*call.list);
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
        Refuse(u"the list " + InQuotes(*call.list) + u" has no pair to look for");

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
    const auto list = LoadList(from);
    // The export asks for the folder of the path, and a name alone has none.
    const std::filesystem::path full = std::filesystem::absolute(NativePath(to));
    const String folder = PathText(full.parent_path().native());
    // The export would show a message, write nothing and not fail.
    if (!FolderExists(folder))
        Refuse(u"there is no folder " + InQuotes(folder));
    const String target = PathText(full.native());
    if (FolderExists(target))
        Refuse(InQuotes(to) + u" is a folder");

    list->ExportsList(target);
    if (list->FileFailure)
        Refuse(u"can't write the list " + InQuotes(to) + u": " + FailureText(*list, target));
    return {list->Count(), LossIn(target, *list)};
}

}  // namespace tessarine::batch
