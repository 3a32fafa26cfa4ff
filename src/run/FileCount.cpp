#include "run/FileCount.h"

#include "files/Files.h"
#include "files/ReadOnly.h"
#include "log/Treatments.h"
#include "run/FileWalk.h"
#include "run/JobInputs.h"

namespace tessarine
{

FileTotals CountFiles(const FileChoice& choice, const std::function<bool()>& isToStop)
{
    FileTotals totals;
    Skip([&] {
        FileWalk walk(PatternsIn(choice.patterns));
        walk.TakesSubfolders = choice.withSubfolders;
        walk.IsToStop = isToStop;
        walk.Found = [&](const String& path) {
            ++totals.files;
            totals.readOnly += IsReadOnly(path) ? 1 : 0;
        };
        walk.PassedOver = [&](StringView procedure, const String&, const Failure&) {
            totals.unreadFolders += procedure == u"RetriveFolder" ? 1 : 0;
        };
        totals.isThere = choice.isListed ? FileExists(choice.list) : FolderExists(choice.folder);
        if (!totals.isThere)
            return;
        if (choice.isListed)
            walk.RetriveFile(choice.list);
        else
            walk.RetriveFolder(FullPathOf(choice.folder));
        totals.hiddenByLineFeeds = walk.HiddenByLineFeeds;
    });
    return totals;
}

}  // namespace tessarine
