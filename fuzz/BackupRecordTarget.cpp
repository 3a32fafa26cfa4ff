// The record of a folder's backups, line by line.
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "run/BackupRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    while (!input.empty()) {
        const std::size_t end = std::min(input.find('\n'), input.size());
        const std::string_view line = input.substr(0, end);
        input.remove_prefix(std::min(end + 1, input.size()));
        const auto backup = RecordedBackupIn(line);
        if (!backup)
            continue;
        const std::string again = LineOf(*backup);
        const auto readAgain = RecordedBackupIn(std::string_view(again).substr(0, again.size() - 1));
        fuzz::Require(again.ends_with('\n') && readAgain && readAgain->name == backup->name &&
                          readAgain->original == backup->original && readAgain->content == backup->content,
                      "a backup that is read can be written and read");
    }
    return 0;
}
