#include "platform/toolkit/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

#include <cmath>

namespace tljira {

namespace {

QString onOneLine(QString text)
{
    for (QChar& character : text) {
        if (character.isSpace())
            character = u' ';
    }
    return text;
}

/// Fonts that stand in for one that lacks a script can be higher.
int lineHeight(const QString& text, const QFont& font)
{
    QTextLayout layout(text.isEmpty() ? QStringLiteral(" ") : text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return static_cast<int>(std::ceil(line.height()));
}

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QString ElidedLabel::shownText() const
{
    const int width = contentsRect().width() - 2 * margin();
    return fontMetrics().elidedText(onOneLine(text()), Qt::ElideMiddle, width);
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(onOneLine(text())) + 2 * margin() + frameWidth() * 2 + 1,
            minimumSizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int around = 2 * (margin() + frameWidth());
    const int shortest = text().isEmpty() ? 0 : fontMetrics().averageCharWidth() * 4;
    return {shortest + around, lineHeight(onOneLine(text()), font()) + around};
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && shownText() != onOneLine(text())) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawFrame(&painter);
    const QRect area = contentsRect().marginsRemoved(QMargins(margin(), margin(), margin(), margin()));
    const int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine;
    style()->drawItemText(&painter, area, flags, palette(), isEnabled(), shownText(), foregroundRole());
}

} // namespace tljira
