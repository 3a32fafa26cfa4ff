#include "shell/WindowPlace.h"

#include <algorithm>

#include <QByteArray>
#include <QScreen>
#include <QStyle>
#include <QWidget>

#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"

namespace tessarine
{

namespace
{

const String placeKey = u"Place";

}  // namespace

void RestorePlace(QWidget& window, const String& name)
{
    const QString text = ToQt(GetSetting(String(ApplicationTitle), name, placeKey));
    const QByteArray kept = QByteArray::fromBase64(text.toLatin1());
    // Qt looks at the beginning alone, and takes zeros for what is cut off.
    if (kept.size() == window.saveGeometry().size())
        window.restoreGeometry(kept);  // which moves it onto a screen that is there
}

void KeepPlace(const QWidget& window, const String& name)
{
    Skip([&] {
        const QByteArray kept = window.saveGeometry().toBase64();
        SaveSetting(String(ApplicationTitle), name, placeKey, FromQt(QString::fromLatin1(kept)));
    });
}

QSize FrameSize(const QWidget& window)
{
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int border = title / 2;
    return {2 * border, title + border};
}

QSize FittingSize(const QWidget& window, const QSize& wanted)
{
    return wanted.boundedTo(window.screen()->availableSize() - FrameSize(window));
}

QPoint PlaceOver(const QRect& owner, const QSize& size, const QRect& screen)
{
    const auto between = [](int wanted, int first, int room) {
        return std::clamp(wanted, first, first + std::max(room, 0));
    };
    return {between(owner.x() + (owner.width() - size.width()) / 2, screen.x(), screen.width() - size.width()),
            between(owner.y() + (owner.height() - size.height()) / 2, screen.y(), screen.height() - size.height())};
}

}  // namespace tessarine
