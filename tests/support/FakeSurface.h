#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/PowerPoint.h"
#include "support/FakePowerPoint.h"

namespace tessarine
{

/// A surface collection over a vector of values: `Make` turns an element into its surface object. The elements are
/// shared with their owner; the vector may change between steps.
template <class Surface, class Value>
class FakeCollection : public powerpoint::Collection<Surface>
{
public:
    using Values = std::shared_ptr<std::vector<Value>>;
    using Make = std::function<std::shared_ptr<Surface>(std::shared_ptr<Value>)>;

    FakeCollection(std::string name, FakeScript script, Values values, Make make)
        : name_(std::move(name)), script_(std::move(script)), values_(std::move(values)), make_(std::move(make))
    {
    }

    std::unique_ptr<powerpoint::Enumerator<Surface>> NewEnum() override
    {
        script_.Read(name_ + ".NewEnum");
        return std::make_unique<Walk>(*this);
    }

    bool MayHoldText(const String&) override { return !script_.DeniesText(); }

private:
    /// Looks at the vector anew at each step, as PowerPoint's own walks do.
    class Walk : public powerpoint::Enumerator<Surface>
    {
    public:
        explicit Walk(FakeCollection collection) : collection_(std::move(collection)) {}

        std::shared_ptr<Surface> Next() override
        {
            collection_.script_.Read(collection_.name_ + ".Next");
            if (next_ >= collection_.values_->size())
                return nullptr;
            return collection_.make_({collection_.values_, &(*collection_.values_)[next_++]});
        }

    private:
        FakeCollection collection_;
        std::size_t next_ = 0;
    };

    std::string name_;
    FakeScript script_;
    Values values_;
    Make make_;
};

/// The collection over a vector that lives inside a shared `owner`, which it keeps alive.
template <class Surface, class Value, class Owner, class Make>
std::shared_ptr<powerpoint::Collection<Surface>> CollectionOf(std::string name, const FakeScript& script,
                                                              const std::shared_ptr<Owner>& owner,
                                                              std::vector<Value>& values, Make make)
{
    return std::make_shared<FakeCollection<Surface, Value>>(
        std::move(name), script, std::shared_ptr<std::vector<Value>>(owner, &values), std::move(make));
}

/// Shapes over their values, which stay the test's to read.
std::shared_ptr<powerpoint::Shapes> FakeShapesOf(const FakeScript& script,
                                                 const std::shared_ptr<std::vector<FakeShape>>& shapes);

/// A master over its value, shared with the test.
std::shared_ptr<powerpoint::Master> FakeMasterOf(const FakeScript& script, const std::shared_ptr<FakeMaster>& master);

/// Header and footer over their texts; one that holds none raises InvalidRequest.
std::shared_ptr<powerpoint::HeadersFooters> FakeHeadersFootersOf(const FakeScript& script,
                                                                 const std::shared_ptr<FakeHeaderFooter>& header,
                                                                 const std::shared_ptr<FakeHeaderFooter>& footer);

}  // namespace tessarine
