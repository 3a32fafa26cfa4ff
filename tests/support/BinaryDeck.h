#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/BinaryProperties.h"
#include "support/BinarySlides.h"
#include "support/CompoundBuilder.h"

/// The builder of binary decks: presentations of PowerPoint 97 to 2003 [MS-PPT], made in code as those of
/// support/Deck.h are.
///
///     ppt::BinaryDeck().Slide(ppt::Title(u"Hello"), ppt::TextBox(ppt::TextRun(u"Fab").Bold(), u"rikam")).Bytes()
///
/// Nothing asked for gives a presentation with one master and no slide. The same calls give the same bytes everywhere.
namespace tessarine::test::ppt
{

/// UserEditAtom, as it will be written.
struct UserEdit {
    std::uint32_t lastSlide = 0;
    std::uint16_t version = 0x18D9;
    std::uint32_t lastEdit = 0;
    std::uint32_t directory = 0;
    std::uint32_t document = 1;
    std::uint32_t seed = 0;
    std::uint16_t lastView = 1;
    std::optional<std::uint32_t> encryptSession{};  ///< Makes the atom 0x20 bytes long.
    std::string unknown{};                          ///< Bytes behind it all.
};

class BinaryDeck
{
public:
    using Change = std::function<void(std::string&)>;

    /// Appends a slide: shapes, NotesPage, HeadersFooters, OnMaster, OnTitleMaster, HiddenSlide and what else
    /// SlideContent takes.
    template <class... Parts>
    BinaryDeck& Slide(Parts&&... parts)
    {
        slides_.emplace_back(std::forward<Parts>(parts)...);
        return *this;
    }

    BinaryDeck& Master(MainMaster master);  ///< The first one takes the place of the default master.

    /// The masters of notes pages and handouts. The first notes page makes a plain notes master where none is asked
    /// for.
    template <class... Shapes>
    BinaryDeck& NotesMaster(Shapes... shapes)
    {
        notesMaster_ = {std::move(shapes)...};
        return *this;
    }
    template <class... Shapes>
    BinaryDeck& HandoutMaster(Shapes... shapes)
    {
        handoutMaster_ = {std::move(shapes)...};
        return *this;
    }

    BinaryDeck& SlideFooters(HeadersFooters footers);  ///< Of the whole document, instance 3.
    BinaryDeck& NotesFooters(HeadersFooters footers);  ///< Of the whole document, instance 4.
    BinaryDeck& SlideOrder(std::vector<int> numbers);  ///< Order of the list of slides, from 1.
    BinaryDeck& DocumentRecords(std::string records);  ///< In front of the end of the document's container.
    BinaryDeck& UnpackedObjects();                     ///< OLE storages are not compressed.

    /// The two streams of properties; one that stays empty is not written.
    BinaryDeck& Summary(std::uint32_t id, std::string value);
    BinaryDeck& DocumentSummary(std::uint32_t id, std::string value);
    BinaryDeck& Custom(const std::string& name, std::string value);
    BinaryDeck& CodePage(int codePage);        ///< Of all three sections.
    BinaryDeck& CustomCodePage(int codePage);  ///< Of the custom properties alone.

    /// Makes this deck a later edit of `earlier`, as a fast save writes it: behind what the earlier file has, only
    /// persist objects that differ. Calls add up to a chain of edits.
    BinaryDeck& After(const BinaryDeck& earlier);
    BinaryDeck& PersistStep(std::uint32_t step);  ///< Between two persist ids; more than 1 leaves gaps.
    BinaryDeck& Junk(std::string bytes);          ///< Bytes that are no record, in front of each persist object.

    /// Encrypts all persist objects; pictures and properties stay as they are. The token is the one of encrypted files,
    /// or the plain one, as some programs leave it.
    BinaryDeck& Encrypted(String password, bool plainToken = false);
    BinaryDeck& KeyBits(std::size_t bits);  ///< Of the encryption; 128 by default.
    BinaryDeck& WithoutCurrentUser();
    BinaryDeck& PaddedCurrentUser();  ///< To 4096 bytes.
    BinaryDeck& DualStorage();  ///< All streams again in PP97_DUALSTORAGE; those of the root are an older format's.

    /// Raw doors, called while the file is made.
    BinaryDeck& ChangeObject(std::uint32_t persistId, Change change);  ///< The bytes of a persist object.
    BinaryDeck& ChangeOffsets(std::function<void(std::map<std::uint32_t, std::uint32_t>&)> change);
    BinaryDeck& ChangeDirectory(Change change);  ///< The data of PersistDirectoryAtom.
    BinaryDeck& ChangeEdit(std::function<void(UserEdit&)> change);
    BinaryDeck& ChangeCurrentUser(Change change);
    BinaryDeck& ChangeDocument(Change change);  ///< The stream "PowerPoint Document".
    BinaryDeck& ChangeFile(std::function<void(CompoundBuilder&)> change);

    /// Persist ids, for the doors; numbers count from 1.
    static constexpr std::uint32_t DocumentId = 1;
    std::uint32_t MasterId(int number = 1) const;
    std::uint32_t TitleMasterId(int number = 1) const;
    std::uint32_t NotesMasterId() const;
    std::uint32_t HandoutMasterId() const;
    std::uint32_t SlideId(int number) const;
    std::uint32_t NotesId(int number) const;  ///< Of the slide of that number.
    std::uint32_t StorageId(int number) const;
    std::uint32_t SessionId() const;  ///< Of the encryption, behind all others.

    std::string DocumentStream() const;  ///< "PowerPoint Document"
    std::string Bytes() const;           ///< The finished file.
    void WriteTo(const std::filesystem::path& path) const;

private:
    friend class BinaryLayout;

    /// Where a stream of edits has come to.
    struct Written {
        std::string stream;
        std::map<std::uint32_t, std::uint32_t> offsets;
        std::map<std::uint32_t, std::string> objects;
        std::uint32_t lastEdit = 0;
        std::string pictures;
    };

    Written Write() const;
    std::string CurrentUser(std::uint32_t edit) const;
    bool HasNotesMaster() const;
    std::uint32_t IdAt(std::size_t index) const;

    std::vector<SlideContent> slides_;
    std::vector<MainMaster> masters_{MainMaster()};
    bool mastersGiven_ = false;
    std::optional<std::vector<Shape>> notesMaster_;
    std::optional<std::vector<Shape>> handoutMaster_;
    std::optional<HeadersFooters> slideFooters_;
    std::optional<HeadersFooters> notesFooters_;
    std::vector<int> slideOrder_;
    std::string documentRecords_;
    bool unpackedObjects_ = false;
    PropertySection summary_;
    PropertySection documentSummary_;
    PropertySection custom_;
    std::shared_ptr<const BinaryDeck> earlier_;
    std::uint32_t persistStep_ = 1;
    std::string junk_;
    std::optional<String> password_;
    bool encryptedToken_ = false;
    std::size_t keyBits_ = 128;
    bool currentUser_ = true;
    bool paddedCurrentUser_ = false;
    bool dualStorage_ = false;
    std::map<std::uint32_t, std::vector<Change>> objectChanges_;
    std::vector<std::function<void(std::map<std::uint32_t, std::uint32_t>&)>> offsetChanges_;
    std::vector<Change> directoryChanges_;
    std::vector<std::function<void(UserEdit&)>> editChanges_;
    std::vector<Change> currentUserChanges_;
    std::vector<Change> documentChanges_;
    std::vector<std::function<void(CompoundBuilder&)>> fileChanges_;
};

}  // namespace tessarine::test::ppt
