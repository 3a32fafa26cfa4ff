#include "batch/EndlessPairs.h"

#include "batch/TextLayout.h"
#include "engine/EndlessReplacement.h"
#include "platform/Failure.h"

namespace tessarine::batch
{

void CheckEnds(StringView find, StringView with, const OptionSetting& setting)
{
    if (NeverEnds(find, with, setting))
        throw Failure(FailureNumber::InvalidProcedureCall,
                      FromUtf8("replacing " + Quoted(find) + " by " + Quoted(with) +
                               " never ends: the new text holds the old one behind its start, so every replacement "
                               "makes a further one"));
}

}  // namespace tessarine::batch
