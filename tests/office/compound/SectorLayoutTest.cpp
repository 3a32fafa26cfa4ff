#include "office/builtin/compound/SectorLayout.h"

#include <gtest/gtest.h>

#include "platform/Failure.h"

namespace tessarine::test
{
namespace
{

using builtin::SectorLayout;

TEST(SectorLayout, HasTablesForAllSectorsAndThemselves)
{
    // Around the counts at which the table takes a sector more, up to those beyond the header's 109.
    for (std::uint64_t tables = 1; tables <= 240; ++tables) {
        for (std::uint64_t before = 0; before <= 4; ++before) {
            SectorLayout layout(9);
            layout.Add((tables * 128 - before) * 512);
            layout.AddTables();

            const std::uint64_t named = 109 + std::uint64_t{layout.ListSectors()} * 127;
            ASSERT_GE(layout.TableSectors() * 128u, layout.Count()) << tables << " - " << before;
            ASSERT_GE(named, layout.TableSectors()) << tables << " - " << before;
            ASSERT_LT((layout.TableSectors() - 1) * 128u, layout.Count()) << tables << " - " << before;
            ASSERT_EQ(layout.Table(9).size(), layout.TableSectors() * 512u);
            ASSERT_EQ(layout.List().size(), layout.ListSectors() * 512u);
            ASSERT_EQ(layout.HeaderList().size(), 436u);
        }
    }
}

TEST(SectorLayout, EndsBefore2GiB)
{
    constexpr std::uint64_t most = (std::uint64_t{1} << 31) - 4096;  // without the sector of the header
    SectorLayout layout(12);

    layout.Add(most - 4096);
    EXPECT_EQ(layout.Add(0), 0xFFFFFFFEu);
    try {
        layout.Add(4097);
        ADD_FAILURE() << "it should not fit";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::BadFormat);
        EXPECT_EQ(failure.description, u"The presentation would grow beyond 2 GiB");
    }
    EXPECT_EQ(layout.Add(4096), (most >> 12) - 1);
    EXPECT_THROW(layout.AddTables(), Failure);
    EXPECT_THROW(SectorLayout(9).Add(~std::uint64_t{0}), Failure);
}

}  // namespace
}  // namespace tessarine::test
