#include "tests/platform/toolkit/TestForm.h"

#include <QVBoxLayout>

namespace tests {

TestForm::TestForm(const char* title, const QSize& size)
    : field(new QLineEdit)
    , plain(new QPushButton(QStringLiteral("&Plain")))
    , primary(new QPushButton(QStringLiteral("&Default")))
    , cancel(new QPushButton(QStringLiteral("Cancel")))
{
    auto* layout = new QVBoxLayout(&content);
    for (QWidget* control : {static_cast<QWidget*>(plain), static_cast<QWidget*>(field), static_cast<QWidget*>(primary),
                             static_cast<QWidget*>(cancel)})
        layout->addWidget(control);
    primary->setDefault(true);
    cancel->setShortcut(QKeySequence(Qt::Key_Escape));
    QObject::connect(plain, &QPushButton::clicked, [this] { ++plainClicks; });
    QObject::connect(primary, &QPushButton::clicked, [this] { ++defaultClicks; });
    QObject::connect(cancel, &QPushButton::clicked, [this] { ++cancelClicks; });
    QObject::connect(field, &QLineEdit::returnPressed, [this] { ++returns; });
    content.resize(size);
    window = tljira::Window::create(QString::fromLatin1(title), &content);
}

} // namespace tests
