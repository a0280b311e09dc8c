#include "platform/toolkit/views/TextRole.h"

#include "platform/toolkit/views/PaletteColors.h"

#include <QEvent>
#include <QFont>
#include <QPalette>
#include <QVariant>

namespace tljira {

namespace {

constexpr double headingScale = 1.2;

QFont scaled(QFont font, double scale)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(qRound(font.pixelSize() * scale));
    return font;
}

using Color = QColor (*)(const QPalette&);

Color colorOf(const QString& role)
{
    if (role == u"help")
        return quietColor;
    if (role == u"error")
        return errorColor;
    if (role == u"success")
        return successColor;
    if (role == u"link")
        return linkColor;
    return nullptr;
}

bool isBold(const QString& role)
{
    return role == u"heading" || role == u"strong" || role == u"error" || role == u"success";
}

} // namespace

void TextRole::applyProperty(QWidget* view)
{
    const QString role = view ? view->property("textRole").toString() : QString();
    if (!role.isEmpty())
        apply(view, role);
}

void TextRole::apply(QWidget* view, const QString& role)
{
    if (!view)
        return;
    if (auto* present = view->findChild<TextRole*>(QString(), Qt::FindDirectChildrenOnly)) {
        present->m_role = role;
        present->update();
        return;
    }
    new TextRole(view, role);
}

TextRole::TextRole(QWidget* view, const QString& role)
    : QObject(view)
    , m_view(view)
    , m_role(role)
{
    view->installEventFilter(this);
    followParent();
}

void TextRole::followParent()
{
    if (m_parent)
        m_parent->removeEventFilter(this);
    m_parent = m_view->parentWidget();
    if (m_parent)
        m_parent->installEventFilter(this);
    update();
}

void TextRole::update()
{
    updateFont();
    updatePalette();
}

void TextRole::updateFont()
{
    QFont font;
    if (isBold(m_role)) {
        const QFont inherited = m_parent ? m_parent->font() : QFont();
        font = scaled(inherited, m_role == u"heading" ? headingScale : 1);
        font.setBold(true);
    }
    m_view->setFont(font);
}

void TextRole::updatePalette()
{
    QPalette palette;
    if (const Color color = colorOf(m_role)) {
        const QColor chosen = color(m_parent ? m_parent->palette() : QPalette());
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            palette.setColor(group, QPalette::WindowText, chosen);
            palette.setColor(group, QPalette::ButtonText, chosen);
        }
    }
    m_view->setPalette(palette);
}

bool TextRole::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (watched == m_view && type == QEvent::ParentChange)
        followParent();
    else if (watched == m_parent && type == QEvent::FontChange)
        updateFont();
    else if (watched == m_parent && type == QEvent::PaletteChange)
        updatePalette();
    return QObject::eventFilter(watched, event);
}

} // namespace tljira
