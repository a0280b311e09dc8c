#include "platform/toolkit/views/Progress.h"

#include "tests/kit/WaitUntil.h"
#include "tests/screenreader/Reader.h"

#include <QAccessible>
#include <QLabel>
#include <QProgressBar>

#include <gmock/gmock.h>

#include <chrono>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::drainMainQueue;
using tests::waitUntil;
using tljira::showProgress;

using Clock = std::chrono::steady_clock;

/// What screen readers were told, and when.
struct Word
{
    QObject* view;
    QAccessible::Event what;
    QVariant value;
    Clock::time_point when;
};
QList<Word> heard;

class ProgressTest : public testing::Test
{
protected:
    ProgressTest()
    {
        EXPECT_TRUE(waitUntil([] { return QAccessible::isActive(); }));
        heard.clear();
        window.resize(300, 100);
        label.setGeometry(0, 50, 300, 30);
        window.show();
        drainMainQueue();
        before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            if (event->type() != QAccessible::ValueChanged && event->type() != QAccessible::NameChanged)
                return;
            const bool hasValue = event->type() == QAccessible::ValueChanged;
            heard.append({event->object(), event->type(),
                          hasValue ? static_cast<QAccessibleValueChangeEvent*>(event)->value() : QVariant(),
                          Clock::now()});
        });
    }
    ~ProgressTest() override { QAccessible::installUpdateHandler(before); }

    static QList<int> valuesHeard()
    {
        QList<int> values;
        for (const Word& word : heard) {
            if (word.what == QAccessible::ValueChanged)
                values.append(word.value.toInt());
        }
        return values;
    }

    static bool hearsWords(qsizetype count)
    {
        return waitUntil([count] { return heard.size() == count; });
    }

    /// Where nobody listens nobody is told.
    tests::Reader reader;
    QWidget window;
    QProgressBar bar{&window};
    QLabel label{&window};
    QAccessible::UpdateHandler before;
};

TEST_F(ProgressTest, isSeenAtOnce)
{
    showProgress(&bar, 7);
    showProgress(&label, QStringLiteral("7 %"));
    EXPECT_EQ(bar.value(), 7);
    EXPECT_EQ(label.text(), QStringLiteral("7 %"));
}

TEST_F(ProgressTest, isToldOnceWhateverItWasOnTheWay)
{
    showProgress(&bar, 100);
    showProgress(&bar, 7);
    EXPECT_THAT(heard, IsEmpty());
    ASSERT_TRUE(hearsWords(1));
    EXPECT_THAT(valuesHeard(), ElementsAre(7));
}

TEST_F(ProgressTest, isToldOnceASecondAndToTheEnd)
{
    int value = 1;
    while (heard.size() < 3) {
        showProgress(&bar, ++value % 100);
        drainMainQueue();
    }
    showProgress(&bar, 100);
    ASSERT_TRUE(hearsWords(4));
    EXPECT_EQ(valuesHeard().last(), 100);
    for (qsizetype each = 1; each < heard.size(); ++each)
        EXPECT_GE(heard[each].when - heard[each - 1].when, std::chrono::milliseconds(900));
}

TEST_F(ProgressTest, isToldOfTextsAsOfTheirNames)
{
    showProgress(&label, QStringLiteral("7 %"));
    showProgress(&label, QStringLiteral("8 %"));
    ASSERT_TRUE(hearsWords(1));
    EXPECT_EQ(heard.first().view, &label);
    EXPECT_EQ(heard.first().what, QAccessible::NameChanged);
}

TEST_F(ProgressTest, keepsNothingElseFromScreenReaders)
{
    // What follows a value is no progress.
    QObject::connect(&bar, &QProgressBar::valueChanged, &label, [this] { label.setText(QStringLiteral("another")); });
    showProgress(&bar, 7);
    EXPECT_EQ(heard.size(), 1);
    EXPECT_EQ(heard.first().view, &label);
    ASSERT_TRUE(hearsWords(2));
    bar.setValue(8);
    EXPECT_EQ(heard.size(), 3);
}

TEST_F(ProgressTest, isNotToldOfWhatIsHidden)
{
    bar.hide();
    drainMainQueue();
    heard.clear();
    showProgress(&bar, 7);
    showProgress(&label, QStringLiteral("7 %"));
    ASSERT_TRUE(hearsWords(1));
    EXPECT_EQ(heard.first().view, &label);
}

TEST_F(ProgressTest, doesNothingForAbsentViews)
{
    showProgress(static_cast<QProgressBar*>(nullptr), 7);
    showProgress(static_cast<QLabel*>(nullptr), QStringLiteral("7 %"));
    EXPECT_THAT(heard, IsEmpty());
}

} // namespace
