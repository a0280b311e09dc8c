// A host that unloads the plug-in while a job of it is under way:
//
//     unloading_host PLUGIN COPY
//
// COPY is the same plug-in in another file, which does not come to lie where the first one lay.

#include <QApplication>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QVariantMap>

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("unloading_host"));
    QPluginLoader first(QApplication::arguments().value(1));
    QMetaObject::invokeMethod(first.instance(), "askWhoIsSignedIn");
    std::puts(first.unload() ? "unloaded" : "stays");

    // Nothing new comes to lie where the plug-in's object lay.
    std::vector<std::string> others;
    for (std::size_t size = 16; size < 512; ++size)
        others.emplace_back(size, 'x');

    // A job that begins later ends later.
    QPluginLoader second(QApplication::arguments().value(2));
    QSignalSpy ends(second.instance(), SIGNAL(ended(int, QVariantMap)));
    QMetaObject::invokeMethod(second.instance(), "askWhoIsSignedIn");
    while (ends.isEmpty() && ends.wait(60000)) {
    }
    std::puts(qPrintable(ends.value(0).value(1).toMap().value(QStringLiteral("outcome")).toString()));
    return 0;
}
