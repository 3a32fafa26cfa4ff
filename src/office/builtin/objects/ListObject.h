#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

/// A collection whose elements are made when it is first walked and handed out again on later walks: a run walks the
/// same slides for every pair and every location. What comes or goes in the file after the first walk doesn't show.
template <class Element>
class ListObject : public powerpoint::Collection<Element>, public std::enable_shared_from_this<ListObject<Element>>
{
public:
    /// A new walk from the first element on. Raises what MakeElements raises, as long as the elements are not there.
    std::unique_ptr<powerpoint::Enumerator<Element>> NewEnum() override
    {
        if (!elements_)
            elements_ = MakeElements();
        return std::make_unique<Walk>(this->shared_from_this());
    }

protected:
    /// All elements in their order. Called once; what it raises is tried again by the next walk.
    virtual std::vector<std::shared_ptr<Element>> MakeElements() = 0;

private:
    /// Walks may be nested and interleaved; each has its own place.
    class Walk final : public powerpoint::Enumerator<Element>
    {
    public:
        /// Borrows the elements, which must have been made.
        explicit Walk(std::shared_ptr<ListObject> list) : list_(std::move(list)) {}

        /// The next element, or null after the last one, however often it is asked.
        std::shared_ptr<Element> Next() override
        {
            return next_ < list_->elements_->size() ? (*list_->elements_)[next_++] : nullptr;
        }

    private:
        std::shared_ptr<ListObject> list_;  // the walk may outlive everything else that holds the collection
        std::size_t next_ = 0;              // index of the element that comes next
    };

    std::optional<std::vector<std::shared_ptr<Element>>> elements_;  // nothing before the first walk
};

}  // namespace tessarine::builtin
