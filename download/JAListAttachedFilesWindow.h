#pragma once

#include "download/JAAttachedCell.h"
#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/tables/TableView.h"
#include "platform/toolkit/windows/WindowController.h"
#include "records/JAIssueObject.h"

#include <QLabel>
#include <QProgressBar>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

/// The window that lists attachments and downloads one of them. It is made for being a sheet; one instance serves any
/// number of sheets, and `path` and `isDone` carry over from one to the next.
///
/// It shows one of three states: the list, "nothing to list", or a download. `reload` goes to one of the first two, the
/// button of a row to the third.
class TL_EXPORT JAListAttachedFilesWindow : public tljira::WindowController, public tljira::TableViewDataSource
{
public:
    /// See the issue.
    using Attachments = JAIssueObject::Attachments;

    /// Its window is loaded.
    static std::shared_ptr<JAListAttachedFilesWindow> init();
    ~JAListAttachedFilesWindow() override;

    ///@{
    /// The rows, in their order. The table shows them after the next `reload`; rows that it makes before that already
    /// come from here.
    const Attachments& attachments() const { return m_attachments; }
    void setAttachments(const Attachments& attachments) { m_attachments = attachments; }
    ///@}

    ///@{
    /// The issue that they belong to: the window says so. Whoever names it also opens what was downloaded when the
    /// sheet has ended, so that the button for that reads "Open". Nothing at first.
    std::optional<QString> issueKey() const { return m_issueKey; }
    void setIssueKey(const std::optional<QString>& key);
    ///@}

    ///@{
    /// Where the newest download goes, whether it has ended or how; nothing before the first one. Never cleared.
    std::optional<QString> path() const { return m_path; }
    void setPath(const std::optional<QString>& path) { m_path = path; }
    ///@}

    ///@{
    /// Whether a download has ever ended. It is set just before the file is at `path`.
    bool isDone() const { return m_isDone; }
    void setIsDone(bool isDone) { m_isDone = isDone; }
    ///@}

    void showWindow() override;
    void windowDidBecomeKey(tljira::Window&) override {}
    void windowDidResignKey(tljira::Window&) override {}

    /// Shows the attachments, as a list or as "nothing to list".
    void reload();

    /// The number of attachments; shows the list, or "nothing to list".
    qint64 numberOfRowsInTableView(tljira::TableView& table) override;
    /// A JAAttachedCell filled with the attachment of that row; null for a row without one.
    tljira::TableCellView* viewForTableColumn(tljira::TableView& table, int column, qint64 row) override;

    /// Downloads the attachment whose row is the dynamic property "tag" of `sender`, into the download folder, which is
    /// emptied first. A download that is under way is cancelled, and this one begins when that has ended; its `path` is
    /// known at once. The client keeps this object until the download has ended, longer if it fails.
    void downloadAction(QWidget* sender);

    /// Shows how far a download is: `bytes` of `total`. With an error its text, with `completion` "DONE". A total of 0
    /// counts as 1, so that the percentage can be any number.
    void updateDownload(qint64 bytes, qint64 total, const std::optional<tljira::Error>& error, bool completion);
    /// Shows that number: the label as it is, the bar as far as it goes.
    void incrementProgressBar(qint64 percent);
    /// The text below the full bar; an empty text is no error.
    void setError(const QString& text);

    /// Shows one of the three state views, and gives the window the height for it.
    void setActualView(QWidget* state);

    /// Cancels the download, if one is running or waits for its turn, and ends the sheet with ModalResponse::Cancel.
    void cancalAction(QWidget* sender);

    /// Writes a view and everything below it to the log, a line each.
    void printSubView(QWidget* root, const QString& offset);

    ///@{
    /// An outlet; null until the window is loaded.
    tljira::Outlet<QWidget> view{outlets, "view"};
    tljira::Outlet<QWidget> wrapperTableView{outlets, "wrapperTableView"};
    tljira::Outlet<tljira::TableView> tableView{outlets, "tableView"};
    tljira::Outlet<QWidget> noDataView{outlets, "noDataView"};
    tljira::Outlet<QLabel> downloadPercent{outlets, "downloadPercent"};
    tljira::Outlet<QLabel> downloadError{outlets, "downloadError"};
    tljira::Outlet<QProgressBar> downloadProgressBar{outlets, "downloadProgressBar"};
    tljira::Outlet<QWidget> downloadView{outlets, "downloadView"};
    ///@}

protected:
    void windowWillLoad() override;
    void windowDidLoad() override;

private:
    JAListAttachedFilesWindow();

    std::shared_ptr<const JAAttachmentObject> attachmentAtRow(qint64 row) const;
    void showIssueKey();
    void downloadRow(qint64 row);
    void showStart(const JAAttachmentObject& attachment);
    void fillCell(JAAttachedCell& cell, const std::shared_ptr<const JAAttachmentObject>& attachment, qint64 row);
    void download(const std::shared_ptr<const JAAttachmentObject>& attachment, const QString& path, quint64 number);
    /// Where the keyboard is, and what Return does, while a download runs and after it.
    void setIsRunning(bool isRunning);
    QString dateText(const JAAttachmentObject& attachment);

    Attachments m_attachments;
    std::optional<QString> m_issueKey;
    std::optional<QString> m_path;
    bool m_isDone = false;
    class Turn;
    const std::unique_ptr<Turn> m_turn;
    /// Counts the downloads that a user began.
    quint64 m_newestDownload = 0;
    struct Dates;
    std::unique_ptr<Dates> m_dates;
    class State;
    const std::unique_ptr<State> m_state;
};
