#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Sixteen bytes of a text looked at together, for passes over whole parts. The engine's only instructions of one kind
/// of processor (SSE2) are in this file. Every operation is here twice, in plain C++ and with these instructions, and
/// does the same in both; what is built on them says ByteBlock.
namespace tessarine::builtin
{

/// The plain form: the meaning of each operation, and what is used where there is no SSE2.
class PlainBlock
{
public:
    static constexpr std::size_t size = 16;

    /// Reads `size` bytes.
    explicit PlainBlock(const char* bytes) { std::copy_n(bytes, size, bytes_.begin()); }

    /// 0xFF for each byte that equals `c`, 0 for the others.
    PlainBlock Matches(char c) const
    {
        return Made([&](std::size_t i) { return bytes_[i] == static_cast<std::uint8_t>(c) ? 0xFF : 0; });
    }

    /// 0xFF for each byte that is greater than `c` as a signed number, 0 for the others: bytes beyond ASCII, 0x80 to
    /// 0xFF, stand for -128 to -1.
    PlainBlock GreaterThan(char c) const
    {
        return Made([&](std::size_t i) {
            return static_cast<std::int8_t>(bytes_[i]) > static_cast<std::int8_t>(c) ? 0xFF : 0;
        });
    }
    /// Has the highest bit of a byte set when that byte is less than `c` as a signed number: bytes beyond ASCII, 0x80
    /// to 0xFF, stand for -128 to -1. `c` is not '\0'.
    PlainBlock LessThan(char c) const
    {
        return Made([&](std::size_t i) {
            return static_cast<std::int8_t>(bytes_[i]) < static_cast<std::int8_t>(c) ? 0x80 : 0;
        });
    }

    /// Bit by bit; of two results of Matches, the bytes that one or the other matches.
    PlainBlock operator|(const PlainBlock& other) const
    {
        return Made([&](std::size_t i) { return bytes_[i] | other.bytes_[i]; });
    }
    /// Bit by bit; of two results of Matches, the bytes that both match.
    PlainBlock operator&(const PlainBlock& other) const
    {
        return Made([&](std::size_t i) { return bytes_[i] & other.bytes_[i]; });
    }

    /// The highest bit of every byte, the first byte's as bit 0: which bytes match, or which are not ASCII.
    std::uint32_t TopBits() const
    {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < size; ++i)
            bits |= static_cast<std::uint32_t>(bytes_[i] >> 7) << i;
        return bits;
    }

    /// Writes `size` UTF-16 units: the bytes, all of them ASCII.
    void WriteUnits(char16_t* target) const { std::ranges::copy(bytes_, target); }
    /// The same with capital letters made small.
    void WriteInLowerCase(char16_t* target) const
    {
        for (const std::uint8_t byte : bytes_)
            *target++ = static_cast<char16_t>(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
    }

    /// Adds up matches at each of the sixteen places, where a sum may be from -128 to 127.
    class Counter
    {
    public:
        static constexpr int mostSteps = 127;  ///< Of one Add or Subtract more than the other, at each place.

        /// `matches` holds 0 and 0xFF alone.
        void Add(const PlainBlock& matches) { Step(matches, 1); }
        void Subtract(const PlainBlock& matches) { Step(matches, -1); }

        int Sum() const  ///< Of all places.
        {
            int sum = 0;
            for (const std::int8_t count : counts_)
                sum += count;
            return sum;
        }

    private:
        /// Adds the step at each place that matches.
        void Step(const PlainBlock& matches, int step)
        {
            for (std::size_t i = 0; i < size; ++i)
                if (matches.bytes_[i] != 0)
                    counts_[i] = static_cast<std::int8_t>(counts_[i] + step);
        }

        std::array<std::int8_t, size> counts_{};
    };

private:
    PlainBlock() = default;  // holds anything until Made has filled it

    /// The block whose byte at each place `i` is byteAt(i).
    template <class ByteAt>
    static PlainBlock Made(ByteAt&& byteAt)
    {
        PlainBlock made;
        for (std::size_t i = 0; i < size; ++i)
            made.bytes_[i] = static_cast<std::uint8_t>(byteAt(i));
        return made;
    }

    std::array<std::uint8_t, size> bytes_;
};

#if defined(__SSE2__)

/// The same with SSE2. Every comment of PlainBlock holds here, too; tests compare the two on the same bytes. What is
/// said below is only why the instructions do what PlainBlock says.
class Sse2Block
{
public:
    static constexpr std::size_t size = 16;

    /// The address need not be a multiple of 16.
    explicit Sse2Block(const char* bytes) : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes))) {}

    Sse2Block Matches(char c) const { return Sse2Block(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c))); }
    Sse2Block GreaterThan(char c) const { return Sse2Block(_mm_cmpgt_epi8(bytes_, _mm_set1_epi8(c))); }
    /// The sign of the difference, where one that doesn't fit becomes -128 or 127. One instruction less than what
    /// compilers make of a comparison.
    Sse2Block LessThan(char c) const { return Sse2Block(_mm_subs_epi8(bytes_, _mm_set1_epi8(c))); }
    Sse2Block operator|(const Sse2Block& other) const { return Sse2Block(_mm_or_si128(bytes_, other.bytes_)); }
    Sse2Block operator&(const Sse2Block& other) const { return Sse2Block(_mm_and_si128(bytes_, other.bytes_)); }
    std::uint32_t TopBits() const { return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes_)); }

    void WriteUnits(char16_t* target) const
    {
        // A zero byte after each byte makes it a unit in the processor's byte order.
        const __m128i zero = _mm_setzero_si128();
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_unpacklo_epi8(bytes_, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target + size / 2), _mm_unpackhi_epi8(bytes_, zero));
    }

    void WriteInLowerCase(char16_t* target) const
    {
        // The comparison is one of signed bytes: those beyond ASCII are negative and never capitals.
        const __m128i isCapital = _mm_and_si128(_mm_cmpgt_epi8(bytes_, _mm_set1_epi8('A' - 1)),
                                                _mm_cmplt_epi8(bytes_, _mm_set1_epi8('Z' + 1)));
        Sse2Block(_mm_or_si128(bytes_, _mm_and_si128(isCapital, _mm_set1_epi8('a' - 'A')))).WriteUnits(target);
    }

    class Counter
    {
    public:
        static constexpr int mostSteps = 127;

        void Add(const Sse2Block& matches) { counts_ = _mm_sub_epi8(counts_, matches.bytes_); }  // a match is -1
        void Subtract(const Sse2Block& matches) { counts_ = _mm_add_epi8(counts_, matches.bytes_); }

        int Sum() const
        {
            // Only unsigned bytes can be summed up: 128 is added to each place for that.
            const __m128i shifted = _mm_xor_si128(counts_, _mm_set1_epi8(static_cast<char>(0x80)));
            const __m128i halves = _mm_sad_epu8(shifted, _mm_setzero_si128());
            // Each half holds the sum of eight places in its first 16 bits.
            return _mm_extract_epi16(halves, 0) + _mm_extract_epi16(halves, 4) - static_cast<int>(size) * 128;
        }

    private:
        __m128i counts_ = _mm_setzero_si128();
    };

private:
    /// Of the result of an instruction.
    explicit Sse2Block(__m128i bytes) : bytes_(bytes) {}

    __m128i bytes_;
};

using ByteBlock = Sse2Block;

#else

using ByteBlock = PlainBlock;

#endif

}  // namespace tessarine::builtin
