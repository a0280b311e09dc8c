#pragma once

#include <QString>

namespace tessaloom::tour {

/// Prints what happens on the tour, and counts what is not as expected.
class Journal
{
public:
    void scene(const QString& title);
    void note(const QString& text);
    /// Answers `holds`.
    bool expect(const QString& what, bool holds);
    /// Shows both texts if they differ.
    bool expectText(const QString& what, const QString& actual, const QString& expected);

    int checks() const { return m_checks; }
    int differences() const { return m_differences; }

private:
    int m_checks = 0;
    int m_differences = 0;
};

} // namespace tessaloom::tour
