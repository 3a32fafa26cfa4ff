// What importing and exporting a list of 30,000 pairs costs, beside the least that any program must do for it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "files/Files.h"
#include "ListFloors.h"
#include "model/Excel.h"
#include "model/Project.h"
#include "office/sheets/ExcelProvider.h"

namespace tessarine::bench
{

namespace
{

/// Near the 32,767 rows that an import takes; lists of such length come out of terminology databases.
constexpr int pairs = 30000;

std::shared_ptr<FindAndReplaceItems> MakeList()
{
    auto list = std::make_shared<FindAndReplaceItems>();
    for (int i = 0; i < pairs; ++i) {
        const String number = FromUtf8(std::to_string(i));
        auto options = std::make_shared<OptionSetting>();
        options->InSlides = true;
        options->InNotes = i % 3 == 0;
        options->MatchCase = i % 2 == 0;
        list->Add(u"Fabrikam produit n° " + number, u"Contoso product no. " + number, options, nullptr);
    }
    return list;
}

std::string PathOf(const std::string& format)
{
    return (std::filesystem::temp_directory_path() / ("tessarine-list-bench." + format)).string();
}

void Import(benchmark::State& state, const std::string& path)
{
    for ([[maybe_unused]] auto iteration : state) {
        FindAndReplaceItems list;
        if (!list.ImportList(FromUtf8(path)) || list.Count() != pairs)
            state.SkipWithError("the list was not imported");
    }
}

void Export(benchmark::State& state, const std::string& path, FindAndReplaceItems& list)
{
    for ([[maybe_unused]] auto iteration : state)
        list.ExportsList(FromUtf8(path));
    FindAndReplaceItems back;
    if (!back.ImportList(FromUtf8(path)) || back.Count() != pairs)
        state.SkipWithError("the list was not exported");
}

/// Prints the lowest processor time of each name: noise only ever adds.
class LowestTimes : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.error_occurred)
                std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
            failed_ = failed_ || run.error_occurred;
            if (run.aggregate_name == "lowest")
                std::printf("%-50s %8.1f ms CPU\n", run.run_name.function_name.c_str(), run.GetAdjustedCPUTime());
        }
    }

    bool Failed() const { return failed_; }

private:
    bool failed_ = false;
};

template <class Work>
void Register(const std::string& name, Work work)
{
    const auto lowest = [](const std::vector<double>& times) { return *std::ranges::min_element(times); };
    benchmark::RegisterBenchmark(name.c_str(), work)
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(7)
        ->ComputeStatistics("lowest", lowest)
        ->ReportAggregatesOnly();
}

void RegisterAll(FindAndReplaceItems& list)
{
    for (const std::string format : {"xls", "csv", "tab"}) {
        const std::string path = PathOf(format);
        list.ExportsList(FromUtf8(path));
        const std::string bytes = ReadWholeFile(FromUtf8(path));
        const bool isWorkbook = format == "xls";

        Register("ImportList/" + format, [=](benchmark::State& state) { Import(state, path); });
        Register("ImportList/" + format + (isWorkbook ? "/floor:step over records" : "/floor:split into fields"),
                 [=](benchmark::State& state) {
                     for ([[maybe_unused]] auto iteration : state)
                         benchmark::DoNotOptimize(isWorkbook ? CountRecords(path) : CountFields(path));
                 });
        Register("ExportsList/" + format, [=, &list](benchmark::State& state) { Export(state, path, list); });
        Register("ExportsList/" + format + "/floor:write the bytes, flush", [=](benchmark::State& state) {
            for ([[maybe_unused]] auto iteration : state)
                WriteFlushed(path + ".floor", bytes);
        });
        std::printf("%s: %zu bytes\n", path.c_str(), bytes.size());
    }
}

}  // namespace

}  // namespace tessarine::bench

int main(int argc, char** argv)
{
    using namespace tessarine;
    excel::SetProvider(sheets::CreateProvider());
    // Case and floor in mixed order: a slow minute of the machine then meets both.
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, mixed.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    const auto list = bench::MakeList();
    bench::RegisterAll(*list);
    bench::LowestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    for (const std::string format : {"xls", "csv", "tab"})
        for (const std::string end : {"", ".floor"})
            std::filesystem::remove(bench::PathOf(format) + end);
    return times.Failed() ? 1 : 0;
}
