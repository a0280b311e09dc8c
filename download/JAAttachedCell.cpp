#include "download/JAAttachedCell.h"

JAAttachedCell::JAAttachedCell(QWidget* parent)
    : TableCellView(parent)
{
    outlets.bind("dateLabel", &m_dateLabel);
    outlets.bind("titleLabel", &m_titleLabel);
    outlets.bind("sizeLabel", &m_sizeLabel);
    outlets.bind("downloadButton", &m_downloadButton);
}

void JAAttachedCell::awakeFromNib()
{
    if (m_dateLabel)
        m_dateLabel->setForegroundRole(QPalette::PlaceholderText);
    if (!m_downloadButton)
        return;
    connect(m_downloadButton, &QPushButton::clicked, this, [this] {
        // The action may give the cell to another row.
        const auto action = m_downloadAction;
        if (action)
            action(m_downloadButton);
    });
}
