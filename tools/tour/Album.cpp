#include "tools/tour/Album.h"

#include <QDir>
#include <QPainter>
#include <QWidget>

namespace tessaloom::tour {

namespace {

constexpr int margin = 24;
constexpr int captionHeight = 30;

/// A window as a desktop would show it: with a caption and an outline.
struct Shot
{
    QRect frame;
    QString caption;
    QPixmap content;
};

Shot shotOf(QWidget& window)
{
    const QRect frame = QRect(window.geometry()).adjusted(0, -captionHeight, 0, 0);
    QString caption = window.windowTitle();
    caption.replace(QLatin1String("[*]"), window.isWindowModified() ? QLatin1String("*") : QLatin1String());
    return {frame, caption, window.grab()};
}

void paint(QPainter& painter, const Shot& shot, const QPalette& palette)
{
    const QRect bar(shot.frame.topLeft(), QSize(shot.frame.width(), captionHeight));
    painter.fillRect(bar, palette.color(QPalette::Window).darker(108));
    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(bar, Qt::AlignCenter, shot.caption);
    painter.drawPixmap(shot.frame.topLeft() + QPoint(0, captionHeight), shot.content);
    painter.setPen(palette.color(QPalette::WindowText).lightness() > 127 ? QColor(0x60, 0x64, 0x6B)
                                                                         : QColor(0x9A, 0x9F, 0xA8));
    painter.drawRect(shot.frame.adjusted(-1, -1, 0, 0));
}

QImage compose(const Shot& shot, const QWidget& widget)
{
    const QRect all = shot.frame.adjusted(-margin, -margin, margin, margin);

    const qreal ratio = widget.devicePixelRatioF();
    QImage picture(all.size() * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(QColor(0x7C, 0x88, 0x99));
    QPainter painter(&picture);
    painter.translate(-all.topLeft());
    paint(painter, shot, widget.palette());
    return picture;
}

} // namespace

Album::Album(const QString& folder)
    : m_folder(folder)
{
    QDir dir(folder);
    dir.mkpath(QStringLiteral("."));
    for (const QString& old : dir.entryList({QStringLiteral("[0-9][0-9]-*.png")}, QDir::Files))
        dir.remove(old);
}

QString Album::add(const QString& what, const tljira::Window& window)
{
    return add(what, *window.widget());
}

QString Album::add(const QString& what, QWidget& window)
{
    return save(what, compose(shotOf(window), window));
}

QString Album::save(const QString& what, const QImage& picture)
{
    const QString name = QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(what);
    return picture.save(QDir(m_folder).filePath(name)) ? name : QString();
}

} // namespace tessaloom::tour
