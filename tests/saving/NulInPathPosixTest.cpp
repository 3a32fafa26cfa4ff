#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <ostream>

#include "files/AppendToFile.h"
#include "files/Files.h"
#include "files/ProfileText.h"
#include "files/RandomAccessFile.h"
#include "log/Treatments.h"
#include "saving/CopyFile.h"
#include "saving/FileDateTime.h"
#include "saving/ReplacementFile.h"
#include "support/ErrorLogRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

/// The system would cut the path at its NUL and treat the file whose name stands in front of it.
class NulInPath : public testing::Test
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(ContentOf(file_), content);
        EXPECT_EQ(ModeOf(file_), 0440u);
        EXPECT_EQ(FilesOfFolder(folder_.Path()).size(), 1u);
        EXPECT_TRUE(ContentOfFolder(folder_.Path()).folders.empty());
    }

    static constexpr auto content = "[section]\nkey=value\n";
    const TemporaryFolder folder_;
    const String file_ = folder_.Write(u"a.ppt", content);
    const String path_ = file_ + u'\0' + u".txt";
    const String folderPath_ = folder_.Path() + u'\0' + u"x";
    const bool isProtected_ = (SetMode(file_, 0440), true);
};

struct Row {
    const char* name;
    std::function<void(const String& path, const String& other)> call;

    friend std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }
};

class NulInPathOf : public NulInPath, public testing::WithParamInterface<Row>
{
};

TEST_P(NulInPathOf, IsRefusedAsAMissingFile)
{
    EXPECT_EQ(Skip([&] { GetParam().call(path_, file_); }), FailureNumber::FileNotFound);
}

INSTANTIATE_TEST_SUITE_P(
    Functions, NulInPathOf,
    testing::Values(
        Row{"FilesOfFolder", [](const String& path, const String&) { FilesOfFolder(path); }},
        Row{"ContentOfFolder", [](const String& path, const String&) { ContentOfFolder(path); }},
        Row{"FullPathOf", [](const String& path, const String&) { FullPathOf(path); }},
        Row{"ReadWholeFile", [](const String& path, const String&) { ReadWholeFile(path); }},
        Row{"CopyFileFrom", [](const String& path, const String& other) { CopyFile(path, other + u".bak"); }},
        Row{"CopyFileTo", [](const String& path, const String& other) { CopyFile(other, path); }},
        Row{"CopyFileBack", [](const String& path, const String& other) { CopyFileBack(other, path); }},
        Row{"DeleteFile", [](const String& path, const String&) { DeleteFile(path); }},
        Row{"GetAttributes", [](const String& path, const String&) { GetAttributes(path); }},
        Row{"SetAttributes",
            [](const String& path, const String&) {
                SetAttributes(path, {FileAttribute::Normal, 0600});
            }},
        Row{"ClearAttributes", [](const String& path, const String&) { ClearAttributes(path, {}); }},
        Row{"AppendToFile", [](const String& path, const String&) { AppendToFile(path, "line", 100); }},
        Row{"RandomAccessFile", [](const String& path, const String&) { const RandomAccessFile file(path); }},
        Row{"ReplacementFile", [](const String& path, const String&) { const ReplacementFile file(path); }},
        Row{"ReplacementFileMade",
            [](const String& path, const String&) {
                const ReplacementFile file(path, ReplacementFile::Missing::IsMade);
            }},
        Row{"ReplacementFileOfACopy",
            [](const String& path, const String&) { const ReplacementFile file(path, ReplacementFile::CopyOf{-1}); }},
        Row{"TouchFile", [](const String& path, const String&) { TouchFile(path); }}),
    [](const testing::TestParamInfo<Row>& row) { return row.param.name; });

TEST_F(NulInPath, AnswersNoToQuestions)
{
    const ErrorLogRecorder log;

    EXPECT_FALSE(FileExists(path_));
    EXPECT_FALSE(FolderExists(folderPath_));
    EXPECT_FALSE(EnsureFolderExists(folder_.PathOf(u"new") + u'\0'));
    EXPECT_FALSE(GetFileDateTime(path_).valid);
    EXPECT_EQ(ReadProfileValue(path_, u"section", u"key", 10), u"");
    EXPECT_EQ(RandomAccessFile::IdOf(path_), std::nullopt);
}

TEST_F(NulInPath, SetsNoDatesOfAnotherFile)
{
    const ErrorLogRecorder log;
    const FileTimes before = GetFileDateTime(file_);
    FileTimes times = before;
    times.lastWrite.tv_sec = 1000;

    EXPECT_FALSE(SetFileDateTime(path_, times));

    EXPECT_EQ(GetFileDateTime(file_).lastWrite.tv_sec, before.lastWrite.tv_sec);
}

}  // namespace
}  // namespace tessarine
