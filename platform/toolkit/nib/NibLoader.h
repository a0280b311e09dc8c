#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QWidget>

#include <memory>

namespace tljira {

class Nib;

/// Makes views from Designer's XML: ours by their registered classes, Qt's by QUiLoader.
class NibLoader
{
public:
    /// The root of the file, standing off screen; null if the text is broken, and `error` says why.
    static QWidget* load(const QByteArray& text, const std::shared_ptr<Nib>& nib, QString* error);
};

} // namespace tljira
