#include "office/builtin/package/WholeFile.h"

#include <sys/mman.h>

namespace tessarine::builtin
{

WholeFile::WholeFile(const RandomAccessBytes& file)
{
    const std::size_t size = file.Size();
    if (file.Descriptor() >= 0) {
        // Private: nothing of this is ever written back.
        void* const mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.Descriptor(), 0);
        if (mapped != MAP_FAILED) {
            mapped_ = mapped;
            bytes_ = {static_cast<const std::byte*>(mapped), size};
            return;
        }
    }
    // An empty file can't be mapped, nor can files of some file systems.
    copy_.resize(size);
    file.Read(0, copy_);
    bytes_ = copy_;
}

WholeFile::~WholeFile()
{
    if (mapped_ != nullptr)
        munmap(mapped_, bytes_.size());
}

}  // namespace tessarine::builtin
