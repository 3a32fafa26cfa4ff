#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "BinaryFloors.h"
#include "Cases.h"
#include "Floors.h"
#include "Table.h"
#include "Usage.h"

namespace tessarine::bench
{

namespace
{

constexpr int Passes = 7;  // of each case and each floor, in mixed order

const std::filesystem::path DeckFolder = TESSARINE_BENCH_DECKS;

std::string FullName(const Case& item)
{
    return item.name + "/" + std::string(item.set.name);
}

/// The decks of a case, or, for one that changes them, fresh copies for `user` alone.
Paths DecksFor(const Case& item, const std::string& user)
{
    Paths decks = MakeDecks(item.set, DeckFolder);
    if (!item.changesDecks)
        return decks;
    std::string folderName = FullName(item) + " " + user;
    std::replace(folderName.begin(), folderName.end(), '/', ' ');
    const std::filesystem::path folder = DeckFolder / "copies" / folderName;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (std::filesystem::path& deck : decks) {
        const std::filesystem::path copy = folder / deck.filename();
        std::filesystem::copy_file(deck, copy);
        deck = copy;
    }
    return decks;
}

/// What is wrong with an outcome, or nothing: speed counts for correct work only.
std::optional<std::string> Complaint(const Case& item, const Outcome& outcome)
{
    if (outcome.files != item.set.decks)
        return "worked on " + std::to_string(outcome.files) + " decks of " + std::to_string(item.set.decks);
    if (outcome.failed > 0)
        return std::to_string(outcome.failed) + " decks failed";
    if ((outcome.occurrences > 0) != (item.hits == Case::Hits::Some))
        return "counted " + std::to_string(outcome.occurrences) + " occurrences";
    return {};
}

using Work = std::function<std::optional<std::string>(const Paths&)>;

/// Registers a pass over all decks of a case under a name. The decks are made before its first pass, so that a run of
/// a few cases makes no others.
void Register(const std::string& name, const Case& item, const std::string& user, const Work& work)
{
    const auto pass = [item, user, work, decks = Paths()](benchmark::State& state) mutable {
        if (decks.empty())
            decks = DecksFor(item, user);
        double cpu = 0;
        for ([[maybe_unused]] auto iteration : state) {
            const double before = ProcessorSeconds();
            std::optional<std::string> complaint;
            try {
                complaint = work(decks);
            } catch (const std::exception& error) {
                complaint = error.what();
            }
            cpu += ProcessorSeconds() - before;
            if (complaint) {
                state.SkipWithError(complaint->c_str());
                break;
            }
        }
        state.counters["cpu"] = cpu / static_cast<double>(state.iterations());
    };
    benchmark::RegisterBenchmark(name.c_str(), pass)->Iterations(1)->Repetitions(Passes);
}

/// Keeps the lowest timing of each name.
class Timings : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const std::string& name = run.run_name.function_name;
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
                failed_ = true;
                continue;
            }
            const double wall = run.real_accumulated_time / static_cast<double>(run.iterations);
            const double cpu = run.counters.at("cpu").value;
            const auto [place, isNew] = lowest_.try_emplace(name, Timing{cpu, wall});
            if (!isNew)
                place->second = {std::min(place->second.cpu, cpu), std::min(place->second.wall, wall)};
            std::fprintf(stderr, "%-60s %10.3f ms CPU\n", name.c_str(), cpu * 1e3);
        }
    }

    std::optional<Timing> Lowest(const std::string& name) const
    {
        const auto place = lowest_.find(name);
        return place == lowest_.end() ? std::nullopt : std::optional(place->second);
    }

    bool Failed() const { return failed_; }

private:
    std::map<std::string, Timing> lowest_;
    bool failed_ = false;
};

void RegisterCase(const Case& item)
{
    Register(FullName(item), item, "work", [item](const Paths& decks) { return Complaint(item, item.work(decks)); });
    for (const Floor& floor : item.floors) {
        const auto work = [floor](const Paths& decks) -> std::optional<std::string> {
            floor.work(decks);
            return {};
        };
        Register(FullName(item) + "/" + floor.name, item, floor.name, work);
    }
}

std::optional<Result> ResultOf(const Case& item, const Timings& timings)
{
    const std::optional<Timing> work = timings.Lowest(FullName(item));
    if (!work)
        return {};

    Result result{item.name, item.set, *work, {}, {}, 0, PeakKibibytesOfChild(FullName(item))};
    const auto size = item.set.form == DeckSet::Form::Binary ? WalkRecords : InflateSlidesAndNotes;
    for (const std::filesystem::path& deck : MakeDecks(item.set, DeckFolder))
        result.slideBytes += size(deck);
    for (const Floor& floor : item.floors) {
        if (const std::optional<Timing> timing = timings.Lowest(FullName(item) + "/" + floor.name)) {
            result.floorNames.push_back(floor.name);
            result.floors.push_back(*timing);
        }
    }
    return result;
}

/// The child's part of PeakKibibytesOfChild.
int PrintPeak(std::string_view name)
{
    for (const Case& item : AllCases()) {
        if (FullName(item) != name)
            continue;
        const Paths decks = DecksFor(item, "peak");
        if (Complaint(item, item.work(decks)))
            return 1;
        std::printf("%lld\n", static_cast<long long>(PeakKibibytes()));
        return 0;
    }
    return 1;
}

int RunAll(std::vector<char*> arguments)
{
    const auto isWrite = [](const char* argument) { return std::string_view(argument) == "--write"; };
    const bool writes = std::erase_if(arguments, isWrite) > 0;
    // Case and floor in mixed order: a slow minute of the machine then meets both.
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, mixed.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    const std::vector<Case> cases = AllCases();
    for (const Case& item : cases)
        RegisterCase(item);
    Timings timings;
    benchmark::RunSpecifiedBenchmarks(&timings);

    std::vector<Result> results;
    for (const Case& item : cases) {
        if (const std::optional<Result> result = ResultOf(item, timings))
            results.push_back(*result);
    }
    const std::string table = TableOf(results);
    std::printf("%s", table.c_str());
    std::filesystem::remove_all(DeckFolder / "copies");
    if (timings.Failed())
        return 1;
    if (writes)
        WriteIntoDocument(table, TESSARINE_PERFORMANCE_DOCUMENT);
    return 0;
}

}  // namespace

}  // namespace tessarine::bench

int main(int argc, char** argv)
{
    using namespace tessarine::bench;
    try {
        constexpr std::string_view peak = "--peak=";
        if (argc == 2 && std::string_view(argv[1]).starts_with(peak))
            return PrintPeak(std::string_view(argv[1]).substr(peak.size()));
        return RunAll({argv, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessarine-bench: %s\n", error.what());
        return 1;
    }
}
