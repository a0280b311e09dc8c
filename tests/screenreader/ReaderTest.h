#pragma once

#include "tests/desktop/DesktopTest.h"
#include "tests/screenreader/Reader.h"

namespace tests {

/// Somebody who does not see the screen but has it read out.
class ReaderTest : public DesktopTest
{
protected:
    ReaderTest();

    /// All that the windows of the framework tell of, as `reader` knows it at this moment.
    QList<Told> everything();
    /// A part of one of these roles that can be used, with that name or label, once it is there; a failure if it does
    /// not come.
    Told find(const QList<quint32>& roles, const QString& name);
    /// Presses the button of that name once it is there and can be used.
    void press(const QString& name);
    /// Replaces what stands in the field of that label, likewise.
    void write(const QString& label, const QString& text);
    /// What has been announced since the last call.
    QStringList alerts();

    Reader reader;
};

} // namespace tests
