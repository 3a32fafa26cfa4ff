#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "model/Project.h"
#include "support/ErrorLogRecorder.h"
#include "support/MessageRecorder.h"
#include "support/StoredBag.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

/// A folder for project files, with the error log and the messages recorded.
class ProjectFileTest : public testing::Test
{
protected:
    struct Loaded {
        bool succeeded = false;
        std::int32_t error = 0;
    };

    static Loaded Load(const ProjectOwner& project, const String& path, std::int32_t error = 0)
    {
        Loaded result{false, error};
        result.succeeded = project->LoadProject(path, result.error);
        return result;
    }

    /// Saves under the path and gives the path as the save left it.
    static String Save(const ProjectOwner& project, String path)
    {
        project->SaveAsProject(path, true);
        return path;
    }

    static std::vector<test::StoredRecord> RecordsIn(const String& path)
    {
        return test::ReadStoredBag(ContentOf(path));
    }

    /// Writes a file with these records for the program to load.
    String WriteBag(const std::vector<test::StoredRecord>& records) const
    {
        return folder_.Write(u"other.tsq", test::StoredBag(records));
    }

    static std::vector<std::string> CustomPropertiesOf(const ProjectOwner& project)
    {
        std::vector<std::string> texts;
        for (const auto& property : project->CustomProperies->NewEnum())
            texts.push_back(ToUtf8(property->ProperyName + u"=" + property->PropertyValue));
        return texts;
    }

    std::shared_ptr<FindAndReplaceItem> AddItem(const ProjectOwner& project, const String& find,
                                                const String& with = {})
    {
        return project->FindAndReplaceList->Add(find, with, std::make_shared<OptionSetting>(), project.get());
    }

    const ErrorLogRecorder log_;
    MessageRecorder messages_;
    const TemporaryFolder folder_;
    const String path_ = folder_.PathOf(u"job.tsq");
};

}  // namespace tessarine
