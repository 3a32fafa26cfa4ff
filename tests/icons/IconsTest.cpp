#include "icons/Icons.h"

#include <gmock/gmock.h>

#include <QImage>

namespace tessarine
{
namespace
{

/// Number of pixels of an icon that show something.
int PixelsDrawn(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 64;
    return count;
}

class IconsTest : public testing::TestWithParam<const char*>
{
};

TEST_P(IconsTest, ShowSomethingAtEverySize)
{
    for (const int size : {16, 24, 48, 256}) {
        const QImage image = Icon(GetParam()).pixmap(size, size).toImage();

        ASSERT_EQ(image.size(), QSize(size, size));
        EXPECT_GT(PixelsDrawn(image), size * size / 10) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheProgram, IconsTest,
                         testing::Values("add", "browse", "browse-file", "delete", "help", "open", "project", "replace",
                                         "save", "search", "swap", "tessarine", "warning"),
                         [](const auto& name) { return QString(name.param).remove('-').toStdString(); });

TEST(Icon, IsNullForANameWithoutADrawing)
{
    EXPECT_TRUE(Icon("unheard-of").isNull());
    EXPECT_TRUE(IconDrawing("unheard-of").isEmpty());
}

TEST(Icon, HandsOutItsDrawing)
{
    EXPECT_TRUE(IconDrawing("tessarine").startsWith("<svg "));
}

}  // namespace
}  // namespace tessarine
