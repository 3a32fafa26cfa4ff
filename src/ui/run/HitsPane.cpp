#include "ui/run/HitsPane.h"

#include <algorithm>
#include <utility>

#include <QLabel>
#include <QVBoxLayout>

#include "i18n/QtText.h"
#include "ui/run/ElidedLabel.h"
#include "ui/run/HitsView.h"

namespace tessarine
{

namespace
{

QString NameOf(const String& path)
{
    const QString text = ToQt(path);
    return text.mid(std::max(text.lastIndexOf(u'/'), text.lastIndexOf(u'\\')) + 1);
}

}  // namespace

HitsPane::HitsPane(QWidget* parent) : QWidget(parent)
{
    setObjectName("panelHits");
    lblHits = new ElidedLabel(this);
    lblHits->setObjectName("lblHits");
    lblHits->setTextFormat(Qt::PlainText);
    lblHitsNotice = new QLabel(this);
    lblHitsNotice->setObjectName("lblHitsNotice");
    lblHitsNotice->setTextFormat(Qt::PlainText);
    lblHitsNotice->setWordWrap(true);
    lstHits = new HitsView("lstHits", this);
    lstHits->setMinimumHeight(fontMetrics().height() * 3);  // a hit; on a small screen the tree needs the room
    setFocusProxy(lstHits);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(new LabelStrip(lblHits));
    column->addWidget(lblHitsNotice);
    column->addWidget(lstHits, 1);
    connect(lstHits, &HitsView::OpenRequested, this, &HitsPane::OpenRequested);
}

void HitsPane::PutTexts(const RunTexts& texts)
{
    texts_ = texts;
    lstHits->Hits().PutTexts(texts);
    lstHits->setAccessibleName(texts(u"Hits.Name"));
    lstHits->PutMenuCaptions(texts(u"mnuOpenHit.caption"), texts(u"mnuCopyNode.caption"));
    ShowNone();
}

void HitsPane::Show(HitSelection selection, const String& pair)
{
    lstHits->Hits().Show(std::move(selection));
    lstHits->PutEmptyText(texts_(u"Hits.Nothing"));
    PutHeading(Heading(pair));
    PutNotice(Notice());
}

void HitsPane::ShowNone()
{
    lstHits->Hits().Show({});
    lstHits->PutEmptyText(texts_(u"Hits.Choose"));
    PutHeading(texts_(u"Hits.Name"));
    PutNotice({});
}

void HitsPane::ShowFailure(const String& text)
{
    ShowNone();
    lstHits->PutEmptyText(ToQt(text));
}

QString HitsPane::Heading(const String& pair) const
{
    const HitsModel& hits = lstHits->Hits();
    const QString file = NameOf(hits.Selection().files.back().report.path);
    if (!hits.Selection().pair)
        return texts_.Filled(u"Hits.OfFile", {.d = hits.HitCount(), .i = file});
    return texts_.Filled(u"Hits.OfPair", {.d = hits.HitCount(), .i = file, .s = ToQt(OneLineText(pair))});
}

QString HitsPane::Notice() const
{
    const HitsModel& hits = lstHits->Hits();
    if (hits.HitCount() == 0)
        return {};
    const auto& files = hits.Selection().files;
    // At least one hit of a file with hits is kept, unless there was no room for any.
    const bool hasNoRoom = std::ranges::any_of(
        files, [](const StoredFile& file) { return file.report.hits.empty() && file.report.hitsLeftOut > 0; });
    if (hasNoRoom)
        return texts_(u"Hits.NoRoom");
    const bool isFirstOnly = std::ranges::any_of(files, [](const StoredFile& file) { return !file.run.counts; });
    return isFirstOnly ? texts_(u"Hits.FirstOnly") : QString();
}

void HitsPane::PutHeading(const QString& text)
{
    lblHits->setText(text);
}

void HitsPane::PutNotice(const QString& text)
{
    lblHitsNotice->setText(text);
    lblHitsNotice->setVisible(!text.isEmpty());
}

}  // namespace tessarine
