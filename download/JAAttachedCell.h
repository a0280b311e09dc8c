#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/tables/TableCellView.h"
#include "records/JAAttachmentObject.h"

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include <functional>
#include <memory>

/// One attachment of the list: name, date, size and a button that downloads it.
class TL_EXPORT JAAttachedCell : public tljira::TableCellView
{
    Q_OBJECT

public:
    /// Made by whoever loads interface files, for each cell that the list needs.
    explicit JAAttachedCell(QWidget* parent = nullptr);

    ///@{
    /// An outlet; null until the cell is awake.
    tljira::Outlet<QLabel> dateLabel{outlets, "dateLabel"};
    tljira::Outlet<QLabel> titleLabel{outlets, "titleLabel"};
    tljira::Outlet<QLabel> sizeLabel{outlets, "sizeLabel"};
    tljira::Outlet<QPushButton> downloadButton{outlets, "downloadButton"};
    ///@}

    ///@{
    /// What the row stands for. Only kept: the labels are filled by the list.
    std::shared_ptr<const JAAttachmentObject> attachmetn() const { return m_attachmetn; }
    void setAttachmetn(std::shared_ptr<const JAAttachmentObject> attachment) { m_attachmetn = std::move(attachment); }
    ///@}

    ///@{
    /// Free for the cell's user; 0 until set.
    qint64 row() const { return m_row; }
    void setRow(qint64 row) { m_row = row; }
    ///@}

    /// What the button does from now on; it gets the button.
    void setDownloadAction(std::function<void(QWidget* sender)> action) { m_downloadAction = std::move(action); }

    void awakeFromNib() override;

    ///@{
    /// Qt's own. Where a name would have little room beside size and button, as it has in a large font, these stand
    /// below it.
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    ///@}

protected:
    /// Qt's own.
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange(int width) const;

    std::shared_ptr<const JAAttachmentObject> m_attachmetn;
    qint64 m_row = 0;
    std::function<void(QWidget*)> m_downloadAction;
};
