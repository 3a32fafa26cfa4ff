#include "support/ErrorLogRecorder.h"

#include "log/ErrorLog.h"

namespace tessarine
{

ErrorLogRecorder::ErrorLogRecorder() : previousFolder_(ApplicationDataFolder)
{
    SetMode(folder_.Path(), 0777);  // Tests that put down the superuser's rights log, too.
    ApplicationDataFolder = folder_.Path();
}

ErrorLogRecorder::~ErrorLogRecorder()
{
    ApplicationDataFolder = previousFolder_;
}

std::string ErrorLogRecorder::Bytes() const
{
    const std::string content = ContentOf(folder_.PathOf(u"Errors.Log"));
    return content == "<missing>" ? "" : content;
}

std::vector<std::string> ErrorLogRecorder::Lines() const
{
    std::vector<std::string> lines = LinesWithFiles();
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("In file "); });
    return lines;
}

std::vector<std::string> ErrorLogRecorder::LinesWithFiles() const
{
    std::vector<std::string> lines;
    const std::string bytes = Bytes();
    std::size_t begin = 0;
    for (std::size_t end = bytes.find("\r\n"); end != std::string::npos; end = bytes.find("\r\n", begin)) {
        const std::string line = bytes.substr(begin, end - begin);
        lines.push_back(line.substr(0, line.rfind("- ")));
        begin = end + 2;
    }
    return lines;
}

}  // namespace tessarine
