#include "Table.h"

#include <algorithm>
#include <iomanip>
#include <numeric>
#include <ostream>

namespace tessarine::torture
{

namespace
{

constexpr int nameWidth = 18;
constexpr int numberWidth = 13;

void PrintRow(std::ostream& out, const Tally& tally)
{
    out << "| " << std::left << std::setw(nameWidth) << tally.name << " |" << std::right;
    out << std::setw(numberWidth) << tally.rounds << " |" << std::setw(numberWidth) << tally.files << " |";
    for (const std::size_t count : tally.harms)
        out << std::setw(numberWidth) << count << " |";
    out << '\n';
}

}  // namespace

bool Table::IsClean() const
{
    return std::ranges::all_of(tallies_, [](const Tally& tally) {
        return std::accumulate(tally.harms.begin(), tally.harms.end(), std::size_t{0}) == 0;
    });
}

void Table::Print(std::ostream& out) const
{
    out << "| " << std::left << std::setw(nameWidth) << "attack"
        << " |" << std::right;
    for (const char* title : {"rounds", "files checked"})
        out << std::setw(numberWidth) << title << " |";
    for (const char* title : harmNames)
        out << std::setw(numberWidth) << title << " |";
    out << "\n|" << std::string(nameWidth + 2, '-') << '|';
    for (std::size_t column = 0; column < 2 + harmNames.size(); ++column)
        out << std::string(numberWidth, '-') << ":|";
    out << '\n';

    Tally all;
    all.name = "all";
    for (const Tally& tally : tallies_) {
        PrintRow(out, tally);
        all.rounds += tally.rounds;
        all.files += tally.files;
        for (std::size_t harm = 0; harm < all.harms.size(); ++harm)
            all.harms[harm] += tally.harms[harm];
    }
    PrintRow(out, all);
    for (const auto& [kind, why] : skipped_)
        out << "\nNot played: " << kind << ", because " << why << '\n';
}

}  // namespace tessarine::torture
