#include "download/LookUpHint.h"

#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/View.h"

LookUpHint::LookUpHint(QLabel* line)
    : m_line(line)
    , m_usualText(tljira::text(m_line))
{
}

void LookUpHint::begin(const QString& key)
{
    count(key, 1);
}

void LookUpHint::end(const QString& key)
{
    count(key, -1);
}

void LookUpHint::count(const QString& key, int more)
{
    if (key.isEmpty())
        return;
    m_underWay += more;
    const char* text =
        QT_TRANSLATE_NOOP("JADownloadBodyViewController", "Looking for the issue… The list opens when it is found.");
    tljira::setText(m_line, m_underWay > 0 ? tljira::InterfaceTexts::shared().text("JADownloadBodyViewController", text)
                                           : m_usualText);
}
