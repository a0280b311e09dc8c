#include "platform/toolkit/views/ElidedLabel.h"

#include "tests/kit/Printers.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QImage>
#include <QToolTip>
#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace {

class ElidedLabelTest : public testing::Test
{
protected:
    ElidedLabelTest() { label.setText(text); }

    void askForToolTip()
    {
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), label.mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(&label, &event);
    }

    const QString text = QStringLiteral("A rather long name of a <b>document</b> & more.tessaloom");
    tljira::ElidedLabel label;
};

TEST_F(ElidedLabelTest, showsAllOfATextThatFits)
{
    label.resize(label.sizeHint());

    EXPECT_EQ(label.shownText(), text);
}

TEST_F(ElidedLabelTest, leavesOutTheMiddleOfATextThatDoesNotFit)
{
    label.resize(label.sizeHint().width() / 2, label.sizeHint().height());

    EXPECT_THAT(label.shownText().toStdString(), testing::StartsWith("A rat"));
    EXPECT_THAT(label.shownText().toStdString(), testing::HasSubstr("…"));
    EXPECT_THAT(label.shownText().toStdString(), testing::EndsWith("tessaloom"));
    EXPECT_LE(label.fontMetrics().horizontalAdvance(label.shownText()), label.width());
    EXPECT_EQ(label.text(), text);
}

TEST_F(ElidedLabelTest, canBecomeNarrowWhateverItsText)
{
    EXPECT_LT(label.minimumSizeHint().width(), 80);
    EXPECT_EQ(label.minimumSizeHint().height(), label.sizeHint().height());
}

TEST_F(ElidedLabelTest, staysOnOneLine)
{
    const int height = label.sizeHint().height();
    label.setText(QStringLiteral("first\nsecond\tthird"));
    label.resize(label.sizeHint());

    EXPECT_EQ(label.sizeHint().height(), height);
    EXPECT_EQ(label.shownText(), QStringLiteral("first second third"));
}

TEST_F(ElidedLabelTest, takesNoTextForMarkup)
{
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

TEST_F(ElidedLabelTest, showsTheWholeTextAsToolTipWhileSomethingIsLeftOut)
{
    label.resize(60, 20);
    label.show();
    askForToolTip();

    EXPECT_THAT(QToolTip::text().toStdString(), testing::HasSubstr("&lt;b&gt;document&lt;/b&gt; &amp; more.tessaloom"));
}

TEST_F(ElidedLabelTest, showsNoToolTipForATextThatFits)
{
    label.resize(label.sizeHint());
    label.show();
    askForToolTip();

    EXPECT_EQ(QToolTip::text(), QString());
}

// A few lines.

class LinesOfElidedLabelTest : public ElidedLabelTest
{
protected:
    LinesOfElidedLabelTest() { label.setMaximumLines(2); }

    int lineHeight() const { return label.minimumSizeHint().height(); }
    int widthFor(const QString& words) const { return label.fontMetrics().horizontalAdvance(words) + 2; }
    QImage picture()
    {
        label.resize(label.width(), label.heightForWidth(label.width()));
        return label.grab().toImage();
    }
};

TEST_F(LinesOfElidedLabelTest, takesOneLineForATextThatFits)
{
    EXPECT_TRUE(label.hasHeightForWidth());
    EXPECT_EQ(label.heightForWidth(widthFor(text)), lineHeight());
}

TEST_F(LinesOfElidedLabelTest, breaksBetweenWordsAndTakesTwoLines)
{
    const int width = widthFor(QStringLiteral("A rather long name of a <b>document</b>"));
    label.resize(width, label.heightForWidth(width));
    EXPECT_GT(label.height(), lineHeight() * 3 / 2);
    EXPECT_LE(label.height(), lineHeight() * 2 + 2);
    EXPECT_EQ(label.shownText(), text);
}

TEST_F(LinesOfElidedLabelTest, leavesOutTheMiddleOfATextThatDoesNotFitIntoItsLines)
{
    const int width = widthFor(QStringLiteral("A rather long"));
    label.resize(width, label.heightForWidth(width));
    EXPECT_LE(label.height(), lineHeight() * 2 + 2);
    EXPECT_THAT(label.shownText().toStdString(), testing::HasSubstr("…"));
    EXPECT_THAT(label.shownText().toStdString(), testing::StartsWith("A rather"));
    EXPECT_THAT(label.shownText().toStdString(), testing::EndsWith("loom"));
}

TEST_F(LinesOfElidedLabelTest, breaksANameWithoutBlanksAnywhere)
{
    label.setText(QString(60, u'x'));
    const int width = widthFor(QString(40, u'x'));
    label.resize(width, label.heightForWidth(width));
    EXPECT_EQ(label.shownText(), label.text());
    EXPECT_GT(label.height(), lineHeight() * 3 / 2);
}

TEST_F(LinesOfElidedLabelTest, drawsBothLines)
{
    label.setText(QStringLiteral("xxxx xxxx"));
    label.resize(widthFor(QStringLiteral("xxxx ")), 1);
    const QImage image = picture();
    const auto isWritten = [&image](int top, int bottom) {
        const QRgb ground = image.pixel(0, 0);
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != ground)
                    return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(isWritten(0, image.height() / 2));
    EXPECT_TRUE(isWritten(image.height() / 2, image.height()));
}

TEST_F(LinesOfElidedLabelTest, getsTheHeightOfItsLinesInALayout)
{
    QWidget around;
    auto* layout = new QVBoxLayout(&around);
    auto* inside = new tljira::ElidedLabel;
    inside->setMaximumLines(2);
    inside->setText(text);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inside);
    layout->addStretch();
    around.resize(widthFor(QStringLiteral("A rather long name of a <b>document</b>")), 300);
    around.show();
    EXPECT_EQ(inside->height(), inside->heightForWidth(around.width()));
    EXPECT_GT(inside->height(), lineHeight());
}

} // namespace
