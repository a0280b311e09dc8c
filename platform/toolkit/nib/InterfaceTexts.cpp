#include "platform/toolkit/nib/InterfaceTexts.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace tljira {

namespace {

const QString folder = QStringLiteral(":/interface-translations");

/// "de_AT", then "de".
QStringList endingsFor(const QString& language)
{
    const QString name = QLocale(language).name();
    return {name, name.section(u'_', 0, 0)};
}

QStringList filesFor(const QString& language)
{
    for (const QString& ending : endingsFor(language)) {
        const QStringList files = QDir(folder).entryList({QStringLiteral("*_%1.qm").arg(ending)}, QDir::Files);
        if (!files.isEmpty())
            return files;
    }
    return {};
}

QStringList filesForUser()
{
    const QStringList languages = QLocale().uiLanguages();
    for (const QString& language : languages) {
        if (QLocale(language).language() == QLocale::English)
            return {};
        const QStringList files = filesFor(language);
        if (!files.isEmpty())
            return files;
    }
    return {};
}

bool isTranslatable(const QXmlStreamAttributes& string)
{
    const QStringView notr = string.value(QLatin1String("notr"));
    return notr != u"true" && notr != u"yes";
}

} // namespace

const InterfaceTexts& InterfaceTexts::shared()
{
    static const auto* const texts = new InterfaceTexts;
    return *texts;
}

InterfaceTexts::InterfaceTexts()
{
    for (const QString& file : filesForUser()) {
        auto translator = std::make_unique<QTranslator>();
        if (translator->load(file, folder))
            m_translators.push_back(std::move(translator));
    }
}

QString InterfaceTexts::ownTranslation(const char* context, const char* source, const char* comment) const
{
    if (m_translators.empty() || QCoreApplication::translate(context, source, comment) != QString::fromUtf8(source))
        return {};
    for (const auto& translator : m_translators) {
        const QString translation = translator->translate(context, source, comment);
        if (!translation.isEmpty())
            return translation;
    }
    return {};
}

QString InterfaceTexts::text(const char* context, const char* source) const
{
    const QString translation = ownTranslation(context, source, nullptr);
    return translation.isNull() ? QCoreApplication::translate(context, source) : translation;
}

QByteArray InterfaceTexts::translatedFile(const QByteArray& file) const
{
    if (m_translators.empty())
        return file;
    QByteArray translated;
    QByteArray context;
    QXmlStreamReader reader(file);
    QXmlStreamWriter writer(&translated);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.hasError())
            return file;
        writer.writeCurrentToken(reader);
        if (!reader.isStartElement())
            continue;
        const bool isText = reader.name() == u"string" && isTranslatable(reader.attributes());
        if (!isText && reader.name() != u"class")
            continue;
        const QByteArray comment = reader.attributes().value(QLatin1String("comment")).toUtf8();
        const QByteArray source = reader.readElementText().toUtf8();
        // The form's own class comes first; those of promoted views follow.
        if (!isText && context.isEmpty())
            context = source;
        const QString translation =
            isText ? ownTranslation(context.constData(), source.constData(), comment.constData()) : QString();
        writer.writeCharacters(translation.isNull() ? QString::fromUtf8(source) : translation);
        writer.writeEndElement();
    }
    return reader.hasError() ? file : translated;
}

} // namespace tljira
