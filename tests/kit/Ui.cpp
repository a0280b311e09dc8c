#include "tests/kit/Ui.h"

#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace tests::ui {

namespace {

void expectUsable(const QWidget* control)
{
    ASSERT_NE(control, nullptr);
    ASSERT_TRUE(control->isVisible()) << control->objectName().toStdString();
    ASSERT_TRUE(control->isEnabled()) << control->objectName().toStdString();
}

} // namespace

void click(QAbstractButton* button)
{
    ASSERT_NO_FATAL_FAILURE(expectUsable(button));
    QTest::mouseClick(button, Qt::LeftButton);
}

void type(QLineEdit* field, const QString& text)
{
    ASSERT_NO_FATAL_FAILURE(expectUsable(field));
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

void press(QWidget* window, Qt::Key key)
{
    QWidget* focused = window->focusWidget();
    QTest::keyClick(focused ? focused : window, key);
}

bool isShown(const QWidget* view)
{
    return view && view->isVisibleTo(view->window());
}

bool isOnScreen(const QWidget* view)
{
    return view && view->isVisible();
}

} // namespace tests::ui
