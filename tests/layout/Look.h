#pragma once

#include <QList>
#include <QPalette>
#include <QString>
#include <QTranslator>

#include <memory>
#include <ostream>
#include <vector>

namespace tests {

/// What the user's desktop is set up to look like, and whose names the server knows.
struct Look
{
    enum class Colors { Light, Dark, HighContrast };

    const char* name;
    Colors colors = Colors::Light;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    const char* language = "en";
    /// Each text grows by half, in fewer and longer words.
    bool hasLongWords = false;
    const char* person = "Anna Lindqvist";
    const char* document = "harbour blanket.tessaloom";
    /// Points of the program's font.
    QList<int> sizes = {9, 15, 24};
};

void PrintTo(const Look& look, std::ostream* out);

/// Every size of the plain look, some sizes of each other.
std::vector<Look> allLooks();

/// Sets up this process as `look` says, until it goes.
class Desktop
{
public:
    explicit Desktop(const Look& look);
    ~Desktop();

    /// What is loaded from now on has a font of this size.
    void setFontSize(int points) const;

private:
    std::unique_ptr<QTranslator> m_longWords;
};

} // namespace tests
