// Workbooks of other programs, from the folder that TESSARINE_CORPUS names; skipped without one.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "files/Files.h"
#include "office/sheets/WorkbookFile.h"
#include "office/sheets/XlsxWriter.h"
#include "platform/Failure.h"

namespace tessarine::sheets
{

namespace
{

struct Kind {
    const char* extension;  // and the name of the folder
    std::string (*write)(const Sheet& sheet);
};

class WorkbookCorpus : public testing::TestWithParam<Kind>
{
};

}  // namespace

TEST_P(WorkbookCorpus, IsReadAndKeptByAWorkbookThatWeWrite)
{
    const char* const corpus = std::getenv("TESSARINE_CORPUS");
    const std::filesystem::path folder = std::filesystem::path(corpus ? corpus : "") / GetParam().extension;
    if (!corpus || !std::filesystem::is_directory(folder))
        GTEST_SKIP() << "TESSARINE_CORPUS names no folder with workbooks in " << GetParam().extension;

    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != "." + std::string(GetParam().extension))
            continue;
        SCOPED_TRACE(entry.path().filename().string());
        ++files;
        const std::string bytes = ReadWholeFile(FromUtf8(entry.path().string()));
        if (entry.path().string().find("encrypt") != std::string::npos) {
            EXPECT_THROW(ReadWorkbook(bytes), Failure);
            continue;
        }

        const Sheet sheet = ReadWorkbook(bytes);
        const Sheet back = ReadWorkbook(GetParam().write(sheet));

        std::size_t cells = 0;
        sheet.ForEach([&](std::uint32_t row, std::uint32_t column, const Cell& cell) {
            EXPECT_EQ(back.At(row, column), cell) << row << ' ' << column;
            ++cells;
        });
        EXPECT_GT(cells, 0u);
        EXPECT_EQ(back.UsedRange(), sheet.UsedRange());
    }
    EXPECT_GT(files, 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WorkbookCorpus, testing::Values(Kind{"xls", WriteWorkbook}, Kind{"xlsx", WriteXlsx}),
                         [](const auto& parameter) { return parameter.param.extension; });

}  // namespace tessarine::sheets
