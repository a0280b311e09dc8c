#include "platform/toolkit/windows/Alert.h"

#include "platform/toolkit/windows/ModalResponse.h"

#include <QMessageBox>
#include <QPushButton>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

TEST(Alert, showsItsTextsUntilItsButtonIsPressed)
{
    Alert alert;
    alert.setMessageText(QStringLiteral("Error"));
    alert.setInformativeText(QStringLiteral("<b>not markup</b>"));
    QStringList seen;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    Alert::observeDialogs([&](QMessageBox& box) {
        EXPECT_TRUE(box.isVisible());
        seen = QStringList{box.text(), box.informativeText()};
        icon = box.icon();
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    });

    EXPECT_EQ(alert.runModal(), ModalResponse::OK);

    EXPECT_EQ(seen, (QStringList{QStringLiteral("Error"), QStringLiteral("<b>not markup</b>")}));
    EXPECT_EQ(icon, QMessageBox::Warning);
    EXPECT_EQ(static_cast<int>(Alert::Style::Warning), 0);
}

TEST(Alert, isDoneOnEscapeToo)
{
    Alert alert;
    int shown = 0;
    Alert::observeDialogs([&](QMessageBox& box) {
        ++shown;
        QTest::keyClick(&box, Qt::Key_Escape);
    });

    EXPECT_EQ(alert.runModal(), ModalResponse::OK);
    EXPECT_EQ(shown, 1);
}

TEST(Alert, looksAsItsStyleSays)
{
    QList<QMessageBox::Icon> icons;
    Alert::observeDialogs([&](QMessageBox& box) {
        icons.append(box.icon());
        box.accept();
    });

    for (const auto style : {Alert::Style::Warning, Alert::Style::Informational, Alert::Style::Critical}) {
        Alert alert;
        alert.setStyle(style);
        alert.runModal();
    }

    EXPECT_THAT(icons, testing::ElementsAre(QMessageBox::Warning, QMessageBox::Information, QMessageBox::Critical));
}

} // namespace
