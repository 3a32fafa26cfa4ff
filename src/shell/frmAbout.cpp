#include "shell/frmAbout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/WindowTitle.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "log/Treatments.h"
#include "platform/ProgramInfo.h"

namespace tessarine
{

namespace
{

constexpr StringView aboutPlace = u"Form frmAbout";

QLabel* MakeLabel(const char* name, const QString& text, QWidget* parent)
{
    auto* const label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);  // a version is something to copy
    return label;
}

}  // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmAbout");
    LogAndReturn({u"Form_Load", aboutPlace}, [this] {
        setWindowTitle(ToQt(BuildWindowTitle(u"About", false)));
        BuildControls();
    });
}

void frmAbout::BuildControls()
{
    constexpr int iconSize = 72;
    constexpr qreal titleSize = 1.8;  // times the size of ordinary text

    auto* const picture = new QLabel(this);
    picture->setObjectName("imgIcon");
    picture->setAccessibleName(ToQt(ApplicationTitle));
    picture->setPixmap(Icon("tessarine").pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    auto* const lblAbout1 = MakeLabel("lblAbout1", ToQt(ApplicationTitle), this);
    QFont titleFont = lblAbout1->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * titleSize);
    titleFont.setBold(true);
    lblAbout1->setFont(titleFont);
    auto* const lblVersion = MakeLabel("lblVersion", "Version " TESSARINE_VERSION, this);
    auto* const lblDescription =
        MakeLabel("lblDescription", "Finds and replaces text across whole sets of PowerPoint presentations.", this);
    auto* const cmdQuit = new QPushButton("&Close", this);
    cmdQuit->setObjectName("cmdQuit");
    cmdQuit->setDefault(true);

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(lblAbout1);
    texts->addWidget(lblVersion);
    texts->addSpacing(fontMetrics().height());
    texts->addWidget(lblDescription);
    texts->addStretch();
    auto* const content = new QHBoxLayout;
    content->setSpacing(fontMetrics().height() * 3 / 2);
    content->addWidget(picture, 0, Qt::AlignTop);
    content->addLayout(texts, 1);
    auto* const whole = new QVBoxLayout(this);
    const int margin = fontMetrics().height() * 3 / 2;
    whole->setContentsMargins(margin, margin, margin, margin * 2 / 3);
    whole->addLayout(content);
    whole->addSpacing(margin);
    whole->addWidget(cmdQuit, 0, Qt::AlignRight);
    whole->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdQuit, &QPushButton::clicked, this, &frmAbout::cmdQuit_Click);
}

void frmAbout::cmdQuit_Click()
{
    LogAndReturn({u"cmdQuit_Click", aboutPlace}, [this] { close(); });
}

}  // namespace tessarine
