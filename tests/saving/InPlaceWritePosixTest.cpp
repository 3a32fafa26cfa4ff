#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "files/FileDescriptor.h"
#include "log/ErrorLog.h"
#include "platform/Failure.h"
#include "saving/RunJournal.h"
#include "support/ErrorLogRecorder.h"
#include "support/KilledRun.h"
#include "support/TemporaryFolder.h"

// Writes into a file itself by a process that is killed half way.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::size_t pageLength = 4096;

class WriteInPlace : public testing::Test
{
protected:
    static std::string Content(std::size_t length, char seed)
    {
        std::string content(length, seed);
        for (std::size_t i = 0; i < length; i += pageLength)
            content[i] = static_cast<char>(i / pageLength + 1);
        return content;
    }

    /// Writes the first `length` bytes of the new content into the file, in a process that is killed then; all of them
    /// and the end for none.
    void KillAfter(std::optional<std::size_t> length, const std::string& content)
    {
        const String copy = folder_.Write(u".tessarine-abcdef", content);
        InKilledProcess([&] {
            const FileDescriptor file(open(ToUtf8(file_).c_str(), O_RDWR | O_CLOEXEC));
            InPlaceWrite write(ToUtf8(file_), file.get(), ToUtf8(copy));
            const std::size_t count = length.value_or(content.size());
            if (pwrite(file.get(), content.data(), count, 0) != static_cast<ssize_t>(count))
                return;
            if (!length && ftruncate(file.get(), static_cast<off_t>(content.size())) == 0)
                write.End();
            KillThisProcess();
        });
    }

    std::vector<std::string> NamesIn(const String& folder) const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder)))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
    const std::string old_ = Content(5 * pageLength + 9, 'o');
    const String file_ = folder_.Write(u"a.pptx", old_);
};

TEST_F(WriteInPlace, IsCompletedByTheNextStart)
{
    for (const std::size_t newLength : {2 * pageLength + 5, 5 * pageLength + 9, 9 * pageLength}) {
        const std::string content = Content(newLength, 'n');
        for (std::size_t length = pageLength; length < newLength; length += pageLength) {
            folder_.Write(u"a.pptx", old_);
            KillAfter(length, content);

            EXPECT_THAT(TextsOfRecovery(),
                        ElementsAre("a run that was killed had left it half written; the write is completed"));

            EXPECT_TRUE(ContentOf(file_) == content) << length << " of " << newLength;
            EXPECT_THAT(NamesIn(folder_.Path()), ElementsAre("a.pptx"));
            EXPECT_THAT(NamesIn(ApplicationDataFolder), IsEmpty());
        }
    }
}

TEST_F(WriteInPlace, ThatHasNotBegunLeavesTheOldFile)
{
    KillAfter(0, Content(100, 'n'));

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());

    EXPECT_TRUE(ContentOf(file_) == old_);
    EXPECT_THAT(NamesIn(folder_.Path()), ElementsAre("a.pptx"));
    EXPECT_THAT(NamesIn(ApplicationDataFolder), IsEmpty());
}

TEST_F(WriteInPlace, ThatHasEndedLeavesNothingToDo)
{
    const std::string content = Content(pageLength, 'n');
    KillAfter(std::nullopt, content);

    EXPECT_THAT(NamesIn(ApplicationDataFolder), IsEmpty());
    EXPECT_THAT(NamesIn(folder_.Path()), ElementsAre("a.pptx"));
    EXPECT_TRUE(ContentOf(file_) == content);
}

TEST_F(WriteInPlace, KeepsTheCopyWhenSomebodyHasWrittenSince)
{
    const std::string content = Content(4 * pageLength, 'n');
    KillAfter(pageLength, content);
    const std::string others = ContentOf(file_) + "more";
    folder_.Write(u"a.pptx", others);

    EXPECT_THAT(TextsOfRecovery(), ElementsAre("a run that was killed may have left it half written, and it has been "
                                               "changed since; its complete new content is kept in " +
                                               ToUtf8(folder_.PathOf(u".tessarine-abcdef.copy"))));

    EXPECT_TRUE(ContentOf(file_) == others);
    EXPECT_TRUE(ContentOf(folder_.PathOf(u".tessarine-abcdef.copy")) == content);
    EXPECT_THAT(NamesIn(ApplicationDataFolder), IsEmpty());
}

TEST_F(WriteInPlace, KeepsTheCopyWhenAnotherFileIsInPlace)
{
    KillAfter(pageLength, Content(4 * pageLength, 'n'));
    const std::string half = ContentOf(file_);
    std::filesystem::rename(ToUtf8(folder_.Write(u"b.pptx", half)), ToUtf8(file_));

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("its complete new content is kept in")));

    EXPECT_TRUE(ContentOf(file_) == half);
}

TEST_F(WriteInPlace, NeverGoesThroughALinkThatWasPutThereSince)
{
    KillAfter(pageLength, Content(4 * pageLength, 'n'));
    std::filesystem::rename(ToUtf8(file_), ToUtf8(folder_.PathOf(u"moved.pptx")));
    std::filesystem::create_symlink(ToUtf8(folder_.PathOf(u"moved.pptx")), ToUtf8(file_));
    const std::string half = ContentOf(file_);

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("it can't be opened now")));

    EXPECT_TRUE(ContentOf(file_) == half);
}

TEST_F(WriteInPlace, IsToldAsHalfDoneWhenItsCopyIsGone)
{
    KillAfter(pageLength, Content(4 * pageLength, 'n'));
    const std::string half = ContentOf(file_);
    std::filesystem::remove(ToUtf8(folder_.PathOf(u".tessarine-abcdef.copy")));

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("the copy of its new content is gone or changed")));

    EXPECT_TRUE(ContentOf(file_) == half);
}

TEST_F(WriteInPlace, GivesModeAndDatesBackAfterItIsCompleted)
{
    const timespec times[] = {{1000, 0}, {2000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, ToUtf8(file_).c_str(), times, 0), 0);
    SetMode(file_, 0444);
    const std::string content = Content(4 * pageLength, 'n');
    const String copy = folder_.Write(u".tessarine-abcdef", content);
    InKilledProcess([&] {
        RunJournal journal;
        journal.Begin(file_, GetAttributes(file_), GetFileDateTime(file_));
        ClearAttributes(file_, GetAttributes(file_));
        const FileDescriptor file(open(ToUtf8(file_).c_str(), O_RDWR | O_CLOEXEC));
        const InPlaceWrite write(ToUtf8(file_), file.get(), ToUtf8(copy));
        if (pwrite(file.get(), content.data(), pageLength, 0) == static_cast<ssize_t>(pageLength))
            KillThisProcess();
    });

    RecoverFromKilledRuns();

    EXPECT_TRUE(ContentOf(file_) == content);
    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_EQ(GetFileDateTime(file_).lastWrite.tv_sec, 2000);
}

TEST_F(WriteInPlace, ThatCannotBeNotedFailsAndLeavesTheCopyItsName)
{
    const String copy = folder_.Write(u".tessarine-abcdef", "new");
    const String before = ApplicationDataFolder;
    ApplicationDataFolder = folder_.PathOf(u"missing");
    const FileDescriptor file(open(ToUtf8(file_).c_str(), O_RDWR | O_CLOEXEC));

    EXPECT_THROW(InPlaceWrite(ToUtf8(file_), file.get(), ToUtf8(copy)), Failure);

    ApplicationDataFolder = before;
    EXPECT_EQ(ContentOf(copy), "new");
}

}  // namespace
}  // namespace tessarine
