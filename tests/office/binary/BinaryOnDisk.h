#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/CounterStatuses.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "office/builtin/DeckOnDisk.h"
#include "support/BinaryDeck.h"

namespace tessarine::test
{

/// One text to look for, and where.
struct BinaryPair {
    String find;
    String with;
    std::vector<Location> locations;
    bool matchesCase = false;
    bool matchesWholeWords = false;
    bool belongsToProject = true;
};

/// How a job goes over the file.
struct BinaryJob {
    bool isFindOnly = false;
    bool countsAll = true;
    std::optional<String> revision{};  ///< The custom property that rises first of all, and by how much.
    String increment = u"1";
};

/// What a job tells of the file.
struct BinaryOutcome {
    std::shared_ptr<CounterStatuses> results;  ///< Nothing where the file failed.
    Raised failure{};
    std::vector<std::string> log{};

    std::int32_t Count(Location location, std::int32_t pair = 1) const { return results->Item(pair)->Count(location); }
};

/// A binary presentation in a folder of its own, and the built-in engine that opens it.
class BinaryOnDisk : public DeckOnDisk
{
public:
    explicit BinaryOnDisk(const ppt::BinaryDeck& deck) : DeckOnDisk(deck.Bytes(), u"deck.ppt") {}
    explicit BinaryOnDisk(const std::string& bytes) : DeckOnDisk(bytes, u"deck.ppt") {}

    /// A run of the search with one location, as a job makes it: opens, searches, saves where it replaces, and closes.
    /// Gives what it counted. `find` of more than one text is not needed: each run has one pair.
    std::int32_t Find(Location location, const String& find) const { return Run({location}, find, u"", true); }
    std::int32_t Replace(Location location, const String& find, const String& with) const
    {
        return Run({location}, find, with, false);
    }
    /// Of all these; gives the count of the first.
    std::int32_t Run(const std::vector<Location>& locations, const String& find, const String& with,
                     bool isFindOnly) const;
    /// Any pairs; what goes wrong is told.
    BinaryOutcome Process(const std::vector<BinaryPair>& pairs, const BinaryJob& job = {}) const;

    /// Every text that a search can reach, a line each: "slide 1 shape 2 (17): a cat".
    std::vector<std::string> Texts() const;

    /// Of a document property, as the file has it now.
    String BuiltInText(StringView name) const;
    powerpoint::Value CustomValue(StringView name) const;

    /// A stream of the file as it lies on the disk, read by a library.
    std::string Stream(const std::string& name) const;
};

}  // namespace tessarine::test
