#pragma once

#include "platform/toolkit/views/TransferRate.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QString>
#include <QTimer>
#include <QWidget>

/// What the downloading state of the list window says beside what its outlets say: which document, how much of it is
/// there, how fast it comes and when it will be through, how it ended, and what the button does now. The views for it
/// are found by their names; those that a host's interface file lacks are left out.
class DownloadState
{
public:
    DownloadState();

    /// `view` is the state's, the others stand in it. Each may be null.
    void setViews(QWidget* view, QProgressBar* bar, QLabel* percent);

    /// Whether somebody opens the document once the sheet has ended, which the button says then. Not at first.
    void setOpensDocument(bool opens) { m_opensDocument = opens; }

    /// The user has asked for a document of that name and size.
    void begin(const QString& name, qint64 size);
    /// So much has come. Nothing for a download that has ended.
    void advance(qint64 bytes);
    void finish();
    void fail();

    /// Makes do with the height that the state has.
    void fit();

private:
    enum class Phase { None, Running, Done, Failed };

    void enter(Phase phase, const char* title, const char* button);
    void showDetails();
    void nameButton(const char* name);
    void colorBar();

    QPointer<QWidget> m_view;
    QPointer<QProgressBar> m_bar;
    QPointer<QLabel> m_percent;
    QPointer<QLabel> m_title;
    QPointer<QLabel> m_name;
    QPointer<QLabel> m_details;
    QPointer<QLabel> m_doneSize;
    QPointer<QPushButton> m_button;
    tljira::TransferRate m_rate;
    QTimer m_whileNothingComes;
    Phase m_phase = Phase::None;
    qint64 m_bytes = 0;
    qint64 m_size = 0;
    bool m_opensDocument = false;
};
