#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>

#include "StandIn.h"
#include "support/SampleDecks.h"
#include "SystemHandle.h"

// The batch program over a folder, with PowerPoint's stand-in and without.

namespace tessarine::test
{
namespace
{

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct Outcome {
    DWORD status = 0;
    std::string output;
};

class FolderRun : public testing::Test
{
protected:
    FolderRun() { WriteSampleDecks(DecksOf(u"decks")); }

    fs::path DecksOf(StringView name) const { return {folder.PathOf(name)}; }

    /// The folder's files by their paths in it.
    std::map<std::string, std::string> FilesOf(StringView name) const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(DecksOf(name)))
            if (entry.is_regular_file())
                files[ToUtf8(fs::relative(entry.path(), DecksOf(name)).generic_u16string())] =
                    ContentOf(entry.path().u16string());
        return files;
    }

    /// A copy of the decks under a name of their own.
    void Copy(StringView name) const { fs::copy(DecksOf(u"decks"), DecksOf(name), fs::copy_options::recursive); }

    /// Runs the batch program over a folder.
    Outcome Run(const std::wstring& command, StringView name) const
    {
        const String outputPath = folder.PathOf(u"output");
        SECURITY_ATTRIBUTES inherited{};
        inherited.nLength = sizeof inherited;
        inherited.bInheritHandle = TRUE;
        const SystemHandle output(CreateFileW(fs::path(outputPath).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = output.get();
        startup.hStdError = output.get();
        std::wstring line = L'"' + standin::FileBesideThisProgram(TESSARINE_BATCH) + L"\" " + command +
                            L" --recurse \"" + DecksOf(name).wstring() + L'"';
        PROCESS_INFORMATION process{};
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process))
            throw std::runtime_error("the batch program can't be started");
        CloseHandle(process.hThread);
        const SystemHandle owner(process.hProcess);
        WaitForSingleObject(process.hProcess, INFINITE);
        Outcome outcome;
        GetExitCodeProcess(process.hProcess, &outcome.status);
        outcome.output = ContentOf(outputPath);
        return outcome;
    }

    TemporaryFolder folder;
};

const std::wstring replaceAll = L"replace --find Fabrikam --with \"Contoso Ltd\" --find 2023 --with 2024 --in all";

TEST_F(FolderRun, WithPowerPointGivesTheFilesOfTheBuiltInEngine)
{
    Copy(u"by PowerPoint");
    Copy(u"built-in");
    const StandIn standIn(standin::PowerPointProgram);

    const Outcome powerPoint = Run(replaceAll + L" --engine powerpoint", u"by PowerPoint");
    const Outcome builtIn = Run(replaceAll + L" --engine builtin", u"built-in");

    EXPECT_THAT(powerPoint.output, StartsWith("Engine: PowerPoint"));
    EXPECT_THAT(builtIn.output, StartsWith("Engine: built-in"));
    EXPECT_EQ(powerPoint.status, builtIn.status) << powerPoint.output << builtIn.output;
    EXPECT_NE(FilesOf(u"built-in"), FilesOf(u"decks"));
    EXPECT_EQ(FilesOf(u"by PowerPoint"), FilesOf(u"built-in"));
    EXPECT_EQ(standIn.Calls().back(), "Application.Quit");
}

TEST_F(FolderRun, FindsTheSameAndChangesNothing)
{
    Copy(u"found");
    const StandIn standIn(standin::PowerPointProgram);
    const std::wstring find = L"find --find Fabrikam --in all --format json --engine ";

    std::string powerPoint = Run(find + L"powerpoint", u"found").output;
    const std::string builtIn = Run(find + L"builtin", u"found").output;

    const std::size_t engine = powerPoint.find(R"("engine":"powerpoint")");
    ASSERT_NE(engine, std::string::npos) << powerPoint;
    powerPoint.replace(engine, std::string(R"("engine":"powerpoint")").size(), R"("engine":"builtin")");
    EXPECT_EQ(powerPoint, builtIn);
    EXPECT_EQ(FilesOf(u"found"), FilesOf(u"decks"));
}

TEST_F(FolderRun, TakesPowerPointWithoutBeingTold)
{
    const StandIn standIn(standin::PowerPointProgram);

    EXPECT_THAT(Run(L"find --find Fabrikam", u"decks").output, StartsWith("Engine: PowerPoint"));
    EXPECT_EQ(std::ranges::count(standIn.Calls(), "CreateInstance"), 1) << "started once, and not to try";
    EXPECT_THAT(Run(L"replace --skip-signed --find Fabrikam --with x", u"decks").output,
                StartsWith("Engine: built-in"));
}

TEST_F(FolderRun, FallsBackWithoutPowerPointUnlessItIsNamed)
{
    EXPECT_THAT(Run(L"find --find Fabrikam", u"decks").output, StartsWith("Engine: built-in"));

    const Outcome named = Run(replaceAll + L" --engine powerpoint", u"decks");
    EXPECT_EQ(named.status, 2u);
    EXPECT_THAT(named.output, HasSubstr("--engine powerpoint: PowerPoint can't be started: ActiveX component"));
}

}  // namespace
}  // namespace tessarine::test
