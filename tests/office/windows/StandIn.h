#pragma once

#include <string>
#include <vector>

#include "standin/Orders.h"
#include "standin/Program.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{

/// A stand-in that answers under a program's name for as long as this lives: a process that the system starts whenever
/// somebody asks for the program. What still runs at the end is ended.
class StandIn
{
public:
    explicit StandIn(const standin::Program& program);
    ~StandIn();
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    /// Replaces the orders, for the processes that run and those to come.
    void Give(const std::vector<standin::Order>& orders) const;

    /// Starts a process that nobody has asked for, as a user would, and waits until it can be found.
    void StartByUser() const;

    /// Registers a program that isn't there in place of the stand-in.
    void RegisterMissingProgram() const;

    std::vector<std::string> Calls() const;    ///< So far, in order, as CallWatch names them.
    std::vector<std::string> Lookups() const;  ///< Names whose number was asked for.
    std::size_t Started() const;               ///< Processes that have begun.
    std::size_t Running() const;               ///< Those of them that have not ended.

private:
    std::vector<std::string> LinesWith(char mark) const;

    const standin::Program& program_;
    const TemporaryFolder folder_;
};

}  // namespace tessarine::test
