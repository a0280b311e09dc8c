#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

#include <utility>

namespace tests {

/// What a program tells of one of its parts, as it came over the bus.
struct Told
{
    /// Numbers of the protocol.
    enum Role : quint32 {
        Alert = 2,
        CheckBox = 7,
        Dialog = 16,
        Label = 29,
        List = 31,
        ListItem = 32,
        PasswordText = 40,
        ProgressBar = 42,
        PushButton = 43,
        ScrollBar = 48,
        Text = 61,
    };

    QString path;
    quint32 role = 0;
    QString roleName;
    QString name;
    /// Of the parts that are named as its labels.
    QString label;
    QList<Told> parts;
    bool isShowing = false;
    bool isModal = false;
    bool isUsable = false;
    bool takesText = false;

    /// Itself and all parts that show, at any depth, in their order.
    QList<Told> all() const;
};

/// A message that nobody asked for.
struct News
{
    enum class Kind { Shown, Focused, ValueChanged, NameChanged };

    Kind kind;
    QString path;
};

/// A screen reader: a program's windows as they can be known over the accessibility bus, and by nothing else. Its
/// questions run the event loop of this process, which is also the one that answers. What does not arrive fails the
/// test.
class Reader : public QObject
{
    Q_OBJECT

public:
    /// Listens from now on.
    Reader();
    ~Reader() override;

    /// The windows of the only program on the bus, with all that is in them.
    QList<Told> windows();
    Told read(const QString& path);

    /// Carries out the action of that name; false if there is none.
    bool act(const QString& path, const QString& action);
    /// Replaces what stands in a field.
    bool write(const QString& path, const QString& text);
    double value(const QString& path);

    /// All that the program has told by now, since the last call.
    QList<News> takeNews();

private Q_SLOTS:
    void stateChanged(const QDBusMessage& message);
    void propertyChanged(const QDBusMessage& message);

private:
    QVariantList ask(const QString& path, const char* interface, const char* method,
                     const QVariantList& arguments = {});
    QVariantList ask(const QString& service, const QString& path, const char* interface, const char* method,
                     const QVariantList& arguments);
    QVariant property(const QString& path, const char* interface, const char* name);
    QList<QPair<QString, QString>> children(const QString& service, const QString& path);
    QString labelOf(const QString& path);
    void listen(const char* event);
    /// Of the program.
    QString service();

    QDBusConnection m_bus;
    QString m_service;
    QList<News> m_news;
};

} // namespace tests
