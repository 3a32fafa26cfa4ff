#include "office/builtin/matching/PartFilter.h"

namespace tessarine::builtin
{

bool PartFilter::MayHold(const SoughtText& sought)
{
    if (sought.HasControls() || Text() == nullptr)
        return true;
    if (!lastAsked_ || *lastAsked_ != sought.Text()) {
        lastAnswer_ = Holds(sought);
        lastAsked_ = sought.Text();
    }
    return lastAnswer_;
}

void PartFilter::Decline()
{
    hasGathered_ = true;
    // The triples may stay: without a text they are never asked.
    text_.reset();
}

const String* PartFilter::Text()
{
    if (!hasGathered_) {
        hasGathered_ = true;  // a part that can't be read is not read again for this
        text_ = gather_();
    }
    return text_ ? &*text_ : nullptr;
}

bool PartFilter::Holds(const SoughtText& sought)
{
    // A run with one pair never pays for the table.
    if (lastAsked_) {
        if (!triples_.IsMade()) {
            triples_ = TripleTable(text_->size());
            triples_.Add(*text_);
        }
        if (!triples_.HoldsAll(sought.Triples()))
            return false;
    }
    return text_->find(sought.FoldedWidely()) != String::npos;
}

}  // namespace tessarine::builtin
