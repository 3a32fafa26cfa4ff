#include "ui/run/HitsView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>

#include "ui/run/GreyText.h"
#include "ui/run/HitDelegate.h"

namespace tessarine
{

HitsView::HitsView(const char* name, QWidget* parent) : QListView(parent)
{
    setObjectName(name);
    setModel(&hits_);
    setItemDelegate(new HitDelegate(this));
    setUniformItemSizes(true);                             // only the rows in sight are asked for their texts
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // a row is cut to the list's width, with the hit in sight
    setEditTriggers(NoEditTriggers);
    connect(this, &QListView::doubleClicked, this, &HitsView::Open);
    BuildMenu();
}

void HitsView::PutEmptyText(const QString& text)
{
    emptyText_ = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void HitsView::BuildMenu()
{
    const auto add = [this](const char* name) {
        auto* const item = new QAction(this);
        item->setObjectName(name);
        addAction(item);
        return item;
    };
    mnuOpenHit = add("mnuOpenHit");
    mnuCopyHit = add("mnuCopyHit");
    mnuCopyHit->setShortcut(QKeySequence::Copy);
    // Of this list alone: the trees have the same key.
    mnuCopyHit->setShortcutContext(Qt::WidgetShortcut);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(mnuOpenHit, &QAction::triggered, this, [this] { Open(currentIndex()); });
    connect(mnuCopyHit, &QAction::triggered, this, &HitsView::CopyHit);
}

void HitsView::PutMenuCaptions(const QString& openHit, const QString& copyHit)
{
    mnuOpenHit->setText(openHit);
    mnuCopyHit->setText(copyHit);
}

void HitsView::CopyHit()
{
    if (currentIndex().isValid())
        QGuiApplication::clipboard()->setText(currentIndex().data().toString());
}

void HitsView::Open(const QModelIndex& index)
{
    if (index.isValid())
        Q_EMIT OpenRequested(hits_.FileOf(index.row()).path);
}

void HitsView::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || !currentIndex().isValid()) {
        QListView::keyPressEvent(event);
        return;
    }
    event->accept();
    Open(currentIndex());
}

void HitsView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (hits_.rowCount() > 0)
        return;
    const int margin = fontMetrics().height();
    QPainter painter(viewport());
    painter.setPen(GreyText(palette()));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     int{Qt::AlignCenter} | int{Qt::TextWordWrap}, emptyText_);
}

}  // namespace tessarine
