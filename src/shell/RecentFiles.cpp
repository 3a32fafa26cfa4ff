#include "shell/RecentFiles.h"

#include <utility>

#include <QAction>
#include <QMenu>

#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"
#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"

namespace tessarine
{

namespace
{

constexpr StringView place = u"Module modMRU";
constexpr StringView emptyCaption = u"(Empty)";
constexpr std::int32_t mostPaths = 10;

const String section = u"MRUFiles";

String KeyOf(std::int32_t number)
{
    return FromQt(QString::number(number));
}

String Entry(std::int32_t number)
{
    return GetSetting(String(ApplicationTitle), section, KeyOf(number));
}

}  // namespace

RecentFiles::RecentFiles(QMenu& mnuRecent, std::function<void(std::int32_t)> click)
    : menu_(mnuRecent), click_(std::move(click))
{
    LoadItem();
    // Stands in the menu for as long as no file has been used.
    SetItem(0, String(emptyCaption), {});
}

void RecentFiles::SaveMRUFileList(String Path)
{
    LogAndReturn({u"SaveMRUFileList", place}, [&] {
        std::int32_t number = 0;
        for (;; ++number) {
            const bool isFree = Entry(number).empty();
            // The store only grows, so this may take a while; the windows stay alive meanwhile.
            DeliverPendingEvents();
            if (isFree)
                break;
        }
        SaveSetting(String(ApplicationTitle), section, KeyOf(number), Path);
        AddMRUItem(Path);
        UnloadItems();
        SetItem(0, String(emptyCaption), {});
        MRUCount = 0;
        GetMRUFileList();
    });
}

void RecentFiles::GetMRUFileList()
{
    LogAndReturn({u"GetMRUFileList", place}, [&] {
        FeedMenu(ReadStore());
        NumberItems();
    });
}

/// The paths in the store, oldest first.
std::vector<String> RecentFiles::ReadStore()
{
    std::vector<String> MRUList;
    MRUStoreCount = 0;
    for (;;) {
        String path = Entry(MRUStoreCount);
        // Counts the empty entry that ends the store as well.
        MRUStoreCount = CheckedSum(MRUStoreCount, 1);
        if (path.empty())
            return MRUList;
        if (FoldCase(path) != FoldCase(emptyCaption))
            MRUList.push_back(std::move(path));
    }
}

void RecentFiles::FeedMenu(const std::vector<String>& MRUList)
{
    constexpr std::size_t mostItems = mostPaths + 1;
    if (MRUList.size() < mostItems) {
        for (const String& path : MRUList)
            AddMRUItem(path);
        return;
    }
    for (std::int32_t position = 1; position < MRUStoreCount; ++position) {
        // With an entry passed over, the last position has no path. Intended: the failure leaves the menu bare, because
        // an entry "(Empty)" comes from no use of a file, and a store that holds one is not ours to trust.
        if (static_cast<std::size_t>(position) > MRUList.size())
            throw Failure(FailureNumber::SubscriptOutOfRange, u"Subscript out of range");
        AddMRUItem(MRUList[static_cast<std::size_t>(position - 1)]);
    }
}

void RecentFiles::NumberItems()
{
    // The last item is the "(Empty)" one pushed down from the front or, in a full menu, the oldest path.
    const std::int32_t last = HighestIndex();
    Item(last).setVisible(last == 0);
    for (std::int32_t i = 0; i < last; ++i)
        Item(i).setText(u'&' + QString::number(i + 1) + "    " + Item(i).text());
}

void RecentFiles::AddMRUItem(const String& Path)
{
    LogAndReturn({u"AddMRUItem", place}, [&] {
        const std::int32_t index = CheckForDuplicateMRU(Path);
        if (index == -1)
            AddMenuElement(Path);
        else
            ReorderMRUList(Path, index);
    });
}

std::int32_t RecentFiles::CheckForDuplicateMRU(const String& Path) const
{
    const String folded = FoldCase(Path);
    for (std::int32_t i = 0; i <= MRUCount; ++i)
        if (FoldCase(Caption(i)) == folded)
            return i;
    return -1;
}

void RecentFiles::ReorderMRUList(const String& Path, std::int32_t Index)
{
    MoveDown(Index);
    SetItem(0, Path, Path);
}

void RecentFiles::AddMenuElement(const String& Path)
{
    if (MRUCount < mostPaths) {
        ++MRUCount;
        LoadItem();
    }
    MoveDown(MRUCount);
    SetItem(0, Path, Path);
}

String RecentFiles::Caption(std::int32_t Index) const
{
    return FromQt(Item(Index).text());
}

String RecentFiles::Tag(std::int32_t Index) const
{
    return FromQt(Item(Index).data().toString());
}

std::int32_t RecentFiles::HighestIndex() const
{
    return static_cast<std::int32_t>(mnuDefRF_.size()) - 1;
}

void RecentFiles::LoadItem()
{
    const auto index = static_cast<std::int32_t>(mnuDefRF_.size());
    QAction* const item = menu_.addAction(QString());
    item->setObjectName(QStringLiteral("mnuDefRF(%1)").arg(index));
    QObject::connect(item, &QAction::triggered, item, [this, index] { click_(index); });
    mnuDefRF_.push_back(item);
}

void RecentFiles::UnloadItems()
{
    for (; mnuDefRF_.size() > 1; mnuDefRF_.pop_back()) {
        QAction* const item = mnuDefRF_.back();
        menu_.removeAction(item);
        // Only later: the menu is built anew from within a click on one of its items. Until then nothing finds it.
        item->setParent(nullptr);
        item->deleteLater();
    }
}

/// Items `from` down to 1 take caption and tag of the item before them.
void RecentFiles::MoveDown(std::int32_t from)
{
    // From the far end, so that each item is handed on before it is written over.
    for (std::int32_t i = from; i >= 1; --i)
        SetItem(i, Caption(i - 1), Tag(i - 1));
}

QAction& RecentFiles::Item(std::int32_t Index) const
{
    if (Index < 0 || static_cast<std::size_t>(Index) >= mnuDefRF_.size())
        throw Failure(FailureNumber::SubscriptOutOfRange, u"Subscript out of range");
    return *mnuDefRF_[static_cast<std::size_t>(Index)];
}

void RecentFiles::SetItem(std::int32_t Index, const String& caption, const String& tag)
{
    QAction& item = Item(Index);
    item.setText(ToQt(caption));
    item.setData(ToQt(tag));
}

}  // namespace tessarine
