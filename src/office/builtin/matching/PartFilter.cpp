#include "office/builtin/matching/PartFilter.h"

namespace tessarine::builtin
{

bool PartFilter::MayHold(const SoughtText& sought)
{
    if (sought.HasControls() || Declines())
        return true;
    if (!lastAsked_ || *lastAsked_ != sought.Text()) {
        if (Text() == nullptr)
            return true;
        lastAnswer_ = Holds(sought);
        lastAsked_ = sought.Text();
    }
    return lastAnswer_;
}

void PartFilter::Decline()
{
    hasGathered_ = true;
    isLetGo_ = false;
    // The triples may stay: without a text they are never asked.
    text_.reset();
}

void PartFilter::LetGo()
{
    if (!text_)
        return;
    text_.reset();
    triples_ = {};
    isLetGo_ = wasLetGo_ = true;
}

std::size_t PartFilter::KeptBytes() const
{
    return (text_ ? text_->capacity() * sizeof(char16_t) : 0) + triples_.KeptBytes() +
           (lastAsked_ ? lastAsked_->size() * sizeof(char16_t) : 0);
}

const String* PartFilter::Text()
{
    if (!hasGathered_ || isLetGo_) {
        hasGathered_ = true;  // a part that can't be read is not read again for this
        isLetGo_ = false;
        text_ = gather_();
        units_ = text_ ? text_->size() : 0;
    }
    return text_ ? &*text_ : nullptr;
}

bool PartFilter::Holds(const SoughtText& sought)
{
    // A run with one pair never pays for the table, nor does a text that will be let go again.
    if (lastAsked_ && !wasLetGo_) {
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
