#include "office/builtin/package/WholeFile.h"

namespace tessarine::builtin
{

WholeFile::WholeFile(const RandomAccessBytes& file) : bytes_(file.Size())
{
    file.Read(0, bytes_);
}

}  // namespace tessarine::builtin
