#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "model/Excel.h"
#include "model/FindAndReplaceItems.h"
#include "model/ListColumns.h"
#include "office/sheets/ExcelProvider.h"
#include "support/ErrorLogRecorder.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

/// Lists and their files, with the built-in spreadsheet engine in the place of Excel.
class ListFiles : public testing::Test
{
protected:
    ListFiles() : previous_(excel::SetProvider(sheets::CreateProvider())) {}
    ~ListFiles() override { excel::SetProvider(previous_); }

    static void Add(FindAndReplaceItems& list, const String& find, const String& with = {},
                    const OptionSetting& setting = {})
    {
        list.Add(find, with, std::make_shared<OptionSetting>(setting), nullptr);
    }

    /// A text file of the headers and these lines, as a person may have written it.
    String Write(StringView name, const std::string& lines) const
    {
        const bool isTab = name.ends_with(u"tab");
        std::string text;
        for (const char16_t* header : ListHeaders)
            text += (text.empty() ? "" : isTab ? "\t" : ",") + ToUtf8(header);
        return folder_.Write(name, text + "\n" + lines);
    }

    static std::vector<String> FindsOf(const FindAndReplaceItems& list)
    {
        std::vector<String> finds;
        for (const auto& item : list.NewEnum())
            finds.push_back(item->FindWhat);
        return finds;
    }

    const ErrorLogRecorder log_;
    const MessageRecorder messages_;
    const TemporaryFolder folder_;

private:
    std::shared_ptr<excel::Provider> previous_;
};

}  // namespace tessarine
