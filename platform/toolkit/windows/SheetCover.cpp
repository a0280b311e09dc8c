#include "platform/toolkit/windows/SheetCover.h"

#include <QEvent>
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

/// Lies on the sheet while that slides in, and shows it where it has come to, from a picture, in front of one of what
/// it covers. Keys and the mouse reach the sheet.
class SheetCover::Slide : public QWidget
{
public:
    Slide(SheetCover& cover, QWidget& sheet)
        : QWidget(cover.parentWidget())
        , m_cover(cover)
        , m_sheet(sheet)
    {
        setObjectName(QStringLiteral("sheetSlide"));
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_OpaquePaintEvent);
        fit();
        show();
    }

    void fit()
    {
        setGeometry(m_sheet.geometry());
        m_below = m_cover.pictureBelow(geometry());
        m_picture = QPixmap();
        QWidget::raise();
    }

    void advance(qreal progress)
    {
        // Not before the program has set up what the sheet is to show.
        if (progress > 0 && m_picture.isNull())
            m_picture = m_sheet.grab();
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.drawPixmap(QPoint(), m_below);
        painter.translate(-pos());
        m_cover.paintShade(painter);
        painter.drawPixmap(m_cover.sheetRect().topLeft(), m_picture);
    }

private:
    SheetCover& m_cover;
    QWidget& m_sheet;
    QPixmap m_below;
    QPixmap m_picture;
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
        delete m_slide;
        if (!m_sheet)
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
    if (m_slide)
        m_slide->fit();
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
    m_slide = new Slide(*this, *m_sheet);
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
    if (m_slide)
        m_slide->advance(progress);
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
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
        if (m_slide)
            m_slide->fit();
        update();
    }
    return QWidget::eventFilter(watched, event);
}

QPixmap SheetCover::pictureBelow(const QRect& area) const
{
    const QWidget& window = *parentWidget();
    QPixmap picture(area.size() * devicePixelRatio());
    picture.setDevicePixelRatio(devicePixelRatio());
    picture.fill(window.palette().color(window.backgroundRole()));
    for (QObject* child : window.children()) {
        if (child == this)
            break;
        auto* const view = qobject_cast<QWidget*>(child);
        if (view && view->isVisible() && !view->isWindow())
            view->render(&picture, view->pos() - area.topLeft(), QRegion(), QWidget::DrawChildren);
    }
    return picture;
}

void SheetCover::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintShade(painter);
    if (!m_picture.isNull())
        painter.drawPixmap(sheetRect().topLeft(), m_picture);
}

void SheetCover::paintShade(QPainter& painter) const
{
    QColor shade = isDark(palette()) ? QColor(0, 0, 0) : QColor(20, 24, 28);
    shade.setAlphaF((isDark(palette()) ? 0.55F : 0.42F) * static_cast<float>(m_progress));
    painter.fillRect(rect(), shade);
    paintShadow(painter, sheetRect());
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
