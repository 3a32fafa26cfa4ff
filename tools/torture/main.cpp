// tessarine-torture: attacks the batch program and checks that no file is harmed.
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Files.h"
#include "Kinds.h"
#include "support/Surroundings.h"
#include "Table.h"

namespace
{

using namespace tessarine::torture;

constexpr std::string_view usage =
    "usage: tessarine-torture [MINUTES] [--kind NAME]... [--round NUMBER] [--quick] [--folder FOLDER] [--list]\n"
    "\n"
    "Attacks for so many minutes (default 5), each kind for its share. --round plays one round of one kind again,\n"
    "--quick plays a few rounds of each with a fixed seed. TESSARINE_TORTURE_SEED sets the seed.\n"
    "Exits with 1 when anything was found; the folders of such rounds are kept below FOLDER/found.\n";

struct Wishes {
    double minutes = 5;
    std::vector<std::string> kinds;  // none: all
    std::optional<std::size_t> round;
    bool isQuick = false;
    bool lists = false;
    Path folder = "build/torture";
};

/// Raises std::invalid_argument for what is no number.
template <class Number>
Number NumberIn(const std::string& text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument("not a number: " + text);
    return number;
}

Wishes ReadArguments(const std::vector<std::string>& arguments)
{
    Wishes wishes;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        const auto value = [&] {
            if (++at == arguments.size())
                throw std::invalid_argument(argument + " needs a value");
            return arguments[at];
        };
        if (argument == "--kind")
            wishes.kinds.push_back(value());
        else if (argument == "--round")
            wishes.round = NumberIn<std::size_t>(value());
        else if (argument == "--folder")
            wishes.folder = value();
        else if (argument == "--quick")
            wishes.isQuick = true;
        else if (argument == "--list")
            wishes.lists = true;
        else
            wishes.minutes = NumberIn<double>(argument);
    }
    return wishes;
}

std::uint64_t SeedFor(const Wishes& wishes)
{
    if (const char* text = std::getenv("TESSARINE_TORTURE_SEED"))
        return NumberIn<std::uint64_t>(text);
    return wishes.isQuick ? 1 : std::random_device{}();
}

std::vector<Kind> KindsFor(const Wishes& wishes)
{
    if (wishes.kinds.empty())
        return AllKinds();
    std::vector<Kind> kinds;
    for (const std::string& name : wishes.kinds) {
        for (const Kind& kind : AllKinds())
            if (kind.name == name)
                kinds.push_back(kind);
        if (kinds.empty() || kinds.back().name != name)
            throw std::invalid_argument("no such kind of attack: " + name);
    }
    return kinds;
}

Bounds BoundsFor(const Wishes& wishes, const Kind& kind, std::size_t kinds)
{
    if (wishes.round)
        return {0, 1, *wishes.round};
    if (wishes.isQuick)
        return {0, kind.quickRounds, 0};
    return {wishes.minutes * 60 / static_cast<double>(kinds), 0, 0};
}

int Torture(const Wishes& wishes)
{
    const std::vector<Kind> kinds = KindsFor(wishes);
    const std::uint64_t seed = SeedFor(wishes);
    std::cerr << "TESSARINE_TORTURE_SEED=" << seed << '\n';
    std::filesystem::create_directories(wishes.folder);
    const Path folder = std::filesystem::canonical(wishes.folder);
    std::filesystem::remove_all(folder / "found");

    Table table;
    for (const Kind& kind : kinds) {
        const std::string why = kind.whyNot ? kind.whyNot() : "";
        if (!why.empty()) {
            table.Skip(kind.name, why);
            continue;
        }
        std::cerr << "torture: " << kind.name << '\n';
        table.Add(Play(kind, BoundsFor(wishes, kind, kinds.size()), seed, folder));
    }
    table.Print(std::cout);
    return table.IsClean() ? 0 : 1;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    tessarine::PinSurroundings();
    try {
        const Wishes wishes = ReadArguments({arguments + 1, arguments + argumentCount});
        if (wishes.lists) {
            for (const Kind& kind : AllKinds())
                std::cout << kind.name << '\n';
            return 0;
        }
        return Torture(wishes);
    } catch (const std::invalid_argument& error) {
        std::cerr << "tessarine-torture: " << error.what() << '\n' << usage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "tessarine-torture: " << error.what() << '\n';
        return 2;
    }
}
