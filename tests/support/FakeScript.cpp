#include "support/FakeScript.h"

#include <map>
#include <optional>

#include "platform/Failure.h"

namespace tessarine
{

struct FakeScript::State {
    struct Planned {
        Failure failure;
        int atCall;  // counted as in `counts`; 0 for every call
    };

    std::map<std::string, int, std::less<>> counts;
    std::map<std::string, std::vector<Planned>, std::less<>> failures;
    std::map<std::string, std::function<void()>, std::less<>> actions;
    std::vector<std::string> calls;
    bool deniesText = false;
};

FakeScript::FakeScript() : state_(std::make_shared<State>()) {}

void FakeScript::Fail(const std::string& member, std::int32_t number, const String& text)
{
    state_->failures[member].push_back({Failure(number, text), 0});
}

void FakeScript::FailOnce(const std::string& member, std::int32_t number, const String& text, int nth)
{
    state_->failures[member].push_back({Failure(number, text), Count(member) + nth});
}

void FakeScript::DenyText()
{
    state_->deniesText = true;
}

bool FakeScript::DeniesText() const
{
    return state_->deniesText;
}

void FakeScript::On(const std::string& member, std::function<void()> action)
{
    state_->actions[member] = std::move(action);
}

const std::vector<std::string>& FakeScript::Calls() const
{
    return state_->calls;
}

int FakeScript::Count(const std::string& member) const
{
    const auto found = state_->counts.find(member);
    return found == state_->counts.end() ? 0 : found->second;
}

void FakeScript::Read(const std::string& member) const
{
    const int call = ++state_->counts[member];
    if (const auto action = state_->actions.find(member); action != state_->actions.end())
        action->second();
    if (const auto planned = state_->failures.find(member); planned != state_->failures.end()) {
        for (const State::Planned& one : planned->second) {
            if (one.atCall == 0 || one.atCall == call)
                throw one.failure;
        }
    }
}

void FakeScript::Act(const std::string& member, const String& argument) const
{
    state_->calls.push_back(argument.empty() ? member : member + " " + ToUtf8(argument));
    Read(member);
}

}  // namespace tessarine
