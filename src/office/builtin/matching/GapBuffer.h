#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace tessarine::builtin
{

/// A sequence that is edited from front to back at a cost that doesn't grow with its length. Its elements lie in one
/// piece of memory with a gap at the place of the last edit; an edit elsewhere moves what lies between the two places.
/// `Storage` is a vector or string; positions count elements from 0.
template <class Storage>
class GapBuffer
{
public:
    using Element = typename Storage::value_type;

    GapBuffer() = default;
    explicit GapBuffer(Storage elements) : slots_(std::move(elements)), gap_(slots_.size()), gapEnd_(slots_.size()) {}

    std::size_t Size() const { return slots_.size() - (gapEnd_ - gap_); }
    std::size_t KeptBytes() const { return slots_.capacity() * sizeof(Element); }  ///< Of memory.

    Element& operator[](std::size_t at) { return slots_[Slot(at)]; }
    const Element& operator[](std::size_t at) const { return slots_[Slot(at)]; }

    /// The first of the elements from `at` on, which lie in one piece then; good until the next edit.
    const Element* From(std::size_t at)
    {
        MoveGap(at);
        return slots_.data() + gapEnd_;
    }

    /// Elements [at, at + count) give way to those of a range, which are moved out of it.
    template <class Range>
    void Replace(std::size_t at, std::size_t count, Range&& with)
    {
        MoveGap(at);
        Take(count);
        const auto size = static_cast<std::size_t>(std::size(with));
        Widen(size);
        std::move(std::begin(with), std::end(with), Place(gap_));
        gap_ += size;
    }

    void Insert(std::size_t at, Element element)
    {
        MoveGap(at);
        Widen(1);
        slots_[gap_++] = std::move(element);
    }

    void Erase(std::size_t at, std::size_t count = 1)
    {
        MoveGap(at);
        Take(count);
    }

    /// Appends the elements [begin, end) to another sequence.
    template <class Target>
    void CopyTo(Target& target, std::size_t begin, std::size_t end) const
    {
        const std::size_t split = std::clamp(gap_, begin, end);
        const std::size_t width = gapEnd_ - gap_;
        target.insert(target.end(), Place(begin), Place(split));
        target.insert(target.end(), Place(split + width), Place(end + width));
    }

private:
    std::size_t Slot(std::size_t at) const { return at < gap_ ? at : at + (gapEnd_ - gap_); }
    auto Place(std::size_t slot) { return slots_.begin() + static_cast<std::ptrdiff_t>(slot); }
    auto Place(std::size_t slot) const { return slots_.begin() + static_cast<std::ptrdiff_t>(slot); }

    void MoveGap(std::size_t at)
    {
        if (gap_ == gapEnd_) {
            gap_ = gapEnd_ = at;
        } else if (at < gap_) {
            std::move_backward(Place(at), Place(gap_), Place(gapEnd_));
            gapEnd_ -= gap_ - at;
            gap_ = at;
        } else if (at > gap_) {
            const std::size_t count = at - gap_;
            std::move(Place(gapEnd_), Place(gapEnd_ + count), Place(gap_));
            gap_ = at;
            gapEnd_ += count;
        }
    }

    /// Takes elements after the gap out; they give back their memory now.
    void Take(std::size_t count)
    {
        std::for_each(Place(gapEnd_), Place(gapEnd_ + count), [](Element& element) { element = Element(); });
        gapEnd_ += count;
    }

    /// Makes the gap at least so wide. It grows by a share of the whole, so that each element is moved a few times at
    /// most however many edits there are.
    void Widen(std::size_t wanted)
    {
        if (gapEnd_ - gap_ >= wanted)
            return;
        constexpr std::size_t least = 16;
        const std::size_t width = wanted + std::max(least, Size() / 4);
        Storage wider;
        wider.resize(Size() + width);
        std::move(slots_.begin(), Place(gap_), wider.begin());
        std::move(Place(gapEnd_), slots_.end(), wider.begin() + static_cast<std::ptrdiff_t>(gap_ + width));
        slots_ = std::move(wider);
        gapEnd_ = gap_ + width;
    }

    Storage slots_;
    // Slots [gap_, gapEnd_) hold nothing.
    std::size_t gap_ = 0;
    std::size_t gapEnd_ = 0;
};

}  // namespace tessarine::builtin
