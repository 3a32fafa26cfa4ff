#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/Project.h"
#include "model/SearchLocations.h"
#include "office/builtin/DeckOnDisk.h"
#include "support/BinaryDeck.h"

namespace tessarine::test
{

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

    /// Every text that a search can reach, a line each: "slide 1 shape 2 (17): a cat".
    std::vector<std::string> Texts() const;

    /// A stream of the file as it lies on the disk, read by a library.
    std::string Stream(const std::string& name) const;
};

}  // namespace tessarine::test
