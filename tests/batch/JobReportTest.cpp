#include <gmock/gmock.h>

#include <algorithm>

#include "batch/ReportFormats.h"
#include "model/Project.h"
#include "model/ProjectKeys.h"

namespace tessarine::batch
{
namespace
{

struct PutUnusualValue {
    void operator()(bool& field) const { field = true; }
    void operator()(std::int32_t& field) const { field = 7; }
    void operator()(String& field) const { field = u"unusual"; }
};

std::string JobAsJson(const Project& project)
{
    return CreateJsonReport({})->OfJob(u"a.tsq", project);
}

TEST(JobReport, TellsEveryStoredOptionInUse)
{
    const std::vector<String> carriedAlong{u"ExeLocationIncaseOfFailure", u"PowerpointVersion"};
    const ProjectOwner fresh;
    const std::string freshAsJson = JobAsJson(*fresh);

    for (const StoredOption& option : StoredOptions) {
        const ProjectOwner project;
        std::visit([&](auto field) { PutUnusualValue()((*project->options).*field); }, option.field);

        const bool isTold = JobAsJson(*project) != freshAsJson;
        EXPECT_EQ(isTold, std::ranges::count(carriedAlong, option.key) == 0) << ToUtf8(option.key);
    }
}

}  // namespace
}  // namespace tessarine::batch
