// Files of plain pairs: the first byte says whether the rest is comma or tab separated text or JSON.
#include <cstdint>
#include <string>
#include <string_view>

#include "batch/PairFormats.h"
#include "NoLeakCheck.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

using batch::FilePair;

std::vector<FilePair> Read(char kind, std::string_view bytes)
{
    const String text = batch::DecodePairFile(bytes);
    if (kind == 'j')
        return batch::ReadJsonPairs(text);
    return batch::ReadSeparatedPairs(text, kind == 't' ? u'\t' : u',');
}

void AreSame(const std::vector<FilePair>& read, const std::vector<FilePair>& again)
{
    Require(read.size() == again.size(), "written pairs are as many");
    for (std::size_t at = 0; at < read.size(); ++at) {
        const FilePair& left = read[at];
        const FilePair& right = again[at];
        Require(left.find == right.find && left.with.value_or(String()) == right.with, "texts read back");
        Require(left.setting.MatchCase == right.setting.MatchCase &&
                    left.setting.MatchWholeWord == right.setting.MatchWholeWord &&
                    left.setting.InSlides == right.setting.InSlides && left.setting.InLinks == right.setting.InLinks,
                "options read back");
    }
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    if (size == 0)
        return 0;
    try {
        const auto pairs = fuzz::Read(static_cast<char>(data[0]), {reinterpret_cast<const char*>(data) + 1, size - 1});
        fuzz::AreSame(pairs, fuzz::Read('t', batch::WriteTabSeparatedPairs(pairs)));
        fuzz::AreSame(pairs, fuzz::Read('j', batch::WriteJsonPairs(pairs)));
    } catch (const Failure& failure) {
        // refusing is a good answer; all else is a find
        fuzz::Require(failure.number == FailureNumber::InvalidProcedureCall, "a refusal has its number");
    }
    return 0;
}
