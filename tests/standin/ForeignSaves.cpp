#include "standin/ForeignSaves.h"

#include <string>
#include <utility>

#include "office/windows/ComHeaders.h"
#include "platform/Failure.h"

namespace tessarine::standin
{

namespace
{

namespace fs = std::filesystem;

/// The failure of the last call to the system.
Failure SystemFailure(const fs::path& path)
{
    return {HRESULT_FROM_WIN32(GetLastError()), u"The stand-in could not save " + path.u16string()};
}

/// Its slides and the like are those of the copy.
class ForeignPresentation final : public powerpoint::Presentation
{
public:
    ForeignPresentation(std::shared_ptr<powerpoint::Presentation> copy, fs::path copyPath, fs::path path)
        : copy_(std::move(copy)), copyPath_(std::move(copyPath)), path_(std::move(path))
    {
    }
    ~ForeignPresentation() override { Forget(); }
    ForeignPresentation(const ForeignPresentation&) = delete;
    ForeignPresentation& operator=(const ForeignPresentation&) = delete;

    std::shared_ptr<powerpoint::Slides> Slides() override { return copy_->Slides(); }
    std::shared_ptr<powerpoint::Designs> Designs() override { return copy_->Designs(); }
    std::shared_ptr<powerpoint::Master> NotesMaster() override { return copy_->NotesMaster(); }
    std::shared_ptr<powerpoint::Master> HandoutMaster() override { return copy_->HandoutMaster(); }
    std::shared_ptr<powerpoint::DocumentProperties> BuiltInDocumentProperties() override
    {
        return copy_->BuiltInDocumentProperties();
    }
    std::shared_ptr<powerpoint::DocumentProperties> CustomDocumentProperties() override
    {
        return copy_->CustomDocumentProperties();
    }
    void UpdateLinks() override { copy_->UpdateLinks(); }

    void Save() override
    {
        copy_->Save();
        const fs::path newFile = path_.native() + L".new";
        if (!CopyFileW(copyPath_.c_str(), newFile.c_str(), FALSE) ||
            !ReplaceFileW(path_.c_str(), newFile.c_str(), nullptr, 0, nullptr, nullptr))
            throw SystemFailure(path_);
    }

    void Close() override
    {
        copy_->Close();
        Forget();
    }

private:
    void Forget()
    {
        std::error_code ignored;
        fs::remove(copyPath_, ignored);
    }

    const std::shared_ptr<powerpoint::Presentation> copy_;
    const fs::path copyPath_;
    const fs::path path_;
};

class ForeignPresentations final : public powerpoint::Presentations
{
public:
    ForeignPresentations(std::shared_ptr<powerpoint::Presentations> behind, fs::path folder)
        : behind_(std::move(behind)), folder_(std::move(folder))
    {
    }

    std::shared_ptr<powerpoint::Presentation> Open(const String& FileName, powerpoint::TriState ReadOnly,
                                                   powerpoint::TriState Untitled,
                                                   powerpoint::TriState WithWindow) override
    {
        const fs::path copyPath =
            folder_ / (std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++opened_) + L".copy");
        // One that can't be copied can't be opened either; that tells why.
        if (!CopyFileW(fs::path(FileName).c_str(), copyPath.c_str(), TRUE))
            return behind_->Open(FileName, ReadOnly, Untitled, WithWindow);
        SetFileAttributesW(copyPath.c_str(), FILE_ATTRIBUTE_NORMAL);
        auto copy = behind_->Open(copyPath.u16string(), ReadOnly, Untitled, WithWindow);
        return std::make_shared<ForeignPresentation>(std::move(copy), copyPath, fs::path(FileName));
    }

private:
    const std::shared_ptr<powerpoint::Presentations> behind_;
    const fs::path folder_;
    int opened_ = 0;
};

class ForeignApplication final : public powerpoint::Application
{
public:
    ForeignApplication(std::shared_ptr<powerpoint::Application> behind, const fs::path& folder)
        : behind_(std::move(behind)),
          presentations_(std::make_shared<ForeignPresentations>(behind_->Presentations(), folder))
    {
    }

    std::shared_ptr<powerpoint::Presentations> Presentations() override { return presentations_; }
    void PutDisplayAlerts(std::int32_t value) override { behind_->PutDisplayAlerts(value); }
    void PutAutomationSecurity(std::int32_t value) override { behind_->PutAutomationSecurity(value); }
    void Quit() override { behind_->Quit(); }

private:
    const std::shared_ptr<powerpoint::Application> behind_;
    const std::shared_ptr<powerpoint::Presentations> presentations_;
};

class ForeignProvider final : public powerpoint::Provider
{
public:
    ForeignProvider(std::shared_ptr<powerpoint::Provider> behind, fs::path folder)
        : behind_(std::move(behind)), folder_(std::move(folder))
    {
    }

    std::shared_ptr<powerpoint::Application> CreateApplication() override
    {
        return std::make_shared<ForeignApplication>(behind_->CreateApplication(), folder_);
    }
    std::shared_ptr<powerpoint::Application> AttachToRunning() override { return behind_->AttachToRunning(); }

private:
    const std::shared_ptr<powerpoint::Provider> behind_;
    const fs::path folder_;
};

}  // namespace

std::shared_ptr<powerpoint::Provider> WithForeignSaves(std::shared_ptr<powerpoint::Provider> provider,
                                                       std::filesystem::path folder)
{
    return std::make_shared<ForeignProvider>(std::move(provider), std::move(folder));
}

}  // namespace tessarine::standin
