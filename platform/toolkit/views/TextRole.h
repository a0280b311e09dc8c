#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

namespace tljira {

/// What a text is, beside what it says; font and colour follow from those of the view that it stands in, whenever they
/// change. In Designer: the dynamic property `textRole` of a label or a button, with one of these values.
///
/// | value    | font                | colour                                     |
/// |----------|---------------------|--------------------------------------------|
/// | heading  | bold, 1.2 times     | the view's                                 |
/// | strong   | bold                | the view's                                 |
/// | help     | the view's          | quieter                                    |
/// | error    | bold                | of errors                                  |
/// | success  | bold                | of what went well                          |
/// | link     | the view's          | of links; for a button without a frame     |
class TextRole : public QObject
{
    Q_OBJECT

public:
    /// As the property says; without it, nothing happens.
    static void applyProperty(QWidget* view);

    /// Gives `view` the role, or another one.
    static void apply(QWidget* view, const QString& role);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TextRole(QWidget* view, const QString& role);

    void followParent();
    void update();
    void updateFont();
    void updatePalette();

    QWidget* const m_view;
    QPointer<QWidget> m_parent;
    QString m_role;
};

} // namespace tljira
