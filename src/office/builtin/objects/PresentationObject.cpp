#include "office/builtin/objects/PresentationObject.h"

#include "office/builtin/objects/DesignObjects.h"
#include "office/builtin/objects/MasterObjects.h"
#include "office/builtin/objects/PropertyObjects.h"
#include "office/builtin/objects/SlideObjects.h"
#include "platform/Failure.h"
#include "platform/GivingUp.h"

namespace tessarine::builtin
{

namespace
{

class PresentationObject final : public powerpoint::Presentation
{
public:
    PresentationObject(OpenFileReference file, String path)
        : file_(std::move(file)),
          path_(std::move(path)),
          designs_(std::make_shared<DesignsObject>(file_)),
          slides_(MakeSlides(file_, designs_))
    {
    }

    // File() is there for its failure after Close.
    std::shared_ptr<powerpoint::Slides> Slides() override { return File(), slides_; }
    std::shared_ptr<powerpoint::Designs> Designs() override { return File(), designs_; }

    std::shared_ptr<powerpoint::Master> NotesMaster() override
    {
        // Made anew each time: the page behind it stays the reader's own.
        return MakeMaster(File(), File()->Reader().NotesMaster(), PageTexts::BothEvenIfDeleted);
    }

    std::shared_ptr<powerpoint::Master> HandoutMaster() override
    {
        return MakeMaster(File(), File()->Reader().HandoutMaster(), PageTexts::HeaderAndFooter);
    }

    std::shared_ptr<powerpoint::DocumentProperties> BuiltInDocumentProperties() override
    {
        return MakeBuiltInProperties(File());
    }

    std::shared_ptr<powerpoint::DocumentProperties> CustomDocumentProperties() override
    {
        return MakeCustomProperties(File());
    }

    bool NotesMayHoldText(const String& text) override { return File()->Reader().NotesMayHold(file_->Sought(text)); }

    /// Nothing to do: a link's source is never opened, and its preview picture stays as it was.
    void UpdateLinks() override { File(); }

    void Save() override
    {
        RaiseIfGivenUp();  // what was changed until then must not reach the disk
        File()->Reader().Save(path_);
    }
    void RehearseSave() override { File()->Reader().RehearseSave(path_); }
    void ExpectHits() override { File()->Reader().KeepShapeNames(); }
    std::optional<bool> HasSavedChanges() override { return File()->Reader().HasSavedChanges(); }

    void Close() override
    {
        File();
        // Objects that somebody still holds have references to the file of their own.
        slides_.reset();
        designs_.reset();
        file_.reset();
    }

private:
    const OpenFileReference& File() const
    {
        if (!file_)
            throw Failure(FailureNumber::InvalidRequest, u"The presentation has been closed");
        return file_;
    }

    OpenFileReference file_;  // null after Close
    String path_;
    std::shared_ptr<DesignsObject> designs_;
    std::shared_ptr<powerpoint::Slides> slides_;
};

}  // namespace

std::shared_ptr<powerpoint::Presentation> MakePresentation(std::shared_ptr<PresentationReader> reader, String path)
{
    auto file = std::make_shared<OpenFile>(std::move(reader), path);
    return std::make_shared<PresentationObject>(std::move(file), std::move(path));
}

}  // namespace tessarine::builtin
