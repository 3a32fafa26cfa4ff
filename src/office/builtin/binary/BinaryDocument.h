#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "office/builtin/binary/ExternalObjects.h"
#include "office/builtin/binary/HeadersFootersText.h"
#include "office/builtin/binary/TextAtoms.h"
#include "office/builtin/limits/Limits.h"
#include "office/builtin/package/KeptParts.h"
#include "office/builtin/records/PersistObjects.h"
#include "office/builtin/records/Record.h"

namespace tessarine::builtin
{

/// Where a page is: its record, and those of its texts that stand in the document's list of slides.
struct PagePlace {
    Record record;
    std::vector<TextPlace> outline;
};

/// The streams of a binary presentation and what its document tells of the pages: the lists of slides, masters and
/// notes, and what all pages share ([MS-PPT] 2.4.1).
class BinaryDocument
{
public:
    /// Raises `FileCorrupt` for a damaged stream, also when a slide is listed but missing, and `Unspecified` for an
    /// encrypted one.
    BinaryDocument(std::string stream, std::string currentUser, const Limits& limits);
    BinaryDocument(const BinaryDocument&) = delete;
    BinaryDocument& operator=(const BinaryDocument&) = delete;

    std::string_view Bytes() const { return stream_; }
    std::string TakeBytes() { return std::move(stream_); }  ///< The last that may be asked.
    /// It was encrypted, but for a password to change it alone.
    bool NeedsPasswordToChange() const { return needsPasswordToChange_; }
    const Limits& limits() const { return limits_; }
    const PersistObjects& Objects() const { return objects_; }
    KeptParts& Kept() { return kept_; }

    struct Slide {
        PagePlace page;
        std::optional<std::size_t> design;
        std::optional<Record> notes;
    };
    struct Design {
        Record master;
        std::optional<Record> titleMaster;
    };
    const std::vector<Slide>& Slides() const { return slides_; }
    const std::vector<Design>& Designs() const { return designs_; }
    const std::optional<Record>& NotesMaster() const { return notesMaster_; }
    const std::optional<Record>& HandoutMaster() const { return handoutMaster_; }

    ExternalObjects& External() { return external_; }
    /// The headers and footers of all slides, and of all notes and handouts; null where the file has none.
    HeadersFootersText* OfSlides() { return ofSlides_ ? &*ofSlides_ : nullptr; }
    HeadersFootersText* OfNotes() { return ofNotes_ ? &*ofNotes_ : nullptr; }

    /// How many places of the file use a hyperlink. Counted when first asked for, after which changes have to be told.
    std::size_t& UsesOf(ExternalObjectId hyperlink);

    /// Which of the objects that no list names are pages: they would keep texts that nobody sees.
    bool IsForgottenPage(std::size_t offset) const;

    std::size_t GrownBytes() const { return grown_; }
    /// Takes note of what an edit adds. Raises `BadFormat` when it is more than the limits allow.
    void Grow(std::size_t bytes);

private:
    struct Listed {
        PersistId object = 0;
        std::uint32_t id = 0;
        std::vector<TextPlace> texts;
    };
    std::vector<Listed> ReadList(const Record& list) const;
    std::optional<Record> PageAt(PersistId object) const;
    Record ListedPage(const Listed& listed) const;
    void ReadDocument();
    void ReadMasters(const std::vector<Listed>& masters);
    void ReadSlides(std::vector<Listed> slides, const std::map<std::uint32_t, Record>& notes);
    void CountUses();

    void Decrypt(std::string_view currentUser);

    Limits limits_;
    bool needsPasswordToChange_ = false;
    std::string stream_;
    PersistObjects objects_;
    KeptParts kept_;
    std::vector<Slide> slides_;
    std::vector<Design> designs_;
    std::map<std::uint32_t, std::size_t> designOfMaster_;  // by the master's number, those of title masters as well
    std::optional<Record> notesMaster_;
    std::optional<Record> handoutMaster_;
    ExternalObjects external_{{}, {}};
    std::optional<HeadersFootersText> ofSlides_;
    std::optional<HeadersFootersText> ofNotes_;
    std::vector<std::size_t> listedPages_;  // ascending offsets
    std::optional<std::map<ExternalObjectId, std::size_t>> uses_;
    std::size_t grown_ = 0;
};

/// The hyperlink that an InteractiveInfo leads to as the object model's collection counts it; nothing for a jump to the
/// next slide, a macro and the like ([MS-PPT] 2.8.2).
std::optional<ExternalObjectId> HyperlinkOf(std::string_view bytes, const Record& interactiveInfo);

/// Where its number stands in the stream.
std::size_t HyperlinkFieldOf(std::string_view bytes, const Record& interactiveInfo);

}  // namespace tessarine::builtin
