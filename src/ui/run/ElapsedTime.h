#pragma once

#include <QString>
#include <QTime>

namespace tessarine
{

/// "Total Elapsed Time : " and the distance of two times of day in whole seconds, the same in every language. Across
/// midnight that is not the time that has passed. This is intended.
QString ElapsedTimeText(QTime start, QTime now);

}  // namespace tessarine
