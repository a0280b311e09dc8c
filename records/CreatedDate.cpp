#include "records/CreatedDate.h"

#include "platform/foundation/values/Match.h"

#include <QTimeZone>

namespace records {

namespace {

/// Never destroyed: other threads may ask while the process exits.
const QRegularExpression& form()
{
    static const auto& expression = *new QRegularExpression(QStringLiteral(
        R"(\A(?<year>[0-9]{1,4})-(?<month>[0-9]{2})-(?<day>[0-9]{2}))"
        R"(T(?<hour>[0-9]{2}):(?<minute>[0-9]{2}):(?<second>[0-9]{1,2})\.(?<fraction>[0-9]{1,9}))"
        R"((?i:Z|(?:GMT|UTC?)|(?:GMT|UTC?)?(?<sign>[+-])(?<zoneHours>[01]?[0-9]|2[0-3])(?::?(?<zoneMinutes>[0-5][0-9]))?)\z)"));
    return expression;
}

} // namespace

std::optional<QDateTime> createdDate(const QString& text)
{
    const auto match = tljira::match(form(), text.trimmed());
    const auto number = [&match](const char16_t* field) { return match.capturedView(QStringView(field)).toInt(); };
    const QDate date(number(u"year"), number(u"month"), number(u"day"));
    const int milliseconds = match.captured(QStringLiteral("fraction")).leftJustified(3, u'0', true).toInt();
    const QTime time(number(u"hour"), number(u"minute"), number(u"second"), milliseconds);
    if (!match.hasMatch() || !date.isValid() || !time.isValid())
        return std::nullopt;
    const int ahead = (number(u"zoneHours") * 60 + number(u"zoneMinutes")) * 60;
    const bool isBehind = match.capturedView(QStringLiteral("sign")) == u"-";
    // Qt 6.4 and 6.9 have no other words for UTC in common; toUTC() makes the zone of that name the plain Qt::UTC.
    return QDateTime(date, time, QTimeZone::utc()).addSecs(isBehind ? ahead : -ahead).toUTC();
}

} // namespace records
