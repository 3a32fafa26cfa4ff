#include "batch/EndlessPairs.h"

#include "batch/LineText.h"
#include "batch/Refusal.h"
#include "engine/EndlessReplacement.h"

namespace tessarine::batch
{

void CheckEnds(StringView find, StringView with, const OptionSetting& setting)
{
    if (NeverEnds(find, with, setting))
        Refuse("replacing " + Quoted(find) + " by " + Quoted(with) +
               " never ends: the new text holds the old one behind its start, so every replacement makes a further "
               "one");
}

}  // namespace tessarine::batch
