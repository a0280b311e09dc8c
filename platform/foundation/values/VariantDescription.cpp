#include "platform/foundation/values/VariantDescription.h"

#include "platform/foundation/values/Format.h"

#include <QObject>
#include <QPointF>
#include <QSizeF>

namespace tljira {

namespace {

QString pairText(double first, double second)
{
    // As the description of a rectangle writes its corner.
    return describe(QRectF(first, second, 0, 0)).section(u'}', 0, 0).mid(1) + u'}';
}

QString objectText(const QObject* object)
{
    if (!object)
        return describe(std::nullopt);
    return QStringLiteral("<%1: 0x%2>")
        .arg(QLatin1String(object->metaObject()->className()))
        .arg(reinterpret_cast<quintptr>(object), 0, 16);
}

QString plainText(const QVariant& value)
{
    return value.canConvert<QString>() ? value.toString() : QStringLiteral("<%1>").arg(QLatin1String(value.typeName()));
}

QJsonValue toJSON(const QVariant& value);

QJsonArray toArray(const QVariant& list)
{
    QJsonArray array;
    const QVariantList elements = list.toList();
    for (const QVariant& element : elements)
        array.append(toJSON(element));
    return array;
}

QJsonObject toObject(const QVariant& map)
{
    QJsonObject object;
    const QVariantMap entries = map.toMap();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        object.insert(entry.key(), toJSON(entry.value()));
    return object;
}

/// JSON as it is; of everything else its description, as a text.
QJsonValue toJSON(const QVariant& value)
{
    if (value.metaType().flags() & QMetaType::PointerToQObject)
        return objectText(value.value<QObject*>());
    switch (value.typeId()) {
    case QMetaType::QRect:
    case QMetaType::QRectF:
        return describe(value.toRectF());
    case QMetaType::QPoint:
    case QMetaType::QPointF:
        return pairText(value.toPointF().x(), value.toPointF().y());
    case QMetaType::QSize:
    case QMetaType::QSizeF:
        return pairText(value.toSizeF().width(), value.toSizeF().height());
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return toObject(value);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return toArray(value);
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
    case QMetaType::QJsonValue:
        return QJsonValue::fromVariant(value);
    default:
        break;
    }
    // A type that JSON does not know comes back as null or as an empty text.
    const QJsonValue json = QJsonValue::fromVariant(value);
    return json.isString() || json.isNull() || json.isUndefined() ? QJsonValue(plainText(value)) : json;
}

} // namespace

QString describe(const QVariant& value)
{
    return describe(toJSON(value));
}

} // namespace tljira
