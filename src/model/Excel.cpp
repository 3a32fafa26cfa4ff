#include "model/Excel.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "platform/Failure.h"
#include "platform/Locale.h"

namespace tessarine::excel
{

namespace
{

// Of the process and not of a project: lists are made in many places, some without an owner who knows of providers.
std::shared_ptr<Provider> processProvider;

/// The nearest number of 15 significant digits, the most that the application keeps of a number shown as text.
double Shown(double number)
{
    if (!std::isfinite(number))
        return number;
    constexpr int digits = 15;
    char buffer[32];
    const char* const end =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::scientific, digits - 1).ptr;
    double shown = 0;
    // Reading the digits back gives a double whose shortest form is those digits, so that 0.1 + 0.2 shows as 0.3.
    std::from_chars(buffer, end, shown);
    return shown;
}

struct ToText {
    String operator()(std::monostate) const { return {}; }
    String operator()(bool value) const { return value ? u"True" : u"False"; }
    String operator()(double value) const { return TextFromNumber(Shown(value)); }
    String operator()(const String& value) const { return value; }
    // A cell that shows an error, such as #N/A, has no text. An import that meets one ends there.
    String operator()(CellError) const { throw Failure(FailureNumber::TypeMismatch, u"Type mismatch"); }
};

}  // namespace

String TextOf(const Value& value)
{
    return std::visit(ToText(), value);
}

std::shared_ptr<Provider> SetProvider(std::shared_ptr<Provider> provider)
{
    return std::exchange(processProvider, std::move(provider));
}

std::shared_ptr<Application> CreateApplication()
{
    if (!processProvider)
        // A process without a provider is like a machine without the application, and fails as that does.
        throw Failure(FailureNumber::CannotCreateObject, u"ActiveX component can't create object");
    return processProvider->CreateApplication();
}

}  // namespace tessarine::excel
