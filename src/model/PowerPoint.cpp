#include "model/PowerPoint.h"

#include <string>

#include "platform/Locale.h"

namespace tessarine::powerpoint
{

namespace
{

struct ToText {
    String operator()(std::monostate) const { return {}; }
    String operator()(bool value) const { return value ? u"True" : u"False"; }
    String operator()(std::int64_t value) const { return FromUtf8(std::to_string(value)); }
    String operator()(double value) const { return TextFromNumber(value); }
    String operator()(const Date& value) const { return DisplayDateTime(value.local); }
    String operator()(const String& value) const { return value; }
};

}  // namespace

String TextOf(const Value& value)
{
    return std::visit(ToText(), value);
}

}  // namespace tessarine::powerpoint
