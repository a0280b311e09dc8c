#pragma once

#include <QString>
#include <QWidget>

namespace tljira {

/// Holds texts that matter when they appear: an error, an end. Screen readers are told of them as of an alert whenever
/// the view comes in sight, and when announce() is called; of what a sheet covers, once that has gone. In Designer: a
/// QWidget promoted to tljira::AlertView.
class AlertView : public QWidget
{
    Q_OBJECT

public:
    explicit AlertView(QWidget* parent = nullptr);

    /// What is read out: the accessible name, else the labels that are in sight, in the order in which they stand in
    /// the interface file.
    QString words() const;

    /// Tells of the words, also of those that were told already. Out of sight it does nothing.
    void announce();

    /// To be called when no sheet covers the view any more.
    void sheetHasGone();

    /// Qt's own.
    void setVisible(bool visible) override;

Q_SIGNALS:
    void announced(const QString& words);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void tellWords();

    bool m_isWaiting = false;
};

} // namespace tljira
