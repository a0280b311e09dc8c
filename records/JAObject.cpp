#include "records/JAObject.h"

std::shared_ptr<const JAObject> JAObject::initWithDictionary(const QJsonObject& dictionary)
{
    return std::shared_ptr<const JAObject>(new JAObject(dictionary));
}

JAObject::JAObject(const QJsonObject&) {}
