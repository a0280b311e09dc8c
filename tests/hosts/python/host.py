"""A host in Python. It loads the plug-in, its user does both jobs, and it says what came of them.

    host.py FOLDER ROUTE DOCUMENT FETCHED
"""

import os
import shutil
import sys

from PyQt6.QtCore import QDir, QPluginLoader, QTimer
from PyQt6.QtWidgets import QApplication, QMainWindow, QPushButton

from user_events import User


class Host(QMainWindow):
    def __init__(self, jira, document, fetched):
        super().__init__()
        self.jira = jira
        self.document = document
        self.fetched = fetched
        self.job = 0
        self.attach_button = QPushButton("Attach to issue…", self)
        self.attach_button.clicked.connect(self.attach)
        self.setCentralWidget(self.attach_button)
        jira.ended.connect(self.on_ended)

    def attach(self):
        self.job = self.jira.attachFile("plan.tessaloom", self.document, self, {"closeWhenDone": True})
        print("attaching:", "a job of its own" if self.job > 0 else "no job")

    def fetch(self):
        self.job = self.jira.fetchDocument(self, {"closeWhenDone": True})
        print("asking again:", self.jira.fetchDocument(self, {}))

    def on_ended(self, job, result):
        if job != self.job:
            print("the end of another job:", result["error"])
        elif not result["path"]:
            print(result["outcome"], result["attachmentName"], result["issueKey"], result["size"])
            self.refused = self.jira.attachBytes("plan.tessaloom", b"wool", self, {"colour": "blue"})
            self.fetch()
        else:
            print("fetched", os.path.basename(result["path"]))
            shutil.move(result["path"], self.fetched)
            os.rmdir(os.path.dirname(result["path"]))
            QApplication.exit()


def owner_is(host):
    """What to say of the window in which the button of this name is, once it is there."""

    def tell(user, name):
        button = user.seen(QPushButton, name)
        if button:
            owner = button.window().windowHandle().transientParent()
            print("a dialog of the host" if owner == host.windowHandle() else "a dialog of nobody")
        return button is not None

    return tell


def steps(host):
    tell_owner = owner_is(host)
    return [
        lambda user: user.click(host.attach_button),
        lambda user: tell_owner(user, "loginButton"),
        lambda user: user.log_in("http://jira.example.test", "anna", "secret"),
        lambda user: user.enter_key("taskTextField", "uploadFileButton", "ABC-1"),
        lambda user: tell_owner(user, "getAttachButton"),
        lambda user: user.enter_key("issueKeyTextField", "getAttachButton", "ABC-1"),
        lambda user: user.click(user.seen(QPushButton, "downloadButton")),
    ]


def main():
    application = QApplication(sys.argv)
    application.setApplicationName("plugin_host")
    application.setQuitOnLastWindowClosed(False)
    QTimer.singleShot(110000, os.abort)  # A user who gives up.
    folder, route, document, fetched = sys.argv[1:5]

    loader = QPluginLoader(QDir(folder).filePath("TLJiraControllerPlugin"))
    jira = loader.instance()
    if jira is None:
        print(loader.errorString())
        return 1
    jira.setLogEnabled(False)
    jira.setRoutes([route])
    host = Host(jira, document, fetched)
    host.show()
    other = QMainWindow()  # In front, and no parent.
    other.show()
    user = User(steps(host))
    return application.exec()


sys.exit(main())
