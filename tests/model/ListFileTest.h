#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "model/FindAndReplaceItems.h"
#include "model/ListColumns.h"
#include "model/Project.h"
#include "support/ErrorLogRecorder.h"
#include "support/FakeExcel.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

/// A folder for list files and a stand-in for Excel, with the error log and the messages recorded.
class ListFileTest : public testing::Test
{
protected:
    /// A sheet with the row of headers.
    static FakeSheet HeaderSheet()
    {
        FakeSheet sheet;
        for (std::int32_t column = 1; column <= ListColumnCount; ++column)
            sheet.cells[{1, column}] = String(ListHeaders[static_cast<std::size_t>(column) - 1]);
        return sheet;
    }

    /// The same with pairs below it, all switches off.
    static FakeSheet SheetWith(const std::vector<std::pair<String, String>>& pairs)
    {
        FakeSheet sheet = HeaderSheet();
        std::int32_t row = 1;
        for (const auto& [find, with] : pairs) {
            sheet.cells[{++row, 1}] = find;
            sheet.cells[{row, 2}] = with;
        }
        return sheet;
    }

    /// Makes a file of the folder that Excel opens as this workbook, and gives its path.
    String Put(const FakeSheet& sheet, StringView name = u"list.xls")
    {
        const String path = folder_.Write(name);
        excel_.Put(path, sheet);
        return path;
    }

    static std::shared_ptr<FindAndReplaceItem> AddItem(FindAndReplaceItems& list, const String& find,
                                                       const String& with = {}, const OptionSetting& setting = {})
    {
        return list.Add(find, with, std::make_shared<OptionSetting>(setting), nullptr);
    }

    /// "find -> with" of each item.
    static std::vector<std::string> PairsOf(const FindAndReplaceItems& list)
    {
        std::vector<std::string> pairs;
        for (const auto& item : list.NewEnum())
            pairs.push_back(ToUtf8(item->FindWhat + u" -> " + item->ReplaceWith));
        return pairs;
    }

    const ErrorLogRecorder log_;
    MessageRecorder messages_;
    const TemporaryFolder folder_;
    FakeExcel excel_;
};

}  // namespace tessarine
