#include "tests/screenreader/ReaderTest.h"

#include "tests/kit/WaitUntil.h"

#include <QApplication>

#include <algorithm>

namespace tests {

ReaderTest::ReaderTest()
{
    // Nobody presses a button twice by accident who finds it by its name.
    QApplication::setDoubleClickInterval(0);
}

QList<Told> ReaderTest::everything()
{
    QList<Told> all;
    for (const Told& window : reader.windows()) {
        if (window.role == Told::Dialog)
            all.append(window.all());
    }
    return all;
}

Told ReaderTest::find(const QList<quint32>& roles, const QString& name)
{
    Told found;
    const auto isIt = [&](const Told& part) {
        return roles.contains(part.role) && part.isUsable && (part.name == name || part.label == name);
    };
    EXPECT_TRUE(waitUntil([&] {
        const QList<Told> all = everything();
        const auto it = std::find_if(all.begin(), all.end(), isIt);
        if (it != all.end())
            found = *it;
        return it != all.end();
    })) << name.toStdString();
    return found;
}

void ReaderTest::press(const QString& name)
{
    const Told button = find({Told::PushButton}, name);
    ASSERT_FALSE(button.path.isEmpty());
    ASSERT_TRUE(reader.act(button.path, QStringLiteral("Press"))) << name.toStdString();
}

void ReaderTest::write(const QString& label, const QString& text)
{
    const Told field = find({Told::Text, Told::PasswordText}, label);
    ASSERT_TRUE(field.takesText) << label.toStdString();
    ASSERT_TRUE(reader.write(field.path, text)) << label.toStdString();
}

QStringList ReaderTest::alerts()
{
    QStringList alerts;
    for (const News& news : reader.takeNews()) {
        if (news.kind != News::Kind::Shown)
            continue;
        const Told told = reader.read(news.path);
        if (told.role == Told::Alert)
            alerts.append(told.name);
    }
    return alerts;
}

} // namespace tests
