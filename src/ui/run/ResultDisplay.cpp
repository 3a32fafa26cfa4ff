#include <algorithm>

#include <QLabel>
#include <QTabBar>
#include <QTabWidget>

#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "ui/run/FailureList.h"
#include "ui/run/FilterBar.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/HitsPane.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

namespace
{

/// Files up to which a filter follows each letter, and the time that it waits for the next one beyond that.
constexpr std::int64_t fewFilesToFilter = 500;
constexpr int betweenLetters = 200;  // milliseconds

constexpr int betweenTotals = 100;  // milliseconds

/// What the node stands for: whole files, or a pair of one of them.
HitSelection SelectionOf(const HitStore& hits, const ResultNodes& nodes, const ResultModel::Node& node)
{
    HitSelection selection;
    const auto pair = node.item ? nodes.PairOf(node.file, *node.item) : std::nullopt;
    if (!pair) {
        for (const std::uint32_t report : nodes.ReportsOf(node.file))
            selection.files.push_back(hits.File(report));
        return selection;
    }
    if (pair->report == ResultNodes::NotStored)
        return selection;
    selection.files.push_back(hits.File(pair->report));
    selection.pair = pair->pair;
    if (node.location)
        selection.location = nodes.LocationOf(node.file, *node.item, *node.location);
    return selection;
}

}  // namespace

ResultTree* frmProcessingDocuments::TreeInFront() const
{
    const int tab = SSTab1->currentIndex();
    return tab > 0 ? Trees()[static_cast<std::size_t>(tab) - 1] : nullptr;
}

void frmProcessingDocuments::TakeFilterText(const QString& text)
{
    for (FilterBar* filter : filters)
        if (filter->Text() != text)
            filter->PutText(text);
    std::int64_t files = 0;
    for (const ResultTree* tree : Trees())
        files += tree->Nodes().FileCount();
    if (files > fewFilesToFilter)
        filterTimer_.start(betweenLetters);
    else
        ApplyFilter();
}

void frmProcessingDocuments::ApplyFilter()
{
    filterTimer_.stop();
    const NodeFilter filter{filters[0]->Text(), filters[0]->IsOnlyWithHits()};
    for (ResultTree* tree : Trees())
        tree->PutFilter(filter);
    lstFailures->PutFilter(filter.name);
    ShowTotalsNow();
}

void frmProcessingDocuments::FocusFilter()
{
    if (const int tab = SSTab1->currentIndex(); tab > 0)
        filters[static_cast<std::size_t>(tab) - 1]->FocusText();
}

void frmProcessingDocuments::ShowHits()
{
    const ResultTree* const tree = TreeInFront();
    panelHits->setVisible(tree != nullptr);
    if (tree == nullptr)
        return;
    if (!tree->CurrentPlace()) {
        panelHits->ShowNone();
        return;
    }
    try {
        ShowHitsOf(*tree);
    } catch (...) {
        // The pane is beside the results: it says why it is empty, and they stay.
        panelHits->ShowFailure(CurrentFailure().Reason());
    }
}

void frmProcessingDocuments::ShowHitsOf(const ResultTree& tree)
{
    const ResultNodes& nodes = tree.Nodes();
    const ResultModel::Node node = *tree.CurrentPlace();
    HitSelection selection = SelectionOf(hits_, nodes, node);
    if (selection.files.empty())
        panelHits->ShowNone();
    else
        panelHits->Show(std::move(selection), node.item ? nodes.ItemText(node.file, *node.item) : String());
}

void frmProcessingDocuments::ShowTotals()
{
    // The first at once, those that follow soon after together: laying out the labels takes longer than a small file.
    areTotalsOld_ = true;
    if (!totalsTimer_.isActive())
        ShowTotalsNow();
}

void frmProcessingDocuments::ShowTotalsNow()
{
    areTotalsOld_ = false;
    totalsTimer_.start(betweenTotals);
    std::int64_t files = 0;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        const ResultModel& results = Trees()[i]->Results();
        std::int64_t all = results.Nodes().FileCount();
        files += all;
        std::int64_t shown = results.Totals().Files();
        // Failures that the tree does not show, because the run has no result for their files, count as well.
        if (Trees()[i] == trvErrors && lstFailures->Count() > all) {
            all = lstFailures->Count();
            shown = lstFailures->ShownCount();
        }
        QString text = results.Filter().name.isEmpty()
                           ? texts_.Filled(u"Totals.Files", {.d = all})
                           : texts_.Filled(u"Totals.FilesOf", {.d = shown, .i = QString::number(all)});
        if (Trees()[i] == trvChangedFiles)
            text += HitTotals(results.Totals());
        filters[i]->PutTotals(text);
        lblCount[i]->setText(all > 0 ? u'(' + QString::number(all) + u')' : QString());
        lblCount[i]->adjustSize();
        // Set once more, because the tab makes room for it only then; which hides it.
        SSTab1->tabBar()->setTabButton(static_cast<int>(i) + 1, QTabBar::RightSide, lblCount[i]);
        lblCount[i]->show();
    }
    lblTotals->setText(files == 0 ? QString()
                                  : texts_.Filled(u"Totals.Files", {.d = files}) +
                                        HitTotals(trvChangedFiles->Nodes().Totals()));
}

QString frmProcessingDocuments::HitTotals(const ResultTotals& totals) const
{
    // A run that does not count has found that much in so many locations at least.
    const StringView key = hits_.Run().counts ? u"Totals.Hits" : u"Totals.Locations";
    return " · " + texts_.Filled(u"Totals.Pairs", {.d = totals.Pairs()}) + " · " +
           texts_.Filled(key, {.d = totals.Hits()});
}

}  // namespace tessarine
