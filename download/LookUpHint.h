#pragma once

#include <QLabel>
#include <QPointer>
#include <QString>

/// The line below an issue's key, which says so while the issue is looked up. In words only: a look-up has no
/// indicator, and one that fails, or that has no key, is not spoken of.
class LookUpHint
{
public:
    /// Null for an interface file without such a line.
    explicit LookUpHint(QLabel* line);

    ///@{
    /// Once for each look-up of that key; several may be under way.
    void begin(const QString& key);
    void end(const QString& key);
    ///@}

private:
    void count(const QString& key, int more);

    QPointer<QLabel> m_line;
    QString m_usualText;
    int m_underWay = 0;
};
