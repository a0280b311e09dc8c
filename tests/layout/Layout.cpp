#include "tests/layout/Layout.h"

#include "platform/toolkit/tables/TableCellView.h"
#include "platform/toolkit/views/ElidedLabel.h"
#include "platform/toolkit/views/Glyph.h"
#include "platform/toolkit/views/ImageView.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "tests/kit/WaitUntil.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTextLayout>

#include <cmath>

namespace tests {

namespace {

bool isControl(const QWidget* view)
{
    return qobject_cast<const QLabel*>(view) || qobject_cast<const QAbstractButton*>(view) ||
           qobject_cast<const QLineEdit*>(view) || qobject_cast<const QProgressBar*>(view) ||
           qobject_cast<const tljira::Glyph*>(view) || qobject_cast<const tljira::ImageView*>(view) ||
           qobject_cast<const tljira::ProgressIndicator*>(view);
}

/// With the ascents and descents of the fonts that stand in for the first one where it lacks a script.
QSizeF sizeOfLine(const QString& text, const QFont& font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line.isValid() ? QSizeF(line.naturalTextWidth(), line.height()) : QSizeF();
}

/// A text of several lines is measured as Qt does, which rounds.
QSize sizeOfText(const QString& text, const QLabel& label)
{
    const QSizeF size = text.contains(u'\n') ? QSizeF(label.fontMetrics().size(Qt::TextExpandTabs, text))
                                             : sizeOfLine(text, label.font());
    return {int(std::ceil(size.width())), int(std::ceil(size.height()))};
}

/// What a control needs for what it shows at present, in its contents.
QSize needed(const QWidget& view)
{
    if (const auto* label = qobject_cast<const tljira::ElidedLabel*>(&view))
        return {0, int(std::ceil(sizeOfLine(label->shownText(), label->font()).height()))};
    if (const auto* label = qobject_cast<const QLabel*>(&view)) {
        if (label->text().isEmpty())
            return {};
        if (label->wordWrap())
            return {label->minimumSizeHint().width(), label->heightForWidth(label->width())};
        const QString text = label->buddy() ? QString(label->text()).remove(u'&') : label->text();
        return sizeOfText(text, *label);
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&view))
        return button->minimumSizeHint();
    if (const auto* field = qobject_cast<const QLineEdit*>(&view))
        return {0, std::max(field->minimumSizeHint().height(),
                            int(sizeOfLine(field->text() + field->placeholderText(), field->font()).height()))};
    return view.minimumSizeHint().expandedTo(view.minimumSize()).boundedTo(view.maximumSize());
}

QString describeControl(const QWidget& view)
{
    const QString text = view.property("text").toString().left(40);
    return text.isEmpty() ? view.objectName() : QStringLiteral("%1 (\"%2\")").arg(view.objectName(), text);
}

/// The part of `root` that a view takes.
QRect rectIn(const QWidget& root, const QWidget& view)
{
    return QRect(view.mapTo(&root, QPoint(0, 0)), view.size());
}

/// Of a view inside a scrolled one, the outermost of those; the view itself otherwise.
const QWidget& outside(const QWidget& view, const QWidget& root)
{
    const QWidget* found = &view;
    for (const QWidget* step = &view; step && step != &root; step = step->parentWidget()) {
        if (qobject_cast<const QAbstractScrollArea*>(step))
            found = step;
    }
    return *found;
}

bool isInsideOfAllAround(const QWidget& view, const QWidget& root)
{
    for (const QWidget* step = view.parentWidget(); step; step = step->parentWidget()) {
        if (!step->rect().contains(QRect(view.mapTo(step, QPoint(0, 0)), view.size())))
            return false;
        if (step == &root)
            return true;
    }
    return true;
}

/// Controls in sight below `content`, those of a row that reaches beyond the end of a list left out.
QList<const QWidget*> controlsIn(const QWidget& content)
{
    QList<const QWidget*> controls;
    for (const QWidget* view : content.findChildren<QWidget*>()) {
        if (!isControl(view) || !view->isVisible())
            continue;
        const QWidget* cell = view;
        while (cell && !dynamic_cast<const tljira::TableCellView*>(cell))
            cell = cell->parentWidget();
        if (!cell || cell->parentWidget()->rect().contains(cell->geometry()))
            controls.append(view);
    }
    return controls;
}

QStringList cutOff(const QList<const QWidget*>& controls)
{
    QStringList flaws;
    for (const QWidget* view : controls) {
        const QSize need = needed(*view);
        const bool isLabel = qobject_cast<const QLabel*>(view) && !qobject_cast<const QLabel*>(view)->wordWrap();
        const QSize has = isLabel ? view->contentsRect().size() : view->size();
        if (need.width() > has.width() || need.height() > has.height()) {
            flaws.append(QStringLiteral("%1 has %2 × %3 and needs %4 × %5")
                             .arg(describeControl(*view), QString::number(has.width()), QString::number(has.height()),
                                  QString::number(need.width()), QString::number(need.height())));
        }
    }
    return flaws;
}

QStringList outsideOf(const QWidget& content, const QList<const QWidget*>& controls)
{
    QStringList flaws;
    for (const QWidget* view : controls) {
        if (!isInsideOfAllAround(outside(*view, content), content))
            flaws.append(describeControl(*view) + QStringLiteral(" lies partly outside"));
    }
    return flaws;
}

QStringList overlaps(const QWidget& content, const QList<const QWidget*>& controls)
{
    QStringList flaws;
    for (qsizetype i = 0; i < controls.size(); ++i) {
        for (qsizetype j = i + 1; j < controls.size(); ++j) {
            const QWidget& one = *controls[i];
            const QWidget& other = *controls[j];
            const bool isScrolled = &outside(one, content) != &one || &outside(other, content) != &other;
            if (one.isAncestorOf(&other) || other.isAncestorOf(&one) ||
                (isScrolled && &outside(one, content) != &outside(other, content)))
                continue;
            if (rectIn(content, one).intersects(rectIn(content, other)))
                flaws.append(describeControl(one) + QStringLiteral(" overlaps ") + describeControl(other));
        }
    }
    return flaws;
}

} // namespace

QStringList layoutFlaws(tljira::Window& window)
{
    const QWidget* content = window.contentView();
    if (!content || !content->isVisible())
        return {QStringLiteral("nothing is shown")};
    const bool isStill = waitUntil([&] {
        drainMainQueue();
        const QWidget* widget = window.widget()->window();
        return widget->height() >= content->height() && window.widget()->rect().contains(content->geometry());
    });
    const QList<const QWidget*> controls = controlsIn(*content);
    QStringList flaws = cutOff(controls) + outsideOf(*content, controls) + overlaps(*content, controls);
    if (!isStill)
        flaws.append(QStringLiteral("the window is smaller than its content"));
    if (controls.isEmpty())
        flaws.append(QStringLiteral("there are no controls"));
    return flaws;
}

void keepPicture(const tljira::Window& window, const QString& name)
{
    const QString folder = qEnvironmentVariable("LAYOUT_PICTURES");
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    window.widget()->window()->grab().save(QStringLiteral("%1/%2.png").arg(folder, name));
}

} // namespace tests
