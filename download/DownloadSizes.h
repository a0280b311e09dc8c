#pragma once

#include <QString>

/// "1.50 MB", a megabyte being 1024 × 1024 bytes.
QString megabytesText(qint64 bytes);

/// "9.8 of 24.00 MB", in the user's language; without the whole where that is not known or is less: "9.8 MB".
QString arrivedText(qint64 bytes, qint64 size);
