#include "office/system/SystemEngines.h"

#include "office/builtin/Provider.h"
#include "office/windows/PowerPointProvider.h"

namespace tessarine
{

Engines SystemEngines(const SaveTerms& terms)
{
    return {builtin::CreateProvider(terms), windows::CreatePowerPointProvider()};
}

}  // namespace tessarine
