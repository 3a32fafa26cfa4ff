#include "ui/main/NoticeStrip.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

#include "ui/main/Controls.h"
#include "ui/main/NoticeTexts.h"

namespace tessarine
{

namespace
{

/// The text with places to break a line in its paths: a path without a blank would make the window as wide as itself.
QString BreakableText(QString text)
{
    constexpr QChar zeroWidthSpace(0x200B);
    for (const QChar separator : {QChar(u'/'), QChar(u'\\')})
        text.replace(separator, QString(separator) + zeroWidthSpace);
    return text;
}

}  // namespace

NoticeStrip::NoticeStrip()
    : lblNotice(Named<QLabel>("lblNotice")),
      lblMoreNotices(Named<QLabel>("lblMoreNotices")),
      cmdErrorLog(Named<QPushButton>("cmdErrorLog")),
      cmdCloseNotice(NamedPictureButton("cmdCloseNotice", "close"))
{
    setObjectName("fraNotice");
    setFrameShape(QFrame::StyledPanel);
    // The colours of a tip: set off from the window on a light desktop and on a dark one.
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    for (QLabel* label : {lblNotice, lblMoreNotices}) {
        label->setForegroundRole(QPalette::ToolTipText);
        label->setTextFormat(Qt::PlainText);  // names of files are in it
    }
    lblNotice->setWordWrap(true);
    lblNotice->setMinimumWidth(1);  // a long name is cut rather than the window widened
    // Reached by Tab, and read and copied from there.
    lblNotice->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lblNotice->setFocusPolicy(Qt::StrongFocus);

    auto* const picture = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    picture->setPixmap(Icon("warning").pixmap(QSize(size, size), devicePixelRatioF()));
    auto* const row = new QHBoxLayout(this);
    row->addWidget(picture, 0, Qt::AlignVCenter);
    row->addWidget(lblNotice, 1);
    row->addWidget(lblMoreNotices);
    row->addWidget(cmdErrorLog);
    row->addWidget(cmdCloseNotice);
    connect(cmdCloseNotice, &QPushButton::clicked, this, [this] { Over(notices_.back().cause); });
    hide();
}

void NoticeStrip::Tell(NoticeCause cause, bool isLogged, Wording wording)
{
    Remove(cause);
    notices_.push_back({cause, isLogged, std::move(wording)});
    ShowNewest();
    // Read out wherever the focus is.
    QAccessibleEvent alert(lblNotice, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void NoticeStrip::Over(NoticeCause cause)
{
    Remove(cause);
    ShowNewest();
}

void NoticeStrip::Reword()
{
    cmdCloseNotice->setAccessibleName(cmdCloseNotice->toolTip());
    ShowNewest();
}

void NoticeStrip::Remove(NoticeCause cause)
{
    std::erase_if(notices_, [cause](const Notice& notice) { return notice.cause == cause; });
}

void NoticeStrip::ShowNewest()
{
    setVisible(!notices_.empty());
    if (notices_.empty())
        return;
    const QString text = notices_.back().wording();
    lblNotice->setText(BreakableText(text));
    lblNotice->setAccessibleName(text);
    lblNotice->setToolTip(text);
    const auto others = static_cast<std::int64_t>(notices_.size()) - 1;
    lblMoreNotices->setVisible(others > 0);
    lblMoreNotices->setText(NoticeText(u"More", {.d = others}));
    cmdErrorLog->setVisible(notices_.back().isLogged);
}

}  // namespace tessarine
