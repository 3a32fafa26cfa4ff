#pragma once

#include <QGroupBox>

namespace tessarine
{

/// A frame that draws its border only while it has a caption.
class Frame : public QGroupBox
{
    Q_OBJECT

public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessarine
