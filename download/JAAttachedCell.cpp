#include "download/JAAttachedCell.h"

#include "platform/toolkit/views/ElidedLabel.h"

#include <QBoxLayout>
#include <QResizeEvent>

namespace {

constexpr int fewLetters = 20;
constexpr int linesBesides = 2;
constexpr int narrowSpacing = 4;
// Of the usual sizes; all rows of a list are arranged alike.
constexpr char16_t sizeText[] = u"000.00 MB";

} // namespace

JAAttachedCell::JAAttachedCell(QWidget* parent)
    : TableCellView(parent)
{
}

void JAAttachedCell::awakeFromNib()
{
    for (QLabel* label : {dateLabel(), sizeLabel()}) {
        if (label)
            label->setForegroundRole(QPalette::PlaceholderText);
    }
    if (!downloadButton())
        return;
    connect(downloadButton(), &QPushButton::clicked, this, [this] {
        // The action may give the cell to another row.
        const auto action = m_downloadAction;
        if (action)
            action(downloadButton());
    });
}

bool JAAttachedCell::hasHeightForWidth() const
{
    return layout() && layout()->hasHeightForWidth();
}

int JAAttachedCell::heightForWidth(int width) const
{
    arrange(width);
    return layout() ? layout()->totalHeightForWidth(width) : -1;
}

void JAAttachedCell::resizeEvent(QResizeEvent* event)
{
    TableCellView::resizeEvent(event);
    arrange(width());
}

// A host's own file may have another layout, which stays as it is.
void JAAttachedCell::arrange(int width) const
{
    auto* const row = qobject_cast<QBoxLayout*>(layout());
    if (!row || !titleLabel() || !sizeLabel() || !downloadButton())
        return;
    const int besides = sizeLabel()->fontMetrics().horizontalAdvance(QString::fromUtf16(sizeText)) +
                        downloadButton()->sizeHint().width() + 3 * row->spacing();
    const QMargins margins = row->contentsMargins();
    const int left = width - margins.left() - margins.right() - besides;
    const bool isNarrow = left < fewLetters * titleLabel()->fontMetrics().averageCharWidth();
    const auto direction = isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    if (row->direction() == direction)
        return;
    row->setDirection(direction);
    if (QLayout* besideName = row->itemAt(row->count() - 1)->layout())
        besideName->setSpacing(isNarrow ? narrowSpacing : row->spacing());
    if (auto* title = qobject_cast<tljira::ElidedLabel*>(titleLabel()))
        title->setMaximumLines(isNarrow ? 1 : linesBesides);
}
