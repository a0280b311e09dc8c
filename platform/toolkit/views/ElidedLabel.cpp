#include "platform/toolkit/views/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

#include <cmath>
#include <memory>

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

} // namespace

struct ElidedLabel::Lines
{
    std::unique_ptr<QTextLayout> layout;
    double height = 0;
};

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setMaximumLines(int lines)
{
    m_maximumLines = std::max(lines, 1);
    // A fixed height is that of one line.
    setSizePolicy(QSizePolicy::Preferred, m_maximumLines > 1 ? QSizePolicy::Preferred : QSizePolicy::Fixed);
    updateGeometry();
    update();
}

QSize ElidedLabel::around() const
{
    const int around = 2 * (margin() + frameWidth());
    return {around, around};
}

ElidedLabel::Lines ElidedLabel::linesOf(const QString& text, int width) const
{
    Lines lines{std::make_unique<QTextLayout>(text, font())};
    QTextOption option(QStyle::visualAlignment(layoutDirection(), alignment()));
    option.setTextDirection(layoutDirection());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    lines.layout->setTextOption(option);
    lines.layout->beginLayout();
    for (QTextLine line = lines.layout->createLine(); line.isValid(); line = lines.layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, lines.height));
        lines.height += line.height();
    }
    lines.layout->endLayout();
    return lines;
}

QString ElidedLabel::shownAt(int width) const
{
    const QString whole = onOneLine(text());
    if (m_maximumLines == 1)
        return fontMetrics().elidedText(whole, Qt::ElideMiddle, width);
    // Words do not fill their lines, so that less may fit than the lines are long together.
    QString shown = whole;
    for (int room = m_maximumLines * width; room > 0; room -= std::max(fontMetrics().averageCharWidth(), 1)) {
        if (linesOf(shown, width).layout->lineCount() <= m_maximumLines)
            return shown;
        shown = fontMetrics().elidedText(whole, Qt::ElideMiddle, room);
    }
    return shown;
}

QString ElidedLabel::shownText() const
{
    return shownAt(contentsRect().width() - 2 * margin());
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(onOneLine(text())) + around().width() + 1, minimumSizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    // A text in another script than the font's may be higher than the font says.
    const QString text = this->text().isEmpty() ? QStringLiteral(" ") : onOneLine(this->text());
    const int line = static_cast<int>(std::ceil(linesOf(text, QWIDGETSIZE_MAX).height));
    const int shortest = this->text().isEmpty() ? 0 : fontMetrics().averageCharWidth() * 4;
    return QSize(shortest, line) + around();
}

int ElidedLabel::heightForWidth(int width) const
{
    if (m_maximumLines == 1)
        return -1;
    const int inside = std::max(width - around().width(), 1);
    const int needed = static_cast<int>(std::ceil(linesOf(shownAt(inside), inside).height));
    return std::max(needed + around().height(), minimumSizeHint().height());
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
    if (m_maximumLines > 1) {
        const Lines lines = linesOf(shownText(), area.width());
        const double room = std::max(area.height() - lines.height, 0.0);
        const double above = alignment() & Qt::AlignTop ? 0 : alignment() & Qt::AlignBottom ? room : room / 2;
        painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
        lines.layout->draw(&painter, area.topLeft() + QPointF(0, above));
        return;
    }
    const int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine;
    style()->drawItemText(&painter, area, flags, palette(), isEnabled(), shownText(), foregroundRole());
}

} // namespace tljira
