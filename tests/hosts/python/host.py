"""A host in Python. It loads the plug-in, its user does both jobs, and it says what came of them.

    host.py FOLDER ROUTE DOCUMENT FETCHED
"""

import os
import shutil
import sys

from PyQt6.QtCore import QDir, QPluginLoader, Qt, QTimer
from PyQt6.QtTest import QTest
from PyQt6.QtWidgets import QApplication, QLabel, QLineEdit, QMainWindow, QPushButton


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


class User:
    """Does the steps in their order, with mouse and keyboard, each as soon as it can be done."""

    def __init__(self, host):
        self.host = host
        self.steps = [
            lambda: self.click(host.attach_button),
            lambda: self.tell_owner("loginButton"),
            self.log_in,
            lambda: self.enter_key("taskTextField", "uploadFileButton"),
            lambda: self.tell_owner("getAttachButton"),
            lambda: self.enter_key("issueKeyTextField", "getAttachButton"),
            lambda: self.click(self.seen(QPushButton, "downloadButton")),
        ]
        self.timer = QTimer()
        self.timer.timeout.connect(self.go_on)
        self.timer.start(5)

    def go_on(self):
        if self.steps and self.steps[0]():
            del self.steps[0]

    @staticmethod
    def seen(kind, name):
        for window in QApplication.topLevelWidgets():
            for view in window.findChildren(kind, name):
                if view.isVisible() and view.isEnabled():
                    return view
        return None

    @staticmethod
    def click(button):
        if button:
            QTest.mouseClick(button, Qt.MouseButton.LeftButton)
        return button is not None

    def type(self, name, text):
        field = self.seen(QLineEdit, name)
        QTest.mouseClick(field, Qt.MouseButton.LeftButton)
        QTest.keyClick(field, Qt.Key.Key_A, Qt.KeyboardModifier.ControlModifier)
        QTest.keyClicks(field, text)

    def tell_owner(self, name):
        """Once the button of this name is there."""
        button = self.seen(QPushButton, name)
        if button:
            owner = button.window().windowHandle().transientParent()
            print("a dialog of the host" if owner == self.host.windowHandle() else "a dialog of nobody")
        return button is not None

    def log_in(self):
        button = self.seen(QPushButton, "loginButton")
        if not button:
            return False
        self.type("hostTextField", "http://jira.example.test")
        self.type("emailTextField", "anna")
        self.type("passwordTextField", "secret")
        return self.click(button)

    def enter_key(self, field, button):
        if not self.seen(QLineEdit, field) or not self.seen(QPushButton, button):
            return False
        self.type(field, "ABC-1")
        return self.click(self.seen(QPushButton, button))


def main():
    application = QApplication(sys.argv)
    application.setApplicationName("plugin_host")
    application.setQuitOnLastWindowClosed(False)
    QTimer.singleShot(60000, os.abort)  # A user who gives up.
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
    user = User(host)
    return application.exec()


sys.exit(main())
