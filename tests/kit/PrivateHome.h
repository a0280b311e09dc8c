#pragma once

#include <QTemporaryDir>

namespace tests {

/// Gives the process home, configuration, data and temporary folders of its own for as long as the object lives, so
/// that a test neither sees nor touches those of the person who runs it. Create it before the application object.
class PrivateHome
{
public:
    PrivateHome();

    QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

} // namespace tests
