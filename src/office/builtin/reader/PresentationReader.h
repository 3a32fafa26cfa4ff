#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "office/builtin/reader/PageReader.h"
#include "office/builtin/reader/PropertiesReader.h"

namespace tessarine::builtin
{

/// An open presentation of one file format: what the surface's objects need of a file, and all they know of it. A
/// format that implements this class and the two beside it (PageReader, PropertiesReader) has slides, shapes, texts,
/// links and properties on the surface without any objects of its own.
///
/// Pages and properties belong to the reader and live as long as it. They may be read when they are first asked for.
/// Edits are kept until Save; a presentation that is never saved leaves its file as it was. Slides and designs count
/// from 0. Every member may raise `FileCorrupt`.
class PresentationReader
{
public:
    virtual ~PresentationReader() = default;

    virtual std::size_t SlideCount() = 0;  ///< Hidden slides are slides, too.
    virtual PageReader& Slide(std::size_t slide) = 0;
    virtual PageReader* NotesPage(std::size_t slide) = 0;  ///< Null for a slide without one.

    /// The design that a slide follows; nothing for a slide without one, as in a file without any.
    virtual std::optional<std::size_t> DesignOfSlide(std::size_t slide) = 0;

    /// A design is a slide master with a name. Names need not differ.
    virtual std::size_t DesignCount() = 0;
    virtual String DesignName(std::size_t design) = 0;
    virtual PageReader& SlideMaster(std::size_t design) = 0;
    virtual PageReader* TitleMaster(std::size_t design) = 0;  ///< Null for a design without one.

    virtual PageReader* NotesMaster() = 0;  ///< Null, like the next one, when the file has none.
    virtual PageReader* HandoutMaster() = 0;

    virtual BuiltInPropertiesReader& BuiltIn() = 0;
    virtual CustomPropertiesReader& Custom() = 0;

    /// Hints like PageReader::MayHold for the shapes of all slides, and of all notes pages. They are asked before each
    /// walk over the slides, hundreds of times for one file; a format that has no quick way to tell keeps these
    /// answers.
    virtual bool SlidesMayHold(const SoughtText& /*sought*/) { return true; }
    virtual bool NotesMayHold(const SoughtText& /*sought*/) { return true; }

    /// Replaces the file at `path` by one with the edits, all or nothing. Without edits the bytes stay as they are and
    /// only the modification time moves.
    virtual void Save(StringView path) = 0;

    /// All of Save but for the disk: raises what Save would raise for the edits and for the file at `path` as it is,
    /// and lets HasSavedChanges tell what it would tell. Saving may still fail where it takes a new file to see why.
    virtual void RehearseSave(StringView path) = 0;

    /// That names of shapes will be asked for. A format that has them at hand keeps this answer.
    virtual void KeepShapeNames() {}

    /// Whether the last Save wrote edits, be they as old as the save before. Nothing before a save; a format that can't
    /// tell keeps this answer.
    virtual std::optional<bool> HasSavedChanges() { return {}; }

    /// What a user should know of the file as it was opened, a sentence each.
    virtual std::vector<String> Remarks() { return {}; }
};

}  // namespace tessarine::builtin
