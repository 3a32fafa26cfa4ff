#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <utility>

#include <gmock/gmock.h>

#include "model/Project.h"
#include "model/SearchLocations.h"
#include "office/builtin/Provider.h"
#include "office/windows/PowerPointProvider.h"
#include "StandIn.h"
#include "standin/Counted.h"
#include "standin/ServedPowerPoint.h"
#include "support/Deck.h"
#include "support/ErrorLogRecorder.h"

// How many calls a run makes, by member: the table that the page on speed shows.

namespace tessarine::test
{
namespace
{

using standin::PowerPointProgram;
using testing::IsEmpty;

/// "TextRange.Find" of a call with its arguments, "Hyperlink.Address =" of one that puts a value.
std::string MemberOf(const std::string& call)
{
    return call.substr(
        0, std::min(call.find('('), call.find(" = ") == std::string::npos ? std::string::npos : call.find(" = ") + 2));
}

/// Calls by member.
using Counts = std::map<std::string, std::size_t>;

class CountingWatch final : public standin::CallWatch
{
public:
    void Before(const std::string& call) override
    {
        const std::scoped_lock lock(mutex_);
        ++counts_[MemberOf(call)];
    }
    void After(const std::string&) override {}
    void LookedUp(const std::string&) override {}

    Counts Taken() const
    {
        const std::scoped_lock lock(mutex_);
        return counts_;
    }

private:
    mutable std::mutex mutex_;
    Counts counts_;
};

/// Gives everybody a new application over the built-in engine.
class Factory final : public standin::Counted<IClassFactory>
{
public:
    explicit Factory(std::shared_ptr<standin::CallWatch> watch) : watch_(std::move(watch)) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override
    {
        watch_->Before("CreateInstance");
        const auto application =
            standin::ServePowerPoint(watch_, builtin::CreateProvider()->CreateApplication(), [] {});
        return application->QueryInterface(id, object);
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    const std::shared_ptr<standin::CallWatch> watch_;
};

/// Serves PowerPoint's name in this process, so that a call costs next to nothing. What is called is the same: objects
/// of the system's, by their names and numbers.
class PowerPointInHere
{
public:
    PowerPointInHere()
    {
        if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) ||
            FAILED(CoRegisterClassObject(PowerPointProgram.id, factory_.get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                         &cookie_)))
            throw std::runtime_error("the stand-in can't be served");
    }
    ~PowerPointInHere()
    {
        CoRevokeClassObject(cookie_);
        CoUninitialize();
    }
    PowerPointInHere(const PowerPointInHere&) = delete;
    PowerPointInHere& operator=(const PowerPointInHere&) = delete;

    Counts Calls() const { return watch_->Taken(); }

private:
    const StandIn registered_{PowerPointProgram};
    const std::shared_ptr<CountingWatch> watch_ = std::make_shared<CountingWatch>();
    const standin::Reference<IClassFactory> factory_{new Factory(watch_)};
    DWORD cookie_ = 0;
};

/// 60 slides with a title, a text box and notes; every third one holds what the first pair seeks, in each of them.
std::string DeckOfSixty()
{
    Deck deck;
    for (int i = 0; i < 60; ++i) {
        const String text = i % 3 == 0 ? u"Fabrikam" : u"nothing";
        deck.Slide(Title(text), TextBox(text), NotesPage(text));
    }
    return deck.NotesMaster(Header(u"header"), Footer(u"footer")).HandoutMaster(Header(u"header")).Bytes();
}

class CallCount : public testing::Test
{
protected:
    /// One run over the deck in all locations. The first of the pairs occurs.
    void Run(bool findOnly, int pairs)
    {
        const ProjectOwner project{windows::CreatePowerPointProvider()};
        project->options->RequiredFindAndReplaceCount = true;
        project->FilesToProcess.push_back(folder_.Write(u"deck.pptx", DeckOfSixty()));
        const auto everywhere = std::make_shared<OptionSetting>();
        for (const SearchLocation& row : SearchLocations)
            (*everywhere).*row.isOn = true;
        for (int i = 0; i < pairs; ++i)
            project->FindAndReplaceList->Add(i == 0 ? u"Fabrikam" : u"absent " + FromUtf8(std::to_string(i)),
                                             u"Contoso", everywhere, project.get());
        findOnly ? project->Search() : project->Replacement();
        EXPECT_THAT(log_.Lines(), IsEmpty());
    }

    Counts CallsOf(bool findOnly, int pairs)
    {
        const PowerPointInHere powerPoint;
        Run(findOnly, pairs);
        return powerPoint.Calls();
    }

private:
    const TemporaryFolder folder_;
    const ErrorLogRecorder log_;
};

/// "12,345"
std::string Grouped(std::size_t number)
{
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3; place -= 3)
        digits.insert(place - 3, ",");
    return digits;
}

/// As it stands on the page.
std::string Table(const std::vector<std::pair<std::string, Counts>>& runs)
{
    Counts all;
    for (const auto& [name, counts] : runs)
        all.insert(counts.begin(), counts.end());

    std::string table = "| call |";
    std::string line = "|---|";
    for (const auto& [name, counts] : runs) {
        table += ' ' + name + " |";
        line += "---:|";
    }
    table += '\n' + line + '\n';
    const auto row = [&](const std::string& name, auto&& countOf) {
        table += "| " + name + " |";
        for (const auto& run : runs)
            table += ' ' + Grouped(countOf(run.second)) + " |";
        table += '\n';
    };
    for (const auto& member : all)
        row('`' + member.first + '`', [&](const Counts& counts) {
            const auto found = counts.find(member.first);
            return found == counts.end() ? 0 : found->second;
        });
    row("all", [](const Counts& counts) {
        std::size_t sum = 0;
        for (const auto& [member, count] : counts)
            sum += count;
        return sum;
    });
    return table;
}

/// With many pairs, of the same with one and with two: each pair after the first does the same once more.
Counts WithPairs(std::size_t pairs, const Counts& one, const Counts& two)
{
    Counts counts;
    for (const auto& [member, count] : two) {
        const auto first = one.find(member);
        const std::size_t ofFirst = first == one.end() ? 0 : first->second;
        counts[member] = ofFirst + (pairs - 1) * (count - ofFirst);
    }
    return counts;
}

TEST_F(CallCount, OfADeckIsWhatThePageOnSpeedSays)
{
    const Counts find = CallsOf(true, 1);
    const Counts replace = CallsOf(false, 1);
    const std::string table = Table({{"find, 1 pair", find},
                                     {"find, 50 pairs", WithPairs(50, find, CallsOf(true, 2))},
                                     {"replace, 1 pair", replace},
                                     {"replace, 50 pairs", WithPairs(50, replace, CallsOf(false, 2))}});

    const std::filesystem::path page = standin::FileBesideThisProgram(TESSARINE_SPEED_PAGE);
    EXPECT_NE(ContentOf(page.u16string()).find(table), std::string::npos) << table;
}

}  // namespace
}  // namespace tessarine::test
