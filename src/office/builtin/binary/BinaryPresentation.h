#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "files/RandomAccessFile.h"
#include "office/builtin/binary/BinaryPages.h"
#include "office/builtin/compound/CompoundFile.h"
#include "office/builtin/compound/CompoundRewrite.h"
#include "office/builtin/limits/Limits.h"
#include "office/builtin/propertysets/BinaryProperties.h"
#include "office/builtin/reader/PresentationReader.h"
#include "saving/ReplacementFile.h"
#include "saving/SaveTerms.h"

namespace tessarine::builtin
{

/// A presentation of PowerPoint 97 to 2003 ([MS-PPT]): a compound file with the stream of the document, the one that
/// tells its newest edit, and those of the document properties. A save writes the document as one edit, so that nothing
/// of what was replaced stays in the file.
class BinaryPresentation final : public PresentationReader
{
public:
    /// Raises `FileCorrupt` for a damaged one, and `Unspecified` for one that needs a password.
    explicit BinaryPresentation(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits = Limits::Default(),
                                const SaveTerms& terms = {});

    std::size_t SlideCount() override { return pages_->SlideCount(); }
    PageReader& Slide(std::size_t slide) override { return pages_->Slide(slide); }
    PageReader* NotesPage(std::size_t slide) override { return pages_->NotesPage(slide); }
    std::optional<std::size_t> DesignOfSlide(std::size_t slide) override;
    std::size_t DesignCount() override { return pages_->DesignCount(); }
    String DesignName(std::size_t design) override { return pages_->DesignName(design); }
    PageReader& SlideMaster(std::size_t design) override { return pages_->SlideMaster(design); }
    PageReader* TitleMaster(std::size_t design) override { return pages_->TitleMaster(design); }
    PageReader* NotesMaster() override { return pages_->NotesMaster(); }
    PageReader* HandoutMaster() override { return pages_->HandoutMaster(); }
    BuiltInPropertiesReader& BuiltIn() override { return Properties().BuiltIn(); }
    CustomPropertiesReader& Custom() override { return Properties().Custom(); }
    bool SlidesMayHold(const SoughtText& sought) override { return pages_->SlidesMayHold(sought); }
    bool NotesMayHold(const SoughtText& sought) override { return pages_->NotesMayHold(sought); }

    /// Entries of the list of titles in the properties follow the slides' titles. An edited file loses its digital
    /// signatures, which would not be valid any more, with a warning; raises `PermissionDenied` where the terms keep
    /// such files, and for one that needs a password to be changed.
    void Save(StringView path) override;
    void RehearseSave(StringView path) override;
    /// Of the document properties.
    std::vector<String> Remarks() override { return Properties().Remarks(); }
    std::optional<bool> HasSavedChanges() override { return hasSavedChanges_; }

private:
    BinaryProperties& Properties();
    std::optional<std::size_t> PropertyStream(StringView name) const;  ///< Its entry.
    std::optional<std::string> PropertyBytes(StringView name) const;
    CompoundChanges Changes(StringView path);
    std::vector<std::size_t> Signatures() const;  ///< Entries of the file that hold them.
    void NoteSave(StringView path, const CompoundChanges& changes, bool isFinal);
    void FollowPages(StringView path);
    bool IsMarkedAsFinal();  ///< By the property that PowerPoint's command sets.
    void FailIfOverwritten() const;

    SaveTerms terms_;
    std::unique_ptr<RandomAccessBytes> bytes_;
    CompoundFile directory_;
    std::size_t storage_ = CompoundFile::root;  // that the streams are in
    std::unique_ptr<BinaryPages> pages_;
    std::optional<BinaryProperties> properties_;  // read when first asked for
    std::optional<bool> hasSavedChanges_;
    bool isOverwritten_ = false;
};

}  // namespace tessarine::builtin
