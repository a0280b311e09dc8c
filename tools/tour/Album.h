#pragma once

#include "platform/toolkit/windows/Window.h"

#include <QImage>

namespace tessaloom::tour {

/// The pictures of the tour: numbered files in a folder.
class Album
{
public:
    /// Makes the folder if need be, and removes the pictures of an earlier tour from it.
    explicit Album(const QString& folder);

    QString folder() const { return m_folder; }
    int pictures() const { return m_pictures; }

    /// Saves a picture of a window, with the sheet in it if there is one. Answers the file's name, or nothing if it
    /// could not be saved.
    QString add(const QString& what, const tljira::Window& window);
    QString add(const QString& what, QWidget& window);

private:
    QString save(const QString& what, const QImage& picture);

    QString m_folder;
    int m_pictures = 0;
};

} // namespace tessaloom::tour
