#pragma once

#include <QString>

namespace tljira {

class KeyringService;

/// Finds and loads the file with the library of the desktop's keyring: below the folder of the library that this code
/// is part of, as it is installed, then below the folders where Qt looks for plug-ins, where a program that brings its
/// libraries along may have it. Main thread only.
class KeyringLoader
{
public:
    /// The same from the first call that has found one. Null when there is none that can be used: the next call looks
    /// again.
    KeyringService* service();
    /// Why there is none.
    QString failure() const { return m_failure; }

private:
    KeyringService* load(const QString& path);

    KeyringService* m_service = nullptr;
    QString m_failure;
};

} // namespace tljira
