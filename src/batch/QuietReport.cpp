#include "batch/QuietReport.h"

#include "batch/BackupCommands.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

namespace
{

class QuietReport : public Report
{
public:
    explicit QuietReport(std::unique_ptr<Report> report) : report_(std::move(report)) {}

    std::string AtStart(Engine) override { return {}; }
    std::string OfFile(const FileReport& file) override
    {
        return Matters(file) ? report_->OfFile(file) : std::string();
    }
    std::string AtEnd(const RunSummary&) override { return {}; }
    std::string OfFile(const BackupReport& file) override
    {
        return Matters(file) ? report_->OfFile(file) : std::string();
    }
    std::string AtEnd(const BackupSummary&) override { return {}; }
    std::string OfJob(const String& path, const Project& project) override { return report_->OfJob(path, project); }

private:
    static bool Matters(const auto& file) { return file.status == FileStatus::NotProcessed || !file.warnings.empty(); }

    std::unique_ptr<Report> report_;
};

}  // namespace

std::unique_ptr<Report> CreateQuietReport(std::unique_ptr<Report> report)
{
    return std::make_unique<QuietReport>(std::move(report));
}

}  // namespace tessarine::batch
