#include "desktop/QtMessageBox.h"

#include <algorithm>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>

#include "i18n/LanguageOfQt.h"
#include "i18n/QtText.h"
#include "platform/ProgramInfo.h"
#include "shell/Help.h"

namespace tessarine
{

namespace
{

QMessageBox::Icon QtIcon(MessageIcon icon)
{
    switch (icon) {
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButtons QtButtons(const Message& message)
{
    const QMessageBox::StandardButtons help = message.hasHelpButton ? QMessageBox::Help : QMessageBox::NoButton;
    switch (message.buttons) {
        case MessageButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel | help;
        case MessageButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No | help;
        case MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel | help;
        default:
            return QMessageBox::Ok | help;
    }
}

MessageAnswer AnswerOf(int button)
{
    switch (button) {
        case QMessageBox::Yes:
            return MessageAnswer::Yes;
        case QMessageBox::No:
            return MessageAnswer::No;
        case QMessageBox::Cancel:
            return MessageAnswer::Cancel;
        default:
            return MessageAnswer::Ok;
    }
}

/// So that the lines of the details stay whole, as far as that makes no very wide box: of itself Qt breaks them at the
/// width of the buttons.
void WidenForDetails(QMessageBox& box)
{
    auto* const label = box.findChild<QLabel*>("qt_msgbox_informativelabel");
    if (label == nullptr)
        return;  // without details
    const QFontMetrics metrics = label->fontMetrics();
    const int lines = metrics.size(Qt::TextExpandTabs, label->text()).width();
    label->setMinimumWidth(std::min(lines, metrics.averageCharWidth() * 70));
}

}  // namespace

MessageAnswer ShowQtMessageBox(const Message& message)
{
    UseLanguageOfQt();
    QMessageBox box(QtIcon(message.icon), ToQt(message.title.empty() ? ApplicationTitle : StringView(message.title)),
                    ToQt(message.text), QtButtons(message), QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);  // a file name may look like markup
    box.setInformativeText(ToQt(message.details));
    WidenForDetails(box);
    int button = box.exec();
    // Help is no answer: the question comes again after it.
    while (button == QMessageBox::Help) {
        ShowHelp();
        button = box.exec();
    }
    return AnswerOf(button);
}

}  // namespace tessarine
