#include "tests/wayland/SwayTree.h"

#include "tests/kit/WaitUntil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

namespace tests {

namespace {

// The windows of this process go on while sway is asked: it may wait for them.
QByteArray ask(const QStringList& arguments)
{
    QProcess program;
    program.start(QStringLiteral("swaymsg"), arguments);
    waitUntil([&] { return program.state() == QProcess::NotRunning; });
    return program.readAllStandardOutput();
}

QRect rectOf(const QJsonValue& value)
{
    return {value[u"x"].toInt(), value[u"y"].toInt(), value[u"width"].toInt(), value[u"height"].toInt()};
}

bool find(const QJsonObject& node, const QString& title, bool isFloating, SwayWindow& window)
{
    if (node[u"pid"].isDouble() && node[u"name"].toString() == title) {
        const QRect rect = rectOf(node[u"rect"]);
        const QRect titleBar = rectOf(node[u"deco_rect"]);
        window.id = node[u"id"].toInteger();
        window.isFloating = isFloating;
        window.isFocused = node[u"focused"].toBool();
        window.frame = rect.adjusted(0, -titleBar.height(), 0, 0);
        window.content = rectOf(node[u"window_rect"]).translated(rect.topLeft());
        return true;
    }
    for (const QJsonValue child : node[u"nodes"].toArray()) {
        if (find(child.toObject(), title, isFloating, window))
            return true;
    }
    for (const QJsonValue child : node[u"floating_nodes"].toArray()) {
        if (find(child.toObject(), title, true, window))
            return true;
    }
    return false;
}

} // namespace

SwayWindow swayWindow(const QString& title)
{
    SwayWindow window;
    find(QJsonDocument::fromJson(ask({QStringLiteral("-t"), QStringLiteral("get_tree")})).object(), title, false,
         window);
    return window;
}

bool tellSway(const SwayWindow& window, const QString& command)
{
    const QByteArray answer = ask({QStringLiteral("[con_id=%1]").arg(window.id), command});
    return QJsonDocument::fromJson(answer)[0][u"success"].toBool();
}

} // namespace tests
