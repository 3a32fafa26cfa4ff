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

/// The text with places to break a line after each backslash. A slash is one of itself.
QString BreakableText(QString text)
{
    constexpr QChar zeroWidthSpace(0x200B);
    return text.replace(u'\\', QString(u'\\') + zeroWidthSpace);
}

}  // namespace

NoticeStrip::NoticeStrip()
    : lblNotice(Named<QLabel>("lblNotice")),
      lblMoreNotices(Named<QLabel>("lblMoreNotices")),
      cmdErrorLog(Named<QPushButton>("cmdErrorLog")),
      cmdCloseNotice(NamedPictureButton("cmdCloseNotice", "close")),
      picture_(new QLabel)
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
    // Reached by Tab and read from there. Not selected by the mouse: what is copied would hold the places to break.
    lblNotice->setTextInteractionFlags(Qt::TextSelectableByKeyboard);
    lblNotice->setFocusPolicy(Qt::StrongFocus);

    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    picture_->setPixmap(Icon("warning").pixmap(QSize(size, size), devicePixelRatioF()));
    auto* const row = new QHBoxLayout(this);
    row->addWidget(picture_, 0, Qt::AlignVCenter);
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
    picture_->setAccessibleName(NoticeText(u"Name"));
    setAccessibleName(NoticeText(u"Name"));
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
