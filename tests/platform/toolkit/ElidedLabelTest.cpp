#include "platform/toolkit/ElidedLabel.h"

#include "tests/kit/Printers.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QToolTip>

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

} // namespace
