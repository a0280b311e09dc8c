#pragma once

#include <QByteArray>
#include <QString>

#include <compare>
#include <iosfwd>
#include <map>
#include <vector>

namespace tests {

/// What a translation knows a text by.
struct FormText
{
    QString context;
    QString source;

    std::strong_ordering operator<=>(const FormText&) const = default;
};

/// In the words of a failed comparison.
void PrintTo(const FormText& text, std::ostream* stream);

/// A text in one of the interface files that the framework comes with.
struct FormProperty
{
    FormText text;
    bool isTranslatable = false;
    QString object;
    /// Whether `object` is the file's root, whose title becomes the window's.
    bool isRootsOwn = false;
    QByteArray name;
};

/// Of all properties of views, in the source tree's files.
std::vector<FormProperty> shippedTexts();

QByteArray translationFile(const QString& language);
std::map<FormText, QString> translationsInto(const QString& language);

} // namespace tests
