#pragma once

#include "platform/toolkit/tables/TableCellView.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>

namespace tests {

class TestCell : public tljira::TableCellView
{
public:
    explicit TestCell(QWidget* parent)
        : TableCellView(parent)
    {
        outlets.bind("titleLabel", &titleLabel);
        outlets.bind("downloadButton", &downloadButton);
    }

    void awakeFromNib() override { ++timesAwoken; }
    void prepareForReuse() override { ++timesReused; }

    QPointer<QLabel> titleLabel;
    QPointer<QPushButton> downloadButton;
    int timesAwoken = 0;
    int timesReused = 0;
};

} // namespace tests
