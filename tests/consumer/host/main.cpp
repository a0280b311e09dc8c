// Attaches a document to an issue and fetches it again, as a user does in the windows:
//
//     host-consumer ROUTE DOCUMENT FETCHED

#include <TLJiraController/TLJiraController.h>

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>

namespace {

/// What the user does, one step after another, each as soon as its condition holds.
class User : public QObject
{
public:
    using Condition = std::function<bool()>;
    using Action = std::function<void()>;

    User()
    {
        m_timer.callOnTimeout(this, [this] { look(); });
        m_timer.start(5);
    }

    void when(Condition condition, Action action) { m_steps.push_back({std::move(condition), std::move(action)}); }

private:
    void look()
    {
        if (m_next == m_steps.size() || !m_steps[m_next].first())
            return;
        const Action action = m_steps[m_next++].second;
        action();
    }

    std::vector<std::pair<Condition, Action>> m_steps;
    std::size_t m_next = 0;
    QTimer m_timer;
};

bool isShown(const QWidget* view)
{
    return view && view->isVisible();
}

void logIn(const JALoginWindow& form)
{
    form.hostTextField()->setText(QStringLiteral("http://jira.example.test"));
    form.emailTextField()->setText(QStringLiteral("anna"));
    form.passwordTextField()->setText(QStringLiteral("secret"));
    form.loginButton()->click();
}

void upload(const QString& document)
{
    const auto entry = TLJiraUpload::initWithName(QStringLiteral("plan.tessaloom"), document);
    const auto panel = entry->bodyViewController();
    const auto sheet = panel->jaUploadingWindow();

    User user;
    user.when([&] { return isShown(entry->jaLoginWindow()->view()); }, [&] { logIn(*entry->jaLoginWindow()); });
    user.when([&] { return isShown(entry->downloadViewContainer()); },
              [&] {
                  panel->taskTextField()->setText(QStringLiteral("ABC-1"));
                  // As a host does that knows no more than names.
                  entry->window()->widget()->findChild<QPushButton*>(QStringLiteral("uploadFileButton"))->click();
              });
    user.when([&] { return sheet->sizeLabel() && sheet->sizeLabel()->text() == QStringLiteral("DONE"); },
              [&] { sheet->cancelButton()->click(); });
    user.when([&] { return !entry->window()->attachedSheet(); },
              [&] {
                  entry->window()->close();
                  QApplication::exit();
              });
    entry->showWindow();
    QApplication::exec();
}

std::optional<QString> fetch()
{
    const auto entry = JMWindowController::init();
    const auto panel = entry->bodyViewController();
    const auto list = [&] { return panel->jaListAttachedWindow(); };
    const auto cell = [&] { return dynamic_cast<JAAttachedCell*>(list()->tableView()->cellAtRow(0)); };

    User user;
    user.when([&] { return isShown(entry->downloadViewContainer()); },
              [&] {
                  panel->issueKeyTextField()->setText(QStringLiteral("ABC-1"));
                  panel->getAttachButton()->click();
              });
    user.when([&] { return entry->window()->attachedSheet() && cell(); }, [&] { cell()->downloadButton()->click(); });
    user.when([&] { return list()->isDone() && QFile::exists(list()->path().value_or(QString())); },
              [&] { list()->cancalAction(nullptr); });

    std::optional<QString> fetched;
    entry->run([&](const std::optional<QString>& path) { fetched = path; });
    return fetched;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("host-consumer"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    tljira::URLSessionConfiguration::setDefaultRoutes({arguments.value(1)});
    // A user who gives up.
    QTimer::singleShot(110'000, [] { std::abort(); });

    upload(arguments.value(2));
    const std::optional<QString> fetched = fetch();
    return fetched && QFile::copy(*fetched, arguments.value(3)) ? 0 : 1;
}
