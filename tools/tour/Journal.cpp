#include "tools/tour/Journal.h"

#include <cstdio>

namespace tessaloom::tour {

namespace {

void print(const QString& line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

void Journal::scene(const QString& title)
{
    print(QLatin1Char('\n') + title);
}

void Journal::note(const QString& text)
{
    print(QStringLiteral("  ") + text);
}

bool Journal::expect(const QString& what, bool holds)
{
    ++m_checks;
    m_differences += holds ? 0 : 1;
    print((holds ? QStringLiteral("  ok       ") : QStringLiteral("  DIFFERS  ")) + what);
    return holds;
}

bool Journal::expectText(const QString& what, const QString& actual, const QString& expected)
{
    const bool holds = expect(QStringLiteral("%1: \"%2\"").arg(what, expected), actual == expected);
    if (!holds)
        note(QStringLiteral("         it is \"%1\"").arg(actual));
    return holds;
}

} // namespace tessaloom::tour
