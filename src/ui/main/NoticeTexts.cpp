#include "ui/main/NoticeTexts.h"

#include "app/LanguageText.h"
#include "files/FileFailure.h"
#include "i18n/QtText.h"
#include "model/ListColumns.h"
#include "report/WithoutPath.h"

namespace tessarine
{

namespace
{

String KeyOf(FileTrouble trouble)
{
    switch (trouble) {
        case FileTrouble::FileMissing:
            return u"FileMissing";
        case FileTrouble::FolderMissing:
            return u"FolderMissing";
        case FileTrouble::NotPermitted:
            return u"NotPermitted";
        case FileTrouble::InUse:
            return u"InUse";
        case FileTrouble::DiskFull:
            return u"DiskFull";
        case FileTrouble::OutOfMemory:
            return u"OutOfMemory";
        case FileTrouble::DeviceFault:
            break;  // all the rest, of which the system's own words say more
    }
    return {};
}

QString AsSentence(QString text)
{
    return text.endsWith(u'.') ? text : text + u'.';
}

}  // namespace

QString NoticeText(StringView key, const TextValues& values)
{
    return FilledText(ToQt(GetLngString(u"frmMain", u"Notice." + String(key))), values);
}

QString ReasonOf(const Failure& failure, const String& path)
{
    const auto trouble = FileTroubleOf(failure);
    const String key = trouble ? KeyOf(*trouble) : String();
    return key.empty() ? AsSentence(ToQt(WithoutPath(failure.Reason(), path))) : NoticeText(key);
}

QString ReasonOf(ProjectFault fault)
{
    switch (fault) {
        case ProjectFault::OtherKind:
            return NoticeText(u"OtherKind");
        case ProjectFault::OtherVersion:
            return NoticeText(u"OtherVersion");
        case ProjectFault::Cut:
            return NoticeText(u"Cut");
        case ProjectFault::Damaged:
            break;
    }
    return NoticeText(u"Damaged");
}

QString ReasonOf(const ListFault& fault, const String& path)
{
    switch (fault.kind) {
        case ListFault::Kind::OtherExtension:
            return ToQt(GetLngString(u"Global Msg", u"1039"));
        case ListFault::Kind::ColumnCount:
            return NoticeText(u"Columns", {.d = fault.columns, .i = QString::number(ListColumnCount)});
        case ListFault::Kind::Header:
            return NoticeText(u"Header", {.d = fault.column, .i = ToQt(fault.found), .s = ToQt(fault.wanted)});
        case ListFault::Kind::TooManyRows:
            return NoticeText(u"TooManyRows");
        case ListFault::Kind::ErrorInRow:
            return NoticeText(u"ErrorInRow", {.d = fault.row});
        case ListFault::Kind::File:
            return ReasonOf(*fault.failure, path);
        case ListFault::Kind::FileMissing:
            break;
    }
    return NoticeText(u"FileMissing");
}

}  // namespace tessarine
