#include "platform/toolkit/SheetCover.h"

#include <QEvent>
#include <QGraphicsEffect>
#include <QPainter>
#include <QStyle>

namespace tljira {

namespace {

constexpr int shadowWidth = 18;
constexpr int shadowDrop = 5;

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

/// Draws a picture of a widget instead of the widget, above its place by the part of its height that has not slid in yet;
/// its edges cut that off.
class SheetCover::Slide : public QGraphicsEffect
{
public:
    void advance(QWidget& sheet, qreal progress)
    {
        m_progress = progress;
        if (m_picture.isNull()) {
            setEnabled(false);
            m_picture = sheet.grab();
            setEnabled(true);
        }
        update();
    }

protected:
    void draw(QPainter* painter) override
    {
        const qreal hidden = (1 - m_progress) * m_picture.deviceIndependentSize().height();
        painter->drawPixmap(QPointF(0, -hidden), m_picture);
    }

private:
    QPixmap m_picture;
    qreal m_progress = 0;
};

SheetCover::SheetCover(QWidget* window, QWidget* sheet)
    : QWidget(window)
    , m_sheet(sheet)
{
    setObjectName(QStringLiteral("sheetCover"));
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(&m_animation, &QVariantAnimation::valueChanged, this,
                     [this](const QVariant& value) { setProgress(value.toReal()); });
    QObject::connect(&m_animation, &QVariantAnimation::finished, this, [this] {
        // What has changed meanwhile is drawn, too.
        if (m_sheet)
            m_sheet->setGraphicsEffect(nullptr);
        else
            deleteLater();
    });
    sheet->installEventFilter(this);
}

SheetCover::~SheetCover()
{
    delete m_slide;
}

void SheetCover::fit()
{
    setGeometry(parentWidget()->rect());
    QWidget::raise();
    if (m_sheet)
        m_sheet->raise();
}

bool SheetCover::start(qreal from, qreal to)
{
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    if (duration <= 0 || !isVisible())
        return false;
    m_animation.stop();
    m_animation.setDuration(duration);
    m_animation.setStartValue(from);
    m_animation.setEndValue(to);
    m_animation.start();
    return true;
}

void SheetCover::slideIn()
{
    m_slide = new Slide;
    m_sheet->setGraphicsEffect(m_slide);
    if (!start(0, 1))
        delete m_slide;
}

void SheetCover::slideOut()
{
    m_sheet->removeEventFilter(this);
    const qreal from = m_progress;
    delete m_slide;
    if (isVisible() && updatesEnabled()) {
        m_picture = m_sheet->grab();
        m_pictureRect = m_sheet->geometry();
    }
    m_sheet = nullptr;
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (m_picture.isNull() || !start(from, 0)) {
        hide();
        deleteLater();
    }
}

void SheetCover::setProgress(qreal progress)
{
    m_progress = progress;
    // Not before the program has set up what the sheet is to show.
    if (m_slide && progress > 0)
        m_slide->advance(*m_sheet, progress);
    update();
}

QRect SheetCover::sheetRect() const
{
    QRect rect = m_sheet ? m_sheet->geometry() : m_pictureRect;
    rect.translate(0, -qRound((1 - m_progress) * rect.height()));
    return rect;
}

bool SheetCover::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        update();
    return QWidget::eventFilter(watched, event);
}

void SheetCover::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor shade = isDark(palette()) ? QColor(0, 0, 0) : QColor(20, 24, 28);
    shade.setAlphaF((isDark(palette()) ? 0.55F : 0.42F) * static_cast<float>(m_progress));
    painter.fillRect(rect(), shade);
    const QRect sheet = sheetRect();
    paintShadow(painter, sheet);
    if (!m_picture.isNull())
        painter.drawPixmap(sheet.topLeft(), m_picture);
}

void SheetCover::paintShadow(QPainter& painter, const QRect& sheet) const
{
    painter.save();
    painter.setClipRegion(QRegion(rect()) - sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 5));
    for (int width = shadowWidth; width > 0; --width)
        painter.drawRoundedRect(sheet.adjusted(-width, -width, width, width + shadowDrop), width, width);
    painter.restore();
}

} // namespace tljira
