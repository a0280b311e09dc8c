#include "host/EditorWindow.h"

#include "framework/TLJiraController.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSaveFile>
#include <QStatusBar>
#include <QStyle>
#include <QTextBlock>
#include <QToolBar>

namespace tessaloom {

namespace {

const QString extension = QStringLiteral(".tessaloom");

QString fileFilter()
{
    return QObject::tr("Tessaloom documents (*%1)").arg(extension);
}

QString untitled()
{
    return QObject::tr("Untitled") + extension;
}

} // namespace

EditorWindow::EditorWindow()
    : m_textEdit(new QPlainTextEdit)
    , m_status(new QLabel)
    , m_position(new QLabel)
{
    m_textEdit->setFrameShape(QFrame::NoFrame);
    m_textEdit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_textEdit->setAccessibleName(tr("Document"));
    m_textEdit->document()->setDocumentMargin(20);
    setCentralWidget(m_textEdit);
    addActions();
    addStatusLine();
    connect(m_textEdit, &QPlainTextEdit::modificationChanged, this, &EditorWindow::setWindowModified);
    connect(m_textEdit, &QPlainTextEdit::cursorPositionChanged, this, &EditorWindow::showPosition);
    show({}, {}, untitled());
    resize(880, 640);
}

void EditorWindow::addActions()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    QToolBar* const bar = addToolBar(tr("Main tools"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(QSize(16, 16));

    const auto add = [&](const QString& text, const QKeySequence& keys, auto slot) {
        QAction* const action = file->addAction(text);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    const auto addToBar = [&](QAction* action, QStyle::StandardPixmap icon) {
        action->setIcon(style()->standardIcon(icon));
        bar->addAction(action);
    };

    addToBar(add(tr("&New"), QKeySequence::New, &EditorWindow::newDocument), QStyle::SP_FileIcon);
    addToBar(add(tr("&Open…"), QKeySequence::Open, &EditorWindow::chooseAndOpen), QStyle::SP_DialogOpenButton);
    addToBar(add(tr("&Save"), QKeySequence::Save, &EditorWindow::save), QStyle::SP_DialogSaveButton);
    add(tr("Save &As…"), QKeySequence::SaveAs, &EditorWindow::saveAs);
    file->addSeparator();
    bar->addSeparator();
    addToBar(add(tr("&Upload to Jira…"), tr("Ctrl+U"), &EditorWindow::uploadToJira), QStyle::SP_ArrowUp);
    addToBar(add(tr("Open from &Jira…"), tr("Ctrl+J"), &EditorWindow::openFromJira), QStyle::SP_ArrowDown);
    add(tr("Jira (&classic)…"), {}, &EditorWindow::showClassicJira);
    file->addSeparator();
    add(tr("&Quit"), QKeySequence::Quit, &EditorWindow::close);
    addEditMenu();
}

void EditorWindow::addEditMenu()
{
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    const auto add = [&](const QString& text, QKeySequence::StandardKey keys, auto slot) {
        QAction* const action = edit->addAction(text);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, m_textEdit, slot);
        return action;
    };
    QAction* const undo = add(tr("&Undo"), QKeySequence::Undo, &QPlainTextEdit::undo);
    QAction* const redo = add(tr("&Redo"), QKeySequence::Redo, &QPlainTextEdit::redo);
    edit->addSeparator();
    QAction* const cut = add(tr("Cu&t"), QKeySequence::Cut, &QPlainTextEdit::cut);
    QAction* const copy = add(tr("&Copy"), QKeySequence::Copy, &QPlainTextEdit::copy);
    add(tr("&Paste"), QKeySequence::Paste, &QPlainTextEdit::paste);
    edit->addSeparator();
    add(tr("Select &All"), QKeySequence::SelectAll, &QPlainTextEdit::selectAll);

    for (QAction* action : {undo, redo, cut, copy})
        action->setEnabled(false);
    connect(m_textEdit, &QPlainTextEdit::undoAvailable, undo, &QAction::setEnabled);
    connect(m_textEdit, &QPlainTextEdit::redoAvailable, redo, &QAction::setEnabled);
    connect(m_textEdit, &QPlainTextEdit::copyAvailable, cut, &QAction::setEnabled);
    connect(m_textEdit, &QPlainTextEdit::copyAvailable, copy, &QAction::setEnabled);
}

void EditorWindow::addStatusLine()
{
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_status->setContentsMargins(4, 0, 0, 0);
    m_position->setContentsMargins(0, 0, 4, 0);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_position);
}

void EditorWindow::setStatus(const QString& text)
{
    m_status->setText(text);
}

QString EditorWindow::documentName() const
{
    return m_name;
}

QByteArray EditorWindow::documentBytes() const
{
    // toPlainText() would turn no-break spaces into plain ones.
    DocumentText document = m_form;
    document.text = m_textEdit->document()->toRawText();
    document.text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
    return document.toBytes();
}

void EditorWindow::show(const DocumentText& document, const QString& path, const QString& name)
{
    m_form = {.hasCarriageReturns = document.hasCarriageReturns, .hasByteOrderMark = document.hasByteOrderMark};
    m_path = path;
    m_name = name;
    m_textEdit->setPlainText(document.text);
    // Setting a text announces a change that it then takes back in silence.
    setWindowModified(false);
    showTitle();
    showPosition();
}

void EditorWindow::showTitle()
{
    setWindowTitle(tr("%1[*] – Tessaloom").arg(m_name));
    setWindowFilePath(m_path);
}

void EditorWindow::showPosition()
{
    const QTextCursor cursor = m_textEdit->textCursor();
    m_position->setText(tr("Line %1, column %2").arg(cursor.blockNumber() + 1).arg(cursor.positionInBlock() + 1));
}

void EditorWindow::report(const QString& what, const QString& why)
{
    QMessageBox box(QMessageBox::Warning, tr("Tessaloom"), what, QMessageBox::Ok, this);
    box.setInformativeText(why);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

bool EditorWindow::mayLeaveDocument()
{
    if (!isWindowModified())
        return true;
    QMessageBox box(QMessageBox::Question, tr("Tessaloom"), tr("Save the changes to “%1”?").arg(m_name),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setInformativeText(tr("They will be lost otherwise."));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return save();
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

bool EditorWindow::newDocument()
{
    if (!mayLeaveDocument())
        return false;
    show({}, {}, untitled());
    return true;
}

std::optional<DocumentText> EditorWindow::read(const QString& path)
{
    const QString what = tr("“%1” cannot be opened.").arg(QFileInfo(path).fileName());
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        report(what, file.errorString());
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) {
        report(what, file.errorString());
        return std::nullopt;
    }
    auto document = DocumentText::fromBytes(bytes);
    if (!document)
        report(what, tr("It is no text that could be saved again unchanged."));
    return document;
}

bool EditorWindow::open(const QString& path)
{
    if (!mayLeaveDocument())
        return false;
    const auto document = read(path);
    if (document)
        show(*document, path, QFileInfo(path).fileName());
    return document.has_value();
}

bool EditorWindow::openAsNew(const QString& path, const QString& name)
{
    if (!mayLeaveDocument())
        return false;
    const auto document = read(path);
    if (document) {
        show(*document, {}, name);
        m_textEdit->document()->setModified(true);
    }
    return document.has_value();
}

void EditorWindow::chooseAndOpen()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"), QFileInfo(m_path).path(), fileFilter());
    if (!path.isEmpty())
        open(path);
}

bool EditorWindow::save()
{
    return m_path.isEmpty() ? saveAs() : write(m_path);
}

bool EditorWindow::saveAs()
{
    QFileDialog dialog(this, tr("Save As"), QFileInfo(m_path).path(), fileFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(extension.mid(1));
    dialog.selectFile(m_name);
    return dialog.exec() == QDialog::Accepted && write(dialog.selectedFiles().constFirst());
}

bool EditorWindow::write(const QString& path)
{
    // The old file stays whole until the new one is. On a full disk commit() may not notice that its own flush failed.
    QSaveFile file(path);
    const QByteArray bytes = documentBytes();
    const bool isSaved =
        file.open(QSaveFile::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit();
    if (!isSaved) {
        report(tr("“%1” cannot be saved.").arg(QFileInfo(path).fileName()), file.errorString());
        return false;
    }
    m_path = path;
    m_name = QFileInfo(path).fileName();
    m_textEdit->document()->setModified(false);
    showTitle();
    return true;
}

void EditorWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(mayLeaveDocument());
}

void EditorWindow::tell(const QString& text)
{
    constexpr int longEnoughToRead = 10000;
    statusBar()->showMessage(text, longEnoughToRead);
}

void EditorWindow::uploadToJira()
{
    TLJiraJobs::attach({m_name, documentBytes()}, this, [editor = QPointer(this)](const TLJiraJobs::Result& result) {
        if (editor && result.isDone())
            editor->tell(tr("“%1” is attached to %2.").arg(result.attachmentName, result.issueKey));
    });
}

void EditorWindow::openFromJira()
{
    TLJiraJobs::fetch(this, [editor = QPointer(this)](const TLJiraJobs::Result& result) {
        if (!result.isDone())
            return;
        // Only for reading: the document has no place of its own until the user saves it.
        const QFileInfo file(result.path);
        if (editor)
            editor->openAsNew(file.filePath(), file.fileName());
        file.dir().removeRecursively();
    });
}

void EditorWindow::showClassicJira()
{
    m_documentForClassicJira.setProperty("pages", m_textEdit->toPlainText().split(QLatin1Char('\f')));
    m_classicJira = JAWindowController::initWithPath(m_path);
    m_classicJira->setTmpFile(&m_documentForClassicJira);
    m_classicJira->showWindow();
}

} // namespace tessaloom
