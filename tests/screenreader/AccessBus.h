#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tests {

/// A session bus on which screen readers find programs, for this process alone, from construction to destruction: the
/// bus, and what it starts when it is asked for, a second bus for accessibility with its registry. They end with the
/// process, however it ends. To be made before the application object, whose windows tell of themselves from then on.
class AccessBus
{
public:
    AccessBus();
    ~AccessBus();
    AccessBus(const AccessBus&) = delete;
    AccessBus& operator=(const AccessBus&) = delete;

    /// Why there is none; empty when there is one. The environment names it then.
    QString error() const { return m_error; }

private:
    bool configure();
    bool start();

    QTemporaryDir m_folder;
    QProcess m_bus;
    QString m_error;
};

} // namespace tests
