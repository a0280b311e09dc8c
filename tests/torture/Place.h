#pragma once

#include "standin/Server.h"

#include <QJsonObject>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace torture {

/// Where the program under test lives: a server, folders of its own, and what is in them before and after a run.
class Place
{
public:
    /// `otherVolume` is an empty folder on another file system than the temporary folder; empty when there is none.
    explicit Place(const QString& otherVolume);

    static constexpr char password[] = "torture-password";
    static constexpr char oldSession[] = "torture-session-old";
    static constexpr char newSession[] = "torture-session-new";
    static constexpr char issue[] = "ABC-1";
    static constexpr char documentName[] = "plan.tessaloom";

    /// Nothing is left of earlier runs: settings of somebody who is logged in at `address`, one old cookie.
    void reset(const QString& address, const QString& session);
    /// Waits until the server has done with what a run, that has ended, asked of it.
    void awaitServer() const;
    QProcessEnvironment environment() const;
    /// Leads to the server, whatever host a request is meant for.
    QStringList route() const;

    /// Nothing when there is no such file, or when it is no JSON object.
    std::optional<QJsonObject> settings() const;
    static QJsonObject settingsOf(const QString& address, const QString& session);
    QByteArray cookies() const;
    /// The cookies file before a run.
    static QByteArray oldCookies();
    /// The same, and behind it what a login adds.
    static bool areNewCookies(const QByteArray& cookies);

    QString work() const { return m_home.filePath(QStringLiteral("work")); }
    QString otherVolume() const { return m_otherVolume; }
    QString passwordFile() const { return m_home.filePath(QStringLiteral("password")); }
    QString document() const { return m_home.filePath(QStringLiteral("document/") + QLatin1String(documentName)); }
    QByteArray documentBytes() const { return m_bytes; }
    QString settingsPath() const { return m_home.filePath(QStringLiteral("config/tljira/userdefaults.json")); }
    QString cookiesPath() const { return m_home.filePath(QStringLiteral("data/tljira/cookies.txt")); }
    QString root() const { return m_home.path(); }

    /// What lies in any of the folders and has no business there, but for `expected`. Paths.
    QStringList leftovers(const QString& expected = {}) const;
    /// As if the leftovers had lain there for more than a day.
    void ageLeftovers() const;

    standin::Server server;

private:
    QTemporaryDir m_home;
    QString m_otherVolume;
    QByteArray m_bytes;
};

/// Empty when there is no such file.
QByteArray bytesOf(const QString& path);

} // namespace torture
