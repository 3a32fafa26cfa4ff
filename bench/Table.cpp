#include "Table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace tessarine::bench
{

namespace
{

using Row = std::array<std::string, 9>;

std::string Decimal(double value, int places)
{
    std::array<char, 32> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.*f", places, value);
    return {text.data(), static_cast<std::size_t>(size)};
}

std::string ProcessorName()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    }
    return "unknown processor";
}

std::string Today()
{
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &utc)};
}

std::vector<Row> RowsOf(const Result& result)
{
    const double decks = result.set.decks;
    const auto milliseconds = [decks](double seconds) { return Decimal(seconds * 1e3 / decks, 3); };

    Row row{result.name,
            std::string(result.set.name),
            milliseconds(result.work.cpu),
            "",
            "",
            Decimal(decks / result.work.wall, 0),
            Decimal(static_cast<double>(result.slideBytes) / 1e6 / result.work.wall, 0),
            Decimal(static_cast<double>(result.peakKibibytes) / 1024, 1),
            ""};
    std::vector<Row> rows;
    for (std::size_t i = 0; i < result.floors.size(); ++i) {
        row[3] = milliseconds(result.floors[i].cpu);
        row[4] = Decimal(result.work.cpu / result.floors[i].cpu, 2);
        row[8] = result.floorNames[i];
        rows.push_back(row);
        row = {result.name, std::string(result.set.name), "", "", "", "", "", "", ""};
    }
    if (rows.empty())
        rows.push_back(row);
    return rows;
}

std::string Lines(const std::vector<Row>& rows)
{
    std::array<std::size_t, std::tuple_size_v<Row>> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }

    std::string text;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::string gap(widths[i] - rows[line][i].size(), ' ');
            const bool isText = i < 2 || i == 8;
            text += "| " + (isText ? rows[line][i] + gap : gap + rows[line][i]) + ' ';
        }
        text += "|\n";
        if (line > 0)
            continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text +=
                i < 2 || i == 8 ? "|-" + std::string(widths[i], '-') + '-' : "|-" + std::string(widths[i], '-') + ':';
        text += "|\n";
    }
    return text;
}

}  // namespace

std::string TableOf(const std::vector<Result>& results)
{
    std::vector<Row> rows{
        {"case", "decks", "CPU ms/deck", "floor ms/deck", "ratio", "decks/s", "MB/s", "peak MiB", "floor"}};
    for (const Result& result : results) {
        for (const Row& row : RowsOf(result))
            rows.push_back(row);
    }

    std::string text = Today() + ", `./dev bench`, " + ProcessorName() + ", g++ " + __VERSION__ + ":\n\n" + Lines(rows);
    for (const Result& result : results) {
        if (result.floors.empty())
            text += "\n" + result.name + ": " + Decimal(result.work.wall * 1e3, 1) + " ms from start to end, " +
                    Decimal(result.work.cpu * 1e3, 1) + " ms of CPU.\n";
    }
    return text;
}

void WriteIntoDocument(const std::string& table, const std::filesystem::path& document)
{
    constexpr std::string_view start = "<!-- measured -->\n";
    constexpr std::string_view end = "<!-- end of measured -->\n";

    std::ostringstream content;
    content << std::ifstream(document, std::ios::binary).rdbuf();
    std::string text = content.str();
    const std::size_t from = text.find(start);
    const std::size_t to = text.find(end);
    if (from == std::string::npos || to == std::string::npos || to < from)
        throw std::runtime_error(document.string() + " has no place for the table");
    text.replace(from + start.size(), to - from - start.size(), table);
    std::ofstream(document, std::ios::binary) << text;
}

}  // namespace tessarine::bench
