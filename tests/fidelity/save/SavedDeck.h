#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/PowerPoint.h"
#include "support/Deck.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{

/// A deck in a folder of its own, for saves that are disturbed, with the bytes that an undisturbed save gives.
class SavedDeck
{
public:
    explicit SavedDeck(const Deck& deck);

    const String& Path() const { return path_; }
    const TemporaryFolder& Folder() const { return folder_; }
    const std::string& Old() const { return old_; }
    const std::string& New() const { return new_; }

    /// The presentation with its edit made and not saved.
    std::shared_ptr<powerpoint::Presentation> Edited() const { return Edited(path_); }

    /// True when the file can be opened and its first slide walked.
    bool Opens() const;

    /// Names of all files in the folder beside the deck.
    std::vector<std::string> OtherFiles() const;

    /// Puts the old bytes back and removes all other files.
    void Restore() const;

private:
    static std::shared_ptr<powerpoint::Presentation> Edited(const String& path);

    TemporaryFolder folder_;
    std::string old_;
    String path_;
    std::string new_;
};

}  // namespace tessarine::test
