#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

/// A collection whose elements are made when it is first walked and handed out again on later walks: a run walks the
/// same slides for every pair and every location. What comes or goes in the file after the first walk doesn't show,
/// unless the elements are too many to be kept.
template <class Element>
class ListObject : public powerpoint::Collection<Element>, public std::enable_shared_from_this<ListObject<Element>>
{
public:
    /// A new walk from the first element on. Raises what MakeElements raises, as long as the elements are not there.
    std::unique_ptr<powerpoint::Enumerator<Element>> NewEnum() override
    {
        std::shared_ptr<const Elements> elements = elements_;
        if (!elements) {
            elements = std::make_shared<const Elements>(MakeElements());
            if (MayKeep(elements->size()))
                elements_ = elements;
        }
        return std::make_unique<Walk>(this->shared_from_this(), std::move(elements));
    }

protected:
    using Elements = std::vector<std::shared_ptr<Element>>;

    /// All elements in their order. What it raises is tried again by the next walk.
    virtual Elements MakeElements() = 0;
    /// Whether so many are handed out again; otherwise each walk makes its own.
    virtual bool MayKeep(std::size_t /*count*/) { return true; }

private:
    /// Walks may be nested and interleaved; each has its own place.
    class Walk final : public powerpoint::Enumerator<Element>
    {
    public:
        Walk(std::shared_ptr<ListObject> list, std::shared_ptr<const Elements> elements)
            : list_(std::move(list)), elements_(std::move(elements))
        {
        }

        /// The next element, or null after the last one, however often it is asked.
        std::shared_ptr<Element> Next() override { return next_ < elements_->size() ? (*elements_)[next_++] : nullptr; }

    private:
        std::shared_ptr<ListObject> list_;  // the walk may outlive everything else that holds the collection
        std::shared_ptr<const Elements> elements_;
        std::size_t next_ = 0;  // index of the element that comes next
    };

    std::shared_ptr<const Elements> elements_;  // null before the first walk
};

}  // namespace tessarine::builtin
