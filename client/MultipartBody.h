#pragma once

#include "platform/foundation/values/Data.h"

#include <QLatin1String>
#include <QString>

#include <optional>

/// The form with which a file is attached: one field, "file".
namespace client {

/// The same in every request.
inline constexpr QLatin1String multipartBoundary("-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-16f8d24075108476");

/// Names go in without quotation marks, as they are. Without file bytes the form is only its closing line. The file's
/// pieces are shared, not copied.
tljira::Data multipartBody(const std::optional<tljira::Data>& fileBytes, const std::optional<QString>& fileName,
                           const QString& contentType);

} // namespace client
