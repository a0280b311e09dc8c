#include "platform/toolkit/views/Glyph.h"

#include "tests/platform/toolkit/RolesForm.h"

#include <QAccessible>
#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

namespace {

using tljira::Glyph;

TEST(Glyph, comesFromAnInterfaceFileAndIsAsHighAsItsLines)
{
    const tests::RolesForm form;
    auto* glyph = form.view<Glyph>("picture");
    EXPECT_EQ(glyph->glyph(), QStringLiteral("document"));
    EXPECT_EQ(glyph->height(), 2 * glyph->fontMetrics().height());

    QFont large;
    large.setPointSize(30);
    glyph->setFont(large);
    EXPECT_EQ(glyph->sizeHint(), QSize(1, 1) * 2 * QFontMetrics(large).height());
}

TEST(Glyph, drawsADifferentPictureForEachNameInTheTextsColour)
{
    QSet<QByteArray> pictures;
    for (const char* name : {"warning", "tick", "document", "person"}) {
        Glyph glyph;
        glyph.resize(24, 24);
        QPalette palette(Qt::white);
        palette.setColor(QPalette::WindowText, Qt::red);
        glyph.setPalette(palette);
        glyph.setGlyph(QString::fromLatin1(name));
        const QImage image = glyph.grab().toImage().convertToFormat(QImage::Format_RGB32);
        pictures.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
        bool isColored = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                isColored = isColored || image.pixelColor(x, y).hsvSaturation() > 120;
        }
        EXPECT_TRUE(isColored) << name;
    }
    EXPECT_EQ(pictures.size(), 4);
}

} // namespace
