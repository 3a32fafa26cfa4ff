#pragma once

#include <QGroupBox>

namespace tessarine
{

/// A frame that draws its border only while it has a caption. The frames of the tabs have none, unless a language file
/// gives them one.
class Frame : public QGroupBox
{
    Q_OBJECT

public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override;  ///< Nothing without a caption.
};

}  // namespace tessarine
