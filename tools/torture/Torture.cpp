#include "Torture.h"

#include <chrono>
#include <fstream>
#include <iostream>
#include <map>
#include <numeric>
#include <utility>

namespace tessarine::torture
{

namespace
{

constexpr std::size_t keptRounds = 8;

/// Mixes seed, name and number, so that no two rounds share their random numbers.
std::uint64_t SeedOf(std::uint64_t seed, const std::string& name, std::size_t number)
{
    std::uint64_t hash = 0xCBF29CE484222325 ^ seed;
    for (const char character : name + "#" + std::to_string(number))
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    return hash;
}

void RemoveAll(const std::filesystem::path& folder)
{
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

/// A find with its harm, numbers left out, so that equal ones can be counted.
std::string SortOf(const Found& found)
{
    std::string sort = std::string(harmNames[static_cast<std::size_t>(found.harm)]) + ": " + found.what;
    sort = sort.substr(0, sort.find('\n'));
    std::erase_if(sort, [](char character) { return character >= '0' && character <= '9'; });
    return sort;
}

void Keep(const Round& round, const std::filesystem::path& target, const std::string& again)
{
    {
        std::ofstream what(round.Folder() / "what.txt");
        for (const Found& found : round.AllFound())
            what << harmNames[static_cast<std::size_t>(found.harm)] << ": " << found.what << '\n';
        what << '\n';
        for (const std::string& line : round.Notes())
            what << line << '\n';
        what << "\nagain: " << again << '\n';
    }
    RemoveAll(target);
    std::filesystem::create_directories(target.parent_path());
    std::filesystem::rename(round.Folder(), target);
}

}  // namespace

std::size_t Spread(std::size_t round, std::size_t count)
{
    // A step near the golden section, without a common divisor with the count.
    std::size_t step = count * 618 / 1000 + 1;
    while (std::gcd(step, count) != 1)
        ++step;
    return round % count * step % count;
}

Round::Round(std::filesystem::path folder, std::size_t number, std::uint64_t seed)
    : random(seed), folder_(std::move(folder)), number_(number)
{
}

Tally Play(const Kind& kind, const Bounds& bounds, std::uint64_t seed, const std::filesystem::path& work)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    Tally tally;
    tally.name = kind.name;
    std::size_t kept = 0;
    std::map<std::string, std::size_t> sorts;
    for (std::size_t number = bounds.firstRound;; ++number) {
        if (bounds.rounds != 0 && tally.rounds == bounds.rounds)
            break;
        // One round at least, however short the time.
        if (bounds.seconds > 0 && tally.rounds > 0 &&
            std::chrono::duration<double>(Clock::now() - start).count() >= bounds.seconds)
            break;
        const std::string name = kind.name + "-" + std::to_string(number);
        const std::filesystem::path folder = work / name;
        RemoveAll(folder);
        std::filesystem::create_directories(folder);
        Round round(folder, number, SeedOf(seed, kind.name, number));
        try {
            kind.play(round);
        } catch (const std::exception& error) {
            round.Add(Harm::Other, std::string("the attack itself failed: ") + error.what());
        }
        ++tally.rounds;
        tally.files += round.Files();
        bool isNews = false;
        for (const Found& found : round.AllFound()) {
            ++tally.harms[static_cast<std::size_t>(found.harm)];
            isNews |= ++sorts[SortOf(found)] == 1;
        }

        if (isNews && kept < keptRounds) {
            ++kept;
            for (const Found& found : round.AllFound())
                std::cerr << name << ": " << harmNames[static_cast<std::size_t>(found.harm)] << ": " << found.what
                          << '\n';
            const std::filesystem::path target = work / "found" / name;
            Keep(round, target,
                 "TESSARINE_TORTURE_SEED=" + std::to_string(seed) + " ./dev torture --kind " + kind.name + " --round " +
                     std::to_string(number));
            std::cerr << "  kept in " << target.string() << '\n';
        }
        RemoveAll(folder);
    }
    for (const auto& [sort, count] : sorts)
        std::cerr << "  " << count << " x " << sort << '\n';
    return tally;
}

}  // namespace tessarine::torture
