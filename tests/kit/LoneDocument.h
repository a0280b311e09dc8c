#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace tests {

/// A document alone in a folder, as a host hands it over.
class LoneDocument
{
public:
    explicit LoneDocument(const QByteArray& bytes = "contents of the document\n");

    QString folder() const { return m_parent.filePath(QStringLiteral("outbox")); }
    QString path() const { return folder() + QStringLiteral("/plan.tessaloom"); }
    static QString name() { return QStringLiteral("Plan.tessaloom"); }

private:
    QTemporaryDir m_parent;
};

} // namespace tests
