#pragma once

#include <cstddef>

namespace tessarine::builtin
{

/// What is kept of the parts of a package that have been read, so that the next walk need not read them again. Once it
/// is more than a limit, a part that was read is kept only until the next one is: memory is that of the limit and of
/// one part, however many and how large they are. Those that came first stay, since walks go from front to back, over
/// and over, and would otherwise find nothing of what they left.
class KeptParts
{
public:
    /// Of one part. It must not outlive the KeptParts, and may be told to let go by every Use of another one.
    class Part
    {
    public:
        explicit Part(KeptParts& all) : all_(all) {}
        virtual ~Part() { all_.Forget(*this); }
        Part(const Part&) = delete;
        Part& operator=(const Part&) = delete;

        /// To be called before something is read that is kept. References into other parts are good no longer.
        void Use() { all_.Use(*this); }

    private:
        friend class KeptParts;

        virtual std::size_t KeptBytes() const = 0;  ///< About: what is kept now, in memory.
        virtual void LetGo() = 0;                   ///< Gives back what can be read again when it is asked for.

        KeptParts& all_;
        std::size_t counted_ = 0;  // of KeptBytes, in all_
    };

    explicit KeptParts(std::size_t mostBytes) : mostBytes_(mostBytes) {}
    KeptParts(const KeptParts&) = delete;
    KeptParts& operator=(const KeptParts&) = delete;

private:
    void Use(Part& part);
    void Forget(Part& part);

    std::size_t mostBytes_;
    std::size_t bytes_ = 0;  // of all parts but the last
    Part* last_ = nullptr;   // the one in use, which may take whatever it needs
};

}  // namespace tessarine::builtin
