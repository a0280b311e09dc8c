#pragma once

#include "platform/foundation/Export.h"

#include <QJsonObject>

#include <memory>

/// What one JSON answer of the server says, read once and never changed: a record may be handed to any thread.
///
/// A key that is missing, null or of another type than expected leaves its property absent. An answer that is no
/// object counts as an empty one.
class TL_EXPORT JAObject
{
public:
    /// A record of that answer.
    static std::shared_ptr<const JAObject> initWithDictionary(const QJsonObject& dictionary);

    virtual ~JAObject() = default;
    JAObject(const JAObject&) = delete;
    JAObject& operator=(const JAObject&) = delete;

protected:
    /// Reads nothing: what an answer says is up to the subclass.
    explicit JAObject(const QJsonObject& dictionary);
};
