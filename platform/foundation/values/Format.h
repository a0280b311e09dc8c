#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QRectF>
#include <QString>

#include <concepts>
#include <initializer_list>
#include <optional>
#include <variant>

namespace tljira {

/// What "%@" prints of a value. A class joins in by a `describe` of its own that argument-dependent look-up finds.
/// Dictionaries print as "{\n    key = value;\n}", arrays as "(\n    a,\n    b\n)", JSON null as "<null>", booleans as
/// 1 and 0.
TL_EXPORT QString describe(const QString& text);
TL_EXPORT QString describe(const QJsonValue& value);
TL_EXPORT QString describe(const QJsonObject& object);
TL_EXPORT QString describe(const QJsonArray& array);
/// "{{x, y}, {w, h}}", whole numbers without a decimal point.
TL_EXPORT QString describe(const QRectF& rectangle);

/// The text for an absent value.
TL_EXPORT QString describe(std::nullopt_t);

template <typename T>
QString describe(const std::optional<T>& value)
{
    return value ? describe(*value) : describe(std::nullopt);
}

/// One argument of `format`: a whole number, a floating-point number, or the description of anything else.
class FormatArgument
{
public:
    template <std::signed_integral T>
    FormatArgument(T number)
        : m_value(static_cast<qint64>(number))
    {
    }
    template <std::unsigned_integral T>
    FormatArgument(T number)
        : m_value(static_cast<quint64>(number))
    {
    }
    template <std::floating_point T>
    FormatArgument(T number)
        : m_value(static_cast<double>(number))
    {
    }
    template <typename T>
    requires(!std::integral<T> && !std::floating_point<T>) FormatArgument(const T& value)
        : m_value(describe(value))
    {
    }

    /// As `specifier`, from its "%" on, asks for it. A number given to a specifier for the other kind is converted, a
    /// description is printed as it is.
    QString text(QStringView specifier) const;

private:
    std::variant<qint64, quint64, double, QString> m_value;
};

TL_EXPORT QString formatArguments(const QString& format, std::initializer_list<FormatArgument> arguments);

/// The platform's printf: "%@" prints a description, "%d %ld %lld %lu %hhd" whole numbers, "%f" and "%0.2f" numbers
/// with a point whatever the locale, "%%" a percent sign. A specifier without an argument prints as it stands.
template <typename... Arguments>
QString format(const QString& text, const Arguments&... arguments)
{
    return formatArguments(text, {FormatArgument(arguments)...});
}

} // namespace tljira
