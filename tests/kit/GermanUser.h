#pragma once

#include <QLocale>

namespace tests {

/// The first base of a test whose user has German windows: the texts of a process are those of the user whom its first
/// window finds.
class GermanUser
{
protected:
    GermanUser() { QLocale::setDefault(QLocale(QLocale::German)); }
    ~GermanUser() { QLocale::setDefault(m_before); }

private:
    const QLocale m_before;
};

} // namespace tests
