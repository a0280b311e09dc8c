// Shows the older window and prints the texts of the labels and the names of the buttons that a user sees in its panel.

#include <TLJiraController/TLJiraController.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("older-consumer"));
    const auto entry = JAWindowController::initWithPath(QStringLiteral("/nowhere/plan.tessaloom"));
    entry->showWindow();
    for (const QString& problem : entry->bodyViewController()->interfaceProblems())
        std::printf("problem %s\n", qPrintable(problem));
    for (const QLabel* label : entry->bodyView()->findChildren<QLabel*>())
        std::printf("label %s: %s\n", qPrintable(label->objectName()), qPrintable(label->text()));
    for (const QPushButton* button : entry->bodyView()->findChildren<QPushButton*>())
        std::printf("button %s\n", qPrintable(button->objectName()));
    return 0;
}
