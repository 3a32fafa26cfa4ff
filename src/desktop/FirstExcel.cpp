#include "desktop/FirstExcel.h"

#include <utility>

#include "platform/Failure.h"

namespace tessarine
{

namespace
{

class ExcelWithSubstitute final : public excel::Provider
{
public:
    ExcelWithSubstitute(std::shared_ptr<excel::Provider> excel, std::shared_ptr<excel::Provider> otherwise)
        : excel_(std::move(excel)), otherwise_(std::move(otherwise))
    {
    }

    std::shared_ptr<excel::Application> CreateApplication() override
    {
        try {
            return excel_->CreateApplication();
        } catch (const Failure& failure) {
            if (failure.number != FailureNumber::CannotCreateObject)
                throw;
        }
        return otherwise_->CreateApplication();
    }

private:
    std::shared_ptr<excel::Provider> excel_;
    std::shared_ptr<excel::Provider> otherwise_;
};

}  // namespace

std::shared_ptr<excel::Provider> FirstExcel(std::shared_ptr<excel::Provider> excel,
                                            std::shared_ptr<excel::Provider> otherwise)
{
    return std::make_shared<ExcelWithSubstitute>(std::move(excel), std::move(otherwise));
}

}  // namespace tessarine
