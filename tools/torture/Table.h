#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "Torture.h"

namespace tessarine::torture
{

/// The outcome of all kinds, as a table in Markdown.
class Table
{
public:
    void Add(const Tally& tally) { tallies_.push_back(tally); }
    void Skip(const std::string& kind, const std::string& why) { skipped_.emplace_back(kind, why); }

    bool IsClean() const;  ///< Nothing was found by any kind.
    void Print(std::ostream& out) const;

private:
    std::vector<Tally> tallies_;
    std::vector<std::pair<std::string, std::string>> skipped_;
};

}  // namespace tessarine::torture
