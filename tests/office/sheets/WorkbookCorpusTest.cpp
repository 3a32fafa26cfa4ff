// Workbooks of other programs, from the folder that TESSARINE_CORPUS names; skipped without one.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "files/Files.h"
#include "office/sheets/WorkbookFile.h"
#include "platform/Failure.h"

namespace tessarine::sheets
{

TEST(WorkbookCorpus, IsReadAndKeptByAWorkbookThatWeWrite)
{
    const char* const corpus = std::getenv("TESSARINE_CORPUS");
    if (!corpus || !std::filesystem::is_directory(std::filesystem::path(corpus) / "xls"))
        GTEST_SKIP() << "TESSARINE_CORPUS names no folder with workbooks in xls";

    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(std::filesystem::path(corpus) / "xls")) {
        if (entry.path().extension() != ".xls")
            continue;
        SCOPED_TRACE(entry.path().filename().string());
        ++files;
        const std::string bytes = ReadWholeFile(FromUtf8(entry.path().string()));
        if (entry.path().string().find("encrypt") != std::string::npos) {
            EXPECT_THROW(ReadWorkbook(bytes), Failure);
            continue;
        }

        const Sheet sheet = ReadWorkbook(bytes);
        const Sheet back = ReadWorkbook(WriteWorkbook(sheet));

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

}  // namespace tessarine::sheets
