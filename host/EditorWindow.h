#pragma once

#include "host/DocumentText.h"

#include <QMainWindow>

#include <memory>

class JAWindowController;
class QLabel;
class QPlainTextEdit;
class QToolBar;

namespace tessaloom {

/// The editor: one window, one document.
class EditorWindow : public QMainWindow
{
public:
    EditorWindow();

    /// Shown in the status line for as long as the window lives.
    void setStatus(const QString& text);

    /// Each answers whether the window now shows, or the file now holds, what was asked for. Before a changed document
    /// is left its user is asked what to do with it.
    bool newDocument();
    bool open(const QString& path);
    bool save();
    bool saveAs();

    /// Opens the bytes of a file as a new document that has not been saved anywhere yet.
    bool openAsNew(const QString& path, const QString& name);

    /// What the document is called: its file's name, or the name that it will be offered to be saved under.
    QString documentName() const;
    /// Where it is saved; empty for a document that never was.
    QString documentPath() const { return m_path; }
    /// The document as it stands in the window, in the form that its file has or would have.
    QByteArray documentBytes() const;

    QPlainTextEdit* textEdit() const { return m_textEdit; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addActions();
    void addEditMenu();
    void addStatusLine();

    std::optional<DocumentText> read(const QString& path);
    void show(const DocumentText& document, const QString& path, const QString& name);
    bool write(const QString& path);
    bool mayLeaveDocument();
    void report(const QString& what, const QString& why);
    void tell(const QString& text);
    void showTitle();
    void showPosition();

    void chooseAndOpen();
    void uploadToJira();
    void openFromJira();
    void showClassicJira();

    std::shared_ptr<JAWindowController> m_classicJira;
    /// What the older window knows of the document: its property "pages".
    QObject m_documentForClassicJira;
    QPlainTextEdit* m_textEdit;
    QLabel* m_status;
    QLabel* m_position;
    QString m_path;
    QString m_name;
    /// How the document's file is written; its text is in the editor.
    DocumentText m_form;
};

} // namespace tessaloom
