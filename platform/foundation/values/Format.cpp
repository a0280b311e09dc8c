#include "platform/foundation/values/Format.h"

#include "platform/foundation/values/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tljira {

namespace {

constexpr int DefaultDecimals = 6;
constexpr int MaximalDecimals = 100;

QString shortestText(double number)
{
    if (std::abs(number) < 1e15 && number == std::trunc(number))
        return QString::number(truncatedToInt64(number));
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

/// As printf rounds, but with a point whatever the process's locale. QString::number rounds ties the other way.
QString fixedText(double number, int decimals)
{
    std::array<char, std::numeric_limits<double>::max_exponent10 + MaximalDecimals + 8> buffer;
    const auto result = std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::fixed,
                                      std::min(decimals, MaximalDecimals));
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

QString numberText(const QJsonValue& value)
{
    const qint64 whole = value.toInteger(0);
    const bool isWhole = whole != 0 || value.toDouble() == 0.0;
    return isWhole ? QString::number(whole) : shortestText(value.toDouble());
}

bool isPlain(const QString& text)
{
    const auto isPlainCharacter = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
    };
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isPlainCharacter);
}

QString quotedWhereNeeded(const QString& text)
{
    if (isPlain(text))
        return text;
    QString quoted = text;
    quoted.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'"', QLatin1String("\\\""))
        .replace(u'\n', QLatin1String("\\n"));
    return u'"' + quoted + u'"';
}

QString describeNested(const QJsonValue& value, int depth);

QString indentation(int depth)
{
    return QString(qsizetype(4) * depth, u' ');
}

QString describeObject(const QJsonObject& object, int depth)
{
    QString text = QStringLiteral("{\n");
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        text += indentation(depth + 1) + quotedWhereNeeded(entry.key()) + QLatin1String(" = ") +
                describeNested(entry.value(), depth + 1) + QLatin1String(";\n");
    return text + indentation(depth) + u'}';
}

QString describeArray(const QJsonArray& array, int depth)
{
    QString text = QStringLiteral("(");
    for (qsizetype index = 0; index < array.size(); ++index)
        text +=
            QLatin1String(index == 0 ? "\n" : ",\n") + indentation(depth + 1) + describeNested(array[index], depth + 1);
    return text + u'\n' + indentation(depth) + u')';
}

QString describeNested(const QJsonValue& value, int depth)
{
    if (value.isObject())
        return describeObject(value.toObject(), depth);
    if (value.isArray())
        return describeArray(value.toArray(), depth);
    return value.isString() ? quotedWhereNeeded(value.toString()) : describe(value);
}

/// The pieces of "%0.2f" or "%lld". Flags and widths other than a leading 0 are not known here.
struct Specifier
{
    qsizetype length = 0;
    QChar conversion;
    int decimals = DefaultDecimals;

    static std::optional<Specifier> at(QStringView text);
};

std::optional<Specifier> Specifier::at(QStringView text)
{
    Specifier found;
    qsizetype position = 1;
    const auto peek = [&] { return position < text.size() ? text[position] : QChar(); };
    if (peek() == u'0')
        ++position;
    if (peek() == u'.') {
        ++position;
        found.decimals = 0;
        for (; peek() >= u'0' && peek() <= u'9'; ++position)
            found.decimals = std::min(MaximalDecimals, 10 * found.decimals + peek().digitValue());
    }
    while (peek() == u'l' || peek() == u'h')
        ++position;
    found.conversion = peek();
    found.length = position + 1;
    if (found.conversion.isNull() || !QStringView(u"@diuf%").contains(found.conversion))
        return std::nullopt;
    return found;
}

} // namespace

QString describe(const QString& text)
{
    return text;
}

QString describe(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("<null>");
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QJsonValue::Double:
        return numberText(value);
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Array:
        return describeArray(value.toArray(), 0);
    case QJsonValue::Object:
        return describeObject(value.toObject(), 0);
    case QJsonValue::Undefined:
        break;
    }
    return describe(std::nullopt);
}

QString describe(const QJsonObject& object)
{
    return describeObject(object, 0);
}

QString describe(const QJsonArray& array)
{
    return describeArray(array, 0);
}

QString describe(const QRectF& rectangle)
{
    return QStringLiteral("{{%1, %2}, {%3, %4}}")
        .arg(shortestText(rectangle.x()), shortestText(rectangle.y()), shortestText(rectangle.width()),
             shortestText(rectangle.height()));
}

QString describe(std::nullopt_t)
{
    return QStringLiteral("(null)");
}

QString FormatArgument::text(QStringView specifier) const
{
    if (const QString* description = std::get_if<QString>(&m_value))
        return *description;

    const double* floating = std::get_if<double>(&m_value);
    const quint64* natural = std::get_if<quint64>(&m_value);
    const qint64 whole = floating  ? truncatedToInt64(*floating)
                         : natural ? static_cast<qint64>(*natural)
                                   : std::get<qint64>(m_value);
    const Specifier how = Specifier::at(specifier).value_or(Specifier());
    if (how.conversion == u'f')
        return fixedText(floating  ? *floating
                         : natural ? static_cast<double>(*natural)
                                   : static_cast<double>(whole),
                         how.decimals);
    if (how.conversion == u'u')
        return QString::number(static_cast<quint64>(whole));
    if (how.conversion == u'd' || how.conversion == u'i')
        return QString::number(whole);
    return floating ? shortestText(*floating) : natural ? QString::number(*natural) : QString::number(whole);
}

QString formatArguments(const QString& format, std::initializer_list<FormatArgument> arguments)
{
    QString result;
    auto argument = arguments.begin();
    qsizetype position = 0;
    while (position < format.size()) {
        const qsizetype percent = format.indexOf(u'%', position);
        if (percent < 0)
            break;
        result += QStringView(format).mid(position, percent - position);
        const std::optional<Specifier> found = Specifier::at(QStringView(format).mid(percent));
        const qsizetype length = found ? found->length : 1;
        const QStringView specifier = QStringView(format).mid(percent, length);
        if (found && found->conversion == u'%')
            result += u'%';
        else if (found && argument != arguments.end())
            result += (argument++)->text(specifier);
        else
            result += specifier;
        position = percent + length;
    }
    return result += QStringView(format).mid(position);
}

} // namespace tljira
