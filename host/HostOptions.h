#pragma once

#include "framework/TLJiraController.h"

#include <QString>
#include <QStringList>

namespace tessaloom {

/// The command line of the sample host.
struct HostOptions
{
    QStringList routes = {};
    TLJiraOptions choices = {};
    QString file = {};
    QString status = {};
    bool isDark = false;
    QString error = {}; ///< what cannot be understood; empty: nothing

    /// The first argument is the program's name.
    static HostOptions parse(const QStringList& arguments);
    /// Says what there is, "--help" included, which `parse` passes over.
    static QString help();
};

} // namespace tessaloom
