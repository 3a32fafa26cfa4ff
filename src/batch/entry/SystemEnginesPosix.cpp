#include "SystemEngines.h"

#include "office/builtin/Provider.h"

namespace tessarine::batch
{

Engines SystemEngines(const SaveTerms& terms)
{
    return {builtin::CreateProvider(terms)};
}

}  // namespace tessarine::batch
