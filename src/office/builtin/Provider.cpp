#include "office/builtin/Provider.h"

#include <algorithm>
#include <new>
#include <vector>

#include "files/RandomAccessFile.h"
#include "log/Warnings.h"
#include "office/builtin/binary/BinaryPresentation.h"
#include "office/builtin/FileKind.h"
#include "office/builtin/limits/Damage.h"
#include "office/builtin/objects/PresentationObject.h"
#include "office/builtin/presentation/PresentationFile.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

/// The reader for what a file is by its content; a failure for what there is no reader for.
std::shared_ptr<PresentationReader> OpenReader(std::unique_ptr<RandomAccessBytes> bytes, const SaveTerms& terms)
{
    switch (FileKindOf(*bytes)) {
        case FileKind::Package:
            return std::make_shared<PresentationFile>(std::move(bytes), Limits::Default(), terms);
        case FileKind::EncryptedPackage:
            throw Failure(
                FailureNumber::Unspecified,
                u"The presentation is encrypted and needs a password to be opened; save it without the password "
                u"first");
        case FileKind::BinaryPresentation:
            return std::make_shared<BinaryPresentation>(std::move(bytes), Limits::Default(), terms);
        case FileKind::OldPresentation:
            throw NotAPresentation(
                "The file is a presentation of PowerPoint 95 or earlier; save it as .pptx with a newer version first");
        case FileKind::OtherCompound:
            throw NotAPresentation("The file is some other Office document, not a presentation");
        case FileKind::FlatPackage:
            throw NotAPresentation("The file is a flat XML presentation; save it as .pptx first");
        case FileKind::Empty:
            throw Damage({}, "it is empty");
        case FileKind::Other:
            break;
    }
    throw NotAPresentation("The file is not a presentation");
}

class PresentationsObject final : public powerpoint::Presentations
{
public:
    explicit PresentationsObject(const SaveTerms& terms) : terms_(terms) {}

    std::shared_ptr<powerpoint::Presentation> Open(const String& FileName, powerpoint::TriState, powerpoint::TriState,
                                                   powerpoint::TriState) override
    {
        try {
            return OpenFile(FileName);
        } catch (const Failure& failure) {
            // One of many files failed: the text says which.
            throw Failure(failure.number, FileName + u": " + failure.description, u"Presentations.Open");
            // The limits are the engine's; the machine may have less. The file fails, and the run goes on.
        } catch (const std::bad_alloc&) {
            throw Failure(FailureNumber::SystemOutOfMemory,
                          FileName + u": There is not enough memory to open the file");
        }
    }

    void CloseAll() { open_.clear(); }

private:
    struct OpenPresentation {
        RandomAccessFile::Identity file;
        String path;
        std::weak_ptr<PresentationReader> reader;  // gone when nobody holds an object of it any more

        /// A save puts another file in the place of the one that was opened.
        bool Is(const RandomAccessFile::Identity& other) const
        {
            return file == other || RandomAccessFile::IdOf(path) == other;
        }
    };

    std::shared_ptr<powerpoint::Presentation> OpenFile(const String& path)
    {
        auto bytes = std::make_unique<RandomAccessFile>(path, RandomAccessFile::Use::Saving);
        const RandomAccessFile::Identity id = bytes->Id();
        // Closed is what nobody holds any more, whether Close was called or not.
        std::erase_if(open_, [](const OpenPresentation& entry) { return entry.reader.expired(); });
        if (std::ranges::any_of(open_, [&](const OpenPresentation& entry) { return entry.Is(id); }))
            throw Failure(FailureNumber::SharingViolation, u"The presentation is open already");

        auto reader = OpenReader(std::move(bytes), terms_);
        for (const String& remark : reader->Remarks())
            Warn(path, remark);
        open_.push_back({id, path, reader});
        return MakePresentation(std::move(reader), path);
    }

    SaveTerms terms_;
    std::vector<OpenPresentation> open_;
};

class ApplicationObject final : public powerpoint::Application
{
public:
    explicit ApplicationObject(const SaveTerms& terms) : presentations_(std::make_shared<PresentationsObject>(terms)) {}

    std::shared_ptr<powerpoint::Presentations> Presentations() override { return presentations_; }
    void PutDisplayAlerts(std::int32_t) override {}       // the engine never asks anything
    void PutAutomationSecurity(std::int32_t) override {}  // macros are never run
    void Quit() override { presentations_->CloseAll(); }

private:
    std::shared_ptr<PresentationsObject> presentations_;
};

class ProviderObject final : public powerpoint::Provider
{
public:
    explicit ProviderObject(const SaveTerms& terms) : terms_(terms) {}

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        return std::make_shared<ApplicationObject>(terms_);
    }

    /// Applications live in their users' hands; none runs by itself.
    std::shared_ptr<powerpoint::Application> AttachToRunning() override { return nullptr; }

private:
    SaveTerms terms_;
};

}  // namespace

std::shared_ptr<powerpoint::Provider> CreateProvider(const SaveTerms& terms)
{
    return std::make_shared<ProviderObject>(terms);
}

}  // namespace tessarine::builtin
