#include "office/builtin/objects/PropertyObjects.h"

#include "log/Warnings.h"
#include "office/builtin/objects/BuiltInPropertyRules.h"
#include "office/builtin/objects/TooLong.h"
#include "office/builtin/reader/Refusals.h"
#include "platform/CheckedInteger.h"

namespace tessarine::builtin
{

namespace
{

// In UTF-16 units.
constexpr std::size_t longestBuiltInText = 255;

/// Where an index from 1 stands in a collection.
std::size_t PositionOf(std::int32_t index, std::int32_t count)
{
    if (index < 1 || index > count)
        throw Failure(FailureNumber::BadArgument, u"No document property has this index");
    return static_cast<std::size_t>(index) - 1;
}

class BuiltInPropertyObject final : public powerpoint::DocumentProperty
{
public:
    BuiltInPropertyObject(OpenFileReference file, BuiltInProperty property)
        : file_(std::move(file)), property_(property), rule_(RuleOf(property))
    {
    }

    String Name() override { return rule_.name; }

    powerpoint::Value Value() override
    {
        // What the file holds wins, even for a property that most files leave undefined.
        if (auto stored = file_->Reader().BuiltIn().Read(property_))
            return std::move(*stored);
        switch (rule_.unset) {
            case UnsetProperty::ReadsEmpty:
                return String();
            case UnsetProperty::ReadsZero:
                return std::int64_t{0};
            case UnsetProperty::CountsSlides:
                return static_cast<std::int64_t>(file_->Reader().SlideCount());
            case UnsetProperty::Raises:
                break;
        }
        throw PropertyHasNoValue(rule_.name);
    }

    void PutValue(const powerpoint::Value& value) override
    {
        const String text = powerpoint::TextOf(value);
        // First of all: a run may put back the text that it has read even where nothing can be put.
        if (powerpoint::TextOf(Value()) == text)
            return;
        if (!rule_.isWritable)
            throw PropertyCannotChange(rule_.name);
        if (text.size() > longestBuiltInText)
            FailAsTooLong(text);
        file_->Reader().BuiltIn().Put(property_, text);
    }

private:
    /// The search passes over the failures of built-in properties, so that this one is told of here.
    [[noreturn]] void FailAsTooLong(const String& text)
    {
        const String reason = u"The new text is too long: it has " + NumeralOf(text.size()) +
                              u" characters, and PowerPoint takes at most " + NumeralOf(longestBuiltInText);
        Warn(file_->Path(), u"document property \"" + String(rule_.name) + u"\": left as it is. " + reason);
        throw Failure(FailureNumber::BadArgument, reason);
    }

    OpenFileReference file_;
    BuiltInProperty property_;
    const BuiltInPropertyRule& rule_;
};

class BuiltInPropertiesObject final : public powerpoint::DocumentProperties
{
public:
    explicit BuiltInPropertiesObject(OpenFileReference file) : file_(std::move(file)) {}

    std::int32_t Count() override { return static_cast<std::int32_t>(builtInPropertyCount); }

    std::shared_ptr<powerpoint::DocumentProperty> Item(std::int32_t index) override
    {
        const auto property = static_cast<BuiltInProperty>(PositionOf(index, Count()));
        return std::make_shared<BuiltInPropertyObject>(file_, property);
    }

private:
    OpenFileReference file_;
};

class CustomPropertyObject final : public powerpoint::DocumentProperty
{
public:
    CustomPropertyObject(OpenFileReference file, std::size_t property) : file_(std::move(file)), property_(property) {}

    String Name() override { return Properties().NameOf(property_); }
    powerpoint::Value Value() override { return Properties().Read(property_); }

    void PutValue(const powerpoint::Value& value) override
    {
        // Compared as texts: a caller puts back a date or a number as the text that it has read.
        if (powerpoint::TextOf(Value()) != powerpoint::TextOf(value))
            Properties().Put(property_, value);
    }

private:
    CustomPropertiesReader& Properties() { return file_->Reader().Custom(); }

    OpenFileReference file_;
    std::size_t property_;
};

class CustomPropertiesObject final : public powerpoint::DocumentProperties
{
public:
    explicit CustomPropertiesObject(OpenFileReference file)
        : file_(std::move(file)),
          // Counted once: properties are never added or removed.
          count_(Checked<std::int32_t>(static_cast<std::int64_t>(file_->Reader().Custom().Count())))
    {
    }

    std::int32_t Count() override { return count_; }

    std::shared_ptr<powerpoint::DocumentProperty> Item(std::int32_t index) override
    {
        return std::make_shared<CustomPropertyObject>(file_, PositionOf(index, count_));
    }

private:
    OpenFileReference file_;
    std::int32_t count_;
};

}  // namespace

std::shared_ptr<powerpoint::DocumentProperties> MakeBuiltInProperties(OpenFileReference file)
{
    file->Reader().BuiltIn();  // damage shows when the collection is asked for, in both of them alike
    return std::make_shared<BuiltInPropertiesObject>(std::move(file));
}

std::shared_ptr<powerpoint::DocumentProperties> MakeCustomProperties(OpenFileReference file)
{
    return std::make_shared<CustomPropertiesObject>(std::move(file));
}

}  // namespace tessarine::builtin
