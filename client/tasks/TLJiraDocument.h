#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <functional>

/// A document that is to be attached to an issue.
struct TLJiraDocument
{
    /// Writes the document into a device, which is open for reading and writing, can seek and stays open. Answers
    /// whether that went well. An error of the device, false and an exception have the same effect: nothing is sent,
    /// and the user or the host is told why. Called on the main thread, once for each attempt to send the document.
    using Writer = std::function<bool(QIODevice& device)>;

    /// These bytes.
    TLJiraDocument(const QString& documentName, const QByteArray& documentBytes)
        : name(documentName)
        , bytes(documentBytes)
    {
    }
    /// What `documentWriter` writes.
    TLJiraDocument(const QString& documentName, const Writer& documentWriter)
        : name(documentName)
        , writer(documentWriter)
    {
    }

    /// What the user sees, and the attachment is called.
    QString name;
    /// What is sent where there is no `writer`.
    QByteArray bytes;
    /// Asked anew for each attempt. Empty for a document that is `bytes`.
    Writer writer;
};
