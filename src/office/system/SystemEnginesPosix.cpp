#include "office/system/SystemEngines.h"

#include "office/builtin/Provider.h"

namespace tessarine
{

Engines SystemEngines(const SaveTerms& terms)
{
    return {builtin::CreateProvider(terms)};
}

}  // namespace tessarine
