#include "office/sheets/Sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "platform/Failure.h"

namespace tessarine::sheets
{

TEST(Sheet, GivesBackEachKindOfValueAsItWasPut)
{
    Sheet sheet;

    sheet.Put(0, 0, true);
    sheet.Put(0, 1, 1.0);
    sheet.Put(0, 2, StringView(u"1"));
    sheet.Put(0, 3, CellError{0x07});

    EXPECT_EQ(sheet.At(0, 0), Cell(true));
    EXPECT_EQ(sheet.At(0, 1), Cell(1.0));
    EXPECT_EQ(sheet.At(0, 2), Cell(StringView(u"1")));
    EXPECT_EQ(sheet.At(0, 3), Cell(CellError{0x07}));
    EXPECT_EQ(sheet.At(0, 4), Cell());
    EXPECT_EQ(sheet.At(9, 0), Cell());
}

TEST(Sheet, ReplacesAValueAndTakesItAway)
{
    Sheet sheet;
    sheet.Put(2, 3, StringView(u"old"));

    sheet.Put(2, 3, StringView(u"new"));
    EXPECT_EQ(sheet.At(2, 3), Cell(StringView(u"new")));

    sheet.Put(2, 3, {});
    EXPECT_EQ(sheet.At(2, 3), Cell());
    EXPECT_EQ(sheet.UsedRange(), Sheet::Extent());
}

TEST(Sheet, FindsCellsPutInAnyOrder)
{
    Sheet sheet;

    for (const std::uint32_t column : {5u, 1u, 3u, 0u, 16383u})
        sheet.Put(1, column, static_cast<double>(column));

    for (const std::uint32_t column : {0u, 1u, 3u, 5u, 16383u})
        EXPECT_EQ(sheet.At(1, column), Cell(static_cast<double>(column)));
    EXPECT_EQ(sheet.At(1, 2), Cell());
    EXPECT_EQ(sheet.At(1, 4), Cell());
}

TEST(Sheet, UsesTheRectangleAroundItsValues)
{
    Sheet sheet;

    sheet.Put(3, 7, true);
    sheet.Put(5, 2, StringView());

    EXPECT_EQ(sheet.UsedRange(), (Sheet::Extent{3, 3, 2, 6}));
}

TEST(Sheet, HasAUsedRangeOfOneCellWhenEmpty)
{
    EXPECT_EQ(Sheet().UsedRange(), (Sheet::Extent{0, 1, 0, 1}));
}

TEST(Sheet, VisitsItsCellsInOrder)
{
    Sheet sheet;
    sheet.Put(1, 1, true);
    sheet.Put(1, 0, true);
    sheet.Put(0, 4, true);
    std::vector<std::tuple<std::uint32_t, std::uint32_t, Cell>> visited;

    sheet.ForEach(
        [&](std::uint32_t row, std::uint32_t column, const Cell& cell) { visited.emplace_back(row, column, cell); });

    EXPECT_THAT(visited, testing::ElementsAre(std::tuple(0, 4, Cell(true)), std::tuple(1, 0, Cell(true)),
                                              std::tuple(1, 1, Cell(true))));
}

TEST(Sheet, RefusesWhatLiesBeyondItsLimits)
{
    const auto numberOf = [](auto action) {
        Sheet sheet({.fileBytes = 0, .cells = 2, .textUnits = 4, .formats = 0});
        try {
            action(sheet);
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    };

    EXPECT_EQ(numberOf([](Sheet& sheet) { sheet.Put(Sheet::maxRows, 0, true); }), 1004);
    EXPECT_EQ(numberOf([](Sheet& sheet) { sheet.Put(0, Sheet::maxColumns, true); }), 1004);
    EXPECT_EQ(numberOf([](Sheet& sheet) { sheet.Put(Sheet::maxRows - 1, Sheet::maxColumns - 1, true); }), 0);
    EXPECT_EQ(numberOf([](Sheet& sheet) { sheet.AddText(u"12345"); }), 1004);
    EXPECT_EQ(numberOf([](Sheet& sheet) { sheet.AddText(u"1234"); }), 0);
    EXPECT_EQ(numberOf([](Sheet& sheet) {
                  for (std::uint32_t column = 0; column < 3; ++column)
                      sheet.Put(0, column, true);
              }),
              1004);
}

}  // namespace tessarine::sheets
