#include "tests/shell/FormTexts.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>

#include <gtest/gtest.h>

namespace tests {

namespace {

const QString sourceFolder = QStringLiteral(SOURCE_DIR);

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

std::vector<QDomElement> elementsNamed(const QDomElement& root, const char* name)
{
    std::vector<QDomElement> all;
    const QDomNodeList nodes = root.elementsByTagName(QLatin1String(name));
    for (int i = 0; i < nodes.size(); ++i)
        all.push_back(nodes.at(i).toElement());
    return all;
}

QString childText(const QDomElement& element, const char* name)
{
    return element.firstChildElement(QLatin1String(name)).text();
}

QDomElement rootOf(const QByteArray& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml));
    return document.documentElement();
}

void addTexts(const QDomElement& form, std::vector<FormProperty>& texts)
{
    for (const QDomElement& string : elementsNamed(form, "string")) {
        const QDomElement property = string.parentNode().toElement();
        const QDomElement owner = property.parentNode().toElement();
        FormProperty text;
        text.text = {childText(form, "class"), string.text()};
        text.isTranslatable = string.attribute(QStringLiteral("notr")) != u"true";
        text.object = owner.attribute(QStringLiteral("name"));
        text.isRootsOwn = owner.parentNode() == form;
        text.name = property.attribute(QStringLiteral("name")).toLatin1();
        texts.push_back(text);
    }
}

} // namespace

void PrintTo(const FormText& text, std::ostream* stream)
{
    *stream << text.context.toStdString() << ": " << text.source.toStdString();
}

std::vector<FormProperty> shippedTexts()
{
    std::vector<FormProperty> texts;
    for (const char* floor : {"/shell", "/upload", "/download"}) {
        const QDir folder(sourceFolder + QLatin1String(floor));
        for (const QString& name : folder.entryList({QStringLiteral("*.ui")}))
            addTexts(rootOf(contentsOf(folder.filePath(name))), texts);
    }
    return texts;
}

QByteArray translationFile(const QString& language)
{
    return contentsOf(sourceFolder + QStringLiteral("/translations/TLJiraController_%1.ts").arg(language));
}

std::map<FormText, QString> translationsInto(const QString& language)
{
    std::map<FormText, QString> translations;
    for (const QDomElement& context : elementsNamed(rootOf(translationFile(language)), "context")) {
        for (const QDomElement& message : elementsNamed(context, "message")) {
            const FormText text{childText(context, "name"), childText(message, "source")};
            translations[text] = childText(message, "translation");
        }
    }
    return translations;
}

} // namespace tests
