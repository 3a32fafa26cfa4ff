#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "office/builtin/binary/BinaryDocument.h"
#include "office/builtin/binary/BinaryPage.h"
#include "office/builtin/matching/GroupFilter.h"

namespace tessarine::builtin
{

/// The pages of a binary presentation ([MS-PPT]) over its two streams: all of it but the properties and the file.
class BinaryPages
{
public:
    /// Raises as BinaryDocument does.
    BinaryPages(std::string stream, std::string currentUser, const Limits& limits);

    BinaryDocument& Document() { return document_; }

    std::size_t SlideCount() const { return slides_.size(); }
    BinaryPage& Slide(std::size_t slide) { return *slides_[slide]; }
    BinaryPage* NotesPage(std::size_t slide) { return notes_[slide].get(); }
    std::size_t DesignCount() const { return slideMasters_.size(); }
    String DesignName(std::size_t design);
    BinaryPage& SlideMaster(std::size_t design) { return *slideMasters_[design]; }
    BinaryPage* TitleMaster(std::size_t design) { return titleMasters_[design].get(); }
    BinaryPage* NotesMaster() { return notesMaster_.get(); }
    BinaryPage* HandoutMaster() { return handoutMaster_.get(); }

    bool SlidesMayHold(const SoughtText& sought);
    bool NotesMayHold(const SoughtText& sought);

    /// The document stream with all edits, in one user edit; nothing without edits. Was read again, and reads as it was
    /// meant: raises `FileCorrupt` otherwise.
    std::optional<std::string> Edited();

    /// The content of `Current User` for that stream.
    std::string CurrentUserFor(std::string_view edited) const;

    /// Titles of slides as they were and as edits have left them, by the slides' numbers from 0.
    std::vector<std::pair<std::size_t, BinaryPage::TitleChange>> ChangedTitles();

private:
    using Pages = std::vector<std::unique_ptr<BinaryPage>>;

    std::unique_ptr<BinaryPage> MakePage(const std::optional<Record>& record, BinaryPage::Kind kind);
    static GroupFilter FilterOf(const Pages& pages);
    std::vector<BinaryPage*> AllPages() const;
    std::string CheckedToRead(std::string edited);

    std::string currentUser_;
    BinaryDocument document_;
    Pages slides_;
    Pages notes_;  // null for a slide without
    Pages slideMasters_;
    Pages titleMasters_;  // null for a design without
    std::unique_ptr<BinaryPage> notesMaster_;
    std::unique_ptr<BinaryPage> handoutMaster_;
    std::optional<std::vector<String>> designNames_;
    std::optional<GroupFilter> slidesFilter_;
    std::optional<GroupFilter> notesFilter_;
};

}  // namespace tessarine::builtin
