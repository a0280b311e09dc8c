#pragma once

#include <QByteArray>
#include <QString>
#include <QTranslator>

#include <memory>
#include <vector>

namespace tljira {

/// What the windows say in the user's language: the first of QLocale().uiLanguages() that is English, in which
/// interface files are written, or for which a translation was embedded with CMake's tl_embed_translations().
///
/// The contexts of Qt Linguist are the forms' class names. A translator that the host has installed comes first, text
/// by text; the host's list of translators is left as it is.
class InterfaceTexts
{
public:
    /// Made at the first use, which is when the first interface file is loaded; keeps the language of that moment.
    /// Main thread only.
    static const InterfaceTexts& shared();

    InterfaceTexts();

    /// The text of an interface file, in which what is left in English is left to the host's translators.
    QByteArray translatedFile(const QByteArray& file) const;

    /// A text of the windows that is set in code.
    QString text(const char* context, const char* source) const;

private:
    /// Null when only the host's translators may have one.
    QString ownTranslation(const char* context, const char* source, const char* comment) const;

    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

} // namespace tljira
